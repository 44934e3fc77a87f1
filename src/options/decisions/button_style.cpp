#include "options/decisions/button_style.h"

namespace velmora {

std::optional<RaisedBars> raisedBars(const Options& options) {
  if (options.ButtonStyle != 1) return RaisedBars{};
  switch (options.ApplyStyle) {
    case 0:
      return RaisedBars{.lower = true};
    case 1:
      return RaisedBars{.upper = true};
    case 2:
      return RaisedBars{.intermediate = true};
    case 3:
      return RaisedBars{.upper = true, .intermediate = true, .lower = true};
    default:
      return std::nullopt;
  }
}

}  // namespace velmora
