#pragma once

#include <QColor>
#include <QPalette>

namespace velmora {

/// The colour of a text that stands where there is no other. Not every desktop's palette has one that can be read on
/// its own ground, so it is made of the text's.
inline QColor hintColour(const QPalette& palette) {
  QColor colour = palette.color(QPalette::Text);
  colour.setAlphaF(0.5F);
  return colour;
}

}  // namespace velmora
