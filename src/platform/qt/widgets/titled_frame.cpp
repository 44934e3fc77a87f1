#include "platform/qt/widgets/titled_frame.h"

#include <QStyleOptionGroupBox>

#include "platform/controls/simple_controls.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/legible_colour.h"

namespace velmora {

TitledFrame::TitledFrame(Frame& frame, const QString& name, QWidget* parent) : QGroupBox(parent), frame_(frame) {
  setObjectName(name);
  bind(frame, static_cast<QWidget&>(*this));
  frame.Caption.watch([this](const std::string& caption) { setTitle(literal(caption)); });
  frame.ForeColour.watch([this](std::int32_t) { update(); });
}

/// A palette of the widget's own would colour what stands in it as well. Some styles take the one of the two colours,
/// some the other.
void TitledFrame::initStyleOption(QStyleOptionGroupBox* option) const {
  QGroupBox::initStyleOption(option);
  if (frame_.ForeColour == ordinaryColour || !isEnabled()) return;
  option->textColor = legible(colourOf(frame_.ForeColour), palette().color(QPalette::Window));
  option->palette.setColor(QPalette::WindowText, option->textColor);
}

}  // namespace velmora
