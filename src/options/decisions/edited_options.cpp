#include "options/decisions/edited_options.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace velmora {

namespace {

constexpr std::int16_t mostHours = 12;

constexpr std::array<MenuColours, 6> themes = {{
    {0xFFD7AE, 0xFFFFFF, 0xFF8000},  // Blue
    {0xEAE5E3, 0xFFFFFF, 0xBEA3A4},  // Gray
    {0xB8E7E0, 0xD5FFFF, 0x7FB2A3},  // Green
    {0xF0CAA6, 0xFFFFFF, 0x6A240A},  // Classic Windows
    {0xDCB4B4, 0xFFFFFF, 0x984545},  // Classic Windows XP
    {0x99B1BF, 0xEFEFEF, 0x577C91},  // Velmora Default
}};

void followHours(Options& edit) {
  if (edit.Hours == mostHours) edit.Minutes = 0;
  if (edit.Hours == 0 && edit.Minutes == 0) edit.Minutes = 1;
}

void followTheme(const Options& inForce, Options& edit) {
  const MenuColours colours = themeColours(edit.DTheme, inForce);
  edit.TopColour = colours.top;
  edit.MiddleColour = colours.middle;
  edit.BottomColour = colours.bottom;
}

void forgetInterval(const Options& inForce, Options& edit) {
  edit.Hours = inForce.Hours;
  edit.Minutes = inForce.Minutes;
}

}  // namespace

MinuteBounds minuteBounds(std::int16_t hours) {
  if (hours == 0) return {.least = 1, .most = 59, .whenEmpty = 1};
  if (hours == mostHours) return {};
  return {.most = 59};
}

MenuColours themeColours(std::int16_t theme, const Options& options) {
  const auto index = static_cast<std::size_t>(theme);
  return theme >= 0 && index < themes.size() ? themes[index] : coloursOf(options);
}

MenuColours coloursOf(const Options& options) {
  return {options.TopColour, options.MiddleColour, options.BottomColour};
}

void followChange(const Options& before, const Options& inForce, Options& edit) {
  if (edit.Hours != before.Hours) followHours(edit);
  if (edit.UseInterval != 1 && edit.UseInterval != before.UseInterval) forgetInterval(inForce, edit);
  if (edit.DTheme != before.DTheme) followTheme(inForce, edit);
}

bool differs(const Options& edit, const Options& inForce) {
  return std::ranges::any_of(optionFields(), [&](const OptionField& option) {
    return option.isOfPage() && !isEqual(option.field, edit, inForce);
  });
}

}  // namespace velmora
