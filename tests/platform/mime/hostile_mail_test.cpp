#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <string>
#include <string_view>

#include "platform/mime/gmime_reader.h"

namespace velmora {
namespace {

std::string repeat(std::string_view text, std::size_t times) {
  std::string repeated;
  repeated.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) repeated += text;
  return repeated;
}

std::string nested(int depth) {
  std::string message;
  for (int i = 0; i < depth; ++i) {
    const std::string name = "b" + std::to_string(i);
    message += "Content-Type: multipart/mixed; boundary=" + name + "\r\n\r\n--" + name + "\r\n";
  }
  return message + "\r\ninnermost";
}

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

// What is quadratic takes minutes here; what is linear takes well under a second, and a few seconds with sanitizers.
TEST_P(HostileMailTest, IsReadQuietlyAndInLittleTime) {
  const auto& [name, before, again, times, after] = GetParam();
  const std::string message = before + repeat(again, times) + after;
  const GmimeReader reader([](std::string_view html) { return std::string(html); });
  testing::internal::CaptureStderr();
  const auto begin = std::chrono::steady_clock::now();
  const ReadMail mail = reader.read(message, {}, [] {});
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_LT(taken.count(), 20);
  for (const std::string* line : {&mail.From, &mail.To, &mail.Subject}) EXPECT_LE(line->size(), GmimeReader::MaxLine);
  EXPECT_LE(mail.Body.size(), 16 * 1024 * 1024U);
}

const std::string mixed = "Content-Type: multipart/mixed; boundary=b\r\n\r\n";
const std::string related = "Content-Type: multipart/related; boundary=b\r\n\r\n--b\r\nContent-Type: text/html\r\n\r\n";
const std::string image = "--b\r\nContent-Type: image/png\r\n";

const Hostile hostileMail[] = {
    {"NestedParts", nested(100000), "", 0, ""},
    {"NestedMessages", "", "Content-Type: message/rfc822\r\n\r\n", 100000, ""},
    {"DelimitersInDepth", nested(1000), "--x\r\n", 1000000, ""},
    {"SameBoundary", "", mixed + "--b\r\n", 100000, ""},
    {"Received5000", "", "Received: by x; Mon, 99 Foo 2026 10:00:00 +0000\r\n", 5000},
    {"FromLines", "", "From: a@b\r\n", 100000},
    {"ContentTypeLines", "", "Content-Type: text/plain\r\n", 100000},
    {"HeaderOf1MB", "", "X-Header: some text\r\n\tfolded\r\n", 40000},
    {"ColonLines", "", "a:\n", 1000000, ""},
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
    {"HtmlWithReferences", related, "cid:", 300000, "\r\n" + image + "Content-ID: <x>\r\n\r\n"},
    {"BareReturns", "A: b\r\n\r\n", "\r", 3000000, ""},
    {"Nuls", "", std::string(1, '\0'), 3000000, ""},
};

INSTANTIATE_TEST_SUITE_P(All, HostileMailTest, testing::ValuesIn(hostileMail),
                         [](const auto& test) { return test.param.Name; });

TEST(HostileMail, AttachmentsStopAtTheHighestCount) {
  const GmimeReader reader([](std::string_view) { return std::string(); });
  const std::string parts = repeat("--b\r\nContent-Type: image/png\r\n\r\nx\r\n", 40000);
  const ReadMail mail = reader.read("Content-Type: multipart/mixed; boundary=b\r\n\r\n" + parts, {}, [] {});
  EXPECT_EQ(mail.Attachments, std::numeric_limits<std::int16_t>::max());
}

TEST(HostileMail, HtmlIsBoundedBeforeItIsRead) {
  std::size_t size = 0;
  const GmimeReader reader([&size](std::string_view html) {
    size = html.size();
    return std::string("\xFF");
  });
  const ReadMail mail = reader.read("Content-Type: text/html\r\n\r\n" + repeat("ü", 1000000), {}, [] {});
  EXPECT_EQ(size, 1024 * 1024U);
  EXPECT_EQ(mail.Body, "ÿ");
}

TEST(HostileMail, LongTextsEndBetweenCharacters) {
  const GmimeReader reader([](std::string_view) { return std::string(); });
  const ReadMail mail =
      reader.read("Subject: x" + repeat("ü", 100000) + "\r\n\r\nx" + repeat("ü", 34000000), {}, [] {});
  EXPECT_EQ(mail.Subject.size(), GmimeReader::MaxLine - 1);
  EXPECT_EQ(mail.Body.size(), 64 * 1024 * 1024 - 1);
  EXPECT_EQ(mail.Body.substr(mail.Body.size() - 2), "ü");
}

}  // namespace
}  // namespace velmora
