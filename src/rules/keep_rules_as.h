#pragma once

#include <string>

namespace velmora {

struct Program;
struct Rules;

/// Brings the working set of `rules` into the Rules file of this name, in the program's folder. From then on
/// these are the program's rules, that file is the one in use, and the page shows them; the former file stays. Returns
/// whether it is so. Where the name can't be, the user doesn't want it, or file or settings can't be written, he is
/// told, and the former rules and file stay in force.
bool KeepRulesAs(Program& program, const std::string& name, Rules rules);

}  // namespace velmora
