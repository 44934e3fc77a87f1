#pragma once

#include <cstdint>
#include <string>

#include "accounts/decisions/accounts.h"
#include "accounts/keyring_entries.h"
#include "accounts/tab_drag.h"
#include "app/decisions/offers.h"
#include "app/first_use_window.h"
#include "app/main_window.h"
#include "checking/auto_check.h"
#include "checking/check_cycle.h"
#include "checking/check_message_window.h"
#include "checking/check_notification.h"
#include "checking/follow_machine.h"
#include "checking/hold_timers.h"
#include "checking/pop_session.h"
#include "checking/start_up_check.h"
#include "messages/decisions/message_store.h"
#include "messages/list_tips.h"
#include "messages/message_list.h"
#include "messages/preview_window.h"
#include "messages/print_message.h"
#include "messages/progress_window.h"
#include "messages/sorting.h"
#include "options/decisions/options.h"
#include "platform/platform.h"
#include "rules/decisions/rules.h"
#include "rules/rule_file_window.h"
#include "rules/rule_fits.h"
#include "rules/rule_fits_window.h"
#include "rules/rule_report_window.h"
#include "rules/save_rules.h"

namespace velmora {

/// Everything that lasts for the whole run: the stores, the windows' controls, and the way to the outside. Made once
/// in `main`, and once in every test.
struct Program {
  explicit Program(Platform& outside) : platform(outside) {}

  Platform& platform;
  std::string AppTitle;

  // The stores.
  Options options;
  Options EditOptions;  ///< the working copy of the Options page, which alone writes to it
  Accounts accounts;
  MessageStore messages;
  Rules rules;

  // The windows.
  MainWindow frmMain;
  PreviewWindow frmPreview;
  ProgressWindow frmPrinting;  ///< a message is on its way to the printer
  ProgressWindow frmOriginal;  ///< one is fetched as its server has it
  RuleReportWindow frmRuleReport;
  RuleFileWindow frmRuleFile;
  RuleFitsWindow frmRuleFits;
  CheckMessageWindow frmMessage;
  FirstUseWindow frmFirstUse;

  std::int16_t CurrentPage = emailPage;
  Activity activity = Activity::Idle;  ///< set by SetCheckingInterface alone
  UnsavedChanges unsaved;
  bool DefaultClientValid = false;  ///< the default email client is there: it serves all accounts

  // What each feature keeps for itself.
  OptionsPageState optionsPage;
  AccountsPageState acnts;
  KeyringState keyring;
  TabDrag tabDrag;
  ShownMessages list;
  SortState order;
  RulesPageState rulePage;
  RulesFile rulesFile;
  RuleFits ruleFits;
  ListPointer pointer;
  Printing printing;
  Connection connection;
  WalkTotals walk;
  AutoCheckTimes autoCheck;
  OpenDialogs dialogs;
  StartUpCountdown startUp;
  MachineState machine;
  SoundState sounds;
  TrayTurn trayTurn;
};

}  // namespace velmora
