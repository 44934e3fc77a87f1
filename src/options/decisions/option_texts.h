#pragma once

#include <array>
#include <string>
#include <string_view>

#include "options/decisions/options.h"
#include "platform/platform.h"

namespace velmora {

/// What the Options page says of the present settings, by the control that each text belongs to.
struct OptionTexts {
  std::string RunStartUp;
  std::string EmailCheckStartUp;
  std::string MinimizeStartUp;
  std::string UseInterval;
  std::string DefaultClient;
  std::array<std::string, 2> PlaySound;  ///< for which accounts one plays, and when
  std::array<std::string, 3> MenuColours;
};

/// Whether the two defaults are there.
struct ValidDefaults {
  bool client = false;
  bool sound = false;
};
OptionTexts optionTexts(const Options& edit, const ValidDefaults& valid, std::string_view appTitle);

/// What is to become of changed options that the user is about to leave.
Question optionsNotSaved();

/// What is said where a sound can't be tried, since it is none, or since nothing can be heard.
Question soundError(std::string_view appTitle);
Question soundUnheard(std::string_view appTitle);

/// What is said where the protocol log can't be begun.
Question protocolLogError(std::string_view appTitle, std::string_view path);

}  // namespace velmora
