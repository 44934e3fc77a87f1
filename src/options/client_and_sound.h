#pragma once

#include <array>
#include <cstddef>

#include "platform/controls/toolbar.h"

namespace velmora {

struct Program;

/// Whose email client and sound a bar of buttons is for.
enum ClientBar : std::size_t { defaultClientBar, accountClientBar };

/// The buttons beside the paths of an email client and of a sound: those of the defaults, which stand on the Options
/// page, and those of the account that the Accounts page shows.
struct ClientAndSound {
  std::array<Toolbar, 2> tbrClient{{
      {"imlClientButtons",
       {{"Browse", "Browse   ", "Browse for the Default Email Client", "Browse"},
        {"Test", "Test   ", "Test the Default Email Client", "Test"}}},
      {"imlClientButtons",
       {{"Browse", "Browse   ", "Browse for an Email Client", "Browse"},
        {"Test", "Test   ", "Test the Email Client", "Test"}}},
  }};
  std::array<Toolbar, 2> tbrSound{{
      {"imlClientButtons",
       {{"Browse", "Browse   ", "Browse for the Default Sound", "Browse"},
        {"Test", "Test   ", "Test the Default Sound", "Test"}}},
      {"imlClientButtons",
       {{"Browse", "Browse   ", "Browse for a Sound", "Browse"}, {"Test", "Test   ", "Test the Sound", "Test"}}},
  }};
};

/// Sets the handlers of the buttons.
void ConnectClientAndSound(Program& program);

/// Looks which email client is there for the account showing, as the pages have it, and shows its picture, or that
/// there is none: on the button and the tray's entry that start it, and on the buttons that try it.
void ShowClientIcon(Program& program);

/// Likewise, with the picture as it is now: the file may hold another one.
void RenewClientIcon(Program& program);

}  // namespace velmora
