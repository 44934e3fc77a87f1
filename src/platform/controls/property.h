#pragma once

#include <concepts>
#include <cstddef>
#include <deque>
#include <functional>
#include <utility>

namespace velmora {

/// Something that others may wait for. Watchers stay for as long as the signal lives.
template <class... Args>
class Signal {
 public:
  void watch(std::function<void(Args...)> watcher) { watchers_.push_back(std::move(watcher)); }

  void raise(Args... args) const {
    // By index: a watcher may add another one.
    for (std::size_t i = 0; i < watchers_.size(); ++i) watchers_[i](args...);
  }

 private:
  std::deque<std::function<void(Args...)>> watchers_;  // one more moves none, which may be running
};

/// A value of a control. Setting it to the value that it has does nothing; a change is told to all watchers, whoever
/// made it.
template <class T>
class Property {
 public:
  Property() = default;
  template <class U>
  requires std::convertible_to<U, T>
  // NOLINTNEXTLINE(bugprone-forwarding-reference-overload, google-explicit-constructor): initial values read as values
  Property(U&& initial) : value_(std::forward<U>(initial)) {}
  Property(const Property&) = delete;

  Property& operator=(const Property&) = delete;
  template <class U>
  // NOLINTNEXTLINE(misc-unconventional-assign-operator): takes values, and is no copy
  requires std::convertible_to<U, T> Property& operator=(U&& given) {
    T value = std::forward<U>(given);
    if (value == value_) return *this;
    value_ = std::move(value);
    changed_.raise(value_);
    return *this;
  }

  const T& get() const { return value_; }
  operator const T&() const { return value_; }  // NOLINT(google-explicit-constructor): reads as the value
  friend bool operator==(const Property& property, const T& value) { return property.value_ == value; }

  /// Calls `watcher` with the present value and again with every new one.
  void watch(std::function<void(const T&)> watcher) {
    watcher(value_);
    changed_.watch(std::move(watcher));
  }

 private:
  T value_{};
  Signal<const T&> changed_;
};

}  // namespace velmora
