#include "app/decisions/offers.h"

#include <span>

#include "accounts/decisions/accounts.h"
#include "rules/decisions/rules.h"

namespace velmora {

namespace {

/// What has to be so for an offer to stand.
using Needs = std::uint32_t;

namespace need {
constexpr Needs nothing = 0;
constexpr Needs idle = 1U << 0U;
constexpr Needs check = 1U << 1U;  ///< one is under way
constexpr Needs account = 1U << 2U;
constexpr Needs roomForAccount = 1U << 3U;
constexpr Needs accountBefore = 1U << 4U;
constexpr Needs accountBehind = 1U << 5U;
constexpr Needs emptyPage = 1U << 6U;  ///< one that shows accounts, and there are none
constexpr Needs accountSaved = 1U << 7U;
constexpr Needs allSaved = 1U << 8U;
constexpr Needs accountUnsaved = 1U << 9U;
constexpr Needs rulesUnsaved = 1U << 10U;
constexpr Needs optionsUnsaved = 1U << 11U;
constexpr Needs message = 1U << 12U;  ///< one is selected
constexpr Needs spam = 1U << 13U;
constexpr Needs marks = 1U << 14U;
constexpr Needs countdown = 1U << 15U;
constexpr Needs countdownFree = 1U << 16U;
constexpr Needs handler = 1U << 17U;  ///< of what nothing handles yet: it is never there
constexpr Needs rule = 1U << 18U;
constexpr Needs noRule = 1U << 19U;
constexpr Needs roomForRule = 1U << 20U;
constexpr Needs ruleBefore = 1U << 21U;
constexpr Needs ruleBehind = 1U << 22U;
constexpr Needs criteria = 1U << 23U;  ///< the chosen field takes one
constexpr Needs entryComplete = 1U << 24U;
constexpr Needs entry = 1U << 25U;
constexpr Needs undone = 1U << 26U;
constexpr Needs fits = 1U << 27U;
constexpr Needs report = 1U << 28U;
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
    {Offer::EmailReply, need::account | need::message | need::handler},
    {Offer::EmailOpen, need::account | need::message | need::handler},
    {Offer::EmailNew, need::account},
    {Offer::EmailCheck, need::account},
    {Offer::MenuPreview, need::idle | need::account | need::message},
    {Offer::MenuDelete, need::idle | need::account | need::message},
    {Offer::MenuReply, need::idle | need::account | need::message | need::handler},
    {Offer::MenuOpen, need::idle | need::account | need::message | need::handler},
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
    {Offer::OptionsHelp, need::nothing},
    {Offer::OptionsSave, need::idle | need::optionsUnsaved},
    {Offer::OptionsCancel, need::idle | need::optionsUnsaved},
    {Offer::StartUpPauseShown, need::idle | need::countdown},
    {Offer::StartUpPause, need::countdownFree},
    {Offer::PreviewTools, need::idle},
    {Offer::PreviewSave, need::account | need::message},
    {Offer::PreviewPrint, need::account | need::message | need::handler},
    {Offer::PreviewDelete, need::account | need::message},
    {Offer::PreviewReply, need::account | need::message | need::handler},
    {Offer::PreviewOpen, need::account | need::message | need::handler},
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

Needs metBy(const Situation& s) {
  const bool some = s.accounts > 0;
  return when(s.activity == Activity::Idle, need::idle) | when(s.activity == Activity::Checking, need::check) |
         when(some, need::account) | when(s.accounts < mostAccounts, need::roomForAccount) |
         when(s.account > 1, need::accountBefore) | when(s.account < s.accounts, need::accountBehind) |
         when(!some && s.page < optionsPage, need::emptyPage) | when(!s.unsaved.AcntDirty, need::accountSaved) |
         when(!s.unsaved.any(), need::allSaved) | when(s.unsaved.AcntDirty, need::accountUnsaved) |
         when(s.unsaved.RulesDirty, need::rulesUnsaved) | when(s.unsaved.OptionsDirty, need::optionsUnsaved) |
         when(s.messageSelected, need::message) | when(s.spamListed, need::spam) | when(s.marksReported, need::marks) |
         when(s.startUpCheckWaits, need::countdown) | when(!s.startUpTimerHeld, need::countdownFree) | metBy(s.rules);
}

}  // namespace

Offers offersIn(const Situation& situation) {
  const Needs met = metBy(situation);
  Offers offers;
  for (const Row& row : table) offers.set(row.offer, (row.needs & ~met) == 0);
  return offers;
}

}  // namespace velmora
