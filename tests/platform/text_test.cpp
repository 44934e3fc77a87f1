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
                        {"a\xE2\x82", 2, "a\xE2"}};
  for (const auto& c : cases) EXPECT_EQ(text::left(c.text, c.count), c.left) << c.text;
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
