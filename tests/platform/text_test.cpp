#include "platform/text.h"

#include <gtest/gtest.h>

#include "platform/failure.h"

namespace velmora {
namespace {

TEST(Text, CountsCharactersOfAnyBytes) {
  struct Case {
    std::string text;
    std::size_t count;
    std::string left;
  };
  const Case cases[] = {{"", 0, ""},
                        {"abcd", 0, ""},
                        {"abcd", 9, "abcd"},
                        {"Zürich", 2, "Zü"},
                        {"\xE2\x82\xAC€1", 2, "€€"},
                        {"\xC3(x", 1, "\xC3"},
                        {"\xFF\xFE"
                         "a",
                         2, "\xFF\xFE"},
                        {"a\xE2\x82", 2, "a\xE2"},
                        {"\xED\xA0\x80", 1, "\xED"},
                        {"\xF4\x90\x80\x80", 1, "\xF4"},
                        {"\xF0\x80\x80\x80", 1, "\xF0"},
                        {"\xF5\x90\x80\x80", 1, "\xF5"},
                        {"\xC0\xAF", 1, "\xC0"},
                        {"\xF4\x8F\xBF\xBF!", 1, "\xF4\x8F\xBF\xBF"}};
  for (const auto& c : cases) EXPECT_EQ(text::left(c.text, c.count), c.left) << c.text;
}

TEST(Text, TurnsLettersOfEveryScriptIntoCapitals) {
  for (const std::size_t before : {0U, 1U, 30U, 31U, 32U, 33U, 63U, 64U, 100U}) {
    const std::string plain(before, 'a');
    const std::string capitals(before, 'A');
    for (const auto& [text, expected] :
         {std::pair{"ü", "Ü"}, {"ɐz", "ⱯZ"}, {"ıß日", "Iß日"}, {"𐐨", "𐐀"}, {"\xC3", "\xC3"}, {"{`", "{`"}}) {
      EXPECT_EQ(text::upper(plain + text + plain), capitals + expected + capitals);
    }
  }
}

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
}

TEST(Text, TurnsTextIntoNumbersOrSaysWhyNot) {
  EXPECT_EQ(text::toInt32(" 110 "), 110);
  EXPECT_EQ(text::toInt32("-5"), -5);
  for (const auto* none : {"", " ", "pop", "110x", "1 2", "+-3", "0x10"}) {
    try {
      text::toInt32(none);
      FAIL() << none;
    } catch (const RunTimeFailure& failure) {
      EXPECT_EQ(failure.number(), 13) << none;
    }
  }
  for (const auto* large : {"2147483648", "-2147483649", "99999999999999999999"}) {
    EXPECT_THROW(text::toInt32(large), RunTimeFailure) << large;
  }
  EXPECT_THROW(text::toInt16(32768), RunTimeFailure);
  EXPECT_EQ(text::toInt16(-32768), -32768);
}

}  // namespace
}  // namespace velmora
