#pragma once

#include <cstdint>

#include "options/decisions/options.h"
#include "platform/controls/menu.h"

namespace velmora {

/// Bounds of the minutes of the Auto Check interval, which is neither nothing nor more than twelve hours.
struct MinuteBounds {
  std::int16_t least = 0;
  std::int16_t most = 0;
  std::int16_t whenEmpty = 0;
};
MinuteBounds minuteBounds(std::int16_t hours);

/// The theme of colours that the user has picked himself.
inline constexpr std::int16_t userTheme = 6;

/// The colours of one of the six preset themes; of any other, those that the options hold.
MenuColours themeColours(std::int16_t theme, const Options& options);

MenuColours coloursOf(const Options& options);

/// Brings the rest of `edit` in line with what has changed in it since `before`: a number of hours may rule minutes
/// out, an interval that is switched off is again that of the options in force, and a theme brings its colours.
void followChange(const Options& before, const Options& inForce, Options& edit);

/// Whether a save would change anything.
bool differs(const Options& edit, const Options& inForce);

}  // namespace velmora
