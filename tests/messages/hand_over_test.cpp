#include "messages/hand_over.h"

#include <gmock/gmock.h>

#include <optional>

#include "messages/decisions/mailto.h"
#include "messages/decisions/reply_draft.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::SizeIs;

std::string decoded(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      plain += text[i];
    } else {
      plain += static_cast<char>(std::stoi(std::string(text.substr(i + 1, 2)), nullptr, 16));
      i += 2;
    }
  }
  return plain;
}

std::vector<std::string_view> split(std::string_view text, char at) {
  std::vector<std::string_view> pieces;
  for (auto end = text.find(at); end != std::string_view::npos; end = text.find(at)) {
    pieces.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  pieces.push_back(text);
  return pieces;
}

/// What a mail program reads out of an address, as RFC 6068 section 2 has it; nothing where it names any field but one
/// subject and one body, or more than one recipient.
std::optional<MailDraft> readBack(std::string_view address) {
  if (!address.starts_with("mailto:")) return std::nullopt;
  const auto halves = split(address.substr(7), '?');
  const auto recipients = split(halves[0], ',');
  if (halves.size() > 2 || recipients.size() > 1) return std::nullopt;
  MailDraft draft{.to = decoded(recipients[0]), .subject = {}, .body = {}};
  if (halves.size() == 1) return draft;
  for (const std::string_view field : split(halves[1], '&')) {
    const auto pair = split(field, '=');
    std::string* text = pair[0] == "subject" ? &draft.subject : pair[0] == "body" ? &draft.body : nullptr;
    if (pair.size() != 2 || text == nullptr || !text->empty()) return std::nullopt;
    *text = decoded(pair[1]);
  }
  return draft;
}

TEST(Mailto, KeepsWhatAStrangerWroteWhereItBelongs) {
  const MailDraft cases[] = {
      {},
      {"ann@example.org", "Re: x", "line\r\n>quoted\r\n"},
      {"r&d@example.org", "a&bcc=eve@example.org", "&attach=/etc/passwd"},
      {"a?cc=eve@example.org@example.org", "100 %?", "50%25 &amp; \"quoted\" <b>+ =\t#fragment"},
      {"a%2Ceve@example.org@example.org", "x\r\nBcc: eve@example.org", "\r\n.\r\n"},
      {"\u00fc@\u6771.example", "\u6771\u4eac \U0001F600", "\u05e9\u05dc\u05d5\u05dd"},
      {"", "body=1&body=2", "?subject=other"},
      {std::string("a\0b@c", 5), std::string("x\0y", 3), "a,b;c:d/e\\f'g`h$i!j*k(l)m[n]o{p}q|r"},
  };
  for (const MailDraft& draft : cases) {
    const std::string address = mailtoAddress(draft);
    EXPECT_EQ(readBack(address), draft) << address;
    EXPECT_EQ(address.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~:?&=@%"),
              std::string::npos)
        << address;
  }
  EXPECT_EQ(mailtoAddress({}), "mailto:");
}

TEST(Mailto, IsNeverLongerThanItMayBe) {
  const std::string letter = "\u6771";
  std::string lines;
  while (lines.size() < longestMailto) lines += ">a line of it\r\n";
  std::string word;
  while (word.size() < longestMailto) word += letter;
  for (const std::string& body : {lines, word, std::string(longestMailto, 'x'), std::string(40'000'000, '\n')}) {
    const MailDraft draft = handedOn({.to = "ann@example.org", .subject = "Re: " + word, .body = body});
    EXPECT_LE(mailtoAddress(draft).size(), longestMailto);
    EXPECT_GT(mailtoAddress(draft).size(), longestMailto - 20) << "as much as there is room for";
    EXPECT_THAT(draft.subject, EndsWith(letter + "..."));
    EXPECT_THAT(draft.body, EndsWith("\r\n[The message goes on. It is too long to be quoted whole.]\r\n"));
    EXPECT_EQ(draft.body.compare(0, 9, body, 0, 9), 0);
    EXPECT_EQ(draft.body.find(">a line of i\r"), std::string::npos) << "cut behind whole lines";
  }
  const MailDraft fits{.to = "ann@example.org", .subject = "Re: x", .body = std::string(29'000, 'x')};
  EXPECT_EQ(handedOn(fits), fits);
}

TEST(Reply, QuotesTheMessage) {
  MailMessage message;
  message.From = "Ann <ann@example.org>";
  message.To = "me@example.org";
  message.Subject = "Re: Lunch";
  message.Date = "Nov 15, 2026 04:22:05 PM";
  message.Body = "Hello\r\n\r\nBye\r\n";
  message.Sender = "ann@example.org";
  const std::string head =
      "\r\n-----Original Message-----\r\nFrom: Ann <ann@example.org>\r\nTo: me@example.org\r\n"
      "Sent: Sunday, November 15, 2026 at 4:22 PM\r\nSubject: Re: Lunch\r\n\r\n";
  EXPECT_EQ(replyDraft(message, {}),
            (MailDraft{"ann@example.org", "Re: Re: Lunch", head + "\r\n>Hello\r\n>\r\n>Bye\r\n>"}));
  message.Body.clear();
  EXPECT_EQ(replyDraft(message, {}).body, head + "\r\n>");
  DateNames german;
  german.abbreviated[2] = "Mrz.";
  german.full[2] = "M\u00e4rz";
  german.weekdays[1] = "Montag";
  message.Date = "Mrz. 02, 2026 12:05:09 AM";
  EXPECT_THAT(replyDraft(message, german).body, HasSubstr("Sent: Montag, M\u00e4rz 2, 2026 at 12:05 AM\r\n"));
  for (const char* date : {"yesterday", "", "Nov 31, 2026 04:22:05 PM", "Mrz. 02, 2026", "Nov15, 2026 04:22:05 PM"}) {
    message.Date = date;
    EXPECT_THAT(replyDraft(message, {}).body, HasSubstr(std::string("Sent: ") + date + "\r\n")) << "as it is kept";
  }
}

class HandOver : public test::RunningProgram {
 protected:
  void SetUp() override {
    addAccount("Work").messages = {test::message("lunch", "From: ann@example.org\r\nTo: me\r\n")};
    start();
    check();
    clickRow(1);
  }
  void press(const char* key) { program.frmMain.tbrEmail[key].click(); }

  /// What was handed to the program that was started last.
  std::string lastAddress() const {
    const std::string& started = platform.started.back();
    return started.substr(started.find("mailto:"));
  }
};

TEST_F(HandOver, GoesToTheChosenClientOrElseToTheDesktop) {
  platform.files = {"/default.exe", "/own.exe"};
  program.options.DefaultClient = "/default.exe";
  program.options.RunSize = 3;
  program.accounts[1].AcntClient = "/own.exe";
  press("EmailReply");
  EXPECT_THAT(platform.started.back(),
              testing::StartsWith("/default.exe 3 mailto:ann@example.org?subject=Re%3A%20lunch"));
  EXPECT_EQ(readBack(lastAddress()), replyDraft(program.messages.at(1, 1), {}));
  for (const char* nothing : {"secret", "user"}) EXPECT_EQ(lastAddress().find(nothing), std::string::npos);
  program.options.DefaultClient = "/gone.exe";
  press("EmailNew");
  EXPECT_EQ(platform.started.back(), "/own.exe 1 mailto:");
  EXPECT_TRUE(platform.composed.empty() && platform.opened.empty());

  platform.files.clear();
  const std::size_t started = platform.started.size();
  for (const auto answer : {PortalAnswer::Taken, PortalAnswer::Cancelled}) {
    platform.portal = answer;
    press("EmailReply");
  }
  EXPECT_EQ(platform.composed.back(), replyDraft(program.messages.at(1, 1), {}));
  EXPECT_TRUE(platform.opened.empty()) << "what the user cancelled there is cancelled";
  platform.portal = PortalAnswer::NotThere;
  program.frmMain.mnuTrayNewMessage.Click();
  EXPECT_THAT(platform.opened, ElementsAre("mailto:"));
  EXPECT_EQ(platform.started.size(), started);
  EXPECT_TRUE(platform.asked.empty());
}

TEST_F(HandOver, SaysAtEachPressThatThereIsNoMailProgram) {
  platform.canStartPrograms = false;
  for (const char* key : {"EmailReply", "EmailNew", "EmailReply"}) press(key);
  EXPECT_THAT(titles(), ElementsAre("Velmora - Nothing to Open With", "Velmora - Nothing to Open With",
                                    "Velmora - Nothing to Open With"));
  press("EmailOpen");
  EXPECT_THAT(platform.opened, testing::IsSupersetOf({"/temporary/temporary.eml", "/temporary/temporary.msg"}));
  EXPECT_EQ(platform.asked.back().title, "Velmora - Open Message Failed");
  EXPECT_EQ(platform.asked.back().text,
            "The message failed to open using\r\nyour Default Email Client.\r\n\r\n"
            "If this problem occurs for every message\r\nyou attempt to Open please report this to\r\n"
            "Kestrum for further          \r\nanalysis. Please include the name of your\r\nEmail program.\r\n\r\n"
            "Email: " VELMORA_SUPPORT_ADDRESS);
}

TEST_F(HandOver, OpensTheMessageAsAFile) {
  program.frmMain.mnuEmailOpen.Click();
  EXPECT_THAT(platform.opened, ElementsAre("/temporary/temporary.eml"));
  const std::string content = "From: ann@example.org\r\nTo: me\r\nSubject: lunch\r\n\r\nText of lunch\r\n\r\n";
  EXPECT_EQ(platform.written["/temporary/temporary.eml"], content);
  platform.canWriteFiles = false;
  press("EmailOpen");
  EXPECT_THAT(platform.opened, SizeIs(2)) << "the former one is opened where it could not be replaced";
  EXPECT_TRUE(platform.asked.empty());
}

}  // namespace
}  // namespace velmora
