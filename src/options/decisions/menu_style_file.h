#pragma once

#include <optional>

#include "options/decisions/ini_file.h"
#include "platform/controls/menu.h"

namespace velmora {

/// The file in the program's folder that tells how its menus look.
inline constexpr const char* menuStyleFile = "frmMain.ini";

/// Lets the file hold these colours.
void writeMenuStyle(IniFile& file, const MenuColours& colours);

/// The colours that the file holds; nothing where it doesn't hold all of them.
std::optional<MenuColours> readMenuStyle(IniFile& file);

}  // namespace velmora
