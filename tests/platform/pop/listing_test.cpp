#include <gmock/gmock.h>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using testing::Contains;
using testing::Not;
using testing::StartsWith;

std::vector<std::string> uids(const Desk& desk) {
  std::vector<std::string> uids;
  for (std::int16_t i = 0; i < desk.messages().Count(); ++i) uids.push_back(desk.messages().Item(i).Uid);
  return uids;
}

std::vector<std::int32_t> sizes(const Desk& desk) {
  std::vector<std::int32_t> sizes;
  for (std::int16_t i = 0; i < desk.messages().Count(); ++i) sizes.push_back(desk.messages().Item(i).Size);
  return sizes;
}

TEST(Listing, ReadsWhatServersSay) {
  struct Case {
    std::string list, uidl;
    std::vector<std::int32_t> sizes;
    std::vector<std::string> uids;
  };
  const std::string goodList = "+OK\r\n1 30\r\n2 40\r\n.\r\n";
  const std::string goodUidl = "+OK\r\n1 a\r\n2 b\r\n.\r\n";
  const std::vector<Case> cases = {
      {goodList, goodUidl, {30, 40}, {"a", "b"}},
      {"+OK\n2 40\n 1  30  more\n.\n", "+ok\n1\ta extra\n2 a\n.\n", {30, 40}, {"a", "a"}},
      {"+OK\r\n1 x\r\n2 99999999999\r\n.\r\n", goodUidl, {0, 2147483647}, {"a", "b"}},
      {"-ERR no\r\n", goodUidl, {0, 0}, {"a", "b"}},
      {"+OK\r\n4 30\r\n9 40\r\n.\r\n", "+OK\r\n4 a\r\n9 b\r\n.\r\n", {30, 40}, {"a", "b"}},
      {"+OK\r\n1 30\r\n2 40\r\n3 50\r\n.\r\n", "+OK\r\n1 a\r\n2 b\r\n3 c\r\n.\r\n", {30, 40}, {"a", "b"}},
      {"+OK\r\n2 40\r\n.\r\n", goodUidl, {0, 40}, {"a", "b"}},
  };
  for (const Case& expected : cases) {
    for (const bool pipelining : {false, true}) {
      Desk desk;
      desk.holds(2);
      desk.server.pipelining = pipelining;
      desk.server.answers = {{"LIST", expected.list}, {"UIDL", expected.uidl}};
      desk.client->Connect();
      desk.messages().ListMessages();
      EXPECT_EQ(sizes(desk), expected.sizes) << expected.list;
      EXPECT_EQ(uids(desk), expected.uids) << expected.uidl;
      EXPECT_EQ(desk.server.line.connections, 1);
    }
  }
}

TEST(Listing, FailsAsDocumented) {
  struct Case {
    std::string verb, answer;
    std::int32_t number;
  };
  const std::vector<Case> cases = {
      {"LIST", "+OK\r\n1 30\r\n", pop_failure::silentWhileFetching},
      {"LIST", "+OK\r\n1 30\r\nhello\r\n.\r\n", pop_failure::protocolBroken},
      {"LIST", "+OK\r\n0 30\r\n.\r\n", pop_failure::protocolBroken},
      {"UIDL", "+OK\r\n99999999999 a\r\n.\r\n", pop_failure::protocolBroken},
      {"LIST", "-ERR [SYS/TEMP] later\r\n", pop_failure::messageRefused},
      {"UIDL", "-ERR [SYS/TEMP] later\r\n", pop_failure::messageRefused},
      {"UIDL", MemoryServer::hangUp, pop_failure::connectionLost},
  };
  for (const Case& expected : cases) {
    for (const bool pipelining : {false, true}) {
      Desk desk;
      desk.holds(2);
      desk.server.pipelining = pipelining;
      desk.server.answers[expected.verb] = expected.answer;
      desk.client->Connect();
      EXPECT_EQ(failureOf([&] { desk.messages().ListMessages(); }), expected.number) << expected.answer;
      EXPECT_NO_THROW(desk.client->Disconnect());
    }
  }
}

TEST(Listing, MakesTheSameIdentifiersFromTopAndFromWholeMessages) {
  const std::map<std::string, std::map<std::string, std::string>> cases = {
      {"no UIDL", {{"UIDL", "-ERR what?\r\n"}}},
      {"no UIDL and no TOP", {{"UIDL", "-ERR what?\r\n"}, {"TOP", "-ERR what?\r\n"}}},
      {"TOP refused once", {{"UIDL", "-ERR what?\r\n"}, {"TOP 2 0", "-ERR not this\r\n"}}},
      {"TOP ends without the blank line", {{"UIDL", "-ERR\r\n"}, {"TOP 2 0", "+OK\r\nSubject: 2\r\n.\r\n"}}},
      {"one missing", {{"UIDL", "+OK\r\n1 uid1\r\n3 uid3\r\n2\r\n.\r\n"}}},
  };
  for (const auto& [name, answers] : cases) {
    for (const bool pipelining : {false, true}) {
      SCOPED_TRACE(name);
      Desk desk;
      desk.holds(3);
      desk.server.pipelining = pipelining;
      desk.server.answers = answers;
      desk.client->Connect();
      desk.messages().ListMessages();
      const auto listed = uids(desk);
      desk.messages().FetchAll();
      EXPECT_EQ(listed, uids(desk));
      EXPECT_THAT(listed[1], StartsWith("header "));
      EXPECT_NE(listed[0], listed[1]);
    }
  }
}

TEST(Listing, AsksForTopOnlyOnceWhereThereIsNone) {
  Desk desk;
  desk.holds(9);
  desk.server.answers = {{"UIDL", "-ERR what?\r\n"}, {"TOP", "-ERR what?\r\n"}};
  desk.client->Connect();
  desk.messages().ListMessages();
  EXPECT_THAT(desk.server.commands, Contains("TOP 1 0"));
  EXPECT_THAT(desk.server.commands, Not(Contains("TOP 2 0")));
}

TEST(Listing, CountsBeyond16BitsOverflow) {
  Desk desk;
  desk.server.answers["STAT"] = "+OK 32768 1\r\n";
  desk.client->Connect();
  EXPECT_THROW(desk.messages().Count(), RunTimeFailure);
  EXPECT_THROW(desk.messages().FetchAll(), RunTimeFailure);
  EXPECT_THROW(desk.messages().ListMessages(), RunTimeFailure);
  EXPECT_THROW(desk.messages().Item(0), RunTimeFailure);
}

TEST(Listing, ItemsOutsideTheMailboxAreRefused) {
  Desk desk;
  desk.holds(2);
  EXPECT_THROW(desk.messages().Item(0), RunTimeFailure);
  desk.client->Connect();
  EXPECT_NO_THROW(desk.messages().Item(1));
  EXPECT_THROW(desk.messages().Item(2), RunTimeFailure);
  EXPECT_THROW(desk.messages().Item(-1), RunTimeFailure);
}

}  // namespace
}  // namespace velmora::test
