#include "platform/mime/gmime_reader.h"

#include <gmime/gmime.h>

#include <utility>
#include <vector>

#include "platform/mime/addresses.h"
#include "platform/mime/encoded_words.h"
#include "platform/mime/entity.h"
#include "platform/mime/glib_ptr.h"
#include "platform/mime/message_content.h"
#include "platform/mime/message_date.h"
#include "platform/mime/utf8.h"
#include "platform/text.h"

namespace velmora {

namespace {

/// Encoded words take up to about four times the room of their text.
constexpr std::size_t MaxEncodedLine = 4 * GmimeReader::MaxLine;
constexpr std::size_t MaxDate = 1000;

/// The library counts its users, but not safely across threads: one for the whole program will do.
struct Library {
  Library() { g_mime_init(); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() { g_mime_shutdown(); }
};

std::string addresses(const std::vector<mime::Field>& fields, std::string_view name) {
  std::string joined;
  for (const mime::Field& field : fields) {
    if (!text::equalsIgnoringCase(field.Name, name) || field.Value.empty()) continue;
    if (!joined.empty()) joined += ",";
    joined += mime::unfold(field.Value, MaxEncodedLine);
    if (joined.size() >= MaxEncodedLine) break;
  }
  return mime::oneLine(mime::displayAddresses(joined), GmimeReader::MaxLine);
}

std::string subject(const std::vector<mime::Field>& fields) {
  const std::string value = mime::unfold(mime::valueOf(fields, "Subject"), MaxEncodedLine);
  return mime::oneLine(mime::decodedText(value), GmimeReader::MaxLine);
}

/// The date of a Received header stands behind its last semicolon.
std::optional<DateTime> receivedDate(std::string_view value) {
  const auto semicolon = value.rfind(';');
  if (semicolon == std::string_view::npos) return std::nullopt;
  return mime::parseDate(mime::unfold(value.substr(semicolon + 1), MaxDate));
}

DateTime date(const std::vector<mime::Field>& fields, const DateTime& now) {
  if (const auto sent = mime::parseDate(mime::unfold(mime::valueOf(fields, "Date"), MaxDate))) return *sent;
  for (const mime::Field& field : fields) {
    if (!text::equalsIgnoringCase(field.Name, "Received")) continue;
    if (const auto received = receivedDate(field.Value)) return *received;
  }
  return now;
}

}  // namespace

GmimeReader::GmimeReader(std::function<std::string(std::string_view html)> htmlToText)
    : htmlToText_(std::move(htmlToText)) {
  static const Library library;
}

ReadMail GmimeReader::read(std::string_view message, const DateTime& now, const Pause& /*pause*/) const {
  const mime::Entity entity = mime::splitEntity(message);
  const std::vector<mime::Field> fields = mime::fieldsOf(entity.Header);
  mime::MessageContent content = mime::readContent(entity, htmlToText_);
  return {.From = addresses(fields, "From"),
          .To = addresses(fields, "To"),
          .Subject = subject(fields),
          .Date = date(fields, now),
          .Raw = std::string(entity.Header),
          .Body = std::move(content.Body),
          .Attachments = content.Attachments};
}

std::string GmimeReader::fingerprint(std::string_view bytes) const {
  const mime::TextPtr digest(
      g_compute_checksum_for_data(G_CHECKSUM_SHA256, reinterpret_cast<const guchar*>(bytes.data()), bytes.size()));
  return digest.get();
}

}  // namespace velmora
