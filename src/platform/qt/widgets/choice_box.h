#pragma once

#include <QComboBox>

namespace velmora {

struct ComboBox;

/// A box that opens a list to choose from. The wheel is the page's, which it may be scrolled with.
class ChoiceBox : public QComboBox {
 public:
  /// `box` outlives the widget.
  ChoiceBox(ComboBox& box, const QString& name, QWidget* parent);

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  void refill();
  void showChoice();

  ComboBox& box_;
};

}  // namespace velmora
