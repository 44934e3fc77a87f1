#include "app/decisions/offers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <set>

#include "accounts/decisions/accounts.h"
#include "rules/decisions/rules.h"

namespace velmora {
namespace {

using OfferSet = std::set<Offer>;

OfferSet setOf(const Offers& offers) {
  OfferSet on;
  for (std::size_t i = 0; i < offerCount; ++i) {
    if (offers[static_cast<Offer>(i)]) on.insert(static_cast<Offer>(i));
  }
  return on;
}

/// What one change of the situation turns on or off.
OfferSet turnedBy(Situation situation, const std::function<void(Situation&)>& change) {
  OfferSet turned;
  const OfferSet before = setOf(offersIn(situation));
  change(situation);
  const OfferSet after = setOf(offersIn(situation));
  std::set_symmetric_difference(before.begin(), before.end(), after.begin(), after.end(),
                                std::inserter(turned, turned.end()));
  return turned;
}

using enum Offer;

/// What a check, a test and a deletion shut.
const OfferSet shutWhileBusy = {MainButtonsFrame, EmailTools, EmailTabs,    AcntToolsFrame,  AcntTabs,
                                AcntFields,       EmailHelp,  Close,        CheckAll,        StartClient,
                                OptionsFrame,     OptMove,    PreviewTools, TrayCheckAll,    TrayNewMessage,
                                TrayRunClient,    TraySounds, TrayOptions,  TrayMenuColours, TrayUpdates,
                                TrayAbout,        TrayHelp};

OfferSet also(OfferSet set, std::initializer_list<Offer> more) {
  set.insert(more);
  return set;
}

TEST(OffersOfTheProgram, FollowEachValue) {
  const Situation someAccounts{.accounts = 2, .account = 1};
  const Situation someRules{.accounts = 2, .account = 1, .rules = {.rules = 2, .rule = 2}};
  const Situation busyHands{.accounts = 2,
                            .account = 1,
                            .messageSelected = true,
                            .spamListed = true,
                            .marksReported = true,
                            .startUpCheckWaits = true};
  const struct {
    const char* what;
    Situation before;
    std::function<void(Situation&)> change;
    OfferSet turned;
  } cases[] = {
      {"a check", someAccounts, [](Situation& s) { s.activity = Activity::Checking; },
       also(shutWhileBusy, {StopShown})},
      {"the fetching of one message", someAccounts, [](Situation& s) { s.activity = Activity::Fetching; },
       shutWhileBusy},
      {"a test", someAccounts, [](Situation& s) { s.activity = Activity::Testing; }, shutWhileBusy},
      {"a deletion over all that a user has before him", busyHands,
       [](Situation& s) { s.activity = Activity::Deleting; },
       also(shutWhileBusy, {MenuPreview, MenuDelete, MenuReply, MenuOpen, MenuSaveOriginal, PreviewSaveAttachment,
                            ReportDelete, StartUpPauseShown})},
      {"an account more",
       {.accounts = 0},
       [](Situation& s) { s.accounts = s.account = 1; },
       {EmailList, EmailNew, EmailCheck, AcntDelete, AcntTest, AcntFieldsShown, NoAcntsBannerShown, Close, CheckAll,
        TrayCheckAll, TrayNewMessage, TrayRunClient, TrayAutoCheck, TraySounds, TrayOptions, TrayMenuColours,
        RulesToolsShown, RulesTools, NoRulesShown}},
      {"the last page without accounts", {}, [](Situation& s) { s.page = optionsPage; }, {NoAcntsBannerShown}},
      {"as many as there may be", someAccounts, [](Situation& s) { s.accounts = mostAccounts; }, {AcntAdd}},
      {"the last account", someAccounts, [](Situation& s) { s.account = 2; }, {AcntBackward, AcntForward}},
      {"a changed account",
       someAccounts,
       [](Situation& s) { s.unsaved.AcntDirty = true; },
       {MainButtons, AcntTools, AcntForward, OptMove, AcntSave, AcntCancel}},
      {"changed rules",
       someAccounts,
       [](Situation& s) { s.unsaved.RulesDirty = true; },
       {MainButtons, OptMove, RulesSave, RulesCancel}},
      {"the first rule",
       someAccounts,
       [](Situation& s) { s.rules = {.rules = 1, .rule = 1}; },
       {RulesDelete, RulesFrame, NoRulesShown}},
      {"a rule of nobody", {}, [](Situation& s) { s.rules = {.rules = 1, .rule = 1}; }, {RulesDelete}},
      {"a rule more", someRules, [](Situation& s) { s.rules.rules = 3; }, {RuleDown}},
      {"the last rule", someRules, [](Situation& s) { s.rules.rule = 1; }, {RuleUp, RuleDown}},
      {"as many rules as there may be",
       someRules,
       [](Situation& s) { s.rules.rules = mostRules; },
       {RulesAdd, RuleDown}},
      {"a field with comparisons", someRules, [](Situation& s) { s.rules.takesCriteria = true; }, {RuleCriteria}},
      {"a criteria", someRules, [](Situation& s) { s.rules.entryComplete = true; }, {RuleUpdate}},
      {"an entry", someRules, [](Situation& s) { s.rules.entries = 1; }, {RuleBoolean, RuleClear, RuleUndo}},
      {"an undone entry", someRules, [](Situation& s) { s.rules.undone = 1; }, {RuleRedo}},
      {"a message that a rule fits", someRules, [](Situation& s) { s.rules.fitsFound = true; }, {RuleFits}},
      {"a report", someRules, [](Situation& s) { s.rules.reportWanted = true; }, {RuleNotifyDetails}},
      {"changed options",
       someAccounts,
       [](Situation& s) { s.unsaved.OptionsDirty = true; },
       {MainButtons, OptMove, OptionsSave, OptionsCancel}},
      {"a check at start-up", {}, [](Situation& s) { s.options.startUpCheck = true; }, {OptStartUpDelay}},
      {"an interval", {}, [](Situation& s) { s.options.interval = true; }, {OptInterval}},
      {"a quiet time", {}, [](Situation& s) { s.options.quiet = true; }, {OptQuietTime}},
      {"the message after a check", {}, [](Situation& s) { s.options.checkMessage = true; }, {OptCheckMessage}},
      {"raised buttons", {}, [](Situation& s) { s.options.raised = true; }, {OptApplyStyle}},
      {"sorting", {}, [](Situation& s) { s.options.sorting = true; }, {OptSorting}},
      {"colours of the user's", {}, [](Situation& s) { s.options.userColours = true; }, {OptColours}},
      {"a protocol log", {}, [](Situation& s) { s.options.log = true; }, {OptShowLog}},
      {"a default client", {}, [](Situation& s) { s.options.defaultClient = true; }, {AcntClientBrowse}},
      {"a default sound", {}, [](Situation& s) { s.options.defaultSound = true; }, {AcntSoundBrowse}},
      {"a message",
       someAccounts,
       [](Situation& s) { s.messageSelected = true; },
       {EmailPreview, EmailDelete, EmailReply, EmailOpen, MenuPreview, MenuDelete, MenuReply, MenuOpen,
        MenuSaveOriginal, PreviewSave, PreviewSaveOriginal, PreviewSaveAttachment, PreviewPrint, PreviewDelete,
        PreviewReply, PreviewOpen}},
      {"a message at the printer", busyHands, [](Situation& s) { s.printing = true; }, {PreviewPrint}},
      {"spam", someAccounts, [](Situation& s) { s.spamListed = true; }, {EmailSpam}},
      {"spam of nobody", {}, [](Situation& s) { s.spamListed = true; }, {}},
      {"a message of nobody", {}, [](Situation& s) { s.messageSelected = true; }, {}},
      {"marks in the report", someAccounts, [](Situation& s) { s.marksReported = true; }, {ReportDelete}},
      {"the countdown", someAccounts, [](Situation& s) { s.startUpCheckWaits = true; }, {StartUpPauseShown}},
      {"a dialog over the countdown", someAccounts, [](Situation& s) { s.startUpTimerHeld = true; }, {StartUpPause}},
  };
  for (const auto& [what, before, change, turned] : cases) EXPECT_EQ(turnedBy(before, change), turned) << what;
}

// Changes that nobody has saved yet stay shut in, whatever else goes on and comes to its end.
TEST(OffersOfTheProgram, UnsavedChangesShutTheMainButtonsThroughoutACheck) {
  for (const auto page : {&UnsavedChanges::AcntDirty, &UnsavedChanges::RulesDirty, &UnsavedChanges::OptionsDirty}) {
    for (const auto activity : {Activity::Checking, Activity::Testing, Activity::Deleting, Activity::Idle}) {
      Situation situation{.activity = activity, .accounts = 2, .account = 1};
      situation.unsaved.*page = true;
      const Offers on = offersIn(situation);
      EXPECT_FALSE(on[MainButtons]);
      EXPECT_EQ(on[AcntSave] || on[RulesSave] || on[OptionsSave], activity == Activity::Idle);
    }
  }
}

}  // namespace
}  // namespace velmora
