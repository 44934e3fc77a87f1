#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/mail_bounds.h"
#include "platform/mime/charset.h"
#include "platform/mime/gmime_reader.h"
#include "platform/mime/mime_kit.h"
#include "platform/mime/transfer.h"

namespace velmora {
namespace {

using namespace std::string_literals;
using test::multipart;
using test::part;
using test::TextCase;

/// What a message holds, each attachment as "kind name: content".
struct Content {
  std::string Body;
  std::vector<std::string> Attached;
};

Content contentOf(const std::string& mail) {
  const GmimeReader reader;
  const ReadMail read = reader.read(mail, {}, [] {});
  Content content{read.Body, {}};
  for (std::size_t i = 0; i < read.Attached.size(); ++i) {
    const auto& [name, kind, bytes] = read.Attached[i];
    const std::string attached = reader.attachment(mail, i, [] {}).value_or("none");
    content.Attached.push_back(kind + (name.empty() ? "" : " " + name) + ": " + attached);
    EXPECT_EQ(bytes, attached.size()) << mail;
  }
  EXPECT_EQ(read.Attachments, read.Attached.size());
  EXPECT_EQ(reader.attachment(mail, read.Attached.size(), [] {}), std::nullopt);
  return content;
}

const std::string plain = part("text/plain", "plain");
const std::string html = part("TEXT/HTML", "<b>html</b>");
const std::string blank = part("text/plain; charset=utf-8", " \r\n\u00A0");
const std::string blankHtml = part("text/html", "<p>&nbsp;<img src=x>");
const std::string calendar = part("text/calendar; method=REQUEST", "BEGIN");
const std::string handedOn = part("message/rfc822", "Subject: inner\r\n\r\ninner body");
const std::string footer = part("text/plain", "____\r\nfooter\r\n");
const std::string pdf = part("application/PDF; name=a.pdf", "pdf");

std::string attached(const std::string& type, const std::string& text) {
  return part(type + "\r\nContent-Disposition: Attachment", text);
}
std::string named(const std::string& type, const std::string& text) {
  return part(type + "\r\nContent-Disposition: inline; filename=" + text, text);
}
std::string picture(const std::string& id) { return part("image/png\r\nContent-ID: <" + id + ">", id); }
std::string related(const std::vector<std::string>& parts, const std::string& more = "") {
  return multipart(parts, "related" + more);
}
std::string alternative(const std::vector<std::string>& parts) { return multipart(parts, "alternative"); }

TEST(Content, IsFoundInMailOfAllKinds) {
  const std::string shows = part("text/html", "<img src='cid:1'>shows");
  const struct {
    std::string Message;
    Content Wanted;
  } cases[] = {
      {plain, {"plain", {}}},
      {named("text/plain", "log.txt"), {"log.txt", {}}},
      {part("image/png", "x"), {"", {"image/png: x"}}},
      {attached("text/plain", "x"), {"", {"text/plain: x"}}},
      // Newsletters.
      {alternative({plain, html}), {"plain", {}}},
      {alternative({html, plain}), {"plain", {}}},
      {alternative({blank, html}), {"html", {}}},
      {alternative({blank, html, blankHtml}), {"html", {}}},
      {alternative({blank, part("text/html", "first"), html}), {"html", {}}},
      {alternative({plain, part("text/x-amp-html", "amp"), part("text/watch-html", "watch"), html}), {"plain", {}}},
      {alternative({part("text/richtext", "rich"), html}), {"html", {}}},
      {alternative({plain, related({shows, picture("1")})}), {"plain", {}}},
      {alternative({blank, related({shows, picture("1"), picture("2")})}), {"shows", {"image/png: 2"}}},
      {related({alternative({plain, shows}), picture("1")}), {"plain", {}}},
      {alternative({multipart({plain, pdf}), html}), {"plain", {"application/pdf a.pdf: pdf"}}},
      {alternative({plain, multipart({html, pdf, html})}), {"plain", {"application/pdf a.pdf: pdf"}}},
      {alternative({multipart({plain, html}), part("text/html", "last")}), {"last", {}}},
      {alternative({alternative({part("text/plain", "inner"), html}), calendar}), {"inner", {"text/calendar: BEGIN"}}},
      // Lists put a footer behind what they hand on.
      {multipart({html, footer}), {"html\r\n____\r\nfooter\r\n", {}}},
      {multipart({alternative({plain, html}), footer}), {"plain\r\n____\r\nfooter\r\n", {}}},
      {multipart({plain, blank, html, blankHtml, pdf, plain}),
       {"plain\r\nhtml\r\nplain", {"application/pdf a.pdf: pdf"}}},
      {multipart({plain, plain}, "x-unknown"), {"plain\r\nplain", {}}},
      // Invitations.
      {alternative({plain, html, calendar}), {"plain", {"text/calendar: BEGIN"}}},
      {alternative({html, calendar}), {"html", {"text/calendar: BEGIN"}}},
      {multipart({blank, calendar}), {"", {"text/calendar: BEGIN"}}},
      {calendar, {"BEGIN", {}}},
      {multipart({plain, part("text/enriched", "rich")}), {"plain", {"text/enriched: rich"}}},
      {alternative({part("text/enriched", "rich")}), {"rich", {}}},
      {multipart({calendar, part("text/csv; name=a.csv", "1;2")}), {"BEGIN", {"text/csv a.csv: 1;2"}}},
      // Files that programs put into the text.
      {multipart({plain, named("text/plain", "patch.diff"), named("text/html", "page.html"), named("text/x-c", "a.c")}),
       {"plain", {"text/plain patch.diff: patch.diff", "text/html page.html: page.html", "text/x-c a.c: a.c"}}},
      {multipart({named("text/plain", "first.txt"), plain}), {"first.txt\r\nplain", {}}},
      {multipart({pdf, named("text/html", "first.html")}), {"first.html", {"application/pdf a.pdf: pdf"}}},
      {multipart({attached("text/plain", "a"), named("text/plain", "b.txt")}), {"b.txt", {"text/plain: a"}}},
      {alternative({blank, part("text/html; name*=utf-8''a%20b", "shown")}), {"shown", {}}},
      // Scanners send a file alone, bounces what they could not deliver, and signers their signature.
      {multipart({pdf}), {"", {"application/pdf a.pdf: pdf"}}},
      {multipart({plain, part("message/delivery-status", "Action: failed"), part("text/rfc822-headers", "A: b")},
                 "report; report-type=delivery-status"),
       {"plain", {"message/delivery-status: Action: failed", "text/rfc822-headers: A: b"}}},
      {multipart({multipart({plain, pdf}), part("application/pgp-signature", "sig")}, "signed"),
       {"plain", {"application/pdf a.pdf: pdf", "application/pgp-signature: sig"}}},
      // What is handed on is not looked into.
      {multipart({plain, handedOn}), {"plain", {"message/rfc822: Subject: inner\r\n\r\ninner body"}}},
      {multipart({handedOn, plain}, "digest"), {"plain", {"message/rfc822: Subject: inner\r\n\r\ninner body"}}},
      {multipart({"\r\nSubject: a\r\n\r\nb"}, "digest"), {"", {"message/rfc822: Subject: a\r\n\r\nb"}}},
      {multipart({plain, attached("multipart/mixed", "none inside")}), {"plain", {"multipart/mixed: none inside"}}},
      // What belongs together.
      {related({shows, picture("1")}), {"shows", {}}},
      {multipart({part("text/html", "<img src='cid:'>x"), part("image/png", "y")}), {"x", {"image/png: y"}}},
      {related({shows, related({html, picture("1")})}), {"shows", {"text/html: <b>html</b>"}}},
      {related({picture("1"), shows, picture("2")}), {"shows", {"image/png: 2"}}},
      {related({plain, part("text/html\r\nContent-ID: <root>", "root")}, "; start=\"<root>\""),
       {"root", {"text/plain: plain"}}},
      {related({plain, part("text/html\r\nContent-ID: <1>", "style"), picture("1"), multipart({plain})}, "; start=no"),
       {"plain", {"text/html: style", "image/png: 1", "text/plain: plain"}}},
      {related({shows, part("text/css\r\nContent-ID: <1>", "p {}")}), {"shows", {}}},
      {multipart({shows, picture("1"), picture("a@b"), part("text/html", "<p style='background:url(cid:a%40b)'>x")}),
       {"shows\r\nx", {}}},
      {related({part("text/html", "<!-- cid:v --><a href='cid:d'>x"), part("application/x\r\nContent-ID: <v>", "evil"),
                part("application/pdf\r\nContent-ID: <d>", "d")}),
       {"x", {"application/x: evil", "application/pdf: d"}}},
      {related({shows, part("application/octet-stream; name=a.PNG\r\nContent-ID: <1>", "y")}), {"shows", {}}},
      {multipart({part("text/plain", " \r\n"), named("text/html", "mail.html"), named("text/plain", "b")}),
       {"mail.html", {"text/plain b: b"}}},
      {multipart({plain, named("text/html", "cid:1"), picture("1")}),
       {"plain", {"text/html cid:1: cid:1", "image/png: 1"}}},
  };
  for (const auto& [given, wanted] : cases) {
    const auto [body, attachments] = contentOf(given);
    EXPECT_EQ(body, wanted.Body) << given;
    EXPECT_EQ(attachments, wanted.Attached) << given;
  }
}

TEST(Content, OfBrokenMultipartsIsText) {
  const TextCase cases[] = {
      {multipart({"\r\nno header"}), "no header"},
      {"Content-Type: multipart/mixed; boundary=x\r\n\r\n--x\r\n\r\nunterminated", "unterminated"},
      {"Content-Type: multipart/mixed boundary=\"=?utf-8?Q?\\x?=\"\r\n\r\n--=?utf-8?Q?x?=\r\n\r\nodd name", "odd name"},
      {"Content-Type: multipart/mixed; boundary=x\r\n\r\nnever opened", "never opened"},
      {"Content-Type: multipart/mixed\r\n\r\n--x\r\n\r\nno name", "--x\r\n\r\nno name"},
      {"Content-Transfer-Encoding: base64\r\n" + part("multipart/mixed", "bm8="), "bm8="},
      {"Content-Type: message/partial; id=a; number=1\r\n\r\nhalf of it", "half of it"},
  };
  for (const auto& [given, wanted] : cases) EXPECT_EQ(contentOf(given).Body, wanted) << given;
}

TEST(Content, HasAttachmentsWithNames) {
  const std::string disposition = "application/x\r\nContent-Disposition: attachment; ";
  const std::string euros =
      std::string(84, 'x') + std::string("€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€€");
  const TextCase cases[] = {
      {"application/x; name=a.pdf", "a.pdf"},
      {disposition + "filename=\"a \\\"b\\\".pdf\"; size=9", "a \"b\".pdf"},
      {disposition + "filename=my report (1).pdf; size=9", "my report (1).pdf"},
      {"application/x; name=other\r\nContent-Disposition: attachment; filename=a.pdf", "a.pdf"},
      {"application/x; name=a.pdf\r\nContent-Disposition: attachment; filename=\" \"", "a.pdf"},
      {disposition + "filename=\"=?utf-8?Q?caf=C3=A9_1.pdf?=\"", "café 1.pdf"},
      {disposition + "filename=\"=?utf-8?B?Y2Fm?= =?utf-8?B?w6kucGRm?=\"", "café.pdf"},
      {disposition + "filename=\"raw \xFC.pdf\"", "raw ü.pdf"},
      {disposition + "filename=cafe.pdf; filename*=iso-8859-1'fr'caf%E9.pdf", "café.pdf"},
      {disposition + "FILENAME*=utf-8''%E2%82%AC%20=?x?Q?=41?=", "€ =?x?Q?=41?="},
      {disposition + "filename*1*=%AC.; filename*2=p%64f; filename*0*=\"utf-8''%E2%82\"", "€.p%64f"},
      {disposition + "filename*0=a; filename*1=b.pdf", "ab.pdf"},
      {disposition + "filename*0*=utf-8''a; filename*1*=b'c'd", "ab'c'd"},
      {disposition + "filename*=nonsense''caf%E9", "café"},
      {disposition + "filename*=%41", "A"},
      {disposition + "filename*=utf-8''a%00b%0D%0A%1Bc", "a b c"},
      {disposition + "filename=\"" + euros + "\"", euros.substr(0, 84 + 57 * 3)},
      {disposition + "filename=\"x" + euros + "\"", "x" + euros.substr(0, 84 + 56 * 3)},
      {disposition + "filename", ""},
      {"application/x\r\nContent-Disposition: attachment filename=a.pdf", "a.pdf"},
  };
  for (const auto& [header, name] : cases)
    EXPECT_EQ(contentOf(part(header, "1")).Attached,
              std::vector{"application/x" + (name.empty() ? "" : " " + name) + ": 1"})
        << header;
}

TEST(Content, HasAttachmentsOfAKind) {
  const TextCase cases[] = {
      {"IMAGE/Svg+XML", "image/svg+xml"},
      {"application", "text/plain"},
      {"image/ü", "application/octet-stream"},
      {"ü/png", "application/octet-stream"},
      {"image/", "application/octet-stream"},
      {"a/" + std::string(98, 'x'), "a/" + std::string(98, 'x')},
      {"a/" + std::string(99, 'x'), "application/octet-stream"},
  };
  for (const auto& [type, kind] : cases)
    EXPECT_EQ(contentOf(attached(type, "1")).Attached, std::vector{kind + ": 1"}) << type;
}

TEST(Content, OfAttachmentsIsDecoded) {
  const auto encoded = [](const std::string& encoding) {
    return "application/x; charset=utf-16\r\nContent-Transfer-Encoding: " + encoding;
  };
  const std::string bytes("\0\xFF\r\n\n", 5);
  const TextCase cases[] = {
      {attached(encoded("8bit"), bytes), bytes},
      {attached(encoded("base64"), "AP8N\r\nCgo=\r\n"), bytes},
      {attached(encoded("base64"), "AP8NCgo"), bytes},
      {attached(encoded("base64"), "AP8NCg==\r\nAP8NCg==AP8N="), "\0\xFF\r\n\0\xFF\r\n\0\xFF\r"s},
      {attached(encoded("quoted-printable"), "=00=FF=0D=0A=0Asoft="), bytes + "soft"},
      {multipart({plain, part("message/rfc822\r\nContent-Transfer-Encoding: base64", "QTogYg0KDQpj")}),
       "A: b\r\n\r\nc"},
      {multipart({plain, part("message/rfc822", part(encoded("base64"), "AP8N"))}), part(encoded("base64"), "AP8N")},
  };
  for (const auto& [given, wanted] : cases) {
    const GmimeReader reader;
    EXPECT_EQ(reader.attachment(given, 0, [] {}), wanted) << given;
    const auto told = reader.read(given, {}, [] {}).Attached[0].bytes;
    EXPECT_NEAR(static_cast<double>(told), static_cast<double>(wanted.size()), 2) << given;
  }
}

TEST(Content, IsDecodedTheSameInSlicesOfAnySize) {
  const struct {
    std::string Encoding, Encoded, Decoded;
  } cases[] = {
      {"base64", "QQ==\r\nUVFR\r\nQUE=QQ= =\r\nUVFR", "AQQQAAAQQQ"},
      {"quoted-printable", "a=41 = \t\r\nb=\nc =\r\n=3D", "aA bc ="},
  };
  for (const auto& [encoding, encoded, wanted] : cases) {
    for (std::size_t slice = 1; slice <= encoded.size(); ++slice) {
      mime::TransferDecoder decoder(encoded, encoding);
      std::string decoded;
      while (!decoder.atEnd()) decoded += decoder.next(slice);
      EXPECT_EQ(decoded, wanted) << slice;
    }
  }
}

TEST(Content, HasTheSameTextInSlicesOfAnySize) {
  const TextCase cases[] = {
      {"hz-gb-2312", "a~{VPND~}b~~~\nc"},
      {"iso-2022-jp", "a\x1B$BF|K\\\x1B(I1\x1B$(D0!\x1B(Bb"},
      {"utf-8", "\xC3\xA4\xF0\x9F\x98\x80\xC3"},
  };
  for (const auto& [charset, bytes] : cases) {
    mime::Converters converters;
    const std::string whole = mime::toUtf8(converters, bytes, charset);
    for (std::size_t size = 1; size < bytes.size(); ++size) {
      mime::CharsetDecoder decoder(converters, charset);
      std::string text;
      for (std::size_t i = 0; i < bytes.size(); i += size) text += decoder.decode(bytes.substr(i, size));
      EXPECT_EQ(text + decoder.finish(), whole) << charset << size;
    }
  }
}

TEST(Content, CountsAttachmentsBeyondThoseThatItTellsOf) {
  const GmimeReader reader;
  const std::string mail = multipart(std::vector(150, pdf));
  const ReadMail read = reader.read(mail, {}, [] {});
  EXPECT_EQ(read.Attachments, 150);
  EXPECT_EQ(read.Attached.size(), mail_bounds::attached);
  EXPECT_EQ(reader.attachment(mail, mail_bounds::attached - 1, [] {}), "pdf");
  EXPECT_EQ(reader.attachment(mail, mail_bounds::attached, [] {}), std::nullopt);
}

}  // namespace
}  // namespace velmora
