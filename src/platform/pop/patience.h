#pragma once

#include <algorithm>
#include <cstddef>

#include "platform/pop/transport.h"

namespace velmora::pop {

/// Tells how long an answer may still be waited for: the time-out without a byte, and three time-outs for any 256 bytes
/// of it, since a trickle is silence too.
class Patience {
 public:
  explicit Patience(Milliseconds timeOut) : timeOut_(timeOut) {}

  Milliseconds timeOut() const { return timeOut_; }
  void shorten(Milliseconds timeOut) { timeOut_ = std::min(timeOut_, timeOut); }

  /// An answer is awaited from now on.
  void start(Milliseconds now) {
    lastByte_ = stretchStart_ = now;
    stretchBytes_ = 0;
  }

  void came(std::size_t bytes, Milliseconds now) {
    lastByte_ = now;
    stretchBytes_ += bytes;
    if (stretchBytes_ < stretch) return;
    stretchStart_ = now;
    stretchBytes_ = 0;
  }

  /// 0 or less where it is over.
  Milliseconds left(Milliseconds now) const {
    return std::min(lastByte_ + timeOut_, stretchStart_ + 3 * timeOut_) - now;
  }

 private:
  static constexpr std::size_t stretch = 256;

  Milliseconds timeOut_;
  Milliseconds lastByte_{};
  Milliseconds stretchStart_{};
  std::size_t stretchBytes_ = 0;
};

}  // namespace velmora::pop
