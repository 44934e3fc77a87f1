#include "platform/qt/help/help_pages.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTextDocumentFragment>
#include <algorithm>

namespace velmora {

namespace {

/// No page comes near it; a file that took another's place could be of any size.
constexpr qint64 largestFile = 262144;

QString readWithin(const QString& folder, const QString& name) {
  QFile file(folder + '/' + name);
  if (!liesIn(folder, file.fileName()) || !file.open(QIODevice::ReadOnly)) return {};
  return QString::fromUtf8(file.read(largestFile));
}

/// Unlike a document of its own, a fragment loads nothing that the markup asks for.
QString plainText(const QString& html) { return QTextDocumentFragment::fromHtml(html).toPlainText(); }

QString titleOf(const QString& html) {
  static const QRegularExpression title("<title>(.*?)</title>", QRegularExpression::DotMatchesEverythingOption);
  return plainText(title.match(html).captured(1)).simplified();
}

HelpPage readPage(const QString& folder, const QStringList& line) {
  HelpPage page;
  page.context = line.front().toInt();
  page.file = line.back();
  page.html = readWithin(folder, page.file);
  page.title = titleOf(page.html);
  page.text = plainText(page.html);
  return page;
}

}  // namespace

std::vector<HelpPage> readHelpPages(const QString& folder) {
  std::vector<HelpPage> pages;
  for (const QString& line : readWithin(folder, "contents.txt").split('\n')) {
    const QStringList fields = line.simplified().split(' ');
    if (line.startsWith('#') || fields.size() != 2) continue;
    HelpPage page = readPage(folder, fields);
    if (!page.title.isEmpty() && !page.text.isEmpty()) pages.push_back(std::move(page));
  }
  return pages;
}

QStringList searchWords(const QString& typed) { return typed.simplified().split(' ', Qt::SkipEmptyParts); }

bool holdsAll(const HelpPage& page, const QStringList& words) {
  return std::all_of(words.begin(), words.end(), [&page](const QString& word) {
    return page.title.contains(word, Qt::CaseInsensitive) || page.text.contains(word, Qt::CaseInsensitive);
  });
}

bool liesIn(const QString& folder, const QString& path) {
  const QString within = QFileInfo(folder).canonicalFilePath();
  const QFileInfo file(path);
  return !within.isEmpty() && file.isFile() && file.canonicalFilePath().startsWith(within + '/');
}

}  // namespace velmora
