#pragma once

#include <functional>

namespace velmora {

struct Options;
struct OptionsPage;

/// Shows the options on the controls of the page, each on its own.
void ShowOptionInputs(OptionsPage& page, const Options& options);

/// Told of a control whose value has changed, be it by the program: whether it is on, and what brings the value into
/// the options.
using InputChanged = std::function<void(bool isOn, const std::function<void(Options&)>& take)>;

/// Has all controls tell of their changes.
void WatchOptionInputs(OptionsPage& page, const InputChanged& changed);

}  // namespace velmora
