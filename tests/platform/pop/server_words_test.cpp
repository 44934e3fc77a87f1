#include "platform/pop/server_words.h"

#include <gtest/gtest.h>

#include "platform/failure.h"

namespace velmora::test {
namespace {

using namespace std::string_literals;

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
  for (const auto& [text, clean] : cases) EXPECT_EQ(pop::cleanWords(text), clean);
  EXPECT_EQ(pop::withServerWords("No.", "\x01"), "No.");
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
      {"Invalid password, try again", 0},
      {"Your account has been locked", 0},
      {"say [IN-USE] later", 0},
      {"", 0},
  };
  for (const auto& [words, number] : cases) EXPECT_EQ(pop::troubleIn(words).value_or(0), number) << words;
}

}  // namespace
}  // namespace velmora::test
