#pragma once

#include <chrono>
#include <optional>

#include "platform/mime/date_pieces.h"

namespace velmora::mime {

/// The date of these elements; nothing where they are none.
std::optional<std::chrono::year_month_day> dateOf(const Element& year, int month, const Element& day);

/// The date of three elements in the order that they have with this sign between them. Where none has more than two
/// digits nor is a name, only a date that is the same in every order that is one.
std::optional<std::chrono::year_month_day> dateOf(const Element& first, const Element& second, const Element& third,
                                                  char sign);

}  // namespace velmora::mime
