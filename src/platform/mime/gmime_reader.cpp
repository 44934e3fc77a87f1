#include "platform/mime/gmime_reader.h"

#include <gmime/gmime.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <limits>
#include <utility>
#include <vector>

#include "platform/mail_bounds.h"
#include "platform/mime/addresses.h"
#include "platform/mime/attachments.h"
#include "platform/mime/body.h"
#include "platform/mime/encoded_words.h"
#include "platform/mime/entity.h"
#include "platform/mime/glib_ptr.h"
#include "platform/mime/message_date.h"
#include "platform/mime/part_text.h"
#include "platform/mime/reading.h"
#include "platform/mime/utf8.h"
#include "platform/text.h"

namespace velmora {

namespace {

/// Encoded words take up to about four times the room of their text.
constexpr std::size_t MaxEncodedLine = 4 * GmimeReader::MaxLine;
constexpr std::size_t MaxDate = 1000;

/// What reading a date costs, as bytes of other work.
constexpr std::size_t dateWork = std::size_t{4} * 1024;

/// The library counts its users, but not safely across threads: one for the whole program will do.
struct Library {
  Library() { g_mime_init(); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() { g_mime_shutdown(); }
};

/// All fields of a name as one list, or the beginning of it.
struct AddressFields {
  std::string Text;
  bool IsWhole = true;
};

AddressFields addressFields(const std::vector<mime::Field>& fields, std::string_view name) {
  AddressFields joined;
  for (const mime::Field& field : fields) {
    if (!text::equalsIgnoringCase(field.Name, name) || field.Value.empty()) continue;
    joined.IsWhole = joined.Text.size() + field.Value.size() < MaxEncodedLine;
    if (!joined.Text.empty()) joined.Text += ",";
    joined.Text += mime::unfold(field.Value, MaxEncodedLine);
    if (!joined.IsWhole) break;
  }
  return joined;
}

std::string addresses(mime::Reading& reading, const AddressFields& joined) {
  return mime::oneLine(mime::displayAddresses(reading, joined.Text), GmimeReader::MaxLine);
}

std::string sender(mime::Reading& reading, const AddressFields& from) {
  return from.IsWhole ? mime::senderAddress(reading, from.Text) : std::string();
}

std::string subject(mime::Reading& reading, const std::vector<mime::Field>& fields) {
  const std::string value = mime::unfold(mime::valueOf(fields, "Subject"), MaxEncodedLine);
  return mime::oneLine(mime::decodedText(reading, value), GmimeReader::MaxLine);
}

/// Some programs encode it as if it were text.
std::optional<DateTime> decodedDate(mime::Reading& reading, std::string_view value) {
  const std::string date = mime::unfold(value, MaxDate);
  return mime::parseDate(date.find("=?") == std::string::npos ? date : mime::decodedText(reading, date));
}

/// The date of a Received header stands behind its last semicolon, but for those in comments that follow it.
std::optional<DateTime> receivedDate(std::string_view value) {
  constexpr int mostSemicolons = 4;
  auto semicolon = value.rfind(';');
  for (int i = 0; i < mostSemicolons && semicolon != std::string_view::npos; ++i) {
    const std::string tail = mime::unfold(value.substr(semicolon + 1), MaxDate);
    if (const auto date = mime::parseDate(tail, mime::TimeOfDay::Needed)) return date;
    if (semicolon == 0) break;
    semicolon = value.rfind(';', semicolon - 1);
  }
  return std::nullopt;
}

/// The first field of this name that has one, of so many at most.
template <class Read>
std::optional<DateTime> firstDate(mime::Reading& reading, const std::vector<mime::Field>& fields, std::string_view name,
                                  int most, const Read& read) {
  for (const mime::Field& field : fields) {
    if (!text::equalsIgnoringCase(field.Name, name)) continue;
    if (most-- == 0) break;
    reading.worked(dateWork);
    if (const auto date = read(field.Value)) return date;
  }
  return std::nullopt;
}

/// Each server puts its own Received header on top, so that the first one is the newest.
DateTime date(mime::Reading& reading, const std::vector<mime::Field>& fields, const DateTime& now) {
  constexpr int mostDates = 4;
  constexpr int mostServers = 100;
  const auto decoded = [&reading](std::string_view value) { return decodedDate(reading, value); };
  if (const auto sent = firstDate(reading, fields, "Date", mostDates, decoded)) return *sent;
  return firstDate(reading, fields, "Received", mostServers, receivedDate).value_or(now);
}

/// That of the first text that names one, else that of the message.
std::string charsetOf(const mime::Parts& parts) {
  for (const mime::Part& part : parts) {
    if (part.Is != mime::Role::Plain && part.Is != mime::Role::Html) continue;
    if (std::string charset = mime::charsetOf(part); !charset.empty()) return charset;
  }
  return parts.front().Charset;
}

std::string rawOf(std::string_view header) {
  // One byte more, so that it shows that there is more.
  std::string raw(header.substr(0, mail_bounds::raw + 1));
  mail_bounds::cut(raw, mail_bounds::raw, mail_bounds::rawMark);
  return raw;
}

std::int16_t clamped(std::size_t count) {
  constexpr std::size_t most = std::numeric_limits<std::int16_t>::max();
  return static_cast<std::int16_t>(std::min(count, most));
}

std::vector<Attachment> described(mime::Reading& reading, const std::vector<const mime::Part*>& attached) {
  std::vector<Attachment> told;
  for (const mime::Part* const part : attached) {
    if (told.size() == mail_bounds::attached) break;
    told.push_back(mime::describe(reading, *part));
  }
  return told;
}

}  // namespace

GmimeReader::GmimeReader() : converters_(std::make_unique<mime::Converters>()) {
  static const Library library;
  // The system is asked for its zone here alone, since that may take longer than the rest of a small message.
  tzset();
}

GmimeReader::~GmimeReader() = default;

ReadMail GmimeReader::read(std::string_view message, const DateTime& now, const Pause& pause) const {
  converters_->startMessage();
  mime::Reading reading(*converters_, pause);
  const mime::Entity entity = mime::splitEntity(reading, message);
  const std::vector<mime::Field> fields = mime::fieldsOf(reading, entity.Header);
  const AddressFields from = addressFields(fields, "From");
  const mime::Parts parts = mime::partsOf(reading, entity, fields);
  const std::vector<const mime::Part*> attached = mime::attachmentsOf(reading, parts);
  if (!mime::isUtf8(entity.Header)) reading.charset = charsetOf(parts);
  return {.From = addresses(reading, from),
          .To = addresses(reading, addressFields(fields, "To")),
          .Subject = subject(reading, fields),
          .Date = date(reading, fields, now),
          .Raw = rawOf(entity.Header),
          .Body = mime::bodyOf(reading, parts),
          .Sender = sender(reading, from),
          .Attachments = clamped(attached.size()),
          .Attached = described(reading, attached)};
}

std::optional<std::string> GmimeReader::attachment(std::string_view message, std::size_t place,
                                                   const Pause& pause) const {
  converters_->startMessage();
  mime::Reading reading(*converters_, pause);
  const mime::Entity entity = mime::splitEntity(reading, message);
  const mime::Parts parts = mime::partsOf(reading, entity, mime::fieldsOf(reading, entity.Header));
  const std::vector<const mime::Part*> attached = mime::attachmentsOf(reading, parts);
  if (place >= std::min(attached.size(), mail_bounds::attached)) return std::nullopt;
  return mime::contentOf(reading, *attached[place]);
}

std::string GmimeReader::fingerprint(std::string_view bytes) const {
  const mime::TextPtr digest(
      g_compute_checksum_for_data(G_CHECKSUM_SHA256, reinterpret_cast<const guchar*>(bytes.data()), bytes.size()));
  return digest.get();
}

}  // namespace velmora
