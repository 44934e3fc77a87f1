#include "accounts/decisions/account_list.h"

namespace velmora {

namespace {

/// From so many accounts on, the window is as high as it gets.
constexpr std::int16_t manyAccounts = 16;
constexpr std::int16_t mostLines = 17;

constexpr std::string_view lineEnd = "\r\n";

/// Where the line of this number begins, counted from 0; the end where there are fewer.
std::size_t beginOfLine(std::string_view text, std::size_t number) {
  std::size_t begin = 0;
  for (; number > 0; --number) {
    const auto end = text.find(lineEnd, begin);
    if (end == std::string_view::npos) return text.size();
    begin = end + lineEnd.size();
  }
  return begin;
}

}  // namespace

std::string accountList(std::string_view lines, std::int16_t accounts) {
  return std::string(lines) + (accounts < manyAccounts ? "" : "\r\nmore Accounts...");
}

std::int16_t accountListLines(std::int16_t accounts) { return accounts < manyAccounts ? accounts : mostLines; }

std::string shownOfAccountList(std::string_view list, std::size_t headings) {
  if (list.ends_with(lineEnd)) list.remove_suffix(lineEnd.size());
  const std::size_t room = headings + mostLines;
  if (beginOfLine(list, room) == list.size()) return std::string(list);
  const std::string_view last = list.substr(list.rfind(lineEnd));
  return std::string(list.substr(0, beginOfLine(list, room - 2))) + std::string(last);
}

}  // namespace velmora
