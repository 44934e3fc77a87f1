#pragma once

namespace velmora {

struct Program;

/// Holds off the checks that come by themselves, for as long as it lives: a dialog must not be overtaken by one.
class HoldTimers {
 public:
  /// `program` outlives it. Two don't nest.
  explicit HoldTimers(Program& program);
  ~HoldTimers();
  HoldTimers(const HoldTimers&) = delete;
  HoldTimers& operator=(const HoldTimers&) = delete;

 private:
  Program& program_;
};

}  // namespace velmora
