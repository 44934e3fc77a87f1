#include "app/decisions/command_line.h"

#include <algorithm>
#include <array>

namespace velmora {

namespace {

struct Word {
  std::string_view word;
  Command command;
  std::string_view meaning;
};

constexpr auto commands = std::to_array<Word>({
    {"--show", Command::Show, "open the window, also that of a Velmora which runs already"},
    {"--hidden", Command::Hide, "start in the tray"},
    {"--check", Command::Check, "check all enabled accounts without a window, one line each"},
    {"--action=check-all", Command::CheckAll, "open the window and check all enabled accounts"},
    {"--action=new-message", Command::NewMessage, "write a new message"},
    {"--help", Command::Help, "print this and end"},
    {"--version", Command::Version, "print the version and end"},
});

}  // namespace

std::optional<Command> commandOf(std::span<const std::string_view> words) {
  if (words.size() >= 2 && words[0] == "-session") words = words.subspan(2);
  if (words.empty()) return Command::Start;
  const auto* const found =
      std::find_if(commands.begin(), commands.end(), [&words](const Word& each) { return each.word == words.front(); });
  if (words.size() > 1 || found == commands.end()) return std::nullopt;
  return found->command;
}

std::string commandHelp() {
  constexpr std::size_t column = 24;
  std::string help =
      "Usage: Velmora [WORD]\n\nKeeps watch over POP3 mailboxes from the system tray. Without a word it starts as its "
      "options say.\n\n";
  for (const auto& [word, command, meaning] : commands) {
    help += "  " + std::string(word) + std::string(column - word.size(), ' ') + std::string(meaning) + '\n';
  }
  return help +
         "\n--check ends with 0 where no messages wait, with 1 where some do, and with 2 where\n"
         "an account could not be checked.\n";
}

std::string versionText() { return "Velmora " VELMORA_VERSION "\n"; }

std::string notUnderstood(std::span<const std::string_view> words) {
  std::string text = "not understood:";
  for (const std::string_view word : words) text += ' ' + std::string(word);
  return text + "; see Velmora --help";
}

}  // namespace velmora
