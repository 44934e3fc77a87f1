#pragma once

#include <QSpinBox>
#include <cstdint>

namespace velmora {

struct NumberBox;

/// A whole number to type or to step, corrected while it is typed. The wheel is the page's, which it may be scrolled
/// with.
class NumberEdit : public QSpinBox {
 public:
  /// `box` outlives the widget.
  NumberEdit(NumberBox& box, const QString& name, QWidget* parent);

 protected:
  QValidator::State validate(QString& input, int& pos) const override;
  StepEnabled stepEnabled() const override;
  void stepBy(int steps) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void showValue();

  NumberBox& box_;
  mutable bool emptied_ = false;  ///< by the user, who now sees what stands for nothing
};

}  // namespace velmora
