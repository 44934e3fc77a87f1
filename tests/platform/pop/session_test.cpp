#include <gmock/gmock.h>

#include <algorithm>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using namespace std::string_literals;

TEST(LogIn, NeverSendsWhatWouldInjectCommands) {
  for (const std::string& bad : {"a\r\nDELE 1"s, "a\n"s, "a\rb"s, "a\0b"s}) {
    for (const bool inLogin : {true, false}) {
      Desk desk;
      inLogin ? desk.client->Login(bad) : desk.client->Password(bad);
      EXPECT_EQ(failureOf([&] { desk.client->Connect(); }), pop_failure::loginRefused);
      EXPECT_EQ(desk.server.line.connections, 0);
    }
  }
}

TEST(LogIn, ConnectsWithoutCapaWhereItsAnswerIsNone) {
  Desk desk;
  desk.server.answers["CAPA"] = "?";
  for (const int connections : {2, 3}) {
    desk.client->Connect();
    EXPECT_EQ(desk.server.line.connections, connections) << "it is kept in mind";
  }

  Desk refusing;
  refusing.server.answers = {{"CAPA", "?"}, {"PASS", "-ERR no\r\n"}};
  EXPECT_EQ(failureOf([&] { refusing.client->Connect(); }), pop_failure::loginRefused);
  EXPECT_FALSE(refusing.habit().noCapa) << "CAPA may not have been to blame";
}

TEST(LogIn, AsksOnceInARunWhatAServerOffers) {
  for (const bool pipelining : {false, true}) {
    Desk desk;
    desk.server.pipelining = pipelining;
    desk.holds(3);
    const auto asked = [&] { return std::ranges::count(desk.server.commands, "CAPA"); };
    const auto fetch = [&] { desk.client->Connect(), desk.messages().FetchAll(), desk.client->Disconnect(); };
    fetch();
    const auto first = asked();
    fetch();
    EXPECT_EQ(asked(), first);
    EXPECT_TRUE(desk.hasAllTexts());
    desk.client->Password("wrong");
    EXPECT_EQ(failureOf(fetch), pop_failure::loginRefused);
    desk.client->Password("secret");
    fetch();
    EXPECT_EQ(asked(), 2 * first) << "a login that fails may have failed for what is no longer true";
  }
}

TEST(LogIn, LeavesOutWhatMayHaveMadeItFail) {
  using Answers = std::map<std::string, std::string>;
  struct Case {
    std::string name;
    std::vector<Answers> answers;  ///< of each connection; the last one's hold on
    std::int32_t failure;
    int connections;
    bool oneByOne = false, noUtf8 = false;
    bool pipelining = true;
  };
  const Answers hangsUp = {{"PASS", MemoryServer::hangUp}};
  const Answers refuses = {{"PASS", "-ERR no\r\n"}};
  const Answers isSure = {{"PASS", "-ERR [AUTH] no\r\n"}};
  const Answers hates = {{"UTF8", MemoryServer::hangUp}};
  const Answers isLocked = {{"PASS", "-ERR [IN-USE] no\r\n"}};
  const std::vector<Case> cases = {
      {"stands all", {{}}, 0, 1},
      {"refuses UTF8 itself", {{{"UTF8", "-ERR what?\r\n"}}}, 0, 1},
      {"hangs up on the pipelined", {hangsUp, {}}, 0, 2, true},
      {"hangs up on UTF8", {hates}, 0, 3, true, true},
      {"hangs up on UTF8, step by step", {hates}, 0, 2, false, true, false},
      {"refuses behind UTF8", {refuses, {}}, 0, 2, false, true},
      {"refuses for sure", {isSure}, pop_failure::loginRefused, 1},
      {"refuses always", {refuses}, pop_failure::loginRefused, 2},
      {"hangs up always", {hangsUp}, pop_failure::closedWhileLoggingIn, 3},
      {"is locked by the first", {hangsUp, isLocked}, pop_failure::closedWhileLoggingIn, 2},
      {"is locked", {isLocked}, pop_failure::mailboxInUse, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Desk desk;
    desk.server.pipelining = c.pipelining;
    desk.server.capabilities.emplace_back("UTF8 USER");
    desk.server.line.onConnect = [&] {
      const auto connection = static_cast<std::size_t>(desk.server.line.connections);
      desk.server.answers = c.answers[std::min(connection, c.answers.size()) - 1];
      desk.server.answers.emplace("UTF8", "+OK\r\n");
    };
    EXPECT_EQ(failureOf([&] { desk.client->Connect(); }), c.failure);
    EXPECT_EQ(desk.server.line.connections, c.connections);
    EXPECT_EQ(desk.habit().oneByOne, c.oneByOne);
    EXPECT_EQ(desk.habit().noUtf8, c.noUtf8);
  }
}

TEST(LogIn, RisksNoSecondRefusalOfTheSameCredentials) {
  Desk desk;
  desk.server.capabilities.emplace_back("UTF8 USER");
  desk.server.answers = {{"UTF8", "+OK\r\n"}, {"PASS", "-ERR no\r\n"}};
  for (const auto& [password, connections] : {std::pair("wrong", 2), {"wrong", 3}, {"other", 5}, {"wrong", 6}}) {
    desk.client->Password(password);
    EXPECT_EQ(failureOf([&] { desk.client->Connect(); }), pop_failure::loginRefused);
    EXPECT_EQ(desk.server.line.connections, connections);
  }
}

TEST(Quit, WithoutDeletionsNeverFailsAndIsShort) {
  for (const std::string& answer : {MemoryServer::silence, MemoryServer::hangUp, "-ERR no\r\n"s, "?\r\n"s}) {
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
  desk.holds(3);
  desk.client->Connect();
  desk.messages().Item(1).Deleted = true;
  EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), pop_failure::messageRefused);
  EXPECT_EQ(failureOf([&] { desk.client->Disconnect(); }), pop_failure::connectionLost);
  EXPECT_THAT(desk.server.commands, Not(Contains("QUIT")));
  EXPECT_THAT(desk.server.messages, SizeIs(3));
  EXPECT_FALSE(desk.server.line.open);
}

}  // namespace
}  // namespace velmora::test
