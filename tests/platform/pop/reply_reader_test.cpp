#include "platform/pop/reply_reader.h"

#include <gtest/gtest.h>

#include <array>

#include "platform/pop/pop_kit.h"
#include "platform/pop/server_words.h"

namespace velmora::test {
namespace {

using pop::ReplyReader;
using namespace std::string_literals;

TEST(ReplyReader, RefusesWhatIsNoStatusAtItsFirstByte) {
  for (const std::string bytes : {"x", "\r\n x", "* OK\r\n", "+O\r\n", "-ER\r\n", "+KO\r\n"}) {
    ReplyReader reader;
    reader.feed(bytes);
    EXPECT_EQ(failureOf([&] { reader.status(); }), pop_failure::protocolBroken) << bytes;
  }
}

TEST(ReplyReader, BoundsEveryLineCountAndAnswer) {
  const auto status = [](ReplyReader& r) { r.status(); };
  const auto list = [](ReplyReader& r) { r.lines([](std::string_view) {}); };
  const auto message = [](ReplyReader& r) { r.message(); };
  struct Bound {
    std::string piece;
    std::size_t times;  ///< that pass; one more doesn't
    std::function<void(ReplyReader&)> read;
  };
  const std::vector<Bound> bounds = {
      {"+", ReplyReader::maximumStatusLine, status},
      {"\n", ReplyReader::maximumStatusLine, status},
      {"1", ReplyReader::maximumListLine, list},
      {"1\n", ReplyReader::maximumListLines, list},
      {std::string(1000, '1') + "\n", ReplyReader::maximumListing / 1000, list},
      {std::string(1U << 20U, 'x'), std::size_t{ReplyReader::maximumMessage} >> 20U, message},
  };
  for (const Bound& bound : bounds) {
    ReplyReader reader;
    const auto feed = [&] {
      reader.feed(bound.piece);
      bound.read(reader);
    };
    for (std::size_t i = 0; i < bound.times; ++i) ASSERT_EQ(failureOf(feed), 0) << bound.piece.substr(0, 9) << i;
    EXPECT_EQ(failureOf(feed), pop_failure::protocolBroken) << bound.piece.substr(0, 9);
  }
}

TEST(ServerWords, AreCleanedBeforeTheyAreShown) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {" plain ", "plain"},
      {"a\0b\x1b[31mc\td\x7f\r\n"s, "ab[31mcd"},
      {"gr\xc3\xbc\xc3\x9f\xe2\x82\xac\xf0\x9f\x98\x80", "gr\xc3\xbc\xc3\x9f\xe2\x82\xac\xf0\x9f\x98\x80"},
      {"\xc2\x9bx", "x"},
      {"a\xfc\xc3(\xc0\xaf\xed\xa0\x80\xf4\x90\x80\x80z\xe2\x82", "a(z"},
      {std::string(399, 'x') + "\xc3\xbc!", std::string(399, 'x') + "..."},
      {std::string(400, 'x'), std::string(400, 'x')},
      {std::string(401, 'x'), std::string(400, 'x') + "..."},
  };
  for (const auto& [text, clean] : cases) EXPECT_EQ(pop::cleanWords(text, ""), clean);
  EXPECT_EQ(pop::withServerWords("No.", "\x01", ""), "No.");
}

TEST(ServerWords, AreShownWithoutThePassword) {
  const std::vector<std::array<std::string, 3>> cases = {
      {"hunter2", "wrong: hunter2, Hunter2HUNTER2", "wrong: *****, **********"},
      {" hun\tter ", "hun\0ter\x1b \xff hunt"s, "*****  hunt"},
      {"gr\xc3\xbc\xc3\x9f", "\xc3\xbf GR\xc3\x9c\xc3\x9f\xe2\x82\xac", "\xc3\xbf *****\xe2\x82\xac"},
      {"hunter2", std::string(396, 'x') + "hunter2", std::string(396, 'x') + "****..."},
      {"a\"b\\c", "? Pass 'a\\\"b\\\\c'", "? Pass *****"},
      {"hunter2", "PASS hunte...", "PASS *****"},
      {"hunter2", "PASS is not for now", "PASS is not for now"},
      {"abc", "no ABCs", ""},
      {"abc", "no abs", "no abs"},
      {" ", "no blank", "no blank"},
  };
  for (const auto& [secret, text, shown] : cases) EXPECT_EQ(pop::cleanWords(text, secret), shown);
}

TEST(ServerWords, TellTheTrouble) {
  const std::vector<std::pair<std::string, std::int32_t>> cases = {
      {"[AUTH] try again later", pop_failure::loginRefused},
      {"[in-use] no", pop_failure::mailboxInUse},
      {"[LOGIN-DELAY] too fast", pop_failure::temporaryTrouble},
      {"[SYS/TEMP] no", pop_failure::temporaryTrouble},
      {"[SYS/PERM] no", pop_failure::permanentTrouble},
      {"Unable to lock maildrop: Lock busy", pop_failure::mailboxInUse},
      {"Mailbox is ALREADY LOCKED by another session", pop_failure::mailboxInUse},
      {"Temporary problem, please try again later", pop_failure::temporaryTrouble},
      {"mailbox is damaged", pop_failure::permanentTrouble},
      {"chdir Maildir failed", pop_failure::permanentTrouble},
      {"this user has no $HOME/Maildir: No such file or directory", pop_failure::permanentTrouble},
      {"Internal server error", pop_failure::temporaryTrouble},
      {"Server error", pop_failure::permanentTrouble},
      {"Maildir invalid (no 'cur' directory)", pop_failure::permanentTrouble},
      {"this user has no $HOME/Maildir", pop_failure::permanentTrouble},
      {"unable to scan $HOME/Maildir", pop_failure::permanentTrouble},
      {"Unexpected error accessing mailbox", pop_failure::permanentTrouble},
      {"Couldn't open INBOX", pop_failure::permanentTrouble},
      {"aack, child crashed", pop_failure::temporaryTrouble},
      {"Authentication server unavailable", pop_failure::temporaryTrouble},
      {"Maximum number of connections from user+IP exceeded", pop_failure::temporaryTrouble},
      {"Mailbox busy", pop_failure::mailboxInUse},
      {"I can't lock your mailbox", pop_failure::mailboxInUse},
      {"Invalid user name or password. Too many invalid logon attempts.", 0},
      {"[IN-USE]<joe@x> busy", pop_failure::mailboxInUse},
      {"Temporary authentication failure", pop_failure::temporaryTrouble},
      {"Internal login failure. Refer to server log for more information.", pop_failure::temporaryTrouble},
      {"maillock: cannot open lock file", pop_failure::mailboxInUse},
      {"can't open /var/mail/joe", pop_failure::permanentTrouble},
      {"Mailbox for user name joe is damaged", pop_failure::permanentTrouble},
      {"Can't open mailbox: incorrect owner", pop_failure::permanentTrouble},
      {"Authentication failed: try again later", 0},
      {"Permanent authentication failure", 0},
      {"Unable to open mailbox joe: authentication failure", 0},
      {"Mailbox login error", 0},
      {"Can't find mailbox joe", 0},
      {"user not found in database", 0},
      {"user is not available", 0},
      {"Access permanently denied", 0},
      {"unknown user timeout", 0},
      {"who is bob@quota.database.example?", 0},
      {"authentication failed", 0},
      {"no such user", 0},
      {"Invalid password, try again", 0},
      {"Your account has been locked", 0},
      {"say [IN-USE] later", 0},
      {"", 0},
  };
  for (const auto& [words, number] : cases) EXPECT_EQ(pop::troubleIn(words).value_or(0), number) << words;
}

}  // namespace
}  // namespace velmora::test
