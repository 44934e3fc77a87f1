#pragma once

#include <QStringList>
#include <QTextBrowser>
#include <vector>

#include "platform/qt/help/help_pages.h"

namespace velmora {

/// Shows the pages of the help and nothing else: whatever a page asks for, no network is used and no file is opened but
/// the pages and the pictures of the help and of the program.
class HelpBrowser : public QTextBrowser {
 public:
  /// `folder` holds the pages; the program's pictures lie in the folder `icons` beside it. `pages` outlive the browser.
  HelpBrowser(const QString& folder, const std::vector<HelpPage>& pages, QWidget* parent);

  /// Pages that there are none of are not shown.
  void showPage(int number);

  /// The number of the page that is showing, -1 for none.
  int shownPage() const { return shown_; }

  /// Marks the words in the page, in whatever case, and brings the first of them into sight.
  void mark(const QStringList& words);

  QVariant loadResource(int type, const QUrl& name) override;

 protected:
  void doSetSource(const QUrl& url, QTextDocument::ResourceType type) override;
  void changeEvent(QEvent* event) override;

 private:
  QUrl urlOf(const HelpPage& page) const;
  int numberOf(const QUrl& url) const;
  void follow(const QUrl& link);
  void useStyle();
  QImage picture(const QString& path) const;

  QString folder_;
  const std::vector<HelpPage>& pages_;
  int shown_ = -1;
};

}  // namespace velmora
