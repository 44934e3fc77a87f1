#include "platform/mime/gmime_reader.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "platform/mime/mime_kit.h"

namespace velmora {
namespace {

using test::part;
using test::TextCase;

constexpr DateTime Now = {.year = 2030, .month = 6, .day = 1, .hour = 12};

class GmimeReaderTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { setenv("TZ", "Asia/Tokyo", 1); }

  ReadMail read(std::string_view message) const {
    return reader_.read(message, Now, [] {});
  }
  std::string subject(const std::string& value) const { return read("Subject: " + value + "\r\n\r\n").Subject; }
  std::string from(const std::string& value) const { return read("From: " + value + "\r\n\r\n").From; }
  DateTime date(const std::string& header) const { return read(header + "\r\n\r\n").Date; }

  GmimeReader reader_;
};

TEST_F(GmimeReaderTest, DecodesSubjects) {
  const TextCase cases[] = {
      {"=?utf-8?Q?caf=C3=A9_au_lait?=", "café au lait"},
      {"=?ISO-8859-1?Q?Gr=FC=DFe?=", "Grüße"},
      {"=?iso-8859-1?Q?=93quoted=94?=", "“quoted”"},
      {"=?koi8-r?B?79TXxdQ=?=", "Ответ"},
      {"=?iso-2022-jp?B?GyRCRnxLXBsoQg==?=", "日本"},
      {"a =?utf-8?Q?b?= c", "a b c"},
      {"=?utf-8?Q?one?= \t =?utf-8?Q?two?=", "onetwo"},
      {"=?utf-8?Q?one?==?koi8-r?B?79TXxdQ=?=", "oneОтвет"},
      // Cut inside a character, with and without padding, in different encodings.
      {"=?utf-8?B?ww==?= =?utf-8?B?pA==?=", "ä"},
      {"=?utf-8?Q?=F0=9F=98?=\r\n =?UTF-8?B?gA==?=", "😀"},
      {"=?utf-8?Q?fol\r\n ded?=", "fol ded"},
      {"=?utf-8?Q?broken\r\nfold?=\r\nX: y", "brokenfold"},
      {"=?no-such-charset?Q?=FCx?=", "üx"},
      {"=?us-ascii?Q?=C3=BC?=", "ü"},
      {"=?utf-8?Q?caf=E9?=", "café"},
      {"=?utf-8?X?odd?= =?utf-8?Q?open", "=?utf-8?X?odd?= =?utf-8?Q?open"},
      {"=?utf-8?Q?open =?utf-8?Q?b?=", "=?utf-8?Q?open b"},
      {"=?utf-8?Q?\?=x", "x"},
      {"raw \xFC \x80", "raw ü €"},
      {"=?utf-8?Q?two=0D=0Alines=1B[31m=00?=", "two lines [31m"},
      {"nul" + std::string(1, '\0') + "byte", "nul byte"},
      {"\xE2\x80\xA8line separator\xE2\x80\xA9", "line separator"},
  };
  for (const auto& [given, wanted] : cases) EXPECT_EQ(subject(given), wanted) << given;
}

// A header that isn't ASCII is in the charset of the text below it, if it can be.
TEST_F(GmimeReaderTest, ReadsRawHeadersAsTheText) {
  const std::string text = "text/plain; charset=";
  const TextCase cases[] = {
      {part(text + "koi8-r", ""), "яОбет"},
      {test::multipart({part("image/png", ""), part("text/html; charset=windows-1251", "")}), "СпВЕФ"},
      {part("text/html", "<meta charset=windows-1251>"), "СпВЕФ"},
      {part(text + "utf-8", ""), "ÑïÂÅÔ"},
      {part(text + "utf-16", ""), "ÑïÂÅÔ"},
      {part(text + "utf-7", ""), "ÑïÂÅÔ"},
      {part(text + "cp037", ""), "ÑïÂÅÔ"},
  };
  for (const auto& [given, wanted] : cases) {
    const ReadMail mail = read("Subject: \xD1\xEF\xC2\xC5\xD4 =?utf-8?Q?=C3=A4?=\r\nFrom: \xC3\xA4 <a@x>\r\n" + given);
    EXPECT_EQ(mail.Subject, wanted + " ä") << given;
    EXPECT_EQ(mail.From, "ä <a@x>");
  }
}

TEST_F(GmimeReaderTest, ReadsNoRawHeaderAsWhatItIsNot) {
  const struct {
    std::string Charset, From, Wanted;
  } cases[] = {
      {"hz-gb-2312", "\xD6\xD0 b@x.example ~{<evil@x.example>~}", "ÖÐ b@x.example ~{<evil@x.example>~}"},
      {"hz-gb-2312", "B <b@x.example> (\xD6\xD0 ~{),<evil@xx.example>(~})",
       "B <b@x.example> (ÖÐ ~{), ~} <evil@xx.example>"},
      {"iso-2022-kr", "\xFC \x0E<evil@x.example>\x0F", "ü <evil@x.example>"},
      {"koi8-r", "\xD0\xB6\xD1\x83\xD1 <a@x>", "жуÑ <a@x>"},
      {"gb2312", "J\xF6rg <a@x>", "Jörg <a@x>"},
      {"big5", "Ren\xE9 <a@x>", "René <a@x>"},
      {"gb18030", "\xFE\xF6 <a@x>", "þö <a@x>"},
      {"shift_jis", "Rei\xDF <a@x>", "Reiß <a@x>"},
      {"gb2312", "\xD6\xD0 <a@x>", "中 <a@x>"},
  };
  for (const auto& [charset, given, wanted] : cases)
    EXPECT_EQ(read("From: " + given + "\r\n" + part("text/plain; charset=" + charset, "")).From, wanted) << given;
}

TEST_F(GmimeReaderTest, ShowsAddresses) {
  const TextCase cases[] = {
      {"<a@b.example>", "a@b.example"},
      {"\"Smith & Jones\" <a@b.example>", "Smith & Jones <a@b.example>"},
      {"a@b.example (John Doe)", "John Doe <a@b.example>"},
      {"\"Doe, John\" <a@b.example>,\r\n c@d.example", "Doe, John <a@b.example>, c@d.example"},
      {"Doe, John <a@b.example>", "Doe, John <a@b.example>"},
      {"=?utf-8?Q?J=C3=B6rg?= <a@b.example>", "Jörg <a@b.example>"},
      {"\"=?utf-8?Q?J=C3=B6rg?=\" <a@b.example>", "Jörg <a@b.example>"},
      {"=?utf-8?Q?Doe=2C_=22J=22_=3Cx=40y=3E?= <a@b.example>", "Doe, \"J\" <x@y> <a@b.example>"},
      {"J\xF6rg <a@b.example>", "Jörg <a@b.example>"},
      {"undisclosed-recipients:;", "undisclosed-recipients:"},
      {"Team: a@b.example, c@d.example;", "Team: a@b.example, c@d.example"},
      {"=?utf-8?Q?J=C3=B6rg?=", "Jörg"},
      {"\"\"", "\"\""},
      {" , ,", ""},
      {"unlisted-recipients:; (no To-header on input)", "unlisted-recipients: (no To-header on input)"},
      {"Team:a@x, b@x; (end), B <c@x>;;d@x", "Team: a@x, b@x (end), B <c@x>, d@x"},
      {"<Undisclosed-Recipient:@h;>", "Undisclosed-Recipient:@h;"},
      {"J. Doe, Dr.\r\n \t X <j@x>", "J. Doe, Dr. X <j@x>"},
      {"R <@a,@b:c@d>", "R <@a,@b:c@d>"},
      {"a@x(J. (Jr) Doe), <b@x> ( B ), c@x (C) (D)", "J. (Jr) Doe <a@x>, B <b@x>, c@x (C) (D)"},
      {"J <j@x, K <k@x>; < l@x", "J <j@x>, K <k@x>, l@x"},
      {"\"a \\\"b\\\" <c>\" <j@x>", "a \"b\" <c> <j@x>"},
      {"=?utf-8?Q?J=C3=B6?=rg=?utf-8?Q?,_=22=5C?=<a@x>", "Jörg, \"\\ <a@x>"},
      // A sender's own address never vanishes, nor what else he says.
      {"=?utf-8?Q?boss=40bank.example=00?= <evil@x.example>", "boss@bank.example <evil@x.example>"},
      {"boss@bank.example) <evil@x.example>", "boss@bank.example) <evil@x.example>"},
      {"Boss <boss@bank.example>) <evil@x.example>", "Boss <boss@bank.example>) <evil@x.example>"},
      {"John (Sales) <a@b.example>", "John (Sales) <a@b.example>"},
      {"MAILER-DAEMON (Mail Delivery System)", "MAILER-DAEMON (Mail Delivery System)"},
      {":) Smile <a@b.example>", ":) Smile <a@b.example>"},
      {"Bob\\, Jr <a@b.example>", "Bob\\, Jr <a@b.example>"},
  };
  for (const auto& [given, wanted] : cases) EXPECT_EQ(from(given), wanted) << given;
}

TEST_F(GmimeReaderTest, TellsTheAddressToAnswerTo) {
  const std::string longest = std::string(316, 'x') + "@y.z";
  const TextCase cases[] = {
      {"a.b+c@d-e.example", "a.b+c@d-e.example"},
      {"Name <a@b.example>", "a@b.example"},
      {"\"a\\\"b\" (c) < a@b.example >", "a@b.example"},
      {"a@b.example (x@y)", "a@b.example"},
      {"Jörg <jörg@bücher.example>", "jörg@bücher.example"},
      {"<a@xn--bcher-kva.example>", "a@xn--bcher-kva.example"},
      {"a%b&c?d=e/f@g", "a%b&c?d=e/f@g"},
      {longest, longest},
      {"x" + longest, ""},
      // The last mailbox, also of a group.
      {"a@b.example, \"c, d\" <e@f.example>,\r\n ,", "e@f.example"},
      {"Team: a@b.example, c@d.example;", "c@d.example"},
      {"Team: a@b.example", "a@b.example"},
      {"a@b.example, Team:;", ""},
      {"a@b.example, nobody", ""},
      // What only looks like an address, or like another one.
      {"boss@corp.example <evil@x.example>", "evil@x.example"},
      {"\"<boss@corp.example>\" <evil@x.example>", "evil@x.example"},
      {"\"boss@corp.example\"", ""},
      {"(boss@corp.example)", ""},
      {"evil@x.example (, boss@corp.example", ""},
      {"\"evil@x.example, boss@corp.example", ""},
      {"=?utf-8?Q?<boss=40corp.example>,_x=40y?= <evil@x.example>", "evil@x.example"},
      {"=?utf-8?Q?boss=40corp.example?=", ""},
      {"=?utf-8?Q?boss?=@corp.example", ""},
      {"=?utf-8?X?boss?=@corp.example", ""},
      {"<evil@x.example> =?utf-8?Q?,?= boss@corp.example", ""},
      {"boss@corp.example: evil@x.example", ""},
      {"A: B: a@b.example", ""},
      {"<boss@corp.example> <evil@x.example>", ""},
      {"<evil@x.example", ""},
      {"<evil@x.example, boss@corp.example", ""},
      {"<evil@x.example; boss <boss@corp.example>", ""},
      {"<mailto:a@b.example>", ""},
      {"<@a,@b:c@d.example>", ""},
      {"\"a,b\"@x.example", ""},
      {"\"a\"b@x.example", ""},
      {"a\\,b@x.example", ""},
      {"\\ab@x.example", ""},
      {"a@b@c.example", ""},
      {"a b@c.example", ""},
      {"a(x)b@c.example", ""},
      {"a @c.example", ""},
      {"bo\r\n ss@c.example", ""},
      {"a..b@c.example", ""},
      {".a@c.example", ""},
      {"a@c.example.", ""},
      {"a@c?cc=d.example", ""},
      {"a@[1.2.3.4]", ""},
      {"@c.example", ""},
      {"a@", ""},
      {"a\u202Eb@c.example", ""},
      {"a\u200Bb@c.example", ""},
      {"a\u3164b@c.example", ""},
      {"a\uE000b@c.example", ""},
      {"a\uFF20b@c.example", ""},
      {"a\x1B[m@c.example", ""},
      {"a" + std::string(1, '\0') + "b@c.example", ""},
      {"", ""},
  };
  for (const auto& [given, wanted] : cases) EXPECT_EQ(read("From: " + given + "\r\n\r\n").Sender, wanted) << given;
  EXPECT_EQ(read("To: a@b\r\n\r\n").Sender, "");
  EXPECT_EQ(read("From: a@b.example" + std::string(300'000, ',') + " c@d.example\r\n\r\n").Sender, "")
      << "nobody looks that far";
}

TEST_F(GmimeReaderTest, JoinsRepeatedAddressHeaders) {
  const ReadMail mail = read("To: a@b.example\nFROM: x@y.example\nto:\n c@d.example\nFrom: z@y.example\n\n");
  EXPECT_EQ(mail.From, "x@y.example, z@y.example");
  EXPECT_EQ(mail.To, "a@b.example, c@d.example");
  EXPECT_EQ(mail.Sender, "z@y.example");
}

TEST_F(GmimeReaderTest, TakesTheFirstDateThatCanBe) {
  const DateTime sent = {2026, 11, 16, 0, 22, 5};
  const DateTime received = {2026, 11, 15, 19, 0, 0};
  const std::string oldReceived = "\r\nReceived: from c by d; Sat, 1 Jan 2000 10:00:00 +0000";
  const std::string topReceived = "\r\nReceived: from a; 1 x by b;\r\n Sun, 15 Nov 2026 10:00:00 +0000" + oldReceived;
  const struct {
    std::string Header;
    DateTime Wanted;
  } cases[] = {
      {"Date: Sun, 15 Nov 2026 16:22:05 +0100" + topReceived, sent},
      {"Date: 15 Nov 2026 15:22:05 GMT (comment)", sent},
      {"Date: Sun, 15 Nov 2026 15:22:05.987 +0000", sent},
      {"Date: Sun, 15 Nov 2026 15.22.05 +0000", sent},
      {"Date: Sun, 15 Nov 2026 20:52:05 +05:30", sent},
      {"Date: Sun, 15 Nov 2026 9:59:60 +0000", {2026, 11, 15, 18, 59, 59}},
      {"Date: rubbish" + topReceived, received},
      {"Date: Sat, 31 Feb 2026 10:00:00 +0000" + topReceived, received},
      {"Date: Thu, 1 Jan 1959 00:00:00 +0000" + topReceived, received},
      {"Date: Thu, 1 Jan 99999 00:00:00 +0000" + topReceived, received},
      {"Date: Fri, 31 Dec 9999 23:59:59 +0000" + topReceived, received},
      {"Date:\r\nReceived: rubbish; rubbish" + topReceived, received},
      {"Date: rubbish\r\nDate: Sun, 15 Nov 2026 15:22:05 +0000" + topReceived, sent},
      {"Received: a; Sun, 15 Nov 2026 15:22:05 +0000 (b; c)" + topReceived, sent},
      {"Received: without a date", Now},
      {"Received: by x; 1 Jan 2000" + topReceived, received},
      {"Date: Sat, 31 Feb 2026 10:00:00 +0000", Now},
  };
  for (const auto& [header, wanted] : cases) EXPECT_EQ(date(header), wanted) << header;
}

TEST_F(GmimeReaderTest, ReadsDatesOfAllForms) {
  const struct {
    DateTime Wanted;
    std::vector<std::string> Dates;
  } cases[] = {
      {{2019, 5, 30, 1, 9, 22},
       {"Wed, 29 May 2019 18:09:22 +0200",
        "Fri,29MAY19 18:09:22+0200",
        "18:09:22.123 +02:00, 29 may 119",
        "Wed, 29 May 2019 18:09:22 GMT+2",
        "Wed May 29 2019 18:09:22 GMT+0200 (x)",
        "Wed, 29 May 2019 18.09.22 CEST",
        "May 29th, 2019 06:09:22 PM MESZ",
        "Wednesday, 29-May-19 16:09:22 GMT",
        "Wed May 29 16:09:22 2019",
        "May 29 12:09:22 p.m. EDT 2019",
        "((a) \\) b) Wed), 29\r\n (6) May 2019 11:09:22 (EST)",
        "Wed, 29 May 2019 16:09:22 Q",
        "Wed, 29 May 2019 16:09:22 Mars",
        "2019-05-29T18:09:22+02:00",
        "2019-05-29t16:09:22,5z",
        "5/29/2019 16:09:22",
        "29/5/2019 16:09:22",
        "29.05.2019 16.09.22",
        "=?utf-8?Q?Wed,_29_May_2019_18:09:22_+0200?=",
        "29 May 2019 18 : 09 : 22 +0200",
        "29 May 2019 18(h):09:22 CEST",
        "29 May 2019 6:09:22\u202Fp.\u00A0m. +0200",
        "29 May 2019 PM 06:09:22 CEST",
        "29 05 2019 18:09:22 +0200",
        "29 May 2019 16:09:22 (est. delivery)",
        "29 May 2019 18:09:22 (GMT+02:00)",
        "29 May 2019 18:09:22 (+0200)",
        "29 May 2019 18:09:22 h CEST",
        "29 May 2019 18:09:22 MET DST",
        "29 May 2019 18:09:22 - 19:30 +0200",
        "29 May 2019 18:09:22 + 02:00",
        "29 May 2019 16:09:22 Etc/GMT-3"}},
      {{2019, 6, 5, 9, 0, 0},
       {"5.6.2019", "05-06-2019 00:00", "6/5/2019", "5 June 2019 12:00 AM", "4 Jun 2019 24:00:00", "2019/06/05 0:00"}},
      {{2019, 6, 27, 3, 0, 0}, {"26 Juni 2019 6 PM", "26 Juni, 2019 18:00", "6 p.m. 26 Jun 2019", "06/26/19 18:00"}},
      {{2021, 3, 5, 9, 0, 0}, {"05 Mars 2021", "5. March 2021"}},
      {{1999, 7, 1, 8, 59, 59}, {"30 Jun 99 23:59:60 UT", "30 June 1999 12:59:59 PM -1100"}},
      {Now,
       {"Wed, 30 Feb 2019 18:09:22 +0200",
        "Wed, 29 May 2019 25:00:00 +0200",
        "Wed, 29 May 2019 24:00:01 +0200",
        "Wed, 29 May 2019 18:60:22 +0200",
        "Wed, 29 May 2019 18:09:61 +0200",
        "Wed, 29 May 2019 18:09:22 +9999",
        "Wed, 29 May 2019 18:09:22 +0260",
        "2019-13-29T18:09:22Z",
        "2019-261-29T18:09:22Z",
        "Wed, 285 May 2019 18:09:22",
        "Wed, 0 May 2019 18:09:22",
        "29 May 2019 118:09:22",
        "mar, 29 may 2019 18:09:22",
        "mar., 29 août 2019 18:09:22",
        "29 May 18:09:22",
        "(29 May 2019 18:09:22)",
        " ",
        "29 May 2019 180922",
        "29 May 2019 18h09",
        "2019-05-29T180922Z",
        "2019-05-29 오후 06:09:22",
        "29/5/2019 06:09:22 μ.μ.",
        "19-05-29 18:09:22",
        "29 May 2019 18:09:22 +1500"}},
  };
  for (const auto& [wanted, dates] : cases)
    for (const std::string& given : dates) EXPECT_EQ(date("Date: " + given), wanted) << given;
}

TEST_F(GmimeReaderTest, ReadsDatesOnBothSidesOfSummerTime) {
  setenv("TZ", "Europe/Berlin", 1);
  const GmimeReader reader;
  for (const auto& [given, hour] : {std::pair{"31 Mar 2019 00:59:59 +0000", 1},
                                    {"31 Mar 2019 01:00:00 +0000", 3},
                                    {"27 Oct 2019 00:59:59 +0000", 2},
                                    {"27 Oct 2019 01:00:00 +0000", 2}})
    EXPECT_EQ(reader.read("Date: " + std::string(given) + "\r\n\r\n", Now, [] {}).Date.hour, hour) << given;
  SetUpTestSuite();
  tzset();
}

TEST_F(GmimeReaderTest, CutsTheHeaderOff) {
  const struct {
    std::string Message;
    std::string Raw;
    std::string Body;
  } cases[] = {
      {"A: b\r\nC: d\r\n\r\nbody\r\n", "A: b\r\nC: d", "body\r\n"},
      {"A: b\nC: d\n\nbody\nmore", "A: b\nC: d", "body\r\nmore"},
      {"A: b\r\n folded\r\n", "A: b\r\n folded", ""},
      {"\r\nbody", "", "body"},
      {"Only body\nand more\n\nof it", "", "Only body\r\nand more\r\n\r\nof it"},
      {"A: b\r\nNo blank line\r\nbefore this", "A: b", "No blank line\r\nbefore this"},
      {"A: b\r\nbadly folded\r\nC: d\r\n\r\nbody", "A: b\r\nbadly folded\r\nC: d", "body"},
      {"From someone Mon Jan 1\nA: b\n\nbody", "From someone Mon Jan 1\nA: b", "body"},
      {"A: \xFF\r\n\r\nbody", "A: \xFF", "body"},
      {"", "", ""},
  };
  for (const auto& [message, raw, body] : cases) {
    const ReadMail mail = read(message);
    EXPECT_EQ(mail.Raw, raw) << message;
    EXPECT_EQ(mail.Body, body) << message;
  }
}

TEST_F(GmimeReaderTest, DecodesTheBody) {
  const auto encoded = [](const std::string& encoding, const std::string& text) {
    return "Content-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: " + encoding + "\r\n\r\n" + text;
  };
  const TextCase cases[] = {
      {"\r\nunix\nmac\rdos\r\nend", "unix\r\nmac\r\ndos\r\nend"},
      {"\r\na\tb" + std::string(1, '\0') + "\x1B\x7F", "a\tb"},
      {"\r\nraw \xC3\xBC", "raw ü"},
      {"\r\nraw \xFC", "raw ü"},
      {part("text/plain; charset=koi8-r", "\xEF\xD4\xD7\xC5\xD4"), "Ответ"},
      {part("text/plain; charset=\"nonsense\"", "\xFC"), "ü"},
      {part("text/plain; charset=iso-2022-jp", "\x1B$BF|K\\\x1B(B"), "日本"},
      {part("text/plain; charset=shift_jis", "\x93\xFA\xFF\x93\xFA"), "日\uFFFD日"},
      {part("text/plain; charset=utf-16be", std::string("\0h\0i", 4)), "hi"},
      // A byte order mark counts for its own text alone.
      {part("text/plain; charset=utf-16", std::string("\xFE\xFF\0h", 4)), "h"},
      {part("text/plain; charset=utf-16", std::string("\xFF\xFEh\0", 4)), "h"},
      // The charsets as mail programs mean them.
      {part("text/plain; charset=gb2312", "\xE9\x46"), "镕"},
      {part("text/plain; charset=Shift_JIS", "\x87\x40"), "①"},
      {part("text/plain; charset=euc-kr", "\x8C\x63"), "똠"},
      {part("text/plain; charset=x-windows-949", "\x8C\x63"), "똠"},
      {part("text/plain; charset=tis-620", "\x93\xA1"), "“ก"},
      {part("text/plain; charset=iso-2022-jp", "\x1B$B-!\x1B$(D0!\x1B(I1\x1B(B\x0E\x31\x0F~\x1B(B"), "①丂ｱｱ~"},
      {part("text/plain; charset=hz-gb-2312", "a~~~{VP~\n\r\nb~{NDVP~}c~{V\nd"), "a~中\r\nb文中c\uFFFD\r\nd"},
      {part("text/plain; charset=\"3DX-X-Big5;\"", "\xA4\xA4"), "中"},
      {part("text/plain; charset=unicode-1-1-utf-7", "+AOQ-"), "ä"},
      {part("text/plain; charset=\"windows-1251http-equiv=x\"", "\xEF"), "п"},
      {part("text/plain; charset=IBM-00858", "\xD5"), "€"},
      {part("text/plain; charset=iso_8859-15:1998", "\xA4"), "€"},
      {part("text/plain; charset=x-cp28605", "\xA4"), "€"},
      {part("text/plain; charset=x-mac-roman", "\x8A"), "ä"},
      {part("text/plain; charset=csGBK", "\xD6\xD0"), "中"},
      {part("text/plain; charset=windows-936", "\x80"), "€"},
      {part("text/plain; charset=iso-8859-9e", "\xBA"), "ǧ"},
      {part("text/plain; charset=cp866u", "\xF3"), "ґ"},
      {part("text/plain; charset=IBM943C", "\x93\xFA"), "日"},
      {part("text/plain; charset=x-ibm277", "\x5B"), "Å"},
      {part("text/plain; charset=utf8mb4", "\xC3\xA4"), "ä"},
      {part("text/plain; charset=iso-8859-1", "\xEF\xBB\xBF\xC3\xA4"), "ä"},
      {part("text/plain; charset=us-ascii", std::string("\xFF\xFEh\0", 4)), "h"},
      // HTML that names its charset itself.
      {part("text/html", "<!-- > <meta charset=koi8-r> --><META\n charset = 'Windows-1251' >\xEF"), "п"},
      {part("text/html", "<meta http-equiv=Content-Type content='text/html;charset=windows-1251;'><p>\xEF"), "п"},
      {part("text/html", "<metal charset=koi8-r><meta charset=utf-16le>\xC3\xA4"), "ä"},
      {part("text/html", "\xEF\xBB\xBF<meta charset=windows-1251>\xC3\xA4"), "ä"},
      {part("text/html", "<meta charset=windows-1251>\xC3\xA4"), "ä"},
      {part("text/html", "<meta data-charset=koi8-r><meta name=x content='charset=koi8-r'>\xEF"), "ï"},
      {part("text/html", "<style><meta charset=koi8-r></style><meta / charset=\"windows-1251\"/>\xEF"), "п"},
      {part("text/html; charset=windows-1252", "<meta charset=windows-1251>\xEF"), "ï"},
      {part("text/plain", "<meta charset=windows-1251>\xEF"), "<meta charset=windows-1251>ï"},
      {part("text", "no subtype"), "no subtype"},
      {part("text; charset=iso-8859-2, x", "\xEC"), "ě"},
      {part("text/plain (a; b) , charset=iso-8859-2", "\xEC"), "ě"},
      {part("text/plain; a=\"; charset=x\"; Charset*0*=utf-8'en'iso%2D88; charset*1=59-2", "\xEC"), "ě"},
      {encoded("quoted-printable", "=C3=BC so= \t\r\nft=\r\n break =ZZ = x"), "ü soft break =ZZ = x"},
      {encoded("BASE64", "w7w\r\n"), "ü"},
      {encoded("base64", "w7 \r\n w="), "ü"},
      {encoded("Base 64 (x)", "w7w="), "ü"},
      {encoded("quoted/printable", "=C3=BC"), "ü"},
      {encoded("base64", "Hello Joe,\r\n\r\nno base64.\r\n"), "Hello Joe,\r\n\r\nno base64.\r\n"},
      {encoded("base64", "> SGVsbG8gSm9lLCBoZWxsbyBKb2U=\r\n"), "Hello Joe, hello Joe"},
      {encoded("base64", "w7w=\r\n"), "ü"},
      {encoded("base64", "Test"), "Test"},
      {encoded("x-uuencode", "begin 644 a.txt\r\n#86)C\r\n`\r\nend\r\n"), "abc"},
      {encoded("8bit", "\xEF\xBB\xBF\xC3\xBC"), "ü"},
      {encoded("nonsense", "text"), "text"},
  };
  for (const auto& [given, wanted] : cases) EXPECT_EQ(read(given).Body, wanted) << given;
}

TEST_F(GmimeReaderTest, DecodesBase64WhereItIsThatAlone) {
  const TextCase decoded[] = {
      {"SGVsbG8gSm9lLCB5ZXMsIGZpbmUuIEJvYi4K\r\n_________\r\n", "Hello Joe, yes, fine. Bob.\r\n"},
      {"SGVsbG8gSm9lLCB5\r\n> ZXMsIGZpbmUuIEJv \r\nYi4=\r\n", "Hello Joe, yes, fine. Bob."},
      {"w7w=\r\n", "ü"},
      {"R3L832UgYXVzIE38bmNoZW4gdW5kIGFscyBMYXRpbi0xIHZlcnNjaGlja3QsIHdhcyBzaWUgbmljaHQgaXN0Lg==",
       "Grüße aus München und als Latin-1 verschickt, was sie nicht ist."},
      {" \r\n", ""},
  };
  const std::string header = "Content-Transfer-Encoding: base64\r\n\r\n";
  for (const auto& [given, wanted] : decoded) EXPECT_EQ(read(header + given).Body, wanted) << given;
  for (const char* text :
       {"Hello world", "Please call me back", "See attachment", "Pears", "Hi Joe\r\n\r\nOK thanks\r\n\r\nBob",
        "Apples\r\nPears\r\nBananas\r\nOil", "Name=Joe\r\nCity=Berlin", "BEGIN:VCALENDAR\r\nEND:VCALENDAR",
        "-----BEGIN PGP MESSAGE-----\r\n\r\nSGVsbG8gSm9lLCB5ZXMs",
        "Donaudampfschifffahrtsgesellschaftskapitaen\r\nHello Joe",
        "apples\r\npears\r\nbananas\r\noil\r\nflour\r\nbutter\r\nsugar\r\neggs\r\nmilk\r\nlemons\r\nrice\r\npasta\r\nsa"
        "lt"}) {
    EXPECT_EQ(read(header + text).Body, text);
    EXPECT_EQ(read("Content-Type: text/plain; charset=iso-8859-1\r\n" + header + text).Body, text);
  }
  for (const auto& [text, file] : {std::pair("Hello world", "Hello world"), {"AAEC/w==", "\0\1\2\xFF"}}) {
    const std::string attached = "Content-Disposition: attachment\r\n" + header + text;
    EXPECT_EQ(reader_.attachment(attached, 0, [] {}), std::string(file, text[0] == 'A' ? 4 : 11))
        << "it may be no text";
  }
}

TEST_F(GmimeReaderTest, FingerprintsBytes) {
  EXPECT_EQ(reader_.fingerprint("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_NE(reader_.fingerprint(std::string_view("a\0b", 3)), reader_.fingerprint(std::string_view("a\0c", 3)));
}

}  // namespace
}  // namespace velmora
