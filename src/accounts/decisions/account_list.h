#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

/// The lines about accounts in a small window, one for each of so many accounts and each ended by CR LF; where they are
/// many, a word that there are more stands below them, behind a blank line.
std::string accountList(std::string_view lines, std::int16_t accounts);

/// How many lines the window makes room for.
std::int16_t accountListLines(std::int16_t accounts);

/// What the window shows of such a list: all, or as many of the first lines as leave room for the last two. The list
/// may begin with so many lines that are no account's; the end of its last line goes.
std::string shownOfAccountList(std::string_view list, std::size_t headings);

}  // namespace velmora
