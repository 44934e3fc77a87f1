#include <gmock/gmock.h>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

/// A desk whose client writes a log.
struct LoggingDesk : Desk {
  std::vector<std::string> log;

  LoggingDesk() {
    client = makeClient(server.line, server, mail_bounds::mailbox,
                        [this] { return [this](std::string_view line) { log.emplace_back(line); }; });
    server.messages = {{"uid1", "Subject: private\r\n\r\n+OK private\r\n-ERR private\r\n"}};
  }

  /// Returns whether all went well.
  bool fetch() {
    try {
      client->Connect();
      messages().FetchAll();
      client->Disconnect();
      return true;
    } catch (const std::exception&) {
      return false;
    }
  }

  std::string all() const {
    std::string joined;
    for (const auto& line : log) joined += line + "\n";
    return joined;
  }
};

TEST(ConversationLog, TellsCommandsAndStatusLines) {
  const std::string begin = "* connecting to mail.example:110 with TLS\n* connected\n< +OK ready\n> CAPA\n< +OK ...\n";
  const std::string end = "> RETR 1\n< +OK message follows\n> QUIT\n< +OK bye\n* closed\n";
  const std::string oneByOne =
      "> USER user\n< +OK password, please\n> PASS ***\n< +OK welcome\n> CAPA\n< +OK ...\n> STAT\n< +OK ...\n"
      "> LIST\n< +OK listing\n> UIDL\n< +OK listing\n";
  const std::string ahead =
      "> USER user\n> PASS ***\n< +OK password, please\n< +OK welcome\n> STAT\n> LIST\n> UIDL\n< +OK ...\n"
      "< +OK listing\n< +OK listing\n";
  for (const bool pipelining : {false, true}) {
    LoggingDesk desk;
    desk.server.pipelining = pipelining;
    desk.server.line.chunk = 1;
    desk.client->Security(3);
    EXPECT_TRUE(desk.fetch());
    EXPECT_EQ(desk.all(), begin + (pipelining ? ahead : oneByOne) + end);
  }
}

/// How a server may write a password, with its base64 form.
std::vector<std::string> formsOf(const std::string& password, const std::string& base64) {
  const auto with = [&](const std::string& before, const std::string& after) {
    std::string result;
    for (const char c : password) result.append(before).append(1, c).append(after);
    return result;
  };
  return {password, '"' + password + "\"...", base64, with("\\", ""), with("", "\x1b"), with(" ", " "), with("%", "")};
}

TEST(ConversationLog, NeverTellsThePasswordInWhateverFormTheServerRepeatsIt) {
  const std::pair<std::string, std::string> secrets[] = {{"Zx9!quuv", "Wng5IXF1dXY="},
                                                         {"zzxq wvyj", "enp4cSB3dnlq"},
                                                         {"7391z", "NzM5MXo="},
                                                         {"zq", "enE="},
                                                         {"z", "eg=="}};
  for (const auto& [password, base64] : secrets) {
    for (const std::string& form : formsOf(password, base64)) {
      for (const char* place : {"greeting", "USER", "PASS", "STAT", "LIST", "RETR", "QUIT"}) {
        for (const char* status : {"+OK ", "-ERR ", "-ERR [AUTH] wrong PASS ", "? "}) {
          LoggingDesk desk;
          desk.server.pipelining = true;  // so that the password is under way when USER is answered
          desk.server.line.chunk = 3;
          if (place != std::string_view("greeting")) desk.client->Password(password);  // else it is another one's
          desk.server.users["user"] = password;
          std::string& answer = desk.server.answers[place];
          answer = status + form + "\r\n";
          if (place == std::string_view("greeting")) desk.server.greeting = answer;
          desk.fetch();
          std::erase_if(desk.log, [](const auto& line) { return line.starts_with('*'); });
          EXPECT_THAT(desk.all(), AllOf(Not(HasSubstr(password)), Not(HasSubstr(form)), Not(HasSubstr("private"))));
        }
      }
    }
  }
}

TEST(ConversationLog, TellsWhatWentWrong) {
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"PASS", "-ERR [AUTH] Login failed for a@b, secret.\r\n", "< -ERR [AUTH] Login failed for ..."},
      {"PASS", "+OK 3 1234\r\n", "< +OK ..."},
      {"USER", "-ERR go \x1b.away, secret\r\n", "< -ERR ..."},
      {"STAT", "? secret\r\n", "* failure 30004: The server's answer breaks the protocol."},
      {"RETR", MemoryServer::hangUp, "* failure 30012: The connection to the server was lost."},
  };
  for (const auto& [command, answer, line] : cases) {
    LoggingDesk desk;
    desk.server.answers[command] = answer;
    desk.fetch();
    EXPECT_THAT(desk.log, Contains(line));
  }
}

}  // namespace
}  // namespace velmora::test
