#pragma once

#include <array>
#include <cstdint>

#include "app/decisions/page.h"

namespace velmora {

enum class KeyDeed {
  Add,
  CheckAll,
  GiveUp,
  Help,
  PressEmail,
  Quit,
  RestoreWidths,
  Save,
  SaveOriginal,
  ShowPage,
  SortByColumn,
  TestAccount,
};

inline constexpr std::int16_t anyPage = -1;

/// Keys of the main window, and what they do.
struct Shortcut {
  const char* keys;  ///< "Ctrl+R"
  KeyDeed deed;
  std::int16_t page = anyPage;  ///< which must be showing
  std::int16_t number = 0;      ///< of the page to show, or of the list's column to sort by, from 0
  const char* button = "";      ///< of the Email page's bar, to be pressed
};

inline constexpr std::array<Shortcut, 21> shortcuts = {{
    {"F1", KeyDeed::Help},
    {"F5", KeyDeed::CheckAll},
    {"Ctrl+R", KeyDeed::PressEmail, anyPage, 0, "EmailCheck"},
    {"Ctrl+O", KeyDeed::PressEmail, emailPage, 0, "EmailOpen"},
    {"Ctrl+Shift+R", KeyDeed::PressEmail, emailPage, 0, "EmailReply"},
    {"Ctrl+Shift+S", KeyDeed::SaveOriginal, emailPage},
    {"Esc", KeyDeed::GiveUp},
    {"Ctrl+Q", KeyDeed::Quit},
    {"Ctrl+1", KeyDeed::ShowPage, anyPage, emailPage},
    {"Ctrl+2", KeyDeed::ShowPage, anyPage, accountsPage},
    {"Ctrl+3", KeyDeed::ShowPage, anyPage, rulesPage},
    {"Ctrl+4", KeyDeed::ShowPage, anyPage, optionsPage},
    {"Ctrl+0", KeyDeed::RestoreWidths, emailPage},
    {"Alt+1", KeyDeed::SortByColumn, emailPage, 0},
    {"Alt+2", KeyDeed::SortByColumn, emailPage, 1},
    {"Alt+3", KeyDeed::SortByColumn, emailPage, 2},
    {"Alt+4", KeyDeed::SortByColumn, emailPage, 3},
    {"Alt+5", KeyDeed::SortByColumn, emailPage, 4},
    {"Ctrl+N", KeyDeed::Add},
    {"Ctrl+S", KeyDeed::Save},
    {"Ctrl+T", KeyDeed::TestAccount, accountsPage},
}};

/// What Esc can end without a loss, which changes to an account can not be.
struct Unfinished {
  bool drag = false;         ///< of a tab
  bool colourBoxes = false;  ///< the choice of an account's colour
  bool check = false;        ///< or whatever else the Stop button stops

  bool operator==(const Unfinished&) const = default;
};

/// What Esc ends of what is under way: a drag alone, which is what the user is at, or else all.
constexpr Unfinished givenUp(const Unfinished& underWay) { return underWay.drag ? Unfinished{.drag = true} : underWay; }

}  // namespace velmora
