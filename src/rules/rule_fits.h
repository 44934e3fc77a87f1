#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "rules/decisions/rules.h"

namespace velmora {

struct Program;

/// Which of the messages in the lists the rule showing on the page would fit, as it stands there. They are gone through
/// while nothing else is to be done, and nothing is fetched for it.
struct RuleFits {
  struct Fit {
    std::int16_t account;
    std::int32_t message;  ///< one more than there can be, behind the last
  };

  Rule rule;       ///< the one that is tried
  Fit next{1, 1};  ///< the message that comes next
  std::vector<Fit> fits;
  std::size_t messages = 0;
  std::size_t tried = 0;
  std::size_t failed = 0;  ///< of which the rule can't tell
};

/// Ties the controls that tell of it to what they do.
void ConnectRuleFits(Program& program);

/// Begins to try the rule showing, unless that is the one being tried, or stops where there is none to try, the page
/// isn't showing, or messages may change. To be called where any of that may have changed.
void CountRuleFits(Program& program);

/// The messages, or their order, are others now.
void RecountRuleFits(Program& program);

/// Closes the list of the messages, if it is open.
void frmRuleFits_Unload(Program& program);

}  // namespace velmora
