#include "platform/qt/widgets/colour_patch.h"

#include <QPainter>

#include "platform/controls/colour_box.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/legible_colour.h"

namespace velmora {

ColourPatch::ColourPatch(ColourBox& box, Use use, QWidget* parent) : QAbstractButton(parent), box_(box) {
  box_.BackColour.watch([this](std::int32_t) { update(); });
  box_.Enabled.watch([this](bool on) { setEnabled(on); });
  setToolTip(qt(box.ToolTipText));
  setFocusPolicy(use == Use::Choose ? Qt::StrongFocus : Qt::NoFocus);
  connect(this, &QAbstractButton::clicked, this, [this] {
    if (box_.Click) box_.Click();
  });
}

QSize ColourPatch::sizeHint() const {
  const int side = fontMetrics().height() + 4;
  return {side * 3 / 2, side};
}

/// The frame keeps a colour apart from a ground that is much like it, and tells where the keyboard is.
void ColourPatch::paintEvent(QPaintEvent* /*event*/) {
  const int width = hasFocus() ? 2 : 1;
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid));
  painter.fillRect(rect().adjusted(width, width, -width, -width), palette().color(QPalette::Base));
  painter.fillRect(rect().adjusted(width + 1, width + 1, -width - 1, -width - 1), colourOf(box_.BackColour));
}

}  // namespace velmora
