#pragma once

#include <optional>
#include <string>

class QFileDialog;

namespace velmora {

struct FileQuestion;

/// Has the user choose a file that is there. Returns its path, nothing where he cancelled.
std::optional<std::string> fileToOpen(QFileDialog& dialog, const FileQuestion& question);

/// Has the user choose a name to save under. Where the name would become another one (`savedName`), the dialog comes
/// again with that, unless the program is `quitting` meanwhile.
std::optional<std::string> fileToSave(QFileDialog& dialog, const FileQuestion& question, const bool& quitting);

}  // namespace velmora
