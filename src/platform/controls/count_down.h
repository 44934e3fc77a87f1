#pragma once

#include <cstdint>
#include <string>

#include "platform/controls/simple_controls.h"
#include "platform/controls/timer.h"

namespace velmora {

/// Counts the seconds that a window still stands, and shows them on a label.
class CountDown {
 public:
  /// `timer`, which ticks once a second, and `label` live as long.
  CountDown(Timer& timer, Label& label) : timer_(timer), label_(label) {}

  /// Begins anew with a whole second, also where the timer runs.
  void Begin(std::int16_t seconds) {
    elapsed_ = 0;
    remaining_ = seconds;
    timer_.Enabled = false;
    timer_.Enabled = true;
    show();
  }

  /// A second is over. False where as many as `seconds`, which may have been changed meanwhile, were over before.
  bool GoOn(std::int16_t seconds) {
    if (elapsed_ >= seconds) return false;
    ++elapsed_;
    --remaining_;
    show();
    return true;
  }

 private:
  void show() { label_.Caption = std::to_string(remaining_); }

  Timer& timer_;
  Label& label_;
  std::int16_t remaining_ = 0;
  std::int16_t elapsed_ = 0;
};

}  // namespace velmora
