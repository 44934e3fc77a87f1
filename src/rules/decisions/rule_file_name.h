#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// The name of the Rules file that a user means by `given`: "Rules" stands in front instead of elsewhere, and ".ini"
/// at the end. Of what was given, the first five "Rules" go and then the first four "Rule", in these letters alone.
std::string ruleFileName(std::string_view given);

/// Why no Rules file can have this name, in words for the user; blank where one can. A name that can be has no folder
/// in it, nothing that disguises it, and room for the draft beside its file.
std::string_view faultOfFileName(std::string_view name);

}  // namespace velmora
