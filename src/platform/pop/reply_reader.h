#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace velmora::pop {

/// A status line (RFC 1939 section 3).
struct Reply {
  bool ok = false;   ///< "+OK", else "-ERR"
  std::string text;  ///< what stands behind it, as it came
};

/// A message as the server handed it out, undotted, with its line ends as they came.
struct Delivery {
  std::string text;        ///< the first mail_bounds::message bytes of it
  std::int64_t bytes = 0;  ///< all of them

  bool isCut() const { return bytes > static_cast<std::int64_t>(text.size()); }
};

/// Takes a server's bytes apart, without any input or output of its own. The caller says what must come next: a status
/// line, the lines of a listing or a message. Lines end in CR LF or LF; NUL and 8-bit bytes pass. Whatever breaks the
/// protocol or a bound throws PopFailure with protocolBroken; nothing more may be read then.
class ReplyReader {
 public:
  static constexpr std::size_t maximumStatusLine = 8192;
  static constexpr std::size_t maximumListLine = 1024;
  static constexpr std::size_t maximumListLines = 200'000;
  static constexpr std::size_t maximumListing = std::size_t{32} << 20U;
  static constexpr std::int64_t maximumMessage = std::numeric_limits<std::int32_t>::max();

  /// `secret` is never to be shown in a failure's text.
  explicit ReplyReader(std::string secret = {}) : secret_(std::move(secret)) {}

  void feed(std::string_view bytes);

  /// The next status line, or nothing while it is incomplete. Blank lines before it are skipped: some servers send one
  /// ahead of the greeting, or behind a message's end. What can't become a status line fails at its first byte.
  std::optional<Reply> status();

  /// Hands out the complete lines of a listing, undotted and without line ends. True when its final dot was among them.
  bool lines(const std::function<void(std::string_view)>& each);

  using Take = std::function<void(std::string_view)>;

  /// Hands out what is there of a message, undotted, with its line ends as they came. True when its end was among it.
  bool message(const Take& take);

  /// A whole message, or nothing while it is incomplete.
  std::optional<Delivery> message();

  /// Bytes of the message that is incomplete as yet.
  std::int64_t messageBytes() const { return messageBytes_; }

  /// "What happened." followed by the server's own words, without the secret.
  std::string quote(std::string_view what, std::string_view words) const;

  /// What was fed and not yet read.
  std::string_view pending() const { return std::string_view(buffer_).substr(position_); }

 private:
  enum class LineStart { Incomplete, Text, End };

  void skipBlankLines();
  Reply parseStatus(std::string_view line) const;
  std::optional<std::string_view> line(std::size_t maximum);
  LineStart lineStart();
  std::string_view messageLines();

  std::string secret_;
  std::string buffer_;
  std::size_t position_ = 0;
  std::size_t blankBytes_ = 0;
  std::size_t listLines_ = 0;
  std::size_t listBytes_ = 0;
  std::string messageText_;
  std::int64_t messageBytes_ = 0;
  bool atLineStart_ = true;
};

}  // namespace velmora::pop
