#include "messages/decisions/original_texts.h"

#include <algorithm>

#include "messages/decisions/message_file.h"
#include "platform/ascii.h"

namespace velmora {

namespace {

std::string reasonOf(OriginalTrouble trouble) {
  switch (trouble) {
    case OriginalTrouble::NoIdentifier:
      return "Its server gives it no identifier, so that it can't be told from other messages.";
    case OriginalTrouble::Gone:
      return "Its server has it no longer.";
    case OriginalTrouble::NotUnique:
      return "Its server has several messages with the same identifier,\r\nso that they can't be told apart.";
    case OriginalTrouble::TooLong:
      return "It is too long to take an attachment out of it.\r\nPlease save the original message instead.";
    case OriginalTrouble::NoAttachment:
      return "The attachment is not in what the server sent.";
    case OriginalTrouble::NotWritten:
      return "The file could not be written.";
    case OriginalTrouble::Busy:
      return "Velmora is busy with something else.\r\nPlease try again when it is done.";
  }
  return {};
}

bool isLetterOrDigit(char c) { return ascii::isLetter(c) || ascii::isDigit(c); }

/// With its dot, blank where the name has none that a kind of file could have.
std::string endingOf(const std::string& name) {
  constexpr std::size_t longest = 10;
  const auto dot = name.rfind('.');
  if (dot == std::string::npos || dot == 0) return {};
  const std::string ending = name.substr(dot);
  const bool isOne =
      ending.size() > 1 && ending.size() <= longest && std::all_of(ending.begin() + 1, ending.end(), isLetterOrDigit);
  return isOne ? ending : std::string();
}

std::string kilobytes(std::int64_t bytes) {
  constexpr std::int64_t kilo = 1000;
  return bytes < kilo ? "less than 1 KB" : std::to_string((bytes + kilo / 2) / kilo) + " KB";
}

}  // namespace

Question originalNotSaved(std::string_view appTitle, OriginalTrouble trouble) {
  return {"Nothing was saved.\r\n\r\n" + reasonOf(trouble) + "\r\n", std::string(appTitle) + " - Not Saved"};
}

FileQuestion originalQuestion(std::string_view subject) {
  return {.name = proposedFileName(subject), .filter = "Email Message (*.eml)|*.eml|", .forUser = true};
}

FileQuestion attachmentQuestion(const Attachment& attachment) {
  const bool isMessage = attachment.name.empty() && attachment.kind == "message/rfc822";
  std::string name = isMessage ? "message.eml" : proposedFileName(attachment.name);
  name.erase(0, std::min(name.find_first_not_of(" .-"), name.size()));  // or all behind a dot would be its ending
  const std::string ending = endingOf(name);
  return {.name = name.empty() ? "attachment" : name,
          .filter = (ending.empty() ? "" : "Attachment (*" + ending + ")|*" + ending + "|") + "All Files (*)|*|",
          .forUser = true};
}

std::vector<std::string> attachmentLines(const std::vector<Attachment>& attached) {
  std::vector<std::string> lines;
  for (const Attachment& each : attached) {
    const std::string name = each.name.empty() ? "no name" : each.name;
    lines.push_back(std::to_string(lines.size() + 1) + ". " + name + " (" + each.kind + ", " + kilobytes(each.bytes) +
                    ")");
  }
  return lines;
}

}  // namespace velmora
