#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "platform/mail_reader.h"

namespace velmora {

/// Reads messages of any making, however broken or hostile: in time that grows with their size alone, without ever
/// failing. From, To and Subject end after `MaxLine` bytes, the body after 64 MiB; `htmlToText` gets 1 MiB at most.
class GmimeReader : public MailReader {
 public:
  static constexpr std::size_t MaxLine = std::size_t{64} * 1024;

  /// `htmlToText` gives the text of valid UTF-8 HTML.
  explicit GmimeReader(std::function<std::string(std::string_view html)> htmlToText);

  ReadMail read(std::string_view message, const DateTime& now, const Pause& pause) const override;
  std::string fingerprint(std::string_view bytes) const override;

 private:
  std::function<std::string(std::string_view html)> htmlToText_;
};

}  // namespace velmora
