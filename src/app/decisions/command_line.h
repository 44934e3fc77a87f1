#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace velmora {

/// What the word behind the program's name asks for. Those from Check on need no desktop.
enum class Command : std::uint8_t {
  Start,       ///< none: the options say how
  Show,        ///< with the window, or that of the one that runs already brought to the front
  Hide,        ///< in the tray
  CheckAll,    ///< as Show, and all accounts are checked
  NewMessage,  ///< as Start, and a new message is written
  Check,       ///< without a window, the results on standard output
  Help,
  Version,
};

/// The command of the words behind the program's name, of which there may be one; nothing where they are none. What
/// X11's session manager adds (`-session` with a value) says nothing of it.
std::optional<Command> commandOf(std::span<const std::string_view> words);

/// What `--help` prints, and `--version`.
std::string commandHelp();
std::string versionText();

/// What is said of words that are no command.
std::string notUnderstood(std::span<const std::string_view> words);

}  // namespace velmora
