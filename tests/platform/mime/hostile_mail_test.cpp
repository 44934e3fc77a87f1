#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <ctime>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/mail_bounds.h"
#include "platform/mime/gmime_reader.h"

namespace velmora {
namespace {

std::string repeat(std::string_view text, std::size_t times) {
  std::string repeated;
  repeated.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) repeated += text;
  return repeated;
}

std::string nested(int depth, const std::string& subtype = "mixed") {
  std::string message;
  for (int i = 0; i < depth; ++i) {
    const std::string name = "b" + std::to_string(i);
    message += "Content-Type: multipart/" + subtype + "; boundary=" + name + "\r\n\r\n--" + name + "\r\n";
  }
  return message + "\r\ninnermost";
}

constexpr std::size_t mebibyte = std::size_t{1024} * 1024;

/// A message that says the same again and again.
struct Hostile {
  const char* Name;
  std::string Before;
  std::string Again;
  std::size_t Times;
  std::string After = "\r\n";
};

void PrintTo(const Hostile& hostile, std::ostream* out) { *out << hostile.Name; }

class HostileMailTest : public testing::TestWithParam<Hostile> {};

/// What a reader does for a message, how long it keeps its caller waiting meanwhile, and how many bytes it has in use
/// at most. In the processor's time, which a busy machine leaves as it is.
struct Reading {
  ReadMail mail;
  double seconds = 0;
  double longestWait = 0;
  std::size_t memory = 0;
};

std::size_t memoryInUse() {
  const auto heap = mallinfo2();  // all of it 0 with sanitizers, which have a heap of their own
  return heap.uordblks + heap.hblkhd;
}

Reading readingOf(const std::string& message) {
  const auto since = [](std::clock_t begin) { return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC; };
  const GmimeReader reader;
  Reading reading;
  const std::clock_t begin = std::clock();
  std::clock_t last = begin;
  const std::size_t before = memoryInUse();
  const auto pause = [&] {
    reading.memory = std::max(reading.memory, std::max(memoryInUse(), before) - before);
    reading.longestWait = std::max(reading.longestWait, since(last));
    last = std::clock();
  };
  reading.mail = reader.read(message, {}, pause);
  pause();
  reading.seconds = since(begin);
  return reading;
}

// What is quadratic takes minutes here; what is linear takes well under a second and pauses every few milliseconds, and
// takes several times as long with sanitizers.
TEST_P(HostileMailTest, IsReadQuietlyAndInLittleTime) {
  const auto& [name, before, again, times, after] = GetParam();
  testing::internal::CaptureStderr();
  const std::string message = before + repeat(again, times) + after;
  const auto [mail, seconds, longestWait, memory] = readingOf(message);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_LT(seconds, 20);
  EXPECT_LT(longestWait, 2);
  EXPECT_LT(memory, 60 * mebibyte + 5 * message.size()) << "besides the message itself";
  for (const std::string* line : {&mail.From, &mail.To, &mail.Subject}) EXPECT_LE(line->size(), GmimeReader::MaxLine);
  EXPECT_LE(mail.Body.size(), 32 * mebibyte);
  RecordProperty("milliseconds", static_cast<int>(seconds * 1000));
  RecordProperty("memory", static_cast<int>(memory / mebibyte));
  RecordProperty("longest wait", static_cast<int>(longestWait * 1000));
}

std::string numbered(std::string_view before, std::string_view after, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += std::string(before) + std::to_string(i) + std::string(after);
  return text;
}

/// One after another, so that none can be kept for the next.
std::string charsetsInTurn(std::string_view before, std::string_view after) {
  std::string text;
  for (const char* name : {"koi8-r", "iso-8859-2", "euc-jp", "big5", "gb18030", "windows-1251", "tis-620", "cp866"})
    text += std::string(before) + name + std::string(after);
  return text;
}

const std::string mixed = "Content-Type: multipart/mixed; boundary=b\r\n\r\n";
const std::string related = "Content-Type: multipart/related; boundary=b\r\n\r\n--b\r\nContent-Type: text/html\r\n\r\n";
const std::string image = "--b\r\nContent-Type: image/png\r\n";

const std::string htmlMail = "Content-Type: text/html\r\n\r\n";

const Hostile hostileMail[] = {
    {"NestedParts", nested(100000), "", 0, ""},
    {"NestedMessages", "", "Content-Type: message/rfc822\r\n\r\n", 100000, ""},
    {"DelimitersInDepth", nested(1000), "--x\r\n", 1000000, ""},
    {"SameBoundary", "", mixed + "--b\r\n", 100000, ""},
    {"Received5000", "", "Received: by x; Mon, 99 Foo 2026 10:00:00 +0000\r\n", 5000},
    {"FromLines", "", "From: a@b\r\n", 100000},
    {"ContentTypeLines", "", "Content-Type: text/plain\r\n", 100000},
    {"HeaderOf1MB", "", "X-Header: some text\r\n\tfolded\r\n", 40000},
    {"ColonLines", "", "a:\n", 5000000, ""},
    {"BrokenHeaderLines", "", "a:b\nnothing\n", 200000, ""},
    {"LongSubject", "Subject: ", "x", 5000000},
    {"FoldedSubject", "Subject: ", "a\r\n ", 1000000},
    {"EncodedWords", "Subject: ", "=?utf-8?Q?a?= ", 100000},
    {"EncodedWordsOfTwoCharsets", "Subject: ", "=?utf-8?Q?a?= =?koi8-r?B?YQ==?=\r\n ", 30000},
    {"OpenWords", "Subject: ", "=?utf-8?Q?a", 100000},
    {"OpenWordsThenClosed", "Subject: ", "=?utf-8?Q?a ", 20000, "?=\r\n\r\n"},
    {"WordBeginnings", "Subject: ", "=?", 500000},
    {"Addresses", "To: ", "a@b.example, ", 100000},
    {"NamesAsAddresses", "To: ", "a,", 500000},
    {"QuotedNames", "To: ", "\"a\",", 200000},
    {"NestedGroups", "To: ", "a:", 500000},
    {"NestedComments", "To: ", "(", 1000000},
    {"OpenQuotes", "To: ", "\"", 1000001},
    {"EncodedNames", "To: ", "=?x?Q?a=2C?=,", 100000},
    {"TypeParameters", "Content-Type: text/plain", "; a*0*=b", 100000, "\r\n\r\n"},
    {"Parts", mixed, "--b\r\n\r\nx\r\n", 200000, ""},
    {"LongLines", "A: b\r\n\r\n", "x", 10000000},
    {"FaultyCharset", "Content-Type: text/plain; charset=euc-jp\r\n\r\n", "\xFF", 5000000, ""},
    {"Attachment10MB", mixed + image + "Content-Transfer-Encoding: base64\r\n\r\n", "AAAAAAAAAAAAAAAAAAA\r\n", 500000,
     "--b--\r\n"},
    {"HtmlWithReferences", related, numbered("cid:", " ", 100000), 1, "\r\n" + image + "Content-ID: <x>\r\n\r\n"},
    {"BareReturns", "A: b\r\n\r\n", "\r", 3000000, ""},
    {"Nuls", "", std::string(1, '\0'), 3000000, ""},
    {"CharsetsInWords", "Subject: ", charsetsInTurn("=?", "?B?YQ==?=\r\n "), 8000},
    {"CharsetsInParts", mixed, charsetsInTurn("--b\r\nContent-Type: text/plain; charset=", "\r\n\r\n\xE1\r\n"), 8000,
     ""},
    {"NewCharsets", mixed, numbered("--b\r\nContent-Type: text/plain; charset=n", "\r\n\r\nx\r\n", 50000), 1, ""},
    {"TriplingCharset", "Content-Type: text/plain; charset=tis-620\r\n\r\n", "\xA1", 5000000, ""},
    {"TinyDelimiters", mixed, "--b\n", 4000000, ""},
    {"CharsetsOfParameters", mixed,
     "--b\r\nContent-Type: text/plain" + charsetsInTurn("; a*=", "''%41") + "; charset=utf-8\r\n\r\nx\r\n", 5000, ""},
    {"NamesInCharsets", mixed, charsetsInTurn("--b\r\nContent-Type: a/b; name*=", "''%E1\r\n\r\nx\r\n"), 8000, ""},
    {"NameInSections", mixed, "--b\r\nContent-Type: a/b; a=b" + numbered("; name*", "*=%41", 1500) + "\r\n\r\nx\r\n",
     300, ""},
    {"HtmlSideBySide", mixed, "--b\r\nContent-Type: text/html\r\n\r\n<p>x\r\n", 20000, ""},
    {"BlankAlternatives",
     nested(14, "alternative") + "\r\n--b13\r\nContent-Type: multipart/alternative; boundary=b\r\n\r\n",
     "--b\r\nContent-Type: text/html\r\n\r\n&nbsp;\r\n", 20000, ""},
    {"BlankText", "A: b\r\n\r\n", " \r\n", 1000000, ""},
    {"RelatedWithoutRoot", "Content-Type: multipart/related; boundary=b; start=x\r\n\r\n",
     image + "Content-ID: <y>\r\n\r\nx\r\n", 50000, ""},
    {"PicturesOfManyPages", mixed + numbered(image + "Content-ID: <", ">\r\n\r\nx\r\n", 5000),
     "--b\r\nContent-Type: text/html\r\n\r\n" + numbered("cid:", " ", 200) + "\r\n", 4000, ""},
    {"HtmlLinesInAList", htmlMail + "<ul><li><pre>", "x\n", mebibyte / 2},
    {"HtmlSeparatorsInAList", htmlMail + "<ul><li>", "x\u2029", mebibyte / 4},
    {"HtmlEntitiesInAList", htmlMail + "<ul><li>", "&#xFDD0;", mebibyte / 8},
    {"HtmlOpenThenClosed", htmlMail + repeat("<b>", mebibyte / 6), "</i>", mebibyte / 8},
    {"HtmlAttributes", htmlMail, numbered("<a a", "", 1) + numbered(" a", "", 150000), 1},
    {"HtmlAttributesAndNuls", htmlMail, "<a" + numbered(std::string_view("\0a", 2), "", 100000) + ">", 1},
    {"HtmlBogusComments", htmlMail, "<?", mebibyte / 2, ">"},
    {"HtmlBogusEnds", htmlMail, "</ ", mebibyte / 3, ">"},
    {"HtmlOpenQuotes", htmlMail, "<a b=\"'", mebibyte / 6, ""},
    {"HtmlTagsOfAttributes", htmlMail, "<a" + numbered(" a", "", 1000) + ">", 150},
};

INSTANTIATE_TEST_SUITE_P(All, HostileMailTest, testing::ValuesIn(hostileMail),
                         [](const auto& test) { return test.param.Name; });

std::vector<Hostile> hostileHtml() {
  std::vector<Hostile> mails;
  for (const char* again : {
           "<div>",
           "<table><tr><td>",
           "<ul><li>",
           "<b>x",
           "<td>x",
           "<br>",
           "x ",
           "<",
           "<a b='c\"d>&foo;<<x y=z>",
           "<!--",
           "<style>",
           "&#",
           "<pre>x\n",
           "<svg>",
           "<a href=http://x>",
           "\xFF",
       })
    mails.push_back({again, htmlMail, again, mebibyte / 2 / std::string_view(again).size()});
  return mails;
}

INSTANTIATE_TEST_SUITE_P(Html, HostileMailTest, testing::ValuesIn(hostileHtml()));

// The most of each that is kept; what comes behind it is text or cut, and a mark says so.
TEST(HostileMail, BoundsHold) {
  const struct {
    std::string Message;
    std::size_t Raw;
    std::string BodyEnd;
    int Attachments;
  } cases[] = {
      {repeat("a:b\r\n", mail_bounds::fields) + "c:d\r\ne", 5 * mail_bounds::fields - 2, "c:d\r\ne", 0},
      {mixed + repeat(image + "\r\nx\r\n", mail_bounds::parts + 5), mixed.size() - 4, "", mail_bounds::parts},
      {"a: " + repeat("b", 2 * mail_bounds::raw) + "\r\n\r\nc", mail_bounds::raw, "c", 0},
      {"a: " + repeat("b", mail_bounds::raw - mail_bounds::rawMark.size() - 5) + "\r\n c" + repeat("d", 99) +
           "\r\n\r\ne",
       mail_bounds::raw - 2, "e", 0},
      {htmlMail + repeat("x", 9 * mebibyte), htmlMail.size() - 4, std::string(mail_bounds::bodyMark), 0},
  };
  for (const auto& [message, raw, bodyEnd, attachments] : cases) {
    const ReadMail mail = readingOf(message).mail;
    EXPECT_EQ(mail.Raw.size(), raw);
    EXPECT_EQ(mail.Raw.ends_with(mail_bounds::rawMark), raw >= mail_bounds::raw - 2);
    EXPECT_EQ(mail.Raw.find("\r\n\r\n"), std::string::npos);
    EXPECT_TRUE(mail.Body.ends_with(bodyEnd))
        << mail.Body.substr(mail.Body.size() - std::min<std::size_t>(mail.Body.size(), 99));
    EXPECT_EQ(mail.Attachments, attachments);
  }
}

// A pause may end the reading, and a charset that has kept a state begins anew for the next message.
TEST(HostileMail, ReadingCanBeGivenUp) {
  const GmimeReader reader;
  const std::string message = "Content-Type: text/plain; charset=iso-2022-jp\r\n\r\n\x1B$B" + repeat("$\"", 500000);
  EXPECT_THROW(reader.read(message, {}, [] { throw std::runtime_error("stop"); }), std::runtime_error);
  EXPECT_EQ(reader.read("Subject: =?iso-2022-jp?Q?$a?=\r\n\r\n", {}, [] {}).Subject, "$a");
}

TEST(HostileMail, LongTextsEndBetweenCharacters) {
  const ReadMail mail =
      readingOf("Subject: x" + repeat("ü", 100000) + "\r\n\r\n" + repeat(repeat("ü", 1000), 34000)).mail;
  EXPECT_EQ(mail.Subject.size(), GmimeReader::MaxLine);
  EXPECT_TRUE(mail.Subject.ends_with("ü…"));
  EXPECT_LE(mail.Body.size(), mail_bounds::message);
  EXPECT_TRUE(mail.Body.ends_with("ü" + std::string(mail_bounds::bodyMark)));
}

}  // namespace
}  // namespace velmora
