#include "checking/decisions/failure_texts.h"

#include <algorithm>
#include <array>
#include <new>

#include "platform/failure.h"

namespace velmora {

namespace {

using namespace pop_failure;

constexpr std::array silencedOnConnect = {
    noGreeting,       greetedWithRefusal, closedWhileLoggingIn, protocolBroken, loginMethodNotOffered, mailboxInUse,
    temporaryTrouble, permanentTrouble,   connectionReset,      timedOut,       hostNotFound};

constexpr std::array silencedOnRetrieve = {connectionLost, messageRefused, silentWhileFetching};

std::string wordsFor(const FailureReport& report) {
  switch (report.number) {
    case connectionReset:
      return "Winsock Error - Connection Reset by Peer";
    case timedOut:
      return "Winsock Error - Connection Timed Out";
    case tlsHandshakeFailed:
      return "SSL Handshake Error: This may be caused by using SSL on the\r\nwrong Port.";
    default:
      return report.text;
  }
}

std::string problemWith(std::string_view accountName, std::string_view message) {
  return "There was a problem encountered while accessing the Account: " + std::string(accountName) +
         std::string(15, ' ') + "\r\n\r\nError Message:\r\n" + std::string(message) + "\r\n\r\n";
}

std::string problemWith(std::string_view accountName, std::int32_t number, std::string_view words) {
  return problemWith(accountName, std::to_string(number) + " - " + std::string(words));
}

std::string deletionNote(std::string_view title) {
  const bool deletes = title == failure_title::deleting;
  return deletes ? "Note:  Message(s) were NOT Deleted because the connection failed.\r\n\r\n" : "";
}

Question criticalNotice(std::string_view appTitle, std::string_view title, std::string text) {
  return {std::move(text), std::string(appTitle) + " - " + std::string(title), Question::Icon::Critical,
          Question::Buttons::Ok};
}

}  // namespace

FailureReport describe(const std::exception& failure) {
  if (const auto* own = dynamic_cast<const RunTimeFailure*>(&failure)) return {own->number(), own->what()};
  if (const auto* pop = dynamic_cast<const PopFailure*>(&failure)) return {pop->number(), pop->what()};
  if (dynamic_cast<const std::bad_alloc*>(&failure) != nullptr) return {7, "Out of memory"};
  return {51, std::string("Internal error: ") + failure.what()};
}

std::string failureReason(const FailureReport& report) {
  return std::to_string(report.number) + " - " + wordsFor(report);
}

bool isSilencedOnConnect(std::int32_t number) {
  return std::find(silencedOnConnect.begin(), silencedOnConnect.end(), number) != silencedOnConnect.end();
}

bool isSilencedOnRetrieve(std::int32_t number) {
  return std::find(silencedOnRetrieve.begin(), silencedOnRetrieve.end(), number) != silencedOnRetrieve.end();
}

Question connectionError(std::string_view appTitle, std::string_view accountName, const FailureReport& report,
                         std::string_view title) {
  std::string text = problemWith(accountName, report.number, wordsFor(report)) + deletionNote(title);
  text += "There could be other possiblities for this error. Please ensure all Account" + std::string(10, ' ') +
          "\r\nInformation is accurate and your connection is established.\r\n\r\n"
          "For further assistance please try Help or contact your Service Provider\r\nif this problem persists."
          "\r\n\r\n";
  return criticalNotice(appTitle, title, std::move(text));
}

Question passwordError(std::string_view appTitle, std::string_view accountName, const FailureReport& report,
                       std::string_view title) {
  return criticalNotice(appTitle, title,
                        problemWith(accountName, report.number, report.text) + deletionNote(title) +
                            "Please check the Account yourself: then the keyring asks you, or " +
                            std::string(appTitle) + " does.\r\n\r\n");
}

Question unexpectedError(std::string_view appTitle, std::string_view accountName, const FailureReport& report,
                         std::string_view title) {
  return criticalNotice(appTitle, title,
                        problemWith(accountName, report.number, report.text) +
                            "Please report this error to Kestrum with the Number\r\nand Description of the error."
                            "\r\n\r\nNote: This is an unexpected error. It would be very helpful to also include\r\n"
                            "the Title Bar text and any relevant details that might assist in tracking the\r\n"
                            "cause of this error. Thank you for your assistance.\r\n\r\nEmail: " VELMORA_SUPPORT_ADDRESS
                            "\r\n\r\n");
}

Question portError(std::string_view appTitle, std::string_view accountName) {
  return criticalNotice(appTitle, failure_title::test,
                        problemWith(accountName, "The Port must be a number from 1 to 65535.") +
                            "It is usually 110 for Normal, or 995 for Secure.\r\n"
                            "Please change it and save the Account.\r\n\r\n");
}

Question testSucceeded(std::string_view appTitle) {
  Question question;
  question.text = "The Connection Succeeded.\r\n\r\nYou should be able to connect to your" + std::string(15, ' ') +
                  "\r\nMail Server to check for messages.\r\n\r\n";
  question.title = std::string(appTitle) + " - Test Connection Successfull";
  return question;
}

}  // namespace velmora
