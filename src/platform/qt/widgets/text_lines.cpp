#include "platform/qt/widgets/text_lines.h"

#include "platform/text.h"

namespace velmora {

namespace {

/// The layout's time grows with the square of a paragraph's length.
constexpr std::size_t MostOfALine = 2000;

/// Where a broken line has a blank in its last bytes, it is broken there.
constexpr std::size_t NearlyAll = MostOfALine - 200;

/// What a paragraph of its own holds of a line that needs several.
std::string_view brokenOff(std::string_view text) {
  const auto blank = text.find_last_of(' ', MostOfALine - 1);
  const bool nearby = blank != std::string_view::npos && blank >= NearlyAll;
  return text::leftBytes(text, nearby ? blank + 1 : MostOfALine);
}

}  // namespace

std::string_view firstLine(std::string_view text) {
  const auto end = text.substr(0, MostOfALine + 1).find_first_of("\r\n");
  if (end != std::string_view::npos) return text.substr(0, end + (text.substr(end, 2) == "\r\n" ? 2 : 1));
  return text.size() <= MostOfALine ? text : brokenOff(text);
}

bool isEnded(std::string_view line) { return line.ends_with('\n') || line.ends_with('\r'); }

}  // namespace velmora
