#pragma once

#include <QTimeEdit>

namespace velmora {

struct TimeBox;

/// A time of the day to type or to step, hours and minutes each for itself. The wheel is the page's, which it may be
/// scrolled with.
class TimeEdit : public QTimeEdit {
 public:
  /// `box` outlives the widget.
  TimeEdit(TimeBox& box, const QString& name, QWidget* parent);

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void showText();
  void take(const QTime& time);
  void takeUnfinished();

  TimeBox& box_;
  bool taking_ = false;  ///< the control follows the screen, not the other way round
};

}  // namespace velmora
