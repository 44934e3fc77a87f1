#include "checking/failure_texts.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(FailureTexts, ReadLetterForLetter) {
  const std::string head =
      "There was a problem encountered while accessing the Account: Work               \r\n\r\n"
      "Error Message:\r\n";
  const std::string tail =
      "There could be other possiblities for this error. Please ensure all Account          \r\n"
      "Information is accurate and your connection is established.\r\n\r\n"
      "For further assistance please try Help or contact your Service Provider\r\nif this problem persists.\r\n\r\n";
  struct Case {
    FailureReport report;
    std::string_view title;
    std::string words;
  };
  const Case cases[] = {
      {{10054, "x"}, failure_title::processing, "10054 - Winsock Error - Connection Reset by Peer\r\n\r\n"},
      {{10060, "x"}, failure_title::establishing, "10060 - Winsock Error - Connection Timed Out\r\n\r\n"},
      {{11001, "No such host"}, failure_title::establishing, "11001 - No such host\r\n\r\n"},
      {{60000, "x"},
       failure_title::establishing,
       "60000 - SSL Handshake Error: This may be caused by using SSL on the\r\nwrong Port.\r\n\r\n"},
      {{30012, "lost"},
       failure_title::deleting,
       "30012 - lost\r\n\r\nNote:  Message(s) were NOT Deleted because the connection failed.\r\n\r\n"},
  };
  for (const auto& c : cases) {
    const Question question = connectionError("Velmora", "Work", c.report, c.title);
    EXPECT_EQ(question.text, head + c.words + tail);
    EXPECT_EQ(question.title, "Velmora - " + std::string(c.title));
    EXPECT_TRUE(question.icon == Question::Icon::Critical);
  }
  const Question unexpected = unexpectedError("Velmora", "Work", {13, "Type mismatch"}, failure_title::test);
  EXPECT_TRUE(unexpected.text.starts_with(
      head +
      "13 - Type mismatch\r\n\r\nPlease report this error to Kestrum with the Number\r\nand Description of the error."
      "\r\n\r\nNote: This is an unexpected error. It would be very helpful to also include\r\n"
      "the Title Bar text and any relevant details that might assist in tracking the\r\n"
      "cause of this error. Thank you for your assistance.\r\n\r\nEmail: "));
}

}  // namespace
}  // namespace velmora
