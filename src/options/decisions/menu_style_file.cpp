#include "options/decisions/menu_style_file.h"

#include <array>
#include <cstdint>
#include <string>

#include "platform/text.h"

namespace velmora {

namespace {

/// The one style of menus that there is: a gradient of three colours.
constexpr auto gradientStyle = "4";

struct ColourKey {
  const char* key;
  std::int32_t MenuColours::*colour;
};
constexpr std::array<ColourKey, 3> colourKeys = {{
    {"New3DColor1", &MenuColours::top},
    {"New3DColor2", &MenuColours::middle},
    {"New3DColor3", &MenuColours::bottom},
}};

}  // namespace

void writeMenuStyle(IniFile& file, const MenuColours& colours) {
  file.Section = "Menu";
  file.KeySave(gradientStyle, "NA", "MenuStyle");
  file.Section = "New3D";
  for (const auto& [key, colour] : colourKeys) file.KeySave(std::to_string(colours.*colour), "NA", key);
}

std::optional<MenuColours> readMenuStyle(IniFile& file) {
  constexpr std::int64_t allBits = 0xFFFFFF;
  if (file.KeyGet("Menu", "MenuStyle", "") != gradientStyle) return std::nullopt;
  MenuColours colours;
  for (const auto& [key, colour] : colourKeys) {
    const auto number = text::toNumber(file.KeyGet("New3D", key, ""));
    if (!number) return std::nullopt;
    colours.*colour = static_cast<std::int32_t>(*number & allBits);
  }
  return colours;
}

}  // namespace velmora
