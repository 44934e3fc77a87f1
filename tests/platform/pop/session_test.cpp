#include <gmock/gmock.h>

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
  EXPECT_THAT(refusing.habits.noCapa, IsEmpty()) << "CAPA may not have been to blame";
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
