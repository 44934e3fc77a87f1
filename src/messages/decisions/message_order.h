#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "messages/decisions/message_store.h"

namespace velmora {

/// A column that messages can be sorted on, and the field that it shows.
struct SortColumnField {
  std::string_view name;
  std::string MailMessage::*field;
};
inline constexpr std::array<SortColumnField, 5> sortColumns = {{{"From", &MailMessage::From},
                                                                {"To", &MailMessage::To},
                                                                {"Subject", &MailMessage::Subject},
                                                                {"Date", &MailMessage::Date},
                                                                {"Size", &MailMessage::Size}}};

/// The column of this name, null where it is none of the five.
const SortColumnField* sortColumn(std::string_view name);

/// What messages are compared by, made of what their field of this column holds: sizes as numbers of six digits, all
/// else, dates too, in upper case.
std::string sortKey(std::string_view value, const SortColumnField& column);

/// The order that a sort by exchange leaves: `result[i]` is the number, from 0, of the key that comes to stand at `i`.
/// Such a sort takes each place in turn, compares its key with every later one, and exchanges the two where they stand
/// wrongly, so that equal keys change places among themselves whenever a third is exchanged past them. The same result
/// is found here in n log n steps.
std::vector<std::size_t> exchangeOrder(std::span<const std::string_view> keys, bool descending);

/// The order in which these messages stand once they are sorted on a column.
std::vector<std::size_t> sortedOrder(const MessageRange& messages, const SortColumnField& column, bool descending);

}  // namespace velmora
