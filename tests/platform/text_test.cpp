#include "platform/text.h"

#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <random>

#include "platform/failure.h"

namespace velmora {
namespace {

TEST(Text, FindsInWhateverText) {
  const std::string trap(5000, 'Q');
  EXPECT_EQ(text::find(trap + "QZQ" + trap, "QZQ"), 5000U);
  EXPECT_EQ(text::find(trap, "QQQE"), std::string::npos);
  EXPECT_EQ(text::find(trap + "QQQE", "QQQE"), 5000U);
  std::string halves;
  for (int i = 0; i < 1000; ++i) halves += "Ä";
  EXPECT_EQ(text::find(halves, "\x84"), std::string::npos);
  EXPECT_EQ(text::find(halves + "x\x84", "\x84"), 2001U);
  EXPECT_EQ(text::find("ab", "abc"), std::string::npos);
  std::mt19937 random(20261121);
  const auto some = [&random](std::size_t most) {
    std::string text;
    for (std::size_t i = random() % (most + 1); i > 0; --i) text += std::array{"a", "b", "Ä"}[random() % 3];
    return text;
  };
  for (int i = 0; i < 50'000; ++i) {
    const std::string in = some(40), what = "a" + some(3);
    ASSERT_EQ(text::find(in, what), in.find(what)) << in << '|' << what;
  }
  // What begins or ends within a character comes close to being found everywhere.
  std::string letters;
  for (int i = 0; i < 400'000; ++i) letters += "Äz";
  const auto begun = std::clock();
  EXPECT_EQ(text::find(letters, "\x84z" + letters.substr(0, 1'800)), std::string::npos);
  EXPECT_EQ(text::find(letters, letters.substr(0, 1'801)), std::string::npos);
  EXPECT_LT(std::clock() - begun, CLOCKS_PER_SEC);
}

TEST(Text, TurnsTextIntoNumbersOrSaysWhyNot) {
  EXPECT_EQ(text::toInt32(" -5 "), -5);
  for (const auto* none : {"", "1 2", "+-3", "0x10", "2147483648", "-2147483649", "99999999999999999999"}) {
    EXPECT_THROW(text::toInt32(none), RunTimeFailure) << none;
  }
  EXPECT_EQ(text::toInt16(-32768), -32768);
}

}  // namespace
}  // namespace velmora
