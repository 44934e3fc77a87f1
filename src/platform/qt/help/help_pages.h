#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace velmora {

/// One page of the help.
struct HelpPage {
  int context = 0;  ///< the number by which the program asks for it; 0 for none
  QString file;     ///< in the help's folder
  QString title;
  QString html;
  QString text;  ///< what is read on it, without markup
};

/// The pages that `contents.txt` of the folder names, in its order: a line for each, of its context number and its
/// file. What cannot be read is left out.
std::vector<HelpPage> readHelpPages(const QString& folder);

/// The words of a search that the user typed.
QStringList searchWords(const QString& typed);

/// Whether the page's title and text hold every word, in whatever case. No words are in every page.
bool holdsAll(const HelpPage& page, const QStringList& words);

/// Whether the path leads, through all links, to a file below the folder.
bool liesIn(const QString& folder, const QString& path);

}  // namespace velmora
