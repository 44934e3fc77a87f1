#pragma once

#include <optional>
#include <string>

namespace velmora {

struct Program;
struct Rules;

/// The Rules file as it was when it was last read or written here.
struct RulesFile {
  std::string path;
  std::optional<std::string> content;  ///< none where there was no file
  bool behind = false;                 ///< a change that should have reached it at once did not
};

/// Fills the live set from the Rules file at `path`.
void ReadRules(Program& program, const std::string& path);

/// Brings the working set into the file, and then into the live one. Returns whether it did: where the file can't be
/// written, a message tells so, and where another program has changed it since it was last known here, or where it is
/// another file than that one and exists, the user is asked first. File and live set stay as they were where not.
bool WriteRules(Program& program, const std::string& path);

/// The first half of that: brings the working set of `rules` into the file and no further.
bool StoreRules(Program& program, const std::string& path, const Rules& rules);

/// The file holds what is to be known of it: a change of it from now on is another program's.
void NoteRulesFile(Program& program, const std::string& path);

/// Shows the name of the Rules file on the page.
void ShowRulesFileName(Program& program);

/// Reads the user's rules when the program starts.
void StartRules(Program& program);

/// The rules for an account go with it to its new name, saved or not, and the Rules file follows at once. Where it
/// can't, the page offers to save them, and quitting asks.
void RenameAccountInRules(Program& program, const std::string& from, const std::string& to);

}  // namespace velmora
