#pragma once

#include <QFrame>
#include <vector>

namespace velmora {

class StatusBar;
struct ProgressBar;

/// The row of panels at the foot of the window, with the progress bar at the foot of the first panel.
class StatusBarView : public QFrame {
 public:
  /// Both controls outlive the view.
  StatusBarView(StatusBar& bar, ProgressBar& progress, QWidget* parent);

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QWidget* makePanel(int number);
  void addProgress(ProgressBar& progress, QWidget& panel);

  StatusBar& bar_;
  std::vector<QWidget*> panels_;
};

}  // namespace velmora
