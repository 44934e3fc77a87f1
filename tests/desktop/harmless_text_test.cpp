#include "platform/qt/widgets/harmless_text.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "platform/qt/strings.h"

namespace velmora {
namespace {

TEST(HarmlessText, ShowsWhatIsThereAndHidesNoTrick) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"plain ~ ü € 😀 日本", "plain ~ ü € 😀 日本"},
      {"a\r\nb\rc\nd\r\r\n\n", "a\nb\nc\nd\n\n\n"},
      {"a\vb\fc\u0085d\u2028e\u2029f\tg", "a\nb\nc\nd\ne\nf\tg"},
      {{"\0\x01\x1B\x1F\x7F\u0080\u0084\u0086\u009F\u00A0b", 16}, "␀␁␛␟␡\uFFFD\uFFFD\uFFFD\uFFFD\u00A0b"},
      {"\u202Dcod\u202E.exe\u200Eb\u200Fc\u061Cd", "\uFFFDcod\uFFFD.exe\u200Eb\u200Fc\u061Cd"},
      {"\u202Aa\u202Bb\u202C \u2066c\u2067d\u2068e\u2069 \u206Af", "ab cde f"},
      {"\uFEFFa\uFEFFb\U000E0001\U000E0068c\U000E01F0d\uFFF9e\uFFFAf\uFFFB\uFFFC", "abcd\uFFFDe\uFFFDf\uFFFD\uFFFD"},
      {"\uFDD0\uFDD1\uFDEF\uFFFE\uFFFF\U0001FFFE", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"a\xFF\xC3z\xC3", "a\uFFFD\uFFFDz\uFFFD"},
      {"👩‍👩‍👧 नमस्ते é\u0301 葛\U000E0100",
       "👩‍👩‍👧 नमस्ते é\u0301 葛\U000E0100"},
  };
  for (const auto& [bytes, wanted] : cases) EXPECT_EQ(utf8(harmlessText(bytes)), wanted) << wanted;
}

TEST(HarmlessText, NoLetterCarriesMoreThanAFewMarks) {
  for (const auto* mark : {"\u0301", "\u20DD", "\U0001D165", "\u0301\u200D", "\u0301\u00AD", "\u0301\u202C"}) {
    const QString text = harmlessText("a" + QByteArray(mark).repeated(5000).toStdString() + "b" + mark);
    EXPECT_LT(text.size(), 24) << mark;
    EXPECT_TRUE(text.contains('b')) << mark;
  }
}

TEST(HarmlessLine, IsOneLineOfBoundedLength) {
  const std::tuple<std::string_view, qsizetype, std::string_view> cases[] = {
      {"a\r\nb\tc\u2028d", 7, "a b c d"},
      {"123456", 5, "1234…"},
      {"ab😀", 4, "ab😀"},
      {"ab😀c", 4, "ab…"},
      {"abe\u0301f", 4, "ab…"},
      {"\u202A\u202A\u202A\u202A\u202Aab", 2, "…"},
      {"\xFF\xFF\xFF", 2, "\uFFFD…"},
      {"a", 0, ""}};
  for (const auto& [bytes, most, wanted] : cases) EXPECT_EQ(utf8(harmlessLine(bytes, most)), wanted) << bytes;
  const std::string text(50'000'000, 'x');
  const std::clock_t begun = std::clock();
  for (int i = 0; i < 100; ++i) EXPECT_EQ(harmlessLine(text).size(), 1000);
  EXPECT_LT(std::clock() - begun, CLOCKS_PER_SEC);
}

}  // namespace
}  // namespace velmora
