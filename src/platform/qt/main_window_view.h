#pragma once

#include <QMainWindow>

namespace velmora {

struct MainWindow;

/// The window on the screen: lays out the controls of `MainWindow` and ties each to its widget.
class MainWindowView : public QMainWindow {
 public:
  /// `window` outlives the view.
  explicit MainWindowView(MainWindow& window);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QWidget* makeHead();
  QWidget* makeBanner();
  QWidget* makePage(std::size_t page, QWidget* content);
  QWidget* makeEmailPage();
  QWidget* makeAccountsPage();
  QWidget* makeRulesPage();
  QWidget* makeButtonRow(std::size_t page);
  void addFocusTaker();
  void addShortcuts();
  void followForm();
  void startTimers();
  void showState();

  MainWindow& window_;
  QWidget* list_ = nullptr;
  bool takingOver_ = false;  ///< the control follows the screen, not the other way round
};

}  // namespace velmora
