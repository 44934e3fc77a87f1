#pragma once

namespace velmora {

class IniFile;
struct Rules;

/// Fills the live set from a Rules file, with room for as many in the working set. What is missing, or is no number
/// where one belongs, gets the value of a fresh rule.
void readRules(IniFile& file, Rules& rules);

/// Brings the working set into the live one, and writes it into a file that holds nothing else. Throws
/// subscriptFailure, with nothing done, where the working set has no room for its RuleCount.
void writeRules(IniFile& file, Rules& rules);

}  // namespace velmora
