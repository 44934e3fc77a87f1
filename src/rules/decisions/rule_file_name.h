#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// The name of a Rules file that is made of another: "Rules" stands in front instead of elsewhere. Of what was given,
/// the first five "Rules" go and then the first four "Rule", in these letters alone.
std::string rulesPrefixed(std::string_view name);

/// With ".ini" behind it, unless it ends so, in small letters.
std::string withIniEnding(const std::string& name);

/// Why no Rules file can have this name, in words for the user; blank where one can. A name that can be has no folder
/// in it, nothing that disguises it, and room for the draft beside its file.
std::string_view faultOfFileName(std::string_view name);

}  // namespace velmora
