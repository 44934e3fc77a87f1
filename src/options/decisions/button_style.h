#pragma once

#include <optional>

#include "options/decisions/options.h"

namespace velmora {

/// Which toolbars show their buttons raised.
struct RaisedBars {
  bool upper = false;         ///< the main buttons and those above a page
  bool intermediate = false;  ///< those within a page
  bool lower = false;         ///< those below a page, and those of the other windows

  bool operator==(const RaisedBars&) const = default;
};

/// Nothing where the options ask for groups that there are none of: then all stay as they are.
std::optional<RaisedBars> raisedBars(const Options& options);

}  // namespace velmora
