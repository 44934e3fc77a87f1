#include <gmock/gmock.h>

#include <algorithm>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using testing::AnyOf;
using testing::HasSubstr;
using namespace std::string_literals;

/// Fetches, and has the second and the fourth message deleted if wanted. Returns the number of the failure.
std::int32_t checkMail(Desk& desk, bool deleting) {
  return failureOf([&] {
    desk.client->Connect();
    desk.messages().FetchAll();
    if (deleting) desk.messages().Item(1).Deleted = desk.messages().Item(3).Deleted = true;
    desk.client->Disconnect();
  });
}

struct Answer {
  std::string command;  ///< blank for the greeting
  std::string said;
  std::int32_t number;
  std::string words;  ///< part of the failure's text
  int farewells = 0;  ///< whether the server hears QUIT
};

const std::vector<Answer> answers = {
    {"", "-ERR go \x1b.away, secret\r\n", pop_failure::greetedWithRefusal, "go .away, *****"},
    {"", "-ERR [AUTH] not you\r\n", pop_failure::greetedWithRefusal, "not you"},
    {"", "-ERR too many connections\r\n", pop_failure::temporaryTrouble, "too many"},
    {"", "\x15\x03\x01\0\x02\x02"s, pop_failure::noGreeting, "secure connection"},
    {"", "+OK half", pop_failure::noGreeting, "in time. It may expect a secure"},
    {"", "220 SEC\x1bRET\r\n", pop_failure::noGreeting, "(SMTP), or FTP. The server says: 220 *****"},
    {"", "* OK IMAP4rev1\r\n", pop_failure::noGreeting, "looks like an IMAP server"},
    {"", "HTTP/1.1 400 Bad Request\r\n", pop_failure::noGreeting, "looks like a web server"},
    {"PASS", "-ERR [SYS/PERM] gone\r\n", pop_failure::permanentTrouble, "permanent trouble"},
    {"PASS", "-ERR\r\n", pop_failure::loginRefused, "user name or password"},
    {"PASS", "-ERR no \"secret\"\r\n", pop_failure::loginRefused, "no \"*****\""},
    {"PASS", "-ERR [AUTH] Plaintext disallowed\r\n", pop_failure::loginMethodNotOffered, "secure connection"},
    {"USER", "-ERR maildrop already locked\r\n", pop_failure::mailboxInUse, "already locked"},
    {"USER", "? secret\r\n", pop_failure::protocolBroken, "? *****"},
    {"STAT", "-ERR no secret\r\n", pop_failure::messageRefused, "no *****"},
    {"STAT", "+OK -1 secret\r\n", pop_failure::protocolBroken, "-1 *****"},
    {"STAT", "+OK 4294967301 5\r\n", pop_failure::protocolBroken, ""},
    {"LIST", "+OK\r\n0 30\r\n.\r\n", pop_failure::protocolBroken, "can't be read"},
    {"UIDL", "+OK\r\n99999999999 a\r\n.\r\n", pop_failure::protocolBroken, "can't be read"},
    {"UIDL", "-ERR [SYS/TEMP] secret\r\n", pop_failure::messageRefused, "*****", 1},
    {"RETR 5", "-ERR no secret\r\n", pop_failure::messageRefused, "message 5 of 5. The server says: no *****", 1},
    {"DELE 2", "-ERR no secret\r\n", pop_failure::messageRefused, "no *****", 1},
    {"QUIT", "-ERR some locked\r\n", pop_failure::messageRefused, "locked", 1},
    {"QUIT", "bye\r\n", pop_failure::protocolBroken, "bye", 1},
};

TEST(Trouble, IsToldByNumberAndInTheServersWords) {
  for (const Answer& answer : answers) {
    for (const bool pipelining : {false, true}) {
      SCOPED_TRACE(answer.command + " " + answer.said);
      Desk desk;
      desk.server.pipelining = pipelining;
      desk.holds(5);
      (answer.command.empty() ? desk.server.greeting : desk.server.answers[answer.command]) = answer.said;
      EXPECT_EQ(checkMail(desk, true), answer.number);
      EXPECT_EQ(desk.client->LastError(), answer.number);
      EXPECT_THAT(desk.client->ErrorText(), HasSubstr(answer.words));
      EXPECT_TRUE(answer.number != pop_failure::messageRefused || desk.server.line.connections == 1);
      EXPECT_EQ(failureOf([&] { desk.client->Disconnect(); }), 0);
      EXPECT_EQ(std::ranges::count(desk.server.commands, "QUIT"), answer.farewells);
      EXPECT_FALSE(desk.server.line.open);
    }
  }
}

TEST(Trouble, WithAUserCommandThatIsNotOfferedIsExplained) {
  Desk desk;
  desk.server.capabilities = {"SASL PLAIN", "STLS"};
  desk.server.answers["USER"] = "-ERR no\r\n";
  EXPECT_EQ(checkMail(desk, false), pop_failure::loginMethodNotOffered);
}

using Fault = std::optional<std::size_t> MemoryLine::*;

struct Break {
  Fault fault;
  bool pipelining;
  std::size_t chunk;

  /// Lets the first connections fail after `at` bytes, and has five messages.
  void prepare(Desk& desk, std::size_t at, int connections) const {
    desk.holds(5);
    desk.server.pipelining = pipelining;
    desk.server.line.chunk = chunk;
    desk.server.line.*fault = at;
    desk.server.line.faultyConnections = connections;
  }
};

std::vector<Break> breaks() {
  std::vector<Break> all;
  for (const Fault fault : {&MemoryLine::dropAfter, &MemoryLine::silentAfter})
    for (const bool pipelining : {false, true})
      for (const std::size_t chunk : {1U, 5U, 100'000U}) all.push_back({fault, pipelining, chunk});
  return all;
}

TEST(Trouble, AtEveryByteEndsInADocumentedFailureOrInAllMessagesAndDeletions) {
  for (const Break& way : breaks()) {
    const bool drops = way.fault == &MemoryLine::dropAfter;
    std::int32_t failure = -1;
    for (std::size_t at = 0; failure != 0; ++at) {
      ASSERT_LT(at, 2000U);
      Desk desk;
      way.prepare(desk, at, 99);
      failure = checkMail(desk, true);
      EXPECT_EQ(desk.client->LastError(), failure);
      EXPECT_FALSE(desk.server.line.open);
      EXPECT_THAT(failure,
                  AnyOf(0, pop_failure::noGreeting, drops ? pop_failure::closedWhileLoggingIn : pop_failure::timedOut,
                        drops ? pop_failure::connectionLost : pop_failure::silentWhileFetching))
          << at;
      if (failure != 0) continue;
      EXPECT_EQ(desk.messages().Item(4).Mail.Body, "Subject: 5\r\n\r\n.Text of 5\r\n");
      ASSERT_EQ(desk.server.messages.size(), 3U);
      EXPECT_EQ(desk.server.messages[1].uid + desk.server.messages[2].uid, "uid3uid5");
    }
  }
}

TEST(Trouble, InAPipelinedFetchIsOvercomeAtEveryByte) {
  for (const Break& way : breaks()) {
    if (!way.pipelining) continue;
    bool fetching = false;
    for (std::size_t at = 0; at < 900; ++at) {
      Desk desk;
      way.prepare(desk, at, 1);
      const std::int32_t failure = checkMail(desk, false);
      fetching = fetching || desk.habit().oneByOne;
      ASSERT_TRUE(!fetching || failure == 0) << at;
      ASSERT_TRUE(failure != 0 || desk.hasAllTexts()) << at;
    }
    EXPECT_TRUE(fetching);
  }
}

}  // namespace
}  // namespace velmora::test
