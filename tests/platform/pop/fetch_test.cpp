#include <gmock/gmock.h>

#include <algorithm>
#include <array>

#include "platform/mail_bounds.h"
#include "platform/pop/kept_texts.h"
#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::SizeIs;
using testing::StartsWith;

TEST(Fetch, KeepsTheWindowFilledWithinItsBounds) {
  Desk desk;
  desk.server.pipelining = true;
  desk.holds(220);
  std::size_t most = 0;
  desk.server.line.onReceive = [&] {
    const auto asked = static_cast<std::size_t>(
        std::ranges::count_if(desk.server.commands, [](const std::string& c) { return c.starts_with("RETR"); }));
    most = std::max(most, asked - desk.recorder.received.size());
  };
  desk.server.line.chunk = 100;
  desk.client->Connect();
  desk.messages().FetchAll();
  EXPECT_EQ(most, 100U);
  EXPECT_THAT(desk.server.line.sends, Contains(AllOf(StartsWith("RETR 101\r\n"), EndsWith("\r\nRETR 150\r\n"))));
  EXPECT_THAT(desk.recorder.received, SizeIs(220));

  Desk large;
  large.server.pipelining = true;
  large.holds(4);
  large.server.answers["LIST"] = "+OK\r\n1 9999999\r\n2 2000000\r\n3 2000000\r\n4 2000000\r\n.\r\n";
  large.client->Connect();
  large.messages().FetchAll();
  EXPECT_THAT(large.server.line.sends, IsSupersetOf({"RETR 1\r\n", "RETR 2\r\nRETR 3\r\n", "RETR 4\r\n"}));
}

TEST(Fetch, TellsProgressInBytesNotTooOften) {
  Desk desk;
  desk.server.line.chunk = 500;
  desk.server.line.pace = Milliseconds(20);
  for (int i = 0; i < 4; ++i)
    desk.server.messages.push_back({"u", "Subject: x\r\n\r\n" + std::string(9984, 'x') + "\r\n"});
  desk.client->Connect();
  const Milliseconds start = desk.server.line.clock;
  desk.messages().FetchAll();
  const auto& told = desk.recorder.progress;
  EXPECT_TRUE(std::ranges::is_sorted(told));
  EXPECT_EQ(told.back(), std::pair(40'000, 40'000));
  EXPECT_GE(told.size(), 20U);
  EXPECT_LE(told.size(), static_cast<std::size_t>((desk.server.line.clock - start) / Milliseconds(50)) + 2);
}

TEST(Fetch, TellsProgressWhileNothingComes) {
  Desk desk;
  desk.holds(1);
  desk.server.answers = {{"STAT", "+OK 1 5000000000\r\n"}, {"LIST", "-ERR no\r\n"}, {"RETR", MemoryServer::silence}};
  desk.client->Connect();
  EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), pop_failure::silentWhileFetching);
  EXPECT_GE(desk.recorder.progress.size(), 95U);
  EXPECT_LE(desk.recorder.progress.size(), 105U);
  EXPECT_EQ(desk.recorder.progress.back().second, 2147483647) << "where no sizes are listed it is the mailbox's";
}

TEST(Fetch, TellsASlowServerFromOneThatHoldsItForEver) {
  using namespace std::chrono_literals;
  struct Case {
    std::string command, answer;  ///< slow by `chunk` bytes each `pace`; without a command all are
    std::size_t chunk;
    Milliseconds pace;
    std::int32_t failure;
    Milliseconds longest;
    std::string words;
    bool pipelining = false;
  };
  std::string list = "+OK\r\n";
  while (list.size() < 30'000'000) list += "1 " + std::string(998, '5') + "\r\n";
  const std::string mail = list + ".\r\n";
  const std::string line = "+OK " + std::string(5000, 'x') + "\r\n";
  const std::int32_t stalled = pop_failure::silentWhileFetching;
  const std::vector<Case> cases = {
      {"RETR 1", mail, 2000, 1s, 0, 5h, ""},
      {"RETR 1", mail, 1500, 1s, stalled, 120s, "too slowly"},
      {"RETR 1", mail, 1, 50ms, stalled, 120s, "too slowly"},
      {"RETR 1", mail, 1, 50ms, stalled, 240s, "too slowly", true},
      {"RETR 1", line, 1, 5s, stalled, 30s, "in time"},
      {"LIST", list, 1, 50ms, stalled, 120s, "too slowly"},
      {"LIST", list, 2000, 1s, stalled, 30min, "in time"},
      {"PASS", line, 1, 5s, pop_failure::timedOut, 30s, "in time"},
      {"CAPA", list, 1, 50ms, 0, 120s, ""},
      {"CAPA", list, 2000, 1s, 0, 130s, ""},
      {"", "", 9999, 9s, 0, 10min, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.command + " by " + std::to_string(c.chunk));
    Desk desk;
    desk.holds(50);
    desk.server.pipelining = c.pipelining;
    if (!c.command.empty()) desk.server.answers[c.command] = c.answer;
    desk.server.line.onConnect = [&] {
      desk.server.line.pace = 0ms;
      desk.server.line.sends.assign(1, "");
    };
    desk.server.line.onReceive = [&] {
      if (desk.server.line.pace > 0ms || !desk.server.line.sends.back().starts_with(c.command)) return;
      desk.server.line.chunk = c.chunk;
      desk.server.line.pace = c.pace;
    };
    EXPECT_EQ(failureOf([&] { desk.client->Connect(), desk.messages().FetchAll(); }), c.failure);
    EXPECT_THAT(desk.client->ErrorText(), HasSubstr(c.words));
    EXPECT_LE(desk.server.line.clock, c.longest);
  }
}

TEST(Fetch, GoesOnOneByOneWhereAnswersAreMixedUp) {
  const std::vector<std::map<std::string, std::string>> oddities = {
      {{"UIDL", "+OK\r\n.\r\nnonsense\r\n"}},
      {{"LIST", "+OK\r\n1 uid1\r\n2 uid2\r\n.\r\n"}, {"UIDL", "+OK\r\n1 30\r\n2 30\r\n.\r\n"}},
  };
  for (const auto& answers : oddities) {
    Desk desk;
    desk.server.pipelining = true;
    desk.holds(2);
    desk.server.answers = answers;
    desk.client->Connect();
    desk.server.line.onConnect = [&] { desk.server.answers.clear(); };
    desk.messages().FetchAll();
    EXPECT_TRUE(desk.hasAllTexts());
    EXPECT_EQ(desk.server.logins, 2);
    EXPECT_TRUE(desk.habit().oneByOne) << "it is kept in mind";
  }
}

TEST(Fetch, GoesOnBehindWhatItHasOnlyInTheSameMailbox) {
  struct Case {
    std::string name;
    std::function<void(MemoryServer&)> change;  ///< what is different at the new login
    std::int32_t failure;
    int firstAsked;  ///< how often the first message is asked for
  };
  const auto heals = [](MemoryServer& s) { s.answers.erase("RETR 3"); };
  const std::vector<Case> cases = {
      {"the same", heals, 0, 1},
      {"other",
       [&](MemoryServer& s) {
         heals(s), s.messages[0] = {"other", "Subject: other\r\n\r\n"};
       },
       0, 2},
      {"no identifiers", heals, 0, 2},
      {"one less", [&](MemoryServer& s) { heals(s), s.messages.pop_back(); }, pop_failure::connectionLost, 1},
      {"broken still", [](MemoryServer&) {}, pop_failure::connectionLost, 1},
      {"locked", [](MemoryServer& s) { s.answers["PASS"] = "-ERR [IN-USE]\r\n"; }, pop_failure::connectionLost, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Desk desk;
    desk.server.pipelining = true;
    desk.holds(5);
    if (c.name == "no identifiers") desk.server.answers["UIDL"] = "-ERR what?\r\n";
    desk.server.answers["RETR 3"] = MemoryServer::hangUp;
    desk.server.line.chunk = 10;
    desk.server.line.pace = Milliseconds(60);
    desk.client->Connect();
    desk.messages().Item(0).Deleted = true;
    desk.server.line.onConnect = [&] { c.change(desk.server); };
    EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), c.failure);
    EXPECT_EQ(std::ranges::count(desk.server.commands, "RETR 1"), c.firstAsked);
    EXPECT_EQ(desk.server.line.connections, 2);
    EXPECT_EQ(desk.server.line.open, c.failure == 0);
    EXPECT_TRUE(std::ranges::is_sorted(desk.recorder.progress, {}, [](const auto& told) { return told.first; }));
    EXPECT_THAT(desk.recorder.received, SizeIs(c.failure == 0 ? 5 : 2)) << "each is told once";
    if (c.failure != 0) continue;
    EXPECT_TRUE(desk.hasAllTexts());
    desk.client->Disconnect();
    EXPECT_THAT(desk.server.messages, SizeIs(5)) << "marks hold for one login only";
  }
}

TEST(Fetch, KeepsTheStartOfAMessageBeyondTheBound) {
  Desk desk;
  desk.holds(2);
  const std::string line(1U << 20U, 'x');
  std::string& mail = desk.server.answers["RETR 1"] = "+OK\r\n";
  for (std::size_t bytes = 0; bytes <= mail_bounds::message; bytes += line.size()) mail += line;
  mail += "\r\n.\r\n";
  desk.client->Connect();
  desk.messages().FetchAll();
  EXPECT_EQ(desk.messages().Item(0).Size, mail_bounds::message + line.size() + 2);
  const std::string_view body = desk.messages().Item(0).Mail.Body;
  EXPECT_EQ(body.size(), mail_bounds::message + mail_bounds::bodyMark.size());
  EXPECT_TRUE(body.ends_with(mail_bounds::bodyMark));
  EXPECT_EQ(desk.messages().Item(1).Mail.Body, desk.server.messages[1].text);
}

TEST(Fetch, KeepsNoMoreOfAMailboxThanThereIsRoomFor) {
  Desk desk;
  desk.holds(4);
  for (MemoryMessage& message : desk.server.messages) message.text.append(1000, 'x').append("\r\n");
  desk.client = desk.makeClient(desk.server.line, desk.server, 2500);
  desk.server.pipelining = true;
  desk.server.answers = {{"UIDL", "-ERR what?\r\n"}, {"RETR 3", MemoryServer::hangUp}};  // so that it starts over
  desk.client->Connect();
  desk.server.line.onConnect = [&] { desk.server.answers.clear(); };
  desk.recorder.onEvent = [&](PopClient& client, const std::string& event) {
    if (event != "Received" || desk.recorder.received.size() != 5) return;
    EXPECT_EQ(client.Messages().Item(3).Mail.Body, "") << "what was kept of it goes before new texts come";
  };
  for (int run = 0; run < 2; ++run) {
    desk.messages().FetchAll();
    EXPECT_EQ(desk.messages().Item(1).Mail.Body, desk.server.messages[1].text);
    EXPECT_THAT(desk.messages().Item(2).Mail.Body, AllOf(SizeIs(2500 - 2 * 1028), EndsWith(mail_bounds::bodyMark)));
    EXPECT_EQ(desk.messages().Item(3).Mail.Body, mail_bounds::bodyMark);
    EXPECT_EQ(desk.messages().Item(3).Uid + std::to_string(desk.messages().Item(3).Size), "uid41028");
  }
}

TEST(Fetch, KeepsWhatIsToldOfAttachmentsWhileThereIsRoom) {
  ReadMail hostile;
  hostile.Sender = "a@b.example";
  hostile.Attachments = mail_bounds::attached;
  hostile.Attached.assign(mail_bounds::attached, {std::string(255, 'n'), std::string(100, 'k'), 1});
  const std::size_t ofOne = mail_bounds::attached * (sizeof(Attachment) + 255 + 100) + hostile.Sender.size();
  std::size_t room = 2 * ofOne + 50;
  for (const bool isKept : {true, true, false, false}) {
    ReadMail mail = hostile;
    pop::keepWithin(room, mail);
    EXPECT_EQ(mail.Attached, isKept ? hostile.Attached : std::vector<Attachment>());
    EXPECT_EQ(mail.Attachments, mail_bounds::attached);
    EXPECT_EQ(mail.Sender, hostile.Sender);
  }
  EXPECT_EQ(room, 50U - 2 * hostile.Sender.size());
}

}  // namespace
}  // namespace velmora::test
