#pragma once

#include <utility>

namespace velmora {

/// Gives a value another one for as long as this lives, and then the former one back.
template <class T>
class SetForNow {
 public:
  SetForNow(T& value, T forNow) : value_(value), former_(std::exchange(value, std::move(forNow))) {}
  SetForNow(const SetForNow&) = delete;
  SetForNow& operator=(const SetForNow&) = delete;
  ~SetForNow() { value_ = std::move(former_); }

 private:
  T& value_;
  T former_;
};

}  // namespace velmora
