#include <gmock/gmock.h>

#include <algorithm>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using testing::Each;
using testing::ElementsAre;
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

  void logInAs(const std::string& password) {
    server.users["user"] = password;
    client->Password(password);
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

TEST(ConversationLog, TellsCommandsAndStatusLinesHoweverTheBytesArrive) {
  const std::string begin =
      "* connecting to mail.example:110 with TLS\n* connected\n< +OK ready\n> CAPA\n< +OK these\n";
  const std::string end = "> RETR 1\n< +OK message follows\n> QUIT\n< +OK bye\n* closed\n";
  const std::string oneByOne =
      "> USER user\n< +OK password, please\n> PASS ***\n< +OK welcome\n> CAPA\n< +OK ...\n> STAT\n< +OK 1 47\n"
      "> LIST\n< +OK listing\n> UIDL\n< +OK listing\n";
  const std::string ahead =
      "> USER user\n> PASS ***\n< +OK password, please\n< +OK welcome\n> STAT\n> LIST\n> UIDL\n< +OK 1 47\n"
      "< +OK listing\n< +OK listing\n";
  for (const bool pipelining : {false, true}) {
    for (const std::size_t chunk : {1U, 5U, 100'000U}) {
      LoggingDesk desk;
      desk.server.pipelining = pipelining;
      desk.server.line.chunk = chunk;
      desk.client->Security(3);
      EXPECT_TRUE(desk.fetch());
      EXPECT_EQ(desk.all(), begin + (pipelining ? ahead : oneByOne) + end) << chunk;
    }
  }
}

std::string eachByte(const std::string& text, const std::function<std::string(unsigned char)>& write) {
  std::string result;
  for (const char c : text) result += write(static_cast<unsigned char>(c));
  return result;
}

std::string hex(unsigned char byte) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  return {digits[byte / 16U], digits[byte % 16U]};
}

struct Secret {
  std::string password;
  std::string base64;
};

/// How a server may write it.
std::vector<std::string> formsOf(const Secret& secret) {
  const auto with = [&](const std::string& before, const std::string& after) {
    return eachByte(secret.password, [&](unsigned char c) { return before + static_cast<char>(c) + after; });
  };
  return {secret.password,
          '"' + secret.password + "\"...",
          secret.base64,
          eachByte(secret.password, [](unsigned char c) { return "%" + hex(c); }),
          eachByte(secret.password, hex),
          with("\\", ""),
          with("", "\x1b"),
          with(" ", " "),
          std::string(secret.password.rbegin(), secret.password.rend())};
}

TEST(ConversationLog, NeverTellsThePasswordInWhateverFormTheServerRepeatsIt) {
  const Secret secrets[] = {{"Zx9!quuv", "Wng5IXF1dXY="},
                            {"zzxq wvyj", "enp4cSB3dnlq"},
                            {"7391z", "NzM5MXo="},
                            {"wjz", "d2p6"},
                            {"zq", "enE="},
                            {"z", "eg=="}};
  const char* const places[] = {"UTF8", "PASS", "STAT", "LIST", "RETR", "QUIT"};
  for (const Secret& secret : secrets) {
    for (const std::string& form : formsOf(secret)) {
      for (const char* place : places) {
        for (const char* status : {"+OK ", "-ERR ", "-ERR [AUTH] wrong PASS ", "? "}) {
          for (const bool pipelining : {false, true}) {
            LoggingDesk desk;
            desk.logInAs(secret.password);
            desk.server.pipelining = pipelining;
            desk.server.line.chunk = 3;
            desk.server.capabilities.emplace_back("UTF8 USER");
            desk.server.answers[place] = status + form + "\r\n";
            if (place == std::string("UTF8") && !pipelining) continue;  // it comes before the password
            desk.fetch();
            ASSERT_FALSE(desk.log.empty());
            std::vector<std::string> said;
            std::ranges::copy_if(desk.log, std::back_inserter(said), [](const auto& l) { return !l.starts_with("*"); });
            EXPECT_THAT(said, Each(Not(HasSubstr(secret.password)))) << place << status << form;
            EXPECT_THAT(said, Each(Not(HasSubstr(form)))) << place << status;
            if (secret.password.size() > 2) {
              EXPECT_THAT(desk.all(), Not(HasSubstr(secret.password.substr(1, 3)))) << place << form;
            }
            EXPECT_THAT(desk.all(), Not(HasSubstr("private")));
          }
        }
      }
    }
  }
}

TEST(ConversationLog, TellsWhatWentWrong) {
  struct Case {
    std::string command;  ///< blank for the greeting
    std::string answer;
    std::vector<std::string> lines;
  };
  const Case cases[] = {
      {"PASS",
       "-ERR [AUTH] Authentication failed for user@example, secret.\r\n",
       {"< -ERR [AUTH] Authentication failed for ..."}},
      {"PASS",
       "-ERR [IN-USE] Maildrop locked, try again later\r\n",
       {"< -ERR [IN-USE] Maildrop locked, try again later"}},
      {"PASS", "+OK 3 1234\r\n", {"< +OK ..."}},
      {"", "-ERR go \x1b.away, secret\r\n", {"< -ERR go .away, *****"}},
      {"STAT", "? secret\r\n", {"* failure 30004: The server's answer breaks the protocol."}},
      {"RETR", MemoryServer::hangUp, {"* failure 30012: The connection to the server was lost."}},
  };
  for (const Case& c : cases) {
    LoggingDesk desk;
    (c.command.empty() ? desk.server.greeting : desk.server.answers[c.command]) = c.answer;
    desk.fetch();
    for (const std::string& line : c.lines) EXPECT_THAT(desk.log, testing::Contains(line));
  }
  LoggingDesk desk;
  desk.server.line.connectFailure = PopFailure(pop_failure::hostNotFound, "Host mail.example not found");
  desk.logInAs("mail.example");
  desk.client->Login("mail.example");
  desk.fetch();
  EXPECT_THAT(desk.log,
              ElementsAre("* connecting to ***:110 without TLS", "* failure 11001: Host ***** not found", "* closed"));
}

}  // namespace
}  // namespace velmora::test
