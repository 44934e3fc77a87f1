#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "platform/mime/reading.h"

namespace velmora::mime {

/// The encoding that a text in this charset has which is said to have `encoding`: none where it is said to be base64
/// and isn't.
std::string_view textEncoding(std::string_view content, std::string_view encoding, std::string_view charset);

/// The same for a file of a text's kind, which may hold anything: all that counts is whether it looks like base64.
std::string_view fileEncoding(std::string_view content, std::string_view encoding);

/// Undoes a transfer encoding (base64, quoted-printable, uuencode in any of their names; all else is taken as it is),
/// slice by slice. What breaks the encoding is passed over.
class TransferDecoder {
 public:
  TransferDecoder(std::string_view content, std::string_view encoding);
  ~TransferDecoder();
  TransferDecoder(const TransferDecoder&) = delete;
  TransferDecoder& operator=(const TransferDecoder&) = delete;

  bool atEnd() const { return content_.empty(); }

  /// What about `maxBytes` more of the content hold, at most a few more than that.
  std::string next(std::size_t maxBytes);

 private:
  struct State;

  std::string_view content_;
  std::unique_ptr<State> state_;  ///< none where there is nothing to undo
};

/// About as many bytes as the decoder brings in all, found without decoding: of base64 just as many where nothing
/// breaks the encoding.
std::size_t decodedSize(Reading& reading, std::string_view content, std::string_view encoding);

/// The same for a content that is taken as a whole.
std::string decodeTransfer(std::string_view content, std::string_view encoding);

/// Undoes the escapes of URLs and of parameters ("%20", RFC 3986 section 2.1). What is none stays as it is.
std::string decodePercent(std::string_view text);

}  // namespace velmora::mime
