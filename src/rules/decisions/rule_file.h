#pragma once

namespace velmora {

class IniFile;
struct Rules;

/// Fills the live set from a Rules file, with room for as many in the working set. What is missing, or is no number
/// where one belongs, gets the value of a fresh rule.
void readRules(IniFile& file, Rules& rules);

/// Writes the working set into a file that holds nothing else. Returns false where the file can't be written. Throws
/// subscriptFailure where the working set has no room for its RuleCount.
bool writeRules(IniFile& file, const Rules& rules);

}  // namespace velmora
