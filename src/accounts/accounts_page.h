#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/controls/check_box.h"
#include "platform/controls/colour_box.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tab_strip.h"
#include "platform/controls/text_box.h"
#include "platform/controls/timer.h"
#include "platform/controls/toolbar.h"

namespace velmora {

struct Account;
struct Program;

/// The controls of the Accounts page, which shows one account at a time: a working copy that becomes the account's
/// record when the user saves it.
struct AccountsPage {
  Frame fraAcntToolBar;
  Toolbar tbrAcnts{"imlAcntIcons",
                   {{"AcntAdd", "Add Account   ", "Add a New Account", "AcntAdd"},
                    {"AcntDelete", "Delete Account   ", "Delete this Account", "AcntDelete"},
                    {"AcntTest", "Test Account   ", "Test the Connection of this Account", "AcntTest"}}};
  Toolbar tbrMoveButtons{"imlMoveButtons",
                         {{"Backward", "Backward", "Move Account Backward", "Backward"},
                          {"Forward", "Forward", "Move Account Forward", "Forward"}}};
  TabStrip TabStripAcnts;
  Timer tmrDragTab{1000, false};

  Frame fraAcnt;
  CheckBox chkAcntEnabled{"Enable Account"};
  TextBox txtAcntName{20};
  TextBox txtAcntServer;
  CheckBox chkAcntSecure{"Server Requires Secure Connection"};
  Label lblAcntSecure;  ///< what of the connection is protected
  TextBox txtAcntPort{10};
  Label lblAcntPortNotice;  ///< what is wrong with the port, blank where nothing is
  TextBox txtAcntLoginID;
  TextBox txtAcntPassword;
  Label lblAcntPasswordNotice;  ///< where the password is while the box doesn't show it, blank where it does
  Signal<> hidePassword;        ///< the box shows it in stars again
  ColourBox txtAcntColour;
  Toolbar tbrColour{"imlColourButtons", {{"Colour", "Select Colour", "Select a Colour for this Account", "Colour"}}};
  Frame fraColourBox{"Click Colour Box", false};
  std::array<ColourBox, 6> lblColourBox{{{0xFF0000}, {0xFFFF00}, {0x00FF00}, {0xFF00FF}, {0x0000FF}, {0x000000}}};
  TextBox txtAcntClient;
  Label lblClientName;
  Label lblAcntRunSize;
  TextBox txtAcntSound;
  Label lblSoundName;
  CheckBox chkAcntSoundOn{"Sound On"};
  Label lblAcntPlaySound;
};

/// What the page keeps beside its controls.
struct AccountsPageState {
  bool AcntBusy = false;     ///< the program changes tabs itself: clicks on them do nothing
  bool AcntLoading = false;  ///< the program fills the controls itself: their changes do nothing
};

/// Ties the page's controls to what they do.
void ConnectAccountsPage(Program& program);

/// Fills the working copy and the page from the record of the current account, `number`, which is 0 for the placeholder
/// while there are none. Changes that were not saved are gone.
void ShowAccount(Program& program, std::int16_t number);

/// The working copy of the account that the page shows; a check that is under way may have another one current.
Account& ShownAccount(Program& program);

/// Gives it the path of a file that the user has chosen.
void SetAccountPath(Program& program, std::string Account::*path, const std::string& chosen);

/// The record has learnt what its entry in the desktop's keyring holds. The page shows it, unless the user has begun to
/// replace it.
void LearnPassword(Program& program, std::int16_t account, const std::string& password);

/// Compares the page with the record of the account showing. A page that differs can be left by saving or cancelling
/// only.
void AccountDirtyCheck(Program& program);

/// Asks what is to become of changes that were not saved, if there are any. Returns whether the account may be left;
/// not so where the user wants to return to it, where it could not be saved, and while he is asked already.
bool SettleChanges(Program& program);

}  // namespace velmora
