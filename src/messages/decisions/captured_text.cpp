#include "messages/decisions/captured_text.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "platform/text.h"

namespace velmora {

std::string sizeText(std::int32_t bytes) {
  // The default rounding mode takes halves to the even neighbour.
  return std::to_string(std::lrint(bytes / 1000.0));
}

std::string cleanFrom(std::string_view from) { return text::replaceAll(text::replaceAll(from, "&", "and"), "\"", ""); }

std::string cleanTo(std::string_view to) {
  const std::string cleaned = text::replaceAll(to, "\"", "");
  return cleaned.empty() ? "Undisclosed-Recipient" : cleaned;
}

std::string displayDate(std::string_view generalDate, const DateNames& months) {
  constexpr char firstWeekdayLetter = 'F';
  constexpr std::size_t weekdayPrefix = 5;
  constexpr std::size_t kept = 20;
  std::string_view text = generalDate;
  if (!text.empty() && text.front() >= firstWeekdayLetter) text.remove_prefix(std::min(weekdayPrefix, text.size()));
  const auto parsed = parseGeneralDate(text::left(text, kept));
  return parsed ? formatDateTime(*parsed, "mmm dd, yyyy hh:mm:ss AM/PM", months) : std::string(generalDate);
}

std::vector<bool> newFlags(const std::vector<std::string_view>& present,
                           const std::vector<std::string_view>& previous) {
  const std::unordered_set<std::string_view> seen(previous.begin(), previous.end());
  std::vector<bool> flags;
  flags.reserve(present.size());
  for (const auto identifier : present) flags.push_back(!seen.contains(identifier));
  return flags;
}

}  // namespace velmora
