#pragma once

#include <string_view>

namespace velmora {

/// Who made the program, and when, as its windows say.
inline constexpr std::string_view makersNotice = "2026, by Kestrum";

/// Where to write to for help.
inline constexpr std::string_view supportAddress = VELMORA_SUPPORT_ADDRESS;

}  // namespace velmora
