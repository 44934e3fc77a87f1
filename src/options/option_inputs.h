#pragma once

#include <functional>

namespace velmora {

struct Options;
struct OptionsPage;

/// Shows the options on the controls of the page, each on its own.
void ShowOptionInputs(OptionsPage& page, const Options& options);

/// Calls `changed` whenever the value of a control has changed, be it by the program, with what brings that value into
/// the options.
void WatchOptionInputs(OptionsPage& page, std::function<void(const std::function<void(Options&)>& take)> changed);

}  // namespace velmora
