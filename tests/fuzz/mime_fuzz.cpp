#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/mail_bounds.h"
#include "platform/mime/gmime_reader.h"
#include "platform/mime/utf8.h"

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

bool isUtf8(const std::string& text) { return velmora::mime::toUtf8(text) == text; }

bool isOneLine(const std::string& text) {
  return text.find_first_of(std::string_view("\0\t\r\n\x1B\x7F", 6)) == std::string::npos;
}

bool hasNetworkLineEnds(std::string_view text) {
  for (auto at = text.find_first_of("\r\n"); at != text.npos; at = text.find_first_of("\r\n", at + 2))
    if (text.substr(at, 2) != "\r\n") return false;
  return true;
}

bool isSender(const std::string& sender) {
  return sender.empty() || (isUtf8(sender) && sender.size() <= 320 && std::ranges::count(sender, '@') == 1 &&
                            sender.find_first_of(std::string_view(" \"(),:;<>[\\]\0\r\n", 15)) == std::string::npos);
}

/// Each that is told of has a content, and no other place has.
void requireAttachments(const velmora::GmimeReader& reader, std::string_view message, const velmora::ReadMail& mail) {
  const std::size_t told = mail.Attached.size();
  require(told == std::min(static_cast<std::size_t>(mail.Attachments), velmora::mail_bounds::attached));
  for (std::size_t i = 0; i < told; ++i) {
    const auto& [name, kind, bytes] = mail.Attached[i];
    require(isUtf8(name) && isOneLine(name) && name.size() <= 255);
    require(kind.size() <= 100 && kind.find('/') != kind.npos && isOneLine(kind));
    const auto content = reader.attachment(message, i, [] {});
    require(content && bytes >= 0 && content->size() <= message.size());
  }
  require(!reader.attachment(message, told, [] {}));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const velmora::GmimeReader reader;
  const std::string_view message(reinterpret_cast<const char*>(data), size);
  const velmora::DateTime now = {.year = 2030, .month = 6, .day = 1};
  const velmora::ReadMail mail = reader.read(message, now, [] {});
  for (const std::string* line : {&mail.From, &mail.To, &mail.Subject}) {
    require(isUtf8(*line) && isOneLine(*line));
    require(line->size() <= velmora::GmimeReader::MaxLine);
  }
  require(isUtf8(mail.Body) && hasNetworkLineEnds(mail.Body));
  require(velmora::isValid(mail.Date));
  require(message.starts_with(mail.Raw));
  require(isSender(mail.Sender));
  requireAttachments(reader, message, mail);
  return 0;
}
