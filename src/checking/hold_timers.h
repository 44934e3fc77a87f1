#pragma once

namespace velmora {

struct Program;

/// How many dialogs are open that hold off what comes by itself. A tray on the bus can be used beneath them.
struct OpenDialogs {
  int count = 0;
};

/// Holds off the checks that come by themselves, and the tray's ways to other pages, for as long as it lives: a dialog
/// must not be overtaken by them.
class HoldTimers {
 public:
  /// `program` outlives it.
  explicit HoldTimers(Program& program);
  ~HoldTimers();
  HoldTimers(const HoldTimers&) = delete;
  HoldTimers& operator=(const HoldTimers&) = delete;

 private:
  Program& program_;
};

}  // namespace velmora
