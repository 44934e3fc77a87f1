#pragma once

namespace velmora {

struct Program;

/// How many dialogs are open that hold off what comes by itself. A tray on the bus can be used beneath them.
struct OpenDialogs {
  int count = 0;
};

/// A dialog comes up, or goes, which must not be overtaken by the checks that come by themselves, nor by the tray's
/// ways to other pages.
void OpenDialog(Program& program);
void CloseDialog(Program& program);

/// A dialog that is open for as long as this lives.
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
