#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/mail_reader.h"

namespace velmora {

namespace mime {
class Converters;
}

/// Reads messages of any making, however broken or hostile: in time that grows with their size alone, without ever
/// failing. From, To and Subject end after `MaxLine` bytes. The pause may not have the same reader read.
class GmimeReader : public MailReader {
 public:
  static constexpr std::size_t MaxLine = std::size_t{64} * 1024;

  GmimeReader();
  ~GmimeReader() override;
  GmimeReader(const GmimeReader&) = delete;
  GmimeReader& operator=(const GmimeReader&) = delete;

  ReadMail read(std::string_view message, const DateTime& now, const Pause& pause) const override;
  std::optional<std::string> attachment(std::string_view message, std::size_t place, const Pause& pause) const override;
  std::string fingerprint(std::string_view bytes) const override;

 private:
  std::unique_ptr<mime::Converters> converters_;
};

}  // namespace velmora
