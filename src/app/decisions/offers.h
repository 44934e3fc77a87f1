#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "app/decisions/activity.h"
#include "app/decisions/page.h"

namespace velmora {

/// The pages that differ from what is kept.
struct UnsavedChanges {
  bool AcntDirty = false;
  bool RulesDirty = false;
  bool OptionsDirty = false;

  bool any() const { return AcntDirty || RulesDirty || OptionsDirty; }
};

/// What the Rules page shows.
struct RuleSituation {
  std::int16_t rules = 0;      ///< how many there are, saved or not
  std::int16_t rule = 0;       ///< the one showing, 0 for none
  std::int16_t entries = 0;    ///< of that rule
  std::int16_t undone = 0;     ///< entries that can be redone
  bool takesCriteria = false;  ///< the chosen field has comparisons, and a text goes with it
  bool entryComplete = false;  ///< what stands in the builder can be made an entry
  bool fitsFound = false;      ///< the rule fits messages in the lists
  bool reportWanted = false;   ///< the Rule Report is to open
};

/// What the Options page shows of the switches that others depend on, and which defaults are in the accounts' way.
struct OptionsSituation {
  bool startUpCheck = false;  ///< there is a check at start-up
  bool interval = false;      ///< Auto Check is on
  bool quiet = false;         ///< a quiet period
  bool checkMessage = false;  ///< the Auto Check Message
  bool raised = false;        ///< raised buttons
  bool sorting = false;
  bool userColours = false;
  bool defaultClient = false;  ///< a valid one
  bool defaultSound = false;   ///< likewise
  bool notKept = false;        ///< the options in force could not be saved
  bool log = false;            ///< there is a protocol log of this run
};

/// All that decides what the user may press.
struct Situation {
  Activity activity = Activity::Idle;
  UnsavedChanges unsaved = {};
  std::int16_t page = emailPage;   ///< the current one
  std::int16_t accounts = 0;       ///< how many there are
  std::int16_t account = 0;        ///< the current one
  bool printing = false;           ///< a message is on its way to the printer's queue
  bool messageSelected = false;    ///< in the list, by the user
  bool spamListed = false;         ///< the list shows spam that Delete won't take
  bool marksReported = false;      ///< the tab of the Rule Report that is in front has accounts with marked messages
  bool startUpCheckWaits = false;  ///< the countdown of the check at start-up hasn't ended
  bool startUpTimerHeld = false;   ///< a dialog holds that countdown, so it can't be paused or continued
  RuleSituation rules = {};
  OptionsSituation options = {};
};

/// What may be offered or not: the buttons, entries, frames and tabs that come on and go off, and those that show and
/// hide. In each name the control comes first.
enum class Offer : std::size_t {
  MainButtonsFrame,
  MainButtons,
  EmailTools,
  EmailTabs,
  EmailList,
  EmailPreview,
  EmailDelete,
  EmailSpam,
  EmailReply,
  EmailOpen,
  EmailNew,
  EmailCheck,
  MenuPreview,
  MenuDelete,
  MenuReply,
  MenuOpen,
  MenuSaveOriginal,
  AcntToolsFrame,
  AcntTools,
  AcntAdd,
  AcntDelete,
  AcntTest,
  AcntBackward,
  AcntForward,
  AcntTabs,
  AcntFields,
  AcntFieldsShown,
  AcntClientBrowse,
  AcntSoundBrowse,
  NoAcntsBannerShown,
  EmailHelp,
  StopShown,
  Close,
  CheckAll,
  StartClient,
  AcntHelp,
  AcntSave,
  AcntCancel,
  RulesToolsShown,
  RulesTools,
  RulesAdd,
  RulesDelete,
  RulesFrame,
  NoRulesShown,
  RuleUp,
  RuleDown,
  RuleCriteria,
  RuleBoolean,
  RuleUpdate,
  RuleClear,
  RuleUndo,
  RuleRedo,
  RuleFits,
  RuleNotifyDetails,
  RulesHelp,
  RulesSave,
  RulesCancel,
  OptionsFrame,
  OptStartUpDelay,
  OptInterval,
  OptQuietTime,
  OptCheckMessage,
  OptApplyStyle,
  OptSorting,
  OptColours,
  OptMove,
  OptShowLog,
  OptionsHelp,
  OptionsSave,
  OptionsCancel,
  StartUpPauseShown,
  StartUpPause,
  PreviewTools,
  PreviewSave,
  PreviewSaveOriginal,
  PreviewSaveAttachment,
  PreviewPrint,
  PreviewDelete,
  PreviewReply,
  PreviewOpen,
  ReportDelete,
  TrayCheckAll,
  TrayNewMessage,
  TrayRunClient,
  TrayAutoCheck,
  TraySounds,
  TrayOptions,
  TrayMenuColours,
  TrayUpdates,
  TrayAbout,
  TrayHelp,
};

inline constexpr std::size_t offerCount = static_cast<std::size_t>(Offer::TrayHelp) + 1;

/// The answer for each offer.
class Offers {
 public:
  void set(Offer offer, bool on) { on_.set(static_cast<std::size_t>(offer), on); }
  bool operator[](Offer offer) const { return on_[static_cast<std::size_t>(offer)]; }

 private:
  std::bitset<offerCount> on_;
};

Offers offersIn(const Situation& situation);

/// The page that is on the screen: a check or a deletion shows what it does to the messages, whichever page is current.
constexpr std::int16_t shownPage(Activity activity, std::int16_t current) {
  return activity == Activity::Checking || activity == Activity::Deleting ? emailPage : current;
}

}  // namespace velmora
