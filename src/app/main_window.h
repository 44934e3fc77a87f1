#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>

#include "accounts/accounts_page.h"
#include "app/decisions/page.h"
#include "app/tray.h"
#include "messages/email_page.h"
#include "options/client_and_sound.h"
#include "options/options_page.h"
#include "platform/controls/form.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/status_bar.h"
#include "platform/controls/timer.h"
#include "platform/controls/toolbar.h"
#include "rules/rules_page.h"

namespace velmora {

/// The small toolbars of tbrButtons, each of one button.
enum ButtonBar : std::size_t {
  emailHelpBar,
  stopRetrievalBar,
  closeBar,
  checkAllBar,
  startClientBar,
  accountsHelpBar,
  saveAccountBar,
  cancelAccountBar,
  rulesHelpBar,
  saveRulesBar,
  cancelRulesBar,
  optionsHelpBar,
  saveOptionsBar,
  cancelOptionsBar,
  pauseStartUpBar,
};
inline constexpr std::size_t buttonBarCount = pauseStartUpBar + 1;

struct Shortcut;

/// The only top-level window of the program: four pages of which one shows at a time, the buttons that switch between
/// them, a row of buttons for each page, the status bar, and what stands for it in the tray.
struct MainWindow : Form, EmailPage, AccountsPage, RulesPage, OptionsPage, ClientAndSound, Tray {
  Toolbar tbrMainButtons{"imlMainIcons",
                         {{"Email", "Email        ", "Email Messages", "Email"},
                          {"Accounts", "Accounts  ", "Account Information", "Accounts"},
                          {"Rules", "Rules       ", "View Rules", "Rules"},
                          {"Options", "Options    ", "Select Options", "Options"},
                          {"Quit", "Quit          ", "Quit Velmora", "Quit"},
                          {"Size", "Size         ", "Restore Original Size", "Size"}}};

  std::array<Toolbar, buttonBarCount> tbrButtons{{
      {"imlButtons", {{"Help", "Help     ", "Help With Email", "Help"}}},
      {"imlButtons", {{"StopRetrieval", "Stop Retrieval      ", "Stop Retrieving Messages", "Stop"}}},
      {"imlButtons", {{"Close", "Close         ", "Close Velmora to System Tray", "Close"}}},
      {"imlButtons", {{"CheckAll", "Check All          ", "Check All Accounts for Messages", "CheckAll"}}},
      {"imlClientButtons",
       {{"StartEmailClient", "Start Email Client     ", "Start Email Client Application", "Folder"}}},
      {"imlButtons", {{"Help", "Help     ", "Help With Accounts", "Help"}}},
      {"imlButtons", {{"SaveAccount", "Save Account   ", "Save this Account Information", "Save"}}},
      {"imlButtons", {{"Cancel", "Cancel       ", "Cancel changes to this Account", "Cancel"}}},
      {"imlButtons", {{"Help", "Help     ", "Help With Rules", "Help"}}},
      {"imlButtons", {{"SaveRules", "Save Rules       ", "Save Rule Information", "Save"}}},
      {"imlButtons", {{"Cancel", "Cancel       ", "Cancel changes to Rules", "Cancel"}}},
      {"imlButtons", {{"Help", "Help     ", "Help With Options", "Help"}}},
      {"imlButtons", {{"SaveOptions", "Save Options    ", "Save changes to Options", "Save"}}},
      {"imlButtons", {{"Cancel", "Cancel       ", "Cancel changes made to Options", "Cancel"}}},
      {"imlButtons", {{"PauseStartupCheck", "StartUp: Continue    ", "Pause the StartUp Check Timer", "Pause"}}},
  }};

  Frame fraMainButtons;
  std::array<Frame, pageCount> fraMain;
  Label lblBanner;
  Frame fraNoAcntsBanner;
  Label lblNoAcntsBanner;

  velmora::StatusBar StatusBar;
  velmora::ProgressBar ProgressBar;
  FocusTaker cmdTakeFocus;
  std::function<void(const Shortcut&)> KeyPress;  ///< the keys of a shortcut were pressed

  Timer tmrStatusBar{1000, true};
  Timer tmrMailTime{1000, false};
  Timer tmrMailStartUp{1000, false};
  Timer tmrRetrieveMessage{100, false};
};

}  // namespace velmora
