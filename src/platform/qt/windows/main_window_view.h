#pragma once

#include <QMainWindow>
#include <QTimer>
#include <optional>

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
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QWidget* makeHead();
  QWidget* makeBanner();
  QWidget* makePage(std::size_t page, QWidget* content);
  QWidget* makeEmailPage();
  QWidget* makeButtonRow(std::size_t page);
  void addFocusTaker();
  void addShortcuts();
  void followForm();
  void startTimers();
  void showState();
  void notePlace();
  void restorePlace();
  void keepOnScreen();
  static void raiseModal();
  QSize startSize() const;
  QSize leastSize() const;

  MainWindow& window_;
  QWidget* list_ = nullptr;
  QTimer trayMayCome_;          ///< runs at start, until the window is seen
  QTimer settles_;              ///< runs a moment after each move
  std::optional<QRect> place_;  ///< of the window when it was last seen neither minimised nor maximised
  bool takingOver_ = false;     ///< the control follows the screen, not the other way round
};

}  // namespace velmora
