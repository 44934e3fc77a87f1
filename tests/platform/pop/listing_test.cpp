#include <gmock/gmock.h>

#include <algorithm>

#include "platform/mail_bounds.h"
#include "platform/pop/listing.h"
#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using testing::StartsWith;

TEST(Listing, ReadsWhatServersSay) {
  struct Case {
    std::string list, uidl;
    std::vector<std::int32_t> sizes;
    std::vector<std::string> uids;
  };
  const std::string goodUidl = "+OK\r\n1 a\r\n2 b\r\n.\r\n";
  const std::vector<Case> cases = {
      {"+OK\n2 40\n 1  30  more\n.\n", "+ok\n1\ta\n2 a 2 \n.\n", {30, 40}, {"a", "a 2"}},
      {"+OK\r\n1 x\r\n2 99999999999\r\n.\r\n", goodUidl, {0, 2147483647}, {"a", "b"}},
      {"-ERR no\r\n", goodUidl, {0, 0}, {"a", "b"}},
      {"+OK\r\n1 30\r\n2 40\r\n3 50\r\n.\r\n", "+OK\r\n1 a\r\n2 b\r\n3 c\r\n.\r\n", {30, 40}, {"a", "b"}},
      {"+OK\r\n2 40\r\n.\r\n", goodUidl, {0, 40}, {"a", "b"}},
  };
  for (const Case& expected : cases) {
    Desk desk;
    desk.holds(2);
    desk.server.answers = {{"LIST", expected.list}, {"UIDL", expected.uidl}};
    desk.client->Connect();
    desk.messages().ListMessages();
    EXPECT_EQ(desk.all(&PopMessage::Size), expected.sizes) << expected.list;
    EXPECT_EQ(desk.all(&PopMessage::Uid), expected.uids) << expected.uidl;
  }
}

TEST(Listing, MakesTheSameIdentifiersFromTopAndFromWholeMessages) {
  const std::vector<std::map<std::string, std::string>> cases = {
      {{"UIDL", "-ERR what?\r\n"}},
      {{"UIDL", "-ERR what?\r\n"}, {"TOP", "-ERR what?\r\n"}},
      {{"UIDL", "-ERR what?\r\n"}, {"TOP 2 0", "-ERR not this\r\n"}},
      {{"UIDL", "-ERR what?\r\n"}, {"TOP 2 0", "+OK\r\nSubject: 2\r\n.\r\n"}},
      {{"UIDL", "+OK\r\n1 uid1\r\n3 uid3\r\n2\r\n.\r\n"}},
  };
  for (std::size_t i = 0; i < cases.size(); ++i) {
    for (const bool pipelining : {false, true}) {
      SCOPED_TRACE(i);
      Desk desk;
      desk.holds(3);
      desk.server.pipelining = pipelining;
      desk.server.answers = cases[i];
      desk.client->Connect();
      desk.messages().ListMessages();
      const auto listed = desk.all(&PopMessage::Uid);
      EXPECT_FALSE(cases[i].contains("TOP") && std::ranges::count(desk.server.commands, "TOP 2 0") > 0);
      desk.messages().FetchAll();
      EXPECT_EQ(desk.all(&PopMessage::Uid), listed);
      EXPECT_THAT(listed[1], StartsWith("header "));
      EXPECT_NE(listed[0], listed[1]);
    }
  }
}

TEST(Listing, MakesIdentifiersFromTheStartOfAnEndlessHeader) {
  struct CountingReader : PlainReader {
    std::string fingerprint(std::string_view bytes) const override { return std::to_string(bytes.size()); }
  };
  constexpr std::size_t most = mail_bounds::raw;
  for (const std::size_t size : {most - 1, most, most + 1, most + 2, 2 * most})
    for (const std::string rest : {"", "\r\n", "\r\nText\r\n", "\nText\n"})
      EXPECT_EQ(pop::identifierFromHeader(std::string(size - 1, 'h') + "\n" + rest, CountingReader()),
                "header " + std::to_string(std::min(size, most)));
}

}  // namespace
}  // namespace velmora::test
