#include "platform/qt/services/printer_reasons.h"

#include <string_view>

namespace velmora {

namespace {

/// Takes the end away, if it has it.
bool takeEnd(std::string_view& word, std::string_view end) {
  if (!word.ends_with(end)) return false;
  word.remove_suffix(end.size());
  return true;
}

/// What the print service notes for itself begins with its own name.
bool isNote(std::string_view reason) {
  return reason.empty() || reason == "none" || reason.starts_with("cups-") || reason.ends_with("-report");
}

}  // namespace

std::string troubleOf(const std::vector<std::string>& reasons, bool standsStill) {
  std::string words;
  for (std::string_view reason : reasons) {
    if (isNote(reason)) continue;
    if (takeEnd(reason, "-warning") && !standsStill) continue;
    takeEnd(reason, "-error");
    if (!words.empty()) words += ' ';
    words += reason;
  }
  return words;
}

}  // namespace velmora
