#include <gtest/gtest.h>

#include <chrono>
#include <functional>
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

std::string subject(const std::string& value) { return "Subject: " + value + "\r\n\r\n"; }
std::string to(const std::string& value) { return "To: " + value + "\r\n\r\n"; }

struct Hostile {
  const char* Name;
  std::function<std::string()> Make;
};

void PrintTo(const Hostile& hostile, std::ostream* out) { *out << hostile.Name; }

class HostileMailTest : public testing::TestWithParam<Hostile> {};

// What is quadratic takes minutes here; what is linear takes well under a second, and a few seconds with sanitizers.
TEST_P(HostileMailTest, IsReadQuietlyAndInLittleTime) {
  const std::string message = GetParam().Make();
  const GmimeReader reader([](std::string_view html) { return std::string(html); });
  testing::internal::CaptureStderr();
  const auto begin = std::chrono::steady_clock::now();
  const ReadMail mail = reader.read(message, {});
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_LT(taken.count(), 20);
  RecordProperty("microseconds", static_cast<int>(taken.count() * 1e6));
  for (const std::string* line : {&mail.From, &mail.To, &mail.Subject}) EXPECT_LE(line->size(), GmimeReader::MaxLine);
  EXPECT_LE(mail.Body.size(), 16 * 1024 * 1024U);
}

INSTANTIATE_TEST_SUITE_P(
    All, HostileMailTest,
    testing::Values(
        Hostile{"Nested1000", [] { return nested(1000); }}, Hostile{"Nested100000", [] { return nested(100000); }},
        Hostile{"NestedMessages", [] { return repeat("Content-Type: message/rfc822\r\n\r\n", 100000); }},
        Hostile{"DelimitersInDepth", [] { return nested(1000) + repeat("--x\r\n", 1000000); }},
        Hostile{"SameBoundary",
                [] { return repeat("Content-Type: multipart/mixed; boundary=b\r\n\r\n--b\r\n", 100000); }},
        Hostile{"Received5000",
                [] { return repeat("Received: by x; Mon, 99 Foo 2026 10:00:00 +0000\r\n", 5000) + "\r\n"; }},
        Hostile{"FromLines", [] { return repeat("From: a@b\r\n", 100000) + "\r\n"; }},
        Hostile{"ContentTypeLines", [] { return repeat("Content-Type: text/plain\r\n", 100000) + "\r\n"; }},
        Hostile{"HeaderOf1MB", [] { return repeat("X-Header: some text\r\n\tfolded\r\n", 40000) + "\r\n"; }},
        Hostile{"ColonLines", [] { return repeat("a:\n", 1000000); }},
        Hostile{"BrokenHeaderLines", [] { return repeat("a:b\nnothing\n", 200000); }},
        Hostile{"LongSubject", [] { return subject(std::string(5000000, 'x')); }},
        Hostile{"FoldedSubject", [] { return subject(repeat("a\r\n ", 1000000)); }},
        Hostile{"EncodedWords", [] { return subject(repeat("=?utf-8?Q?a?= ", 100000)); }},
        Hostile{"EncodedWordsOfTwoCharsets",
                [] { return subject(repeat("=?utf-8?Q?a?= =?koi8-r?B?YQ==?=\r\n ", 30000)); }},
        Hostile{"OpenWords", [] { return subject(repeat("=?utf-8?Q?a", 100000)); }},
        Hostile{"OpenWordsThenClosed", [] { return subject(repeat("=?utf-8?Q?a ", 20000) + "?="); }},
        Hostile{"WordBeginnings", [] { return subject(repeat("=?", 500000)); }},
        Hostile{"Addresses", [] { return to(repeat("a@b.example, ", 100000)); }},
        Hostile{"NamesAsAddresses", [] { return to(repeat("a,", 500000)); }},
        Hostile{"QuotedNames", [] { return to(repeat("\"a\",", 200000)); }},
        Hostile{"NestedGroups", [] { return to(repeat("a:", 500000)); }},
        Hostile{"NestedComments", [] { return to(std::string(1000000, '(')); }},
        Hostile{"OpenQuotes", [] { return to(std::string(1000001, '"')); }},
        Hostile{"EncodedNames", [] { return to(repeat("=?x?Q?a=2C?=,", 100000)); }},
        Hostile{"TypeParameters", [] { return "Content-Type: text/plain" + repeat("; a*0*=b", 100000) + "\r\n\r\n"; }},
        Hostile{
            "Parts",
            [] { return "Content-Type: multipart/mixed; boundary=b\r\n\r\n" + repeat("--b\r\n\r\nx\r\n", 200000); }},
        Hostile{"LongLines", [] { return "A: b\r\n\r\n" + std::string(10000000, 'x'); }},
        Hostile{"FaultyCharset",
                [] { return "Content-Type: text/plain; charset=euc-jp\r\n\r\n" + std::string(5000000, '\xFF'); }},
        Hostile{"Attachment10MB",
                [] {
                  return "Content-Type: multipart/mixed; boundary=b\r\n\r\n--b\r\n\r\ntext\r\n--b\r\n"
                         "Content-Type: image/png\r\nContent-Transfer-Encoding: base64\r\n\r\n" +
                         repeat(std::string(76, 'A') + "\r\n", 130000) + "--b--\r\n";
                }},
        Hostile{"HtmlWithReferences",
                [] {
                  return "Content-Type: multipart/related; boundary=b\r\n\r\n--b\r\nContent-Type: text/html\r\n\r\n" +
                         repeat("cid:", 300000) + "\r\n--b\r\nContent-Type: image/png\r\nContent-ID: <x>\r\n\r\n";
                }},
        Hostile{"BareReturns", [] { return "A: b\r\n\r\n" + std::string(3000000, '\r'); }},
        Hostile{"Nuls", [] { return std::string(3000000, '\0'); }}),
    [](const auto& test) { return test.param.Name; });

TEST(HostileMail, AttachmentsStopAtTheHighestCount) {
  const GmimeReader reader([](std::string_view) { return std::string(); });
  const std::string parts = repeat("--b\r\nContent-Type: image/png\r\n\r\nx\r\n", 40000);
  const ReadMail mail = reader.read("Content-Type: multipart/mixed; boundary=b\r\n\r\n" + parts, {});
  EXPECT_EQ(mail.Attachments, std::numeric_limits<std::int16_t>::max());
}

TEST(HostileMail, HtmlIsBoundedBeforeItIsRead) {
  std::size_t size = 0;
  const GmimeReader reader([&size](std::string_view html) {
    size = html.size();
    return std::string("\xFF");
  });
  const ReadMail mail = reader.read("Content-Type: text/html\r\n\r\n" + repeat("ü", 1000000), {});
  EXPECT_EQ(size, 1024 * 1024U);
  EXPECT_EQ(mail.Body, "ÿ");
}

TEST(HostileMail, LongTextsEndBetweenCharacters) {
  const GmimeReader reader([](std::string_view) { return std::string(); });
  const ReadMail mail = reader.read("Subject: x" + repeat("ü", 100000) + "\r\n\r\nx" + repeat("ü", 34000000), {});
  EXPECT_EQ(mail.Subject.size(), GmimeReader::MaxLine - 1);
  EXPECT_EQ(mail.Body.size(), 64 * 1024 * 1024 - 1);
  EXPECT_EQ(mail.Body.substr(mail.Body.size() - 2), "ü");
}

}  // namespace
}  // namespace velmora
