#include <gmock/gmock.h>

#include <algorithm>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using namespace std::string_literals;

TEST(Fetch, KeepsEveryByteOfOddMessages) {
  const std::vector<std::string> texts = {
      "",
      "\r\n",
      "Subject: header only\r\n",
      "\r\nbody only\r\n",
      "Subject: dots\r\n\r\n.\r\n..\r\n. \r\n.a\r\n",
      "Subject: odd\r\n\r\nbare\rreturn, null \0, raw \xff\xfe\x1b\r\n\r\n\r\n"s,
      "Subject: long\r\n\r\n" + std::string(300'000, 'x') + "\r\n",
  };
  for (const bool pipelining : {false, true}) {
    for (const std::size_t chunk : {1U, 7U, 65536U}) {
      Desk desk;
      desk.server.pipelining = pipelining;
      desk.server.line.chunk = chunk;
      for (const std::string& text : texts) desk.server.messages.push_back({"u", text});
      desk.server.messages.front().text.clear();
      desk.server.answers["RETR 1"] = "+OK\r\n.\r\n";
      desk.client->Connect();
      desk.messages().FetchAll();
      EXPECT_EQ(desk.texts(), texts);
      EXPECT_EQ(desk.messages().Item(4).Size, static_cast<std::int32_t>(texts[4].size()));
    }
  }
}

TEST(Fetch, KeepsLineEndsOfLineFeedsAlone) {
  Desk desk;
  desk.holds(1);
  desk.server.answers["RETR"] = "+OK\nSubject: x\n\nbody\n..\n.\n";
  desk.client->Connect();
  desk.messages().FetchAll();
  EXPECT_THAT(desk.texts(), ElementsAre("Subject: x\n\nbody\n.\n"));
}

TEST(Fetch, AsksByTheNumbersOfTheListing) {
  Desk desk;
  desk.holds(2);
  desk.server.answers = {
      {"LIST", "+OK\r\n4 30\r\n9 40\r\n.\r\n"}, {"RETR 4", "+OK\r\nfour\r\n.\r\n"}, {"RETR 9", "+OK\r\nnine\r\n.\r\n"}};
  desk.client->Connect();
  desk.messages().FetchAll();
  EXPECT_THAT(desk.texts(), ElementsAre("four\r\n", "nine\r\n"));
}

TEST(Fetch, KeepsTheWindowFilledWithinItsBounds) {
  Desk desk;
  desk.server.pipelining = true;
  desk.holds(120);
  std::size_t most = 0;
  desk.server.line.onReceive = [&] {
    const auto asked = static_cast<std::size_t>(
        std::ranges::count_if(desk.server.commands, [](const std::string& c) { return c.starts_with("RETR"); }));
    most = std::max(most, asked - desk.recorder.received.size());
  };
  desk.server.line.chunk = 100;
  desk.client->Connect();
  desk.messages().FetchAll();
  EXPECT_EQ(most, 50U);
  EXPECT_THAT(desk.recorder.received, SizeIs(120));
}

TEST(Fetch, BoundsTheAnnouncedBytesUnderWay) {
  Desk desk;
  desk.server.pipelining = true;
  desk.holds(4);
  desk.server.answers["LIST"] = "+OK\r\n1 9999999\r\n2 2000000\r\n3 2000000\r\n4 2000000\r\n.\r\n";
  desk.client->Connect();
  desk.messages().FetchAll();
  EXPECT_THAT(desk.server.line.sends, Contains("RETR 1\r\n"));
  EXPECT_THAT(desk.server.line.sends, Contains("RETR 2\r\nRETR 3\r\n"));
  EXPECT_THAT(desk.server.line.sends, Contains("RETR 4\r\n"));
}

TEST(Fetch, NeverAsksTwiceForARefusedMessage) {
  for (const bool pipelining : {false, true}) {
    Desk desk;
    desk.server.pipelining = pipelining;
    desk.holds(3);
    desk.server.answers["RETR 2"] = "-ERR Message 2 expunged\r\n";
    desk.client->Connect();
    EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), pop_failure::messageRefused);
    EXPECT_THAT(desk.client->ErrorText(), HasSubstr("message 2 of 3. The server says: Message 2 expunged"));
    EXPECT_EQ(std::ranges::count(desk.server.commands, "RETR 2"), 1);
    EXPECT_EQ(desk.server.line.connections, 1);
  }
}

TEST(Fetch, TellsProgressInBytes) {
  Desk desk;
  desk.server.line.chunk = 500;
  desk.server.line.pace = Milliseconds(20);
  for (int i = 0; i < 4; ++i)
    desk.server.messages.push_back({"u", "Subject: x\r\n\r\n" + std::string(9984, 'x') + "\r\n"});
  desk.client->Connect();
  desk.recorder.progressTimes.clear();
  desk.messages().FetchAll();
  const auto& told = desk.recorder.progress;
  EXPECT_TRUE(std::ranges::is_sorted(told));
  EXPECT_EQ(told.back(), std::pair(40'000, 40'000));
  EXPECT_GE(told.size(), 20U);
  const auto& times = desk.recorder.progressTimes;
  for (std::size_t i = 1; i + 1 < times.size(); ++i) EXPECT_GE(times[i] - times[i - 1], Milliseconds(50));
}

TEST(Fetch, TellsProgressWhileNothingComes) {
  Desk desk;
  desk.holds(1);
  desk.server.answers["RETR"] = MemoryServer::silence;
  desk.client->Connect();
  EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), pop_failure::silentWhileFetching);
  EXPECT_GE(desk.recorder.progress.size(), 95U);
  EXPECT_LE(desk.recorder.progress.size(), 105U);
}

TEST(Fetch, TotalComesFromStatWhereSizesAreUnknown) {
  Desk desk;
  desk.holds(2);
  desk.server.answers = {{"STAT", "+OK 2 5000000000\r\n"}, {"LIST", "-ERR no\r\n"}};
  desk.client->Connect();
  desk.messages().FetchAll();
  EXPECT_EQ(desk.recorder.progress.back().second, 2147483647);
}

TEST(Fetch, CallsATrickleSilence) {
  Desk desk;
  desk.holds(1);
  desk.server.messages[0].text = "Subject: x\r\n\r\n" + std::string(5000, 'x') + "\r\n";
  desk.client->Connect();
  desk.server.line.chunk = 100;
  desk.server.line.pace = std::chrono::seconds(9);
  EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), 0);

  desk.server.line.chunk = 50;
  EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), pop_failure::silentWhileFetching);
}

TEST(Fetch, GoesOnOneByOneWherePipeliningIsNotStood) {
  const std::vector<std::pair<std::string, std::function<void(MemoryServer&)>>> oddities = {
      {"hears only the first", [](MemoryServer& s) { s.hearsOnlyFirst = true; }},
      {"hangs up on long sends", [](MemoryServer& s) { s.hearsAtMost = 20; }},
      {"an answer too many", [](MemoryServer& s) { s.answers["UIDL"] = "+OK\r\n.\r\nnonsense\r\n"; }},
  };
  for (const auto& [name, setUp] : oddities) {
    SCOPED_TRACE(name);
    Desk desk;
    desk.server.pipelining = true;
    desk.holds(5);
    desk.client->Connect();
    setUp(desk.server);
    desk.server.line.onConnect = [&] { desk.server.answers.clear(); };
    desk.messages().FetchAll();
    EXPECT_EQ(desk.texts(), desk.serverTexts());
    EXPECT_EQ(desk.server.logins, 2);
    desk.server.line.sends.clear();
    desk.client->Connect();
    desk.messages().FetchAll();
    EXPECT_THAT(desk.server.line.sends, Not(Contains(HasSubstr("\r\nRETR"))));
    EXPECT_EQ(desk.server.logins, 3);
  }
}

/// Connects, and drops the line when the third of five messages is on its way.
void dropAtThirdMessage(Desk& desk) {
  desk.server.pipelining = true;
  desk.holds(5);
  desk.server.answers["RETR 3"] = MemoryServer::hangUp;
  desk.server.line.chunk = 10;
  desk.server.line.pace = Milliseconds(60);
  desk.client->Connect();
}

TEST(Fetch, KeepsWhatItHasWhereTheIdentifiersAreTheSame) {
  Desk desk;
  dropAtThirdMessage(desk);
  desk.server.line.onConnect = [&] { desk.server.answers.clear(); };
  desk.messages().FetchAll();
  EXPECT_THAT(desk.recorder.received, ElementsAre("uid1", "uid2", "uid3", "uid4", "uid5"));
  EXPECT_EQ(std::ranges::count(desk.server.commands, "RETR 1"), 1);
  EXPECT_TRUE(std::ranges::is_sorted(desk.recorder.progress));
  EXPECT_EQ(desk.texts(), desk.serverTexts());
}

TEST(Fetch, StartsOverWhereTheIdentifiersDiffer) {
  Desk desk;
  dropAtThirdMessage(desk);
  desk.server.line.onConnect = [&] {
    desk.server.answers.clear();
    desk.server.messages[0] = {"other", "Subject: other\r\n\r\n"};
  };
  desk.messages().FetchAll();
  EXPECT_THAT(desk.recorder.received, ElementsAre("uid1", "uid2", "uid3", "uid4", "uid5"));
  EXPECT_TRUE(std::ranges::is_sorted(desk.recorder.progress, {}, &std::pair<std::int32_t, std::int32_t>::first));
  EXPECT_EQ(desk.texts(), desk.serverTexts());
}

TEST(Fetch, StartsOverWhereThereAreNoIdentifiersToGoBy) {
  Desk desk;
  dropAtThirdMessage(desk);
  desk.server.answers["UIDL"] = "-ERR what?\r\n";
  desk.server.line.onConnect = [&] { desk.server.answers.erase("RETR 3"); };
  desk.messages().FetchAll();
  EXPECT_EQ(std::ranges::count(desk.server.commands, "RETR 1"), 2);
}

TEST(Fetch, ForgetsMarksOfALoginThatWasLost) {
  Desk desk;
  dropAtThirdMessage(desk);
  desk.server.line.onConnect = [&] { desk.server.answers.clear(); };
  desk.messages().Item(0).Deleted = true;
  desk.messages().FetchAll();
  desk.client->Disconnect();
  EXPECT_EQ(desk.server.messages.size(), 5U);
}

TEST(Fetch, FailsWhereTheCountDiffersOrTheSecondTryFails) {
  const std::vector<std::function<void(MemoryServer&)>> changes = {
      [](MemoryServer& s) { s.messages.pop_back(); },
      [](MemoryServer&) {},
  };
  for (const auto& change : changes) {
    Desk desk;
    dropAtThirdMessage(desk);
    desk.server.line.onConnect = [&] { change(desk.server); };
    EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), pop_failure::connectionLost);
    EXPECT_EQ(desk.server.line.connections, 2);
    EXPECT_FALSE(desk.server.line.open);
  }
}

}  // namespace
}  // namespace velmora::test
