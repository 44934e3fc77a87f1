#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/date_time.h"

namespace velmora {

/// What is told of a part that is attached to a message.
struct Attachment {
  std::string name;  ///< as the sender gives it, decoded, in one line of 255 bytes at most; blank where he doesn't
  std::string kind;  ///< "image/png", in small letters, of 100 bytes at most
  std::int64_t bytes = 0;  ///< once it is decoded, more or less

  bool operator==(const Attachment&) const = default;
};

/// What the program needs of one message. All texts are UTF-8 but Raw, which holds the bytes as they came.
struct ReadMail {
  std::string From;     ///< display form of all senders, decoded, in one line without control characters
  std::string To;       ///< display form of all recipients, decoded, in one line; blank where there are none
  std::string Subject;  ///< decoded, in one line without control characters
  DateTime Date;        ///< local time
  std::string Raw;      ///< the header block as it came, without the blank line that ends it
  std::string Body;     ///< the text of the message, line ends CR LF
  std::string Sender;   ///< the bare address of the last sender, "local@domain" without blanks, quotes or brackets, of
                        ///< 320 bytes at most; blank where it is none that can be told for sure
  std::int16_t Attachments = 0;
  std::vector<Attachment> Attached;  ///< the first of them, mail_bounds::attached at most
};

/// Called every few milliseconds while a message is being read, so that the reader's caller can do what must not wait.
/// It may throw, which ends the reading. Never empty.
using Pause = std::function<void()>;

/// Reads Internet messages (RFC 5322, MIME). Never fails: what can't be understood is left blank or given as it came,
/// and what is too long is cut (mail_bounds.h).
class MailReader {
 public:
  virtual ~MailReader() = default;

  /// `message` is a whole message as octets, or just its header block. `now` stands in for a date where the message
  /// holds none that can be read.
  virtual ReadMail read(std::string_view message, const DateTime& now, const Pause& pause) const = 0;

  /// The content of the attachment that stands at this place, from 0, in `Attached` of the same message: its bytes
  /// once the transfer encoding is undone, of an attached message all of it. Nothing where there is none.
  virtual std::optional<std::string> attachment(std::string_view message, std::size_t place,
                                                const Pause& pause) const = 0;

  /// A short text that is the same for the same bytes and practically never for others.
  virtual std::string fingerprint(std::string_view bytes) const = 0;
};

}  // namespace velmora
