#include "checking/decisions/certificate_texts.h"

#include <array>

namespace velmora {

namespace {

constexpr auto lineEnd = "\r\n";

struct Detail {
  const char* name;
  std::string Account::*accepted;
  std::string ServerCertificate::*shown;
};

constexpr auto details = std::to_array<Detail>({
    {"Issued for:  ", &Account::AcntCertificateFor, &ServerCertificate::issuedFor},
    {"Issued by:  ", &Account::AcntCertificateBy, &ServerCertificate::issuedBy},
    {"Valid until:  ", &Account::AcntCertificateUntil, &ServerCertificate::validUntil},
});

/// In lines of half its bytes, so that it can be compared with another one by eye.
std::string fingerprintLines(std::string_view fingerprint) {
  constexpr std::size_t half = 48;
  std::string lines = "Fingerprint (SHA-256):";
  for (std::size_t i = 0; i < fingerprint.size(); i += half) {
    lines.append(lineEnd).append("    ").append(fingerprint.substr(i, half));
  }
  return lines + lineEnd;
}

std::string describe(const ServerCertificate& shown) {
  std::string text;
  for (const Detail& detail : details) text += detail.name + shown.*detail.shown + lineEnd;
  return text + fingerprintLines(shown.fingerprint);
}

std::string describeAccepted(const Account& account) {
  std::string text;
  for (const Detail& detail : details) text += detail.name + account.*detail.accepted + lineEnd;
  return text + fingerprintLines(account.AcntCertificate);
}

/// What was wrong with the accepted one, the user has seen. What counts is that this is another.
std::string whatIsWrong(const Account& account, const ServerCertificate& shown) {
  if (shown.fingerprint.empty()) return "The server has shown no certificate.";
  return account.AcntCertificate.empty()
             ? "The server's certificate can't be trusted: " + shown.errorText
             : "The server shows another certificate than the one that you have accepted: " + shown.errorText;
}

std::string whatChanged(const Account& account, const ServerCertificate& shown) {
  std::string changed;
  for (const Detail& detail : details) {
    if (account.*detail.accepted == shown.*detail.shown) continue;
    changed.append(lineEnd).append(detail.name).append(shown.*detail.shown);
    changed.append(" (before: ").append(account.*detail.accepted).append(")");
  }
  return changed;
}

}  // namespace

std::string certificateTrouble(const Account& account, const ServerCertificate& shown) {
  std::string text = whatIsWrong(account, shown);
  if (!account.AcntCertificate.empty()) text += whatChanged(account, shown);
  return text + lineEnd + "The password was not sent. Check or test the Account to look at the certificate.";
}

Question certificateQuestion(std::string_view appTitle, const Account& account, const ServerCertificate& shown) {
  std::string text = whatIsWrong(account, shown) + lineEnd + "The password was not sent." + lineEnd + lineEnd +
                     "Account:  " + account.AcntName + lineEnd + "Server:  " + account.AcntServer + lineEnd + lineEnd;
  if (!account.AcntCertificate.empty()) {
    text +=
        "Accepted before..." + std::string(lineEnd) + describeAccepted(account) + lineEnd + "Shown now..." + lineEnd;
  }
  text += describe(shown) + lineEnd + "Somebody may pose as your server. Accept it only if your provider" + lineEnd +
          "confirms this fingerprint." + lineEnd + lineEnd + "Accept this certificate for this Account?" + lineEnd;
  return {.text = std::move(text),
          .title = std::string(appTitle) + " - Certificate Not Trusted",
          .icon = Question::Icon::Critical,
          .buttons = Question::Buttons::YesNo,
          .defaultsToNo = true};
}

}  // namespace velmora
