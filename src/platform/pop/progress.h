#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <utility>

#include "platform/pop/transport.h"

namespace velmora::pop {

/// As many bytes as the program counts.
inline std::int32_t clamped(std::int64_t bytes) {
  return static_cast<std::int32_t>(std::min<std::int64_t>(bytes, std::numeric_limits<std::int32_t>::max()));
}

/// Tells how many bytes of a job have come, not too often. The position never falls and may pass the total.
class Progress {
 public:
  using Tell = std::function<void(std::int32_t position, std::int32_t total)>;

  explicit Progress(Tell tell) : tell_(std::move(tell)) {}

  void expect(std::int64_t total) { total_ = total; }
  void reach(std::int64_t position) { position_ = std::max(position_, position); }

  void tellNow(Milliseconds now) {
    next_ = now + pause;
    tell_(clamped(position_), clamped(total_));
  }
  void tellWhereDue(Milliseconds now) {
    if (now >= next_) tellNow(now);
  }

 private:
  static constexpr Milliseconds pause{50};

  Tell tell_;
  std::int64_t position_ = 0;
  std::int64_t total_ = 0;
  Milliseconds next_ = Milliseconds::min();
};

}  // namespace velmora::pop
