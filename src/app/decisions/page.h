#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace velmora {

/// The pages, by number.
inline constexpr std::int16_t emailPage = 0;
inline constexpr std::int16_t accountsPage = 1;
inline constexpr std::int16_t rulesPage = 2;
inline constexpr std::int16_t optionsPage = 3;
inline constexpr std::size_t pageCount = 4;

/// What lblBanner says of each page, which is also the key of the page's main button.
inline constexpr std::array<const char*, pageCount> PageBanners = {"Email", "Accounts", "Rules", "Options"};

}  // namespace velmora
