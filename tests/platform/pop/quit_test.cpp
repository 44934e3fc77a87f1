#include <gmock/gmock.h>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

/// Lists five messages and marks the second and the fourth.
void mark(Desk& desk) {
  desk.holds(5);
  desk.client->Connect();
  desk.messages().ListMessages();
  desk.messages().Item(1).Deleted = true;
  desk.messages().Item(3).Deleted = true;
}

std::vector<std::string> remaining(const Desk& desk) {
  std::vector<std::string> uids;
  for (const MemoryMessage& message : desk.server.messages) uids.push_back(message.uid);
  return uids;
}

TEST(Quit, DeletesWhatIsMarked) {
  for (const bool pipelining : {false, true}) {
    Desk desk;
    desk.server.pipelining = pipelining;
    mark(desk);
    desk.client->Disconnect();
    EXPECT_THAT(remaining(desk), ElementsAre("uid1", "uid3", "uid5"));
    EXPECT_FALSE(desk.server.line.open);
    EXPECT_EQ(failureOf([&] { desk.client->Disconnect(); }), 0);
  }
}

TEST(Quit, DeletesByTheNumbersOfTheListing) {
  Desk desk;
  desk.server.answers = {{"LIST", "+OK\r\n2 1\r\n4 1\r\n6 1\r\n8 1\r\n10 1\r\n.\r\n"},
                         {"UIDL", "+OK\r\n2 a\r\n4 b\r\n6 c\r\n8 d\r\n10 e\r\n.\r\n"}};
  mark(desk);
  desk.server.answers["DELE"] = "+OK\r\n";
  desk.client->Disconnect();
  EXPECT_THAT(desk.server.commands, Contains("DELE 4"));
  EXPECT_THAT(desk.server.commands, Contains("DELE 8"));
}

TEST(Quit, FailsUnlessEverythingIsConfirmed) {
  struct Case {
    std::string command, answer;
    std::int32_t number;
    bool hearsQuit;
  };
  const std::vector<Case> cases = {
      {"DELE 2", "-ERR locked\r\n", pop_failure::messageRefused, true},
      {"QUIT", "-ERR some locked\r\n", pop_failure::messageRefused, true},
      {"DELE 4", MemoryServer::silence, pop_failure::silentWhileFetching, false},
      {"QUIT", MemoryServer::silence, pop_failure::silentWhileFetching, true},
      {"DELE 2", MemoryServer::hangUp, pop_failure::connectionLost, false},
      {"QUIT", MemoryServer::hangUp, pop_failure::connectionLost, true},
      {"QUIT", "bye\r\n", pop_failure::protocolBroken, true},
  };
  for (const Case& expected : cases) {
    for (const bool pipelining : {false, true}) {
      SCOPED_TRACE(expected.command + " " + expected.answer);
      Desk desk;
      desk.server.pipelining = pipelining;
      desk.server.answers[expected.command] = expected.answer;
      mark(desk);
      EXPECT_EQ(failureOf([&] { desk.client->Disconnect(); }), expected.number);
      EXPECT_EQ(desk.client->LastError(), expected.number);
      EXPECT_EQ(desk.server.commands.back() == "QUIT", expected.hearsQuit);
      EXPECT_FALSE(desk.server.line.open);
      EXPECT_EQ(failureOf([&] { desk.client->Disconnect(); }), 0);
      if (expected.number == pop_failure::messageRefused) {
        EXPECT_THAT(desk.client->ErrorText(), HasSubstr("locked"));
      }
    }
  }
}

TEST(Quit, AtEveryDroppedByteSuccessMeansDeleted) {
  for (const bool pipelining : {false, true}) {
    std::int32_t failure = -1;
    for (std::size_t at = 0; failure != 0; ++at) {
      ASSERT_LT(at, 2000U);
      Desk desk;
      desk.server.pipelining = pipelining;
      desk.server.line.dropAfter = at;
      desk.server.line.faultyConnections = 9;
      failure = failureOf([&] {
        mark(desk);
        desk.client->Disconnect();
      });
      EXPECT_THAT(failure,
                  AnyOf(0, pop_failure::noGreeting, pop_failure::closedWhileLoggingIn, pop_failure::connectionLost));
      if (failure == 0) {
        EXPECT_THAT(remaining(desk), ElementsAre("uid1", "uid3", "uid5"));
      }
    }
  }
}

TEST(Quit, WithoutDeletionsNeverFailsAndIsShort) {
  const std::vector<std::string> answers = {MemoryServer::silence, MemoryServer::hangUp, "-ERR no\r\n", "?\r\n"};
  for (const std::string& answer : answers) {
    Desk desk;
    desk.server.answers["QUIT"] = answer;
    desk.holds(1);
    desk.client->Connect();
    const Milliseconds before = desk.server.line.clock;
    EXPECT_EQ(failureOf([&] { desk.client->Disconnect(); }), 0);
    EXPECT_LE(desk.server.line.clock - before, std::chrono::seconds(3));
    EXPECT_FALSE(desk.server.line.open);
    EXPECT_EQ(desk.client->LastError(), 0);
  }
}

TEST(Quit, SaysNoGoodByeInTheMiddleOfAnAnswer) {
  Desk desk;
  desk.server.pipelining = true;
  desk.server.answers["RETR 1"] = "-ERR not this\r\n";
  mark(desk);
  EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), pop_failure::messageRefused);
  EXPECT_EQ(failureOf([&] { desk.client->Disconnect(); }), pop_failure::connectionLost);
  EXPECT_EQ(desk.server.messages.size(), 5U);
  EXPECT_FALSE(desk.server.line.open);
}

}  // namespace
}  // namespace velmora::test
