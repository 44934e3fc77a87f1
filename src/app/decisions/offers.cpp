#include "app/decisions/offers.h"

#include <span>

#include "accounts/decisions/accounts.h"
#include "rules/decisions/rules.h"

namespace velmora {

namespace {

/// What has to be so for an offer to stand.
using Needs = std::uint64_t;

namespace need {
constexpr Needs nothing = 0;
constexpr Needs idle = 1ULL << 0U;
constexpr Needs check = 1ULL << 1U;  ///< one is under way
constexpr Needs account = 1ULL << 2U;
constexpr Needs roomForAccount = 1ULL << 3U;
constexpr Needs accountBefore = 1ULL << 4U;
constexpr Needs accountBehind = 1ULL << 5U;
constexpr Needs emptyPage = 1ULL << 6U;  ///< one that shows accounts, and there are none
constexpr Needs accountSaved = 1ULL << 7U;
constexpr Needs allSaved = 1ULL << 8U;
constexpr Needs accountUnsaved = 1ULL << 9U;
constexpr Needs rulesUnsaved = 1ULL << 10U;
constexpr Needs optionsUnsaved = 1ULL << 11U;
constexpr Needs message = 1ULL << 12U;  ///< one is selected
constexpr Needs spam = 1ULL << 13U;
constexpr Needs marks = 1ULL << 14U;
constexpr Needs countdown = 1ULL << 15U;
constexpr Needs countdownFree = 1ULL << 16U;
constexpr Needs printerFree = 1ULL << 17U;
constexpr Needs rule = 1ULL << 18U;
constexpr Needs noRule = 1ULL << 19U;
constexpr Needs roomForRule = 1ULL << 20U;
constexpr Needs ruleBefore = 1ULL << 21U;
constexpr Needs ruleBehind = 1ULL << 22U;
constexpr Needs criteria = 1ULL << 23U;  ///< the chosen field takes one
constexpr Needs entryComplete = 1ULL << 24U;
constexpr Needs entry = 1ULL << 25U;
constexpr Needs undone = 1ULL << 26U;
constexpr Needs fits = 1ULL << 27U;
constexpr Needs report = 1ULL << 28U;
constexpr Needs startUpCheck = 1ULL << 29U;
constexpr Needs interval = 1ULL << 30U;
constexpr Needs quiet = 1ULL << 31U;
constexpr Needs checkMessage = 1ULL << 32U;
constexpr Needs raised = 1ULL << 33U;
constexpr Needs sorting = 1ULL << 34U;
constexpr Needs userColours = 1ULL << 35U;
constexpr Needs noDefaultClient = 1ULL << 36U;
constexpr Needs noDefaultSound = 1ULL << 37U;
constexpr Needs toSave = 1ULL << 38U;  ///< options that differ from what is kept
constexpr Needs log = 1ULL << 39U;
}  // namespace need

struct Row {
  Offer offer;
  Needs needs;
};

/// What is shut as a whole for a check needs no idleness of each of its parts.
constexpr std::array<Row, offerCount> table = {{
    {Offer::MainButtonsFrame, need::idle},
    {Offer::MainButtons, need::allSaved},
    {Offer::EmailTools, need::idle},
    {Offer::EmailTabs, need::idle},
    {Offer::EmailList, need::account},
    {Offer::EmailPreview, need::account | need::message},
    {Offer::EmailDelete, need::account | need::message},
    {Offer::EmailSpam, need::account | need::spam},
    {Offer::EmailReply, need::account | need::message},
    {Offer::EmailOpen, need::account | need::message},
    {Offer::EmailNew, need::account},
    {Offer::EmailCheck, need::account},
    {Offer::MenuPreview, need::idle | need::account | need::message},
    {Offer::MenuDelete, need::idle | need::account | need::message},
    {Offer::MenuReply, need::idle | need::account | need::message},
    {Offer::MenuOpen, need::idle | need::account | need::message},
    {Offer::MenuSaveOriginal, need::idle | need::account | need::message},
    {Offer::AcntToolsFrame, need::idle},
    {Offer::AcntTools, need::accountSaved},
    {Offer::AcntAdd, need::roomForAccount},
    {Offer::AcntDelete, need::account},
    {Offer::AcntTest, need::account},
    {Offer::AcntBackward, need::accountSaved | need::accountBefore},
    {Offer::AcntForward, need::accountSaved | need::accountBehind},
    {Offer::AcntTabs, need::idle},
    {Offer::AcntFields, need::idle},
    {Offer::AcntFieldsShown, need::account},
    {Offer::AcntClientBrowse, need::noDefaultClient},
    {Offer::AcntSoundBrowse, need::noDefaultSound},
    {Offer::NoAcntsBannerShown, need::emptyPage},
    {Offer::EmailHelp, need::idle},
    {Offer::StopShown, need::check},
    {Offer::Close, need::idle | need::account},
    {Offer::CheckAll, need::idle | need::account},
    {Offer::StartClient, need::idle},
    {Offer::AcntHelp, need::nothing},
    {Offer::AcntSave, need::idle | need::accountUnsaved},
    {Offer::AcntCancel, need::idle | need::accountUnsaved},
    {Offer::RulesToolsShown, need::account},
    {Offer::RulesTools, need::account},
    {Offer::RulesAdd, need::roomForRule},
    {Offer::RulesDelete, need::rule},
    {Offer::RulesFrame, need::account | need::rule},
    {Offer::NoRulesShown, need::account | need::noRule},
    {Offer::RuleUp, need::ruleBefore},
    {Offer::RuleDown, need::ruleBehind},
    {Offer::RuleCriteria, need::criteria},
    {Offer::RuleBoolean, need::entry},
    {Offer::RuleUpdate, need::rule | need::entryComplete},
    {Offer::RuleClear, need::entry},
    {Offer::RuleUndo, need::entry},
    {Offer::RuleRedo, need::undone},
    {Offer::RuleFits, need::fits},
    {Offer::RuleNotifyDetails, need::report},
    {Offer::RulesHelp, need::nothing},
    {Offer::RulesSave, need::idle | need::rulesUnsaved},
    {Offer::RulesCancel, need::idle | need::rulesUnsaved},
    {Offer::OptionsFrame, need::idle},
    {Offer::OptStartUpDelay, need::startUpCheck},
    {Offer::OptInterval, need::interval},
    {Offer::OptQuietTime, need::quiet},
    {Offer::OptCheckMessage, need::checkMessage},
    {Offer::OptApplyStyle, need::raised},
    {Offer::OptSorting, need::sorting},
    {Offer::OptColours, need::userColours},
    {Offer::OptMove, need::idle | need::allSaved},
    {Offer::OptShowLog, need::log},
    {Offer::OptionsHelp, need::nothing},
    {Offer::OptionsSave, need::idle | need::toSave},
    {Offer::OptionsCancel, need::idle | need::optionsUnsaved},
    {Offer::StartUpPauseShown, need::idle | need::countdown},
    {Offer::StartUpPause, need::countdownFree},
    {Offer::PreviewTools, need::idle},
    {Offer::PreviewSave, need::account | need::message},
    {Offer::PreviewSaveOriginal, need::account | need::message},
    {Offer::PreviewSaveAttachment, need::idle | need::account | need::message},
    {Offer::PreviewPrint, need::account | need::message | need::printerFree},
    {Offer::PreviewDelete, need::account | need::message},
    {Offer::PreviewReply, need::account | need::message},
    {Offer::PreviewOpen, need::account | need::message},
    {Offer::ReportDelete, need::idle | need::marks},
    {Offer::TrayCheckAll, need::idle | need::account},
    {Offer::TrayNewMessage, need::idle | need::account},
    {Offer::TrayRunClient, need::idle | need::account},
    {Offer::TrayAutoCheck, need::account},
    {Offer::TraySounds, need::idle | need::account},
    {Offer::TrayOptions, need::idle | need::account},
    {Offer::TrayMenuColours, need::idle | need::account},
    {Offer::TrayUpdates, need::idle},
    {Offer::TrayAbout, need::idle},
    {Offer::TrayHelp, need::idle},
}};

constexpr bool standsInOrder(std::span<const Row> rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (static_cast<std::size_t>(rows[i].offer) != i) return false;
  }
  return true;
}
static_assert(standsInOrder(table), "each offer has its row");

constexpr Needs when(bool condition, Needs need) { return condition ? need : need::nothing; }

Needs metBy(const RuleSituation& s) {
  return when(s.rules > 0, need::rule) | when(s.rules < 1, need::noRule) |
         when(s.rules < mostRules, need::roomForRule) | when(s.rule > 1, need::ruleBefore) |
         when(s.rule > 0 && s.rule < s.rules, need::ruleBehind) | when(s.takesCriteria, need::criteria) |
         when(s.entryComplete, need::entryComplete) | when(s.entries > 0, need::entry) |
         when(s.undone > 0, need::undone) | when(s.fitsFound, need::fits) | when(s.reportWanted, need::report);
}

Needs metBy(const OptionsSituation& s) {
  return when(s.startUpCheck, need::startUpCheck) | when(s.interval, need::interval) | when(s.quiet, need::quiet) |
         when(s.checkMessage, need::checkMessage) | when(s.raised, need::raised) | when(s.sorting, need::sorting) |
         when(s.userColours, need::userColours) | when(!s.defaultClient, need::noDefaultClient) |
         when(!s.defaultSound, need::noDefaultSound) | when(s.log, need::log);
}

Needs metBy(const Situation& s) {
  const bool some = s.accounts > 0;
  return when(s.activity == Activity::Idle, need::idle) | when(s.activity == Activity::Checking, need::check) |
         when(!s.printing, need::printerFree) | when(some, need::account) |
         when(s.accounts < mostAccounts, need::roomForAccount) | when(s.account > 1, need::accountBefore) |
         when(s.account < s.accounts, need::accountBehind) | when(!some && s.page < optionsPage, need::emptyPage) |
         when(!s.unsaved.AcntDirty, need::accountSaved) | when(!s.unsaved.any(), need::allSaved) |
         when(s.unsaved.AcntDirty, need::accountUnsaved) | when(s.unsaved.RulesDirty, need::rulesUnsaved) |
         when(s.unsaved.OptionsDirty, need::optionsUnsaved) |
         when(s.unsaved.OptionsDirty || s.options.notKept, need::toSave) | when(s.messageSelected, need::message) |
         when(s.spamListed, need::spam) | when(s.marksReported, need::marks) |
         when(s.startUpCheckWaits, need::countdown) | when(!s.startUpTimerHeld, need::countdownFree) | metBy(s.rules) |
         metBy(s.options);
}

}  // namespace

Offers offersIn(const Situation& situation) {
  const Needs met = metBy(situation);
  Offers offers;
  for (const Row& row : table) offers.set(row.offer, (row.needs & ~met) == 0);
  return offers;
}

}  // namespace velmora
