#pragma once

#include <functional>

#include "platform/controls/property.h"

namespace velmora {

/// Ticks every `Interval` milliseconds while it is enabled.
struct Timer {
  Timer(int interval, bool enabled) : Interval(interval), Enabled(enabled) {}

  const int Interval;
  Property<bool> Enabled;
  std::function<void()> Tick;

  /// Called by the desktop when the interval has passed. A tick that falls into the timer's own handler is dropped;
  /// those of other timers come through.
  void tick() {
    if (!Enabled || inside_ || !Tick) return;
    struct Guard {
      bool& flag;
      ~Guard() { flag = false; }
    };
    inside_ = true;
    const Guard guard{inside_};
    Tick();
  }

 private:
  bool inside_ = false;
};

}  // namespace velmora
