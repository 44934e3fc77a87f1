#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <optional>

#include "platform/pop/transport.h"

namespace velmora::pop {

/// Tells how long a server may still be waited for. Only waiting counts, not the time that the program itself is at
/// work. All of these end it:
/// - silence: the time-out without a byte;
/// - a status line that isn't complete after three time-outs;
/// - a limit on all answers of a phase together, where the phase has one;
/// - too little: fewer than `enough` bytes in a window of time.
///
/// The last tells a slow line from a trickle. A line of 2 KB a second, slower than any modem still in use, brings a
/// fifth more than enough, so that a message of any size comes in over it; a byte now and then brings next to nothing,
/// and would break the silence for ever. A server may also take its time before each of many small messages. So the
/// first line of an answer counts as a fifth of enough: an answer within each time-out fulfils it.
class Patience {
 public:
  static constexpr std::size_t enough = 100'000;
  static constexpr std::size_t statusLineCounts = enough / 5;

  explicit Patience(Milliseconds timeOut) : timeOut_(timeOut) { begin({}); }

  Milliseconds timeOut() const { return timeOut_; }

  /// What six answers may take, each after almost the whole time-out; at least as long as given.
  Milliseconds sixTimeOuts(Milliseconds least) const { return std::max(least, 6 * timeOut_); }

  /// A phase begins, whose answers together may take no longer than `limit`.
  void begin(std::optional<Milliseconds> limit) {
    phaseLeft_ = limit.value_or(endless);
    beginWindow();
  }

  void awaitStatusLine() {
    awaitMore();
    lineLeft_ = 3 * timeOut_;
  }
  void awaitMore() {
    silenceLeft_ = timeOut_;
    lineLeft_ = endless;
  }

  /// Time never comes back, whatever a clock says: nothing may grow beyond endless.
  void waited(Milliseconds time, std::size_t bytes) {
    time = std::max(time, Milliseconds::zero());
    for (Milliseconds* const left : {&silenceLeft_, &lineLeft_, &phaseLeft_, &windowLeft_}) *left -= time;
    if (bytes > 0) silenceLeft_ = timeOut_;
    count(bytes);
  }
  void statusLineCame() { count(statusLineCounts); }

  /// 0 or less where it is over.
  Milliseconds left() const { return std::min({silenceLeft_, lineLeft_, phaseLeft_, windowLeft_}); }

  /// It is over because too little came.
  bool isTrickle() const { return windowLeft_ <= Milliseconds::zero(); }

 private:
  static constexpr Milliseconds endless = Milliseconds::max();

  void count(std::size_t bytes) {
    windowBytes_ += bytes;
    if (isTrickle() && windowBytes_ >= enough) beginWindow();
  }

  void beginWindow() {
    windowLeft_ = sixTimeOuts(std::chrono::minutes(1));
    windowBytes_ = 0;
  }

  Milliseconds timeOut_;
  Milliseconds silenceLeft_ = endless;
  Milliseconds lineLeft_ = endless;
  Milliseconds phaseLeft_ = endless;
  Milliseconds windowLeft_ = endless;
  std::size_t windowBytes_ = 0;
};

}  // namespace velmora::pop
