#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "accounts/decisions/accounts.h"
#include "app/decisions/offers.h"
#include "app/decisions/status_panels.h"
#include "app/first_use_window.h"
#include "app/main_window.h"
#include "checking/check_message_window.h"
#include "messages/decisions/message_store.h"
#include "messages/preview_window.h"
#include "options/decisions/options.h"
#include "platform/platform.h"
#include "platform/pop/pop_client.h"
#include "rules/decisions/rules.h"
#include "rules/rule_report_window.h"

namespace velmora {

/// Everything that lasts for the whole run: the stores, the windows' controls, and the way to the outside. Made once
/// in `main`, and once in every test.
struct Program {
  explicit Program(Platform& outside) : platform(outside) {}

  Platform& platform;
  std::string AppTitle;

  // The stores.
  Options options;
  Options EditOptions;  ///< the working copy of the Options page
  Accounts accounts;
  MessageStore messages;
  Rules rules;

  MainWindow frmMain;
  std::int16_t CurrentPage = emailPage;
  Activity activity = Activity::Idle;  ///< set by SetCheckingInterface alone
  UnsavedChanges unsaved;

  bool DefaultClientValid = false;  ///< the default email client is there: it serves all accounts
  bool DefaultSoundValid = false;   ///< likewise the default sound
  bool SoundMaster = true;          ///< sounds are on

  // The Accounts page.
  bool AcntBusy = false;        ///< the program changes tabs itself: clicks on them do nothing
  bool AcntLoading = false;     ///< likewise the page's controls
  std::int16_t DragSource = 0;  ///< the strip on which the last press on a tab was: 1 the Email page's

  // The one connection. A stop replaces the client while it works.
  std::unique_ptr<IPopClientNotify> popEvents;
  std::shared_ptr<velmora::PopClient> PopClient;
  bool PopConnected = false;
  bool StopRequested = false;  ///< the only value that crosses from a button to a running check
  std::int16_t ReceivedCount = 0;
  int AnimationFrame = 0;  ///< 1 to 8 once the tab animation has run

  // What a walk over the accounts found.
  std::int16_t TotalMessages = 0;
  std::int16_t TotalNew = 0;
  std::string IncompleteAccounts;  ///< one name a line
  std::string AccountInfoText;
  std::int16_t AccountInfoLines = 0;

  // Timed checks.
  std::string CurrentTime;  ///< "dd/mm/yy-hh:mm", as of the last tick of tmrMailTime
  std::string NextCheckText;
  std::string NextCheckTime;       ///< of the next timed check, like CurrentTime
  std::string SavedNextCheckText;  ///< for when Auto Check is switched on again
  std::string SavedNextCheckTime;  ///< likewise
  bool NoCheckPostponed = false;   ///< the next one was put off to the end of the quiet period
  bool StartUpDone = true;         ///< the check at start-up has happened, or never will
  bool StartUpPaused = false;      ///< its countdown stands
  bool StartUpHeld = false;        ///< by SuspendStartUpTimer
  bool StartUpWasRunning = false;  ///< what SuspendStartUpTimer has to restore
  int StartUpSeconds = 0;          ///< gone by of the countdown
  std::int16_t TrayAccount = 0;    ///< whose picture the tray shows next

  // The message list. The order in force, SortDescending of the program's pages, is the option SortOrder.
  std::string SortColumnName;
  std::string LastClickedColumn;     ///< a click on it again turns the order round
  std::int16_t AcntLastShown = 0;    ///< whose messages the list holds: a click on its tab does nothing
  std::int16_t SelectedMessage = 0;  ///< what the actions on a message work on
  bool MessageSelected = false;      ///< the actions on a message have one to work on
  bool SpamListed = false;           ///< rows of spam stand in the list
  bool ItemUnderPointer = false;     ///< the last pointer event on the list met a row
  std::int16_t HoverMessage = 0;     ///< the row under the pointer, 0 for none
  std::int16_t TipMessage = 0;       ///< the message that the list's tip was last worked out for
  std::int16_t ColumnZone = noZone;  ///< likewise its column
  AttachmentCounts listCounts;

  // The windows beside the main one, and which of them are open.
  PreviewWindow frmPreview;
  RuleReportWindow frmRuleReport;
  CheckMessageWindow frmMessage;
  FirstUseWindow frmFirstUse;
  bool PreviewOpen = false;
  bool RuleReportOpen = false;
  bool AutoMessageOpen = false;
  bool FirstUseOpen = false;

  bool QuitRequested = false;  ///< closing the window ends the program, whatever the options say
};

}  // namespace velmora
