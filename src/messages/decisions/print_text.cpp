#include "messages/decisions/print_text.h"

#include <algorithm>
#include <string>

#include "messages/decisions/message_file.h"

namespace velmora {

namespace {

constexpr const char* lineEnd = "\r\n";

std::string rule() { return std::string(49, '_') + std::string(48, '_') + lineEnd + lineEnd; }

}  // namespace

std::vector<PrintRun> printRuns(const MailMessage& message, bool rawShown) {
  std::vector<PrintRun> runs = {{"From:  ", true},      {message.From + lineEnd},    {"To:  ", true},
                                {message.To + lineEnd}, {"Date:  ", true},           {message.Date + lineEnd},
                                {"Subject:  ", true},   {message.Subject + lineEnd}, {rule()}};
  runs.push_back({rawShown ? rawText(message) : message.Body});  // in the list it would be copied once more
  return runs;
}

std::int32_t fitRichTextToPrinter(const Paper& paper, const PrintMargins& margins) {
  return paper.width - margins.left - margins.right;
}

PrintArea printArea(const Paper& paper, std::int32_t lineWidth, const PrintMargins& margins) {
  const std::int32_t left = std::max(margins.left, paper.left);
  const std::int32_t top = std::max(margins.top, paper.top);
  const std::int32_t right = paper.width - std::max(margins.right, paper.right);
  const std::int32_t bottom = paper.height - std::max(margins.bottom, paper.bottom);
  return {.left = left, .top = top, .width = std::min(lineWidth, right - left), .height = bottom - top};
}

}  // namespace velmora
