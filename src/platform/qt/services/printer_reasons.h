#pragma once

#include <string>
#include <vector>

namespace velmora {

/// Those of the keywords by which a printer explains its state (RFC 8011 section 5.4.12) that need a person, without
/// how grave they are, with blanks between. A printer that stands still may do so because of what is else only a
/// warning.
std::string troubleOf(const std::vector<std::string>& reasons, bool standsStill);

}  // namespace velmora
