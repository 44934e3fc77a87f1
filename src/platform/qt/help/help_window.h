#pragma once

#include <QStringList>
#include <QWidget>
#include <vector>

#include "platform/qt/help/help_pages.h"

class QLabel;
class QLineEdit;
class QListWidget;

namespace velmora {

class HelpBrowser;

/// The window of the help: the contents with a search over them, and the page that was chosen.
class HelpWindow : public QWidget {
 public:
  /// `folder` holds the pages.
  explicit HelpWindow(const QString& folder);

  /// Brings up the window at the page of this context number, or at the first page where none has it.
  void showTopic(int context);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  QWidget* makeContents();
  QWidget* makePage();
  void followPalette();
  void addShortcuts();
  void narrow();
  void followPage();
  void openFirstFound();
  void leave();

  std::vector<HelpPage> pages_;
  QStringList words_;  ///< what is searched for
  QLineEdit* search_ = nullptr;
  QLabel* noneFound_ = nullptr;
  QListWidget* contents_ = nullptr;
  HelpBrowser* browser_ = nullptr;
};

}  // namespace velmora
