#pragma once

#include <QColor>
#include <cstdint>

namespace velmora {

/// A colour 0x00BBGGRR of a control.
QColor colourOf(std::int32_t value);

/// The colour of a way from one to another of `steps` steps, behind `step` of them.
QColor mixed(const QColor& from, const QColor& to, int step, int steps);

/// White or black, whichever has the better contrast, which is 4.58:1 at least.
QColor legibleOn(const QColor& ground);

/// The colour where it can be read on the ground, which is at a contrast of 4.5:1 (WCAG 2), else the one nearest to it
/// on the way to white or black that can be.
QColor legible(const QColor& colour, const QColor& ground);

}  // namespace velmora
