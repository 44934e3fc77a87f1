#pragma once

#include <cstdint>

#include "platform/controls/menu.h"
#include "platform/controls/tray_icon.h"

namespace velmora {

struct Program;

/// The controls of the tray.
struct Tray {
  TrayIcon TrayData;

  MenuEntry mnuTrayShow{"&Show Velmora...|#Show"};
  MenuEntry mnuTrayCheckAll{"&Check All|#CheckAll"};
  MenuEntry mnuTrayNewMessage{"&New Message|#NewMessage"};
  MenuEntry mnuTraySep1{"-"};
  MenuEntry mnuTrayRunClient{"S&tart Email Client|#MailClient0"};
  MenuEntry mnuTraySep2{"-"};
  MenuEntry mnuTrayAutoCheck{"&Auto Check - On|#AutoCheckOn"};
  MenuEntry mnuTraySounds{"Soun&ds - On|#SoundOn"};
  MenuEntry mnuTraySep3{"-"};
  MenuEntry mnuTrayOptions{"&Options...|#Gears"};
  MenuEntry mnuTrayMenuColours{"&Menu Colours...|#MenuColours"};
  MenuEntry mnuTrayUpdates{"&Updates|#Updates"};
  MenuEntry mnuTrayAbout{"A&bout...|#About"};
  MenuEntry mnuTrayHelp{"&Help|#Help"};
  MenuEntry mnuTraySep4{"-"};
  MenuEntry mnuTrayQuitApplication{"&Quit Application|#Quit"};
  PopupMenu mnuTrayPopMenu{
      "imlPopMenu",
      {&mnuTrayShow, &mnuTrayCheckAll, &mnuTrayNewMessage, &mnuTraySep1, &mnuTrayRunClient, &mnuTraySep2,
       &mnuTrayAutoCheck, &mnuTraySounds, &mnuTraySep3, &mnuTrayOptions, &mnuTrayMenuColours, &mnuTrayUpdates,
       &mnuTrayAbout, &mnuTrayHelp, &mnuTraySep4, &mnuTrayQuitApplication},
      {}};
};

struct TrayTurn {
  std::int16_t TrayAccount = 0;  ///< whose picture the tray shows next
};

/// Sets the handlers of picture and menu.
void ConnectTray(Program& program);

/// Puts the program into the tray.
void AddToTray(Program& program);

/// What the tray shows while the window does.
void ShowPlainTrayPicture(Program& program);

/// Moves the picture on by one second. Nothing while the window shows.
void UpdateTrayIcon(Program& program);

/// Takes the window off the screen. Nothing else of the program goes with it.
void GoToTray(Program& program);

/// Minimises the window, which takes it and the windows that go with it to the tray.
void CloseToTray(Program& program);

/// What the window does when its state changes: minimising means going to the tray.
void Form_Resize(Program& program);

/// Switches Auto Check on or off, and saves the options.
void SwitchAutoCheck(Program& program, bool on);

/// Brings the window back, and what went with it.
void mnuTrayShow_Click(Program& program);

}  // namespace velmora
