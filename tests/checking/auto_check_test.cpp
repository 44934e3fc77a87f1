#include "checking/auto_check.h"

#include <gmock/gmock.h>

#include "checking/check_cycle.h"
#include "checking/decisions/schedule.h"
#include "checking/start_up_check.h"
#include "options/save_options.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::message;
using namespace std::chrono_literals;
using Seconds = std::chrono::local_seconds;

Options timing(std::int16_t minutes, const char* begin = nullptr, const char* end = "") {
  Options options;
  options.Hours = static_cast<std::int16_t>(minutes / 60);
  options.Minutes = static_cast<std::int16_t>(minutes % 60);
  options.NoCheck = begin == nullptr ? 0 : 1;
  if (begin != nullptr) options.NoCheckTimeBegin = begin;
  options.NoCheckTimeEnd = end;
  return options;
}

/// The same, with the interval kept across the end of a month.
Options kept(Options options) {
  options.KeepInterval = 1;
  return options;
}

/// What no simulated week holds.
TEST(Schedule, TakesOddOptionsAsTheyAre) {
  struct Case {
    const char* what;
    Options options;
    DateTime now;
    bool postponed;
    NextCheck next;
  };
  const DateTime evening{2026, 12, 31, 23, 30, 40};
  const Case cases[] = {
      {"no interval", timing(0), evening, false, {"Auto Check at 11:30 PM", "31/12/26-23:30"}},
      {"only the evening of a night",
       timing(30, "22:00", "06:00"),
       {2026, 11, 15, 1, 0, 0},
       false,
       {"Auto Check at 1:30 AM", "15/11/26-01:30"}},
      {"its end belongs to it",
       timing(30, "10:00", "12:00"),
       {2026, 11, 15, 11, 30, 0},
       false,
       {"Auto Check at 12:00 PM", "15/11/26-12:00", true}},
      {"no period at all",
       timing(30, "10:00", "10:00"),
       {2026, 11, 15, 9, 30, 0},
       false,
       {"Auto Check at 10:00 AM", "15/11/26-10:00"}},
      {"put off already",
       timing(30, "22:00", "06:00"),
       {2026, 11, 15, 21, 50, 0},
       true,
       {"Auto Check at 10:20 PM", "15/11/26-22:20"}},
      {"nonsense is none either",
       timing(30, "10:0x", "25:00"),
       {2026, 11, 15, 9, 30, 0},
       true,
       {"Auto Check at 10:00 AM", "15/11/26-10:00", true}},
      {"beyond any day", timing(32767), {2026, 11, 15, 0, 0, 0}, false, {"Auto Check at 6:07 PM", "16/11/26-18:07"}},
      {"before now", timing(-90), {2026, 2, 28, 1, 0, 0}, false, {"Auto Check at 11:30 PM", "01/03/26-23:30"}},
  };
  for (const auto& c : cases) EXPECT_EQ(nextAutoCheck(c.options, c.now, 0, c.postponed), c.next) << c.what;
}

TEST(Schedule, AShortFirstIntervalCountsFromTheNextMinuteWhenThisOneIsWellBegun) {
  for (const auto& [minutes, second, extra] : {std::tuple{15, 20, 1}, {15, 19, 0}, {16, 20, 0}}) {
    const DateTime now{2026, 1, 1, 0, 0, second};
    EXPECT_EQ(extraMinutesAtStart(timing(static_cast<std::int16_t>(minutes)), now), extra) << minutes << ' ' << second;
  }
}

class AutoCheck : public test::RunningProgram {
 protected:
  void SetUp() override {
    addAccount("Work");
    option("UseInterval", "1");
    option("PlaySound", "0");
  }

  void setClock(Seconds now) {
    DateTime& clock = platform.clock;
    const auto second = (now - day_).count();
    if (second < 0 || second >= 24 * 60 * 60) {
      day_ = std::chrono::floor<std::chrono::days>(now);
      const std::chrono::year_month_day date(day_);
      clock.year = static_cast<int>(date.year());
      clock.month = static_cast<int>(static_cast<unsigned>(date.month()));
      clock.day = static_cast<int>(static_cast<unsigned>(date.day()));
      setClock(now);
      return;
    }
    clock.hour = static_cast<int>(second / 3600);
    clock.minute = static_cast<int>(second / 60 % 60);
    clock.second = static_cast<int>(second % 60);
  }

  static Seconds at(int year, unsigned month, unsigned day, std::chrono::seconds time) {
    return std::chrono::local_days(std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day)) + time;
  }

  int checks() { return platform.servers["Work"].line.connections; }
  void tick() { program.frmMain.tmrMailTime.tick(); }

  std::chrono::local_days day_;
};

/// Where the clock of the wall jumps to, and when: summer time, a user who sets it, a machine that slept.
struct Jump {
  Seconds when;
  Seconds to;
};

struct Stretch {
  const char* what;
  Options options;
  Seconds from;
  std::chrono::hours length;
  std::vector<Jump> jumps;
  int checks;
  std::vector<std::string>
      odd;  ///< those neither an interval nor, as at a month's end, a second behind another: day and time
};

class SimulatedWeeks : public AutoCheck, public testing::WithParamInterface<int> {
 protected:
  static std::vector<Stretch> stretches() {
    return {
        {"days with nights",
         timing(30, "22:00", "06:00"),
         at(2026, 11, 9, 12h),
         120h,
         {},
         159,
         {"09 12:30:00", "10 06:00:00", "11 06:00:00", "12 06:00:00", "13 06:00:00", "14 06:00:00"}},
        {"the end of a year", timing(720), at(2026, 12, 28, 7h + 5s), 168h, {}, 18012, {"28 19:00:00", "01 11:59:00"}},
        {"the end of a February",
         timing(45, "11:40", "12:20"),
         at(2028, 2, 28, 6h),
         48h,
         {},
         1562,
         {"28 06:45:00", "28 12:20:00", "01 00:44:00"}},
        {"summer time begins",
         timing(20, "01:50", "02:10"),
         at(2026, 3, 28, 23h),
         6h,
         {{at(2026, 3, 29, 2h), at(2026, 3, 29, 3h)}},
         17,
         {"28 23:20:00", "29 03:00:00"}},
        {"summer time ends",
         timing(20, "02:10", "02:40"),
         at(2026, 10, 24, 23h),
         6h,
         {{at(2026, 10, 25, 3h), at(2026, 10, 25, 2h)}},
         13,
         {"24 23:20:00", "25 02:40:00"}},
        {"set back and forward",
         timing(17),
         at(2026, 5, 4, 10h),
         20h,
         {{at(2026, 5, 4, 12h + 7s), at(2026, 5, 3, 1h)}, {at(2026, 5, 3, 4h), at(2026, 6, 20, 23h + 50min)}},
         60,
         {"04 10:17:00", "20 23:50:00"}},
        {"asleep for hours",
         timing(60, "00:10", "05:00"),
         at(2026, 5, 4, 10h),
         24h,
         {{at(2026, 5, 4, 11h), at(2026, 5, 4, 16h + 13s)}, {at(2026, 5, 4, 22h), at(2026, 5, 5, 7h)}},
         24,
         {"04 16:00:13", "04 17:00:00", "05 07:00:00"}},
        {"the end of a year, kept", kept(timing(720)), at(2026, 12, 28, 7h + 5s), 168h, {}, 14, {"28 19:00:00"}},
        {"nights at the end of a year, kept",
         kept(timing(30, "22:00", "06:00")),
         at(2026, 12, 30, 12h),
         72h,
         {},
         95,
         {"30 12:30:00", "31 06:00:00", "01 06:00:00", "02 06:00:00"}},
    };
  }

  /// The user saves another timing.
  void save(const Options& options) {
    program.EditOptions.Hours = options.Hours;
    program.EditOptions.Minutes = options.Minutes;
    program.EditOptions.NoCheck = options.NoCheck;
    program.EditOptions.NoCheckTimeBegin = options.NoCheckTimeBegin;
    program.EditOptions.NoCheckTimeEnd = options.NoCheckTimeEnd;
    program.EditOptions.KeepInterval = options.KeepInterval;
    SaveOptions(program);
  }
};

INSTANTIATE_TEST_SUITE_P(Through, SimulatedWeeks, testing::Range(0, 9));

TEST_P(SimulatedWeeks, GoAsTheyAreWrittenDown) {
  for (int more = 0; more < (GetParam() + 1) % 3; ++more) addAccount("More" + std::to_string(more));
  const Stretch stretch = stretches().at(static_cast<std::size_t>(GetParam()));
  Seconds now = stretch.from, last{};
  setClock(now);
  start();
  save(stretch.options);
  auto jump = stretch.jumps.begin();
  std::vector<std::string> odd;
  for (auto passed = 0s; passed < stretch.length; passed += 1s, now += 1s) {
    if (jump != stretch.jumps.end() && now == jump->when) now = jump++->to;
    setClock(now);
    const int before = checks();
    tick();
    if (checks() == before) continue;
    ASSERT_EQ(checks(), before + 1);
    if (now - last != std::chrono::minutes(stretch.options.IntervalMinutes()) && now - last != 1s)
      odd.push_back(formatDateTime(platform.clock, "dd hh:mm:ss", platform.dateNames()));
    last = now;
  }
  EXPECT_EQ(jump, stretch.jumps.end()) << stretch.what;
  EXPECT_EQ(checks(), stretch.checks) << stretch.what;
  EXPECT_EQ(odd, stretch.odd) << stretch.what;
}

TEST_F(AutoCheck, TheFirstIntervalAtStartCountsItsExtraMinute) {
  option("Minutes", "10");
  platform.clock.second = 20;
  start();
  EXPECT_EQ(program.autoCheck.NextCheckTime, "15/11/26-16:32");
}

TEST_F(AutoCheck, SwitchedOffAndOnItKeepsItsTime) {
  option("Minutes", "30");
  start();
  const auto toggle = [this] { program.frmMain.mnuTrayAutoCheck.Click(); };
  EXPECT_EQ(panel(4), "Auto Check at 4:51 PM");
  EXPECT_EQ(program.frmMain.mnuTrayAutoCheck.Caption.get(), "&Auto Check - On|#AutoCheckOn");
  program.autoCheck.NoCheckPostponed = true;
  toggle();
  EXPECT_EQ(panel(4), "Auto Check Off");
  EXPECT_EQ(platform.tree.values["Settings\\Options/UseInterval"], "0");
  EXPECT_EQ(program.frmMain.mnuTrayAutoCheck.Caption.get(), "&Auto Check - Off|#AutoCheckOff");
  EXPECT_FALSE(program.autoCheck.NoCheckPostponed);
  platform.clock.minute = 40;
  tick();
  EXPECT_TRUE(program.frmMain.tmrStatusBar.Enabled);
  toggle();
  EXPECT_EQ(panel(4), "Auto Check at 4:51 PM") << "not half an hour from now";
  EXPECT_EQ(program.autoCheck.NextCheckTime, "15/11/26-16:51");
  program.autoCheck.NoCheckPostponed = true;
  program.EditOptions.Hours = 1;
  SaveOptions(program);
  EXPECT_EQ(panel(4), "Auto Check at 6:10 PM") << "another timing counts from now";
  EXPECT_FALSE(program.autoCheck.NoCheckPostponed);
}

TEST_F(AutoCheck, SwitchedOnInTheMiddleOfACheckItWaitsForItsEnd) {
  option("UseInterval", "0");
  option("Minutes", "0");
  platform.servers["Work"].messages = {message("a"), message("b")};
  start();
  check();
  program.EditOptions.SortColumn = 3;
  program.EditOptions.SortOrder = program.options.SortOrder = 0;
  bool ticked = false;
  platform.servers["Work"].line.onReceive = [&] {
    if (std::exchange(ticked, true)) return;
    program.frmMain.mnuTrayAutoCheck.Click();
    tick();
    EXPECT_TRUE(program.frmMain.lvwEmail.Rows().empty()) << "the list belongs to the check";
  };
  checkAll();
  EXPECT_TRUE(ticked);
  EXPECT_EQ(checks(), 2);
  EXPECT_EQ(program.frmMain.lvwEmail.Rows().size(), 2U);
  tick();
  EXPECT_EQ(checks(), 3) << "the interval of nothing is over at once";
}

TEST_F(AutoCheck, AStoppedCheckStandsInTheWayOfNoOther) {
  option("Minutes", "0");
  start();
  auto& line = platform.servers["Work"].line;
  line.onReceive = [this] { stop(); };
  tick();
  EXPECT_TRUE(program.connection.StopRequested);
  line.onReceive = nullptr;
  checkAll();
  EXPECT_EQ(checks(), 2);
  program.connection.StopRequested = true;
  tick();
  EXPECT_EQ(checks(), 3);
  EXPECT_EQ(program.accounts[1].AcntStatusText, "Work - No Messages");
}

TEST_F(AutoCheck, EveryEnabledAccountsCheckMovesTheNextTime) {
  addAccount("Off", false);
  option("Minutes", "10");
  start();
  platform.clock.minute = 40;
  program.autoCheck.NoCheckPostponed = true;
  checkAll();
  EXPECT_EQ(panel(4), "Auto Check at 4:50 PM");
  EXPECT_FALSE(program.autoCheck.NoCheckPostponed) << "a check by hand lets the next time be worked out afresh";
  platform.clock.minute = 45;
  program.frmMain.TabStripEmail.SelectTab(2);
  check();
  EXPECT_EQ(panel(4), "Auto Check at 4:50 PM");
}

class StartUpCheck : public AutoCheck {
 protected:
  void SetUp() override {
    AutoCheck::SetUp();
    option("EmailCheckStartUp", "1");
    option("StartUpDelay", "2");
    option("Minutes", "30");
  }

  void second() { program.frmMain.tmrMailStartUp.tick(); }
  Toolbar& pause() { return program.frmMain.tbrButtons[pauseStartUpBar]; }
};

TEST_F(StartUpCheck, CountsDownAndChecksOnce) {
  start();
  EXPECT_TRUE(pause().Visible);
  for (const auto* text : {"StartUp Check: 2 sec", "StartUp Check: 1 sec"}) {
    second();
    EXPECT_EQ(panel(3), text);
    EXPECT_EQ(checks(), 0);
  }
  second();
  EXPECT_EQ(checks(), 1);
  EXPECT_EQ(panel(4), "Auto Check at 4:52 PM") << "a minute further than after any other check";
  EXPECT_FALSE(pause().Visible);
  second();
  EXPECT_EQ(checks(), 1);
}

TEST_F(StartUpCheck, LeavesTheQuietPeriodQuiet) {
  addAccount("Home");
  option("NoCheck", "1");
  option("NoCheckTimeBegin", "16:00");
  option("NoCheckTimeEnd", "18:00");
  start();
  for (int i = 0; i < 3; ++i) second();
  EXPECT_EQ(checks(), 1);
  EXPECT_EQ(panel(4), "Auto Check at 6:00 PM");
}

TEST_F(StartUpCheck, CanBePausedAndHeldWhileADialogIsOpen) {
  start();
  second();
  const Button& button = pause().Buttons.front();
  EXPECT_EQ(button.Caption.get(), "StartUp: Pause       ");
  for (const bool pausedByUser : {false, true}) {
    if (pausedByUser) button.click();
    SuspendStartUpTimer(program, TimerAction::Suspend);
    EXPECT_FALSE(button.Enabled);
    second();
    EXPECT_EQ(panel(3), "StartUp Check: 2 sec");
    SuspendStartUpTimer(program, TimerAction::Restore);
    EXPECT_TRUE(button.Enabled);
    EXPECT_EQ(program.frmMain.tmrMailStartUp.Enabled.get(), !pausedByUser);
  }
  EXPECT_EQ(button.Caption.get(), "StartUp: Continue   ");
  EXPECT_EQ(button.ToolTipText.get(), "Continue the StartUp Check Timer");
  button.click();
  second();
  EXPECT_EQ(panel(3), "StartUp Check: 1 sec");
}

TEST_F(StartUpCheck, WaitsForADeletion) {
  start();
  SetCheckingInterface(program, Activity::Deleting);
  for (int i = 0; i < 5; ++i) second();
  EXPECT_EQ(checks(), 0);
  SetCheckingInterface(program, Activity::Idle);
  for (int i = 0; i < 3; ++i) second();
  EXPECT_EQ(checks(), 1);
}

TEST_F(StartUpCheck, IsGivenUpForGoodByAnotherCheck) {
  start();
  check();
  EXPECT_FALSE(pause().Visible);
  for (int i = 0; i < 2; ++i) {
    ToggleStartUpPause(program);
    EXPECT_FALSE(program.frmMain.tmrMailStartUp.Enabled);
  }
}

TEST_F(StartUpCheck, WaitsForTheNetworkWithoutLosingItsCount) {
  option("FollowMachine", "1");
  start();
  platform.network = Connectivity::Offline;
  for (int i = 0; i < 9; ++i) second();
  EXPECT_EQ(panel(3), "StartUp Check: 0 sec");
  EXPECT_EQ(panel(4), "StartUp Check: Offline");
  pause().Buttons.front().click();
  EXPECT_EQ(panel(4), "Auto Check at 4:51 PM");
  pause().Buttons.front().click();
  second();
  EXPECT_EQ(checks(), 0);
  platform.network = Connectivity::Unknown;
  for (int i = 0; i < 5; ++i) second();
  EXPECT_EQ(checks(), 0) << "no name is found yet";
  second();
  EXPECT_EQ(checks(), 1);
  EXPECT_EQ(panel(4), "Auto Check at 4:52 PM");
}

class FollowedMachine : public AutoCheck {
 protected:
  void SetUp() override {
    AutoCheck::SetUp();
    option("Minutes", "30");
    option("FollowMachine", "1");
  }

  /// Seconds until a check comes, or 20.
  int untilCheck() {
    const int before = checks();
    int seconds = 0;
    for (; seconds < 20 && checks() == before; ++seconds) tick();
    return seconds;
  }

  void expectPutOff() {
    platform.network = Connectivity::Offline;
    ++platform.clock.hour;
    EXPECT_EQ(untilCheck(), 20);
    EXPECT_EQ(panel(4), "Auto Check: Offline");
  }

  void follow(std::int16_t wanted) {
    program.EditOptions.FollowMachine = wanted;
    SaveOptions(program);
  }
};

TEST_F(FollowedMachine, WhatIsDueOfflineComesOnceThereIsANetworkOrNobodyTells) {
  start();
  const std::pair<std::function<void()>, int> cases[] = {{[this] { platform.network = Connectivity::Online; }, 6},
                                                         {[this] { platform.network = Connectivity::Unknown; }, 6},
                                                         {[this] { follow(0); }, 1}};
  for (const auto& [happens, seconds] : cases) {
    expectPutOff();
    happens();
    EXPECT_EQ(untilCheck(), seconds);
    EXPECT_TRUE(panel(4).starts_with("Auto Check at"));
    EXPECT_EQ(untilCheck(), 20);
  }
  EXPECT_FALSE(platform.machineIsBack);
}

TEST_F(FollowedMachine, WhatIsPutOffDoesNotComeInTheQuietPeriod) {
  option("NoCheck", "1");
  option("NoCheckTimeBegin", "17:30");
  option("NoCheckTimeEnd", "19:00");
  start();
  expectPutOff();
  ++platform.clock.hour;
  platform.network = Connectivity::Online;
  EXPECT_EQ(untilCheck(), 20);
  EXPECT_EQ(panel(4), "Auto Check at 7:00 PM");
}

TEST_F(FollowedMachine, WhatIsPutOffIsForgottenAtAUsersCheckAndWithAutoCheck) {
  start();
  expectPutOff();
  checkAll();
  EXPECT_EQ(checks(), 1) << "which never waits";
  EXPECT_EQ(panel(4), "Auto Check at 5:51 PM");
  expectPutOff();
  program.frmMain.mnuTrayAutoCheck.Click();
  EXPECT_EQ(panel(4), "Auto Check Off");
  platform.network = Connectivity::Online;
  platform.clock.hour = 17;
  program.frmMain.mnuTrayAutoCheck.Click();
  EXPECT_EQ(untilCheck(), 20);
}

TEST_F(FollowedMachine, BackTheNextCheckComesSomeSecondsLaterButNotInQuietHoursOrAgainAtOnce) {
  const std::pair<DateTime, int> cases[] = {{{2026, 11, 15, 16, 21, 10}, 6}, {{2026, 11, 15, 16, 22, 9}, 20},
                                            {{2026, 11, 15, 16, 22, 10}, 6}, {{2026, 11, 15, 16, 2, 0}, 6},
                                            {{2026, 11, 15, 21, 59, 59}, 6}, {{2026, 11, 15, 22, 0, 0}, 20},
                                            {{2026, 11, 16, 5, 59, 59}, 20}, {{2026, 11, 16, 6, 0, 0}, 6}};
  option("NoCheck", "1");
  option("NoCheckTimeBegin", "22:00");
  option("NoCheckTimeEnd", "06:00");
  start();
  for (const auto& [now, seconds] : cases) {
    platform.clock = now;
    program.autoCheck.NextCheckTime = "31/12/26-23:59";
    platform.machineIsBack();
    EXPECT_EQ(untilCheck(), seconds) << generalDate(now);
  }
  program.autoCheck.NextCheckTime = "15/11/26-23:59";
  platform.machineIsBack();
  EXPECT_EQ(untilCheck(), 6) << "one that is due waits for the network all the same";
}

TEST_F(AutoCheck, WatchesNoMachineUnasked) {
  start();
  EXPECT_FALSE(platform.machineIsBack);
  platform.network = Connectivity::Offline;
  platform.clock.minute = 51;
  tick();
  EXPECT_EQ(checks(), 1);
}

}  // namespace
}  // namespace velmora
