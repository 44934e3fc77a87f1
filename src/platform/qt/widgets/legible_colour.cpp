#include "platform/qt/widgets/legible_colour.h"

#include <algorithm>
#include <cmath>

namespace velmora {

namespace {

double linear(double part) { return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); }

double luminance(const QColor& colour) {
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});  // a pair of values
  return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace

QColor colourOf(std::int32_t value) {
  const auto bits = static_cast<std::uint32_t>(value);
  return {static_cast<int>(bits & 0xFFU), static_cast<int>((bits >> 8U) & 0xFFU),
          static_cast<int>((bits >> 16U) & 0xFFU)};
}

QColor mixed(const QColor& from, const QColor& to, int step, int steps) {
  const auto mix = [step, steps](int a, int b) { return a + (b - a) * step / steps; };
  return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

QColor legibleOn(const QColor& ground) {
  return contrast(Qt::white, ground) > contrast(Qt::black, ground) ? Qt::white : Qt::black;
}

/// On every ground either white or black has the contrast, so the way has an end.
QColor legible(const QColor& colour, const QColor& ground) {
  constexpr double readable = 4.5;
  constexpr int steps = 32;
  const QColor end = legibleOn(ground);
  for (int step = 0; step < steps; ++step) {
    const QColor seen = mixed(colour, end, step, steps);
    if (contrast(seen, ground) >= readable) return seen;
  }
  return end;
}

}  // namespace velmora
