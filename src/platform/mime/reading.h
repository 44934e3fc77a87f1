#pragma once

#include <cstddef>
#include <string>

#include "platform/mail_reader.h"
#include "platform/mime/converters.h"

namespace velmora::mime {

/// What the functions share that read one message. The references outlive it.
class Reading {
 public:
  Reading(Converters& shared, const Pause& pause) : converters(shared), pause_(pause) {}

  /// Told of the work that was done, in bytes looked at, so that the reader pauses every few milliseconds. What takes
  /// longer for its bytes tells of more. May throw what the pause throws.
  void worked(std::size_t bytes) {
    done_ += bytes;
    if (done_ < betweenPauses) return;
    done_ = 0;
    pause_();
  }

  /// As many bytes as are read at once, where there are more.
  static constexpr std::size_t slice = std::size_t{64} * 1024;

  Converters& converters;

  /// The charset of the message's text, for bytes in its header that should be ASCII or UTF-8 and aren't.
  std::string charset = {};

 private:
  static constexpr std::size_t betweenPauses = 4 * slice;

  const Pause& pause_;
  std::size_t done_ = 0;
};

}  // namespace velmora::mime
