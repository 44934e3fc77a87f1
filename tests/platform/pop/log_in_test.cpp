#include <gmock/gmock.h>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using namespace std::string_literals;

struct Case {
  std::string said;
  std::int32_t number;
  std::string words;  ///< part of the failure's text
};

void expectConnectFails(Desk& desk, const Case& expected) {
  SCOPED_TRACE(expected.said);
  EXPECT_EQ(failureOf([&] { desk.client->Connect(); }), expected.number);
  EXPECT_EQ(desk.client->LastError(), expected.number);
  EXPECT_THAT(desk.client->ErrorText(), HasSubstr(expected.words));
  EXPECT_FALSE(desk.server.line.open);
}

TEST(LogIn, GreetingsDecide) {
  const std::vector<Case> greetings = {
      {"+ok\n", 0, ""},
      {"+OK <1896.697170952@dbc.mtview.ca.us>\r\n", 0, ""},
      {"-ERR go \x1b"
       "away\r\n",
       pop_failure::greetedWithRefusal, "go away"},
      {"-ERR [AUTH] not you\r\n", pop_failure::greetedWithRefusal, "not you"},
      {"-ERR [IN-USE] locked\r\n", pop_failure::mailboxInUse, "locked"},
      {"-ERR too many connections\r\n", pop_failure::temporaryTrouble, "too many"},
      {"-ERR [SYS/PERM] moved\r\n", pop_failure::permanentTrouble, "moved"},
      {"* OK IMAP4rev1 ready\r\n", pop_failure::noGreeting, "IMAP"},
      {"220 mail.example ESMTP\r\n", pop_failure::noGreeting, "SMTP"},
      {"HTTP/1.1 400 Bad Request\r\n", pop_failure::noGreeting, "web server"},
      {"\x15\x03\x01\0\x02\x02"s, pop_failure::noGreeting, "secure connection"},
      {"nonsense", pop_failure::noGreeting, "nonsense"},
      {"+" + std::string(9000, 'x'), pop_failure::noGreeting, "not that of a POP3 server"},
      {"", pop_failure::noGreeting, "in time"},
      {"+OK half", pop_failure::noGreeting, "in time. It may expect a secure"},
      {MemoryServer::hangUp, pop_failure::noGreeting, "closed"},
  };
  for (const Case& greeting : greetings) {
    for (const std::size_t chunk : {std::size_t{1}, std::size_t{10'000}}) {
      Desk desk;
      desk.server.line.chunk = chunk;
      desk.server.greeting = greeting.said;
      if (greeting.said == "nonsense" && chunk == 1) continue;  // fails at its first byte
      if (greeting.number != 0) {
        expectConnectFails(desk, greeting);
      } else {
        EXPECT_NO_THROW(desk.client->Connect());
      }
    }
  }
}

TEST(LogIn, RefusalsDecide) {
  const std::vector<Case> refusals = {
      {"-ERR wrong\r\n", pop_failure::loginRefused, "wrong"},
      {"-ERR\r\n", pop_failure::loginRefused, "user name or password"},
      {"-ERR [AUTH] no\r\n", pop_failure::loginRefused, "no"},
      {"-ERR [AUTH] Plaintext authentication disallowed\r\n", pop_failure::loginMethodNotOffered, "secure connection"},
      {"-ERR [IN-USE] no\r\n", pop_failure::mailboxInUse, "in use"},
      {"-ERR maildrop already locked\r\n", pop_failure::mailboxInUse, "already locked"},
      {"-ERR [LOGIN-DELAY] wait\r\n", pop_failure::temporaryTrouble, "wait"},
      {"-ERR [SYS/TEMP] wait\r\n", pop_failure::temporaryTrouble, "wait"},
      {"-ERR [SYS/PERM] gone\r\n", pop_failure::permanentTrouble, "gone"},
      {"?\r\n", pop_failure::protocolBroken, "?"},
      {MemoryServer::silence, pop_failure::timedOut, "in time"},
      {MemoryServer::hangUp, pop_failure::closedWhileLoggingIn, "closed"},
  };
  for (const Case& refusal : refusals) {
    for (const std::string verb : {"USER", "PASS"}) {
      Desk desk;
      desk.server.answers[verb] = refusal.said;
      expectConnectFails(desk, refusal);
    }
  }
}

TEST(LogIn, StatAnswersDecide) {
  const std::vector<Case> answers = {
      {"-ERR none\r\n", pop_failure::messageRefused, "none"},
      {"+OK\r\n", pop_failure::protocolBroken, ""},
      {"+OK -1 5\r\n", pop_failure::protocolBroken, "-1 5"},
      {"+OK 99999999999999999999 5\r\n", pop_failure::protocolBroken, ""},
      {MemoryServer::silence, pop_failure::timedOut, ""},
  };
  for (const Case& answer : answers) {
    Desk desk;
    desk.server.answers["STAT"] = answer.said;
    expectConnectFails(desk, answer);
  }
}

TEST(LogIn, MissingUserCapabilityExplainsARefusedUser) {
  Desk desk;
  desk.server.capabilities = {"SASL PLAIN", "STLS"};
  desk.server.answers["USER"] = "-ERR no\r\n";
  expectConnectFails(desk, {"", pop_failure::loginMethodNotOffered, "no"});
}

TEST(LogIn, SendsStepByStepAndThePasswordAsItIs) {
  for (const std::string password : {"", " a  b ", "p\xc3\xa4ss"}) {
    Desk desk;
    desk.server.pipelining = true;
    desk.server.users["user"] = password;
    desk.client->Password(password);
    desk.client->Connect();
    EXPECT_THAT(desk.server.line.sends,
                ElementsAre("CAPA\r\n", "USER user\r\n", "PASS " + password + "\r\n", "CAPA\r\n", "STAT\r\n"));
  }
}

TEST(LogIn, NeverSendsWhatWouldInjectCommands) {
  for (const std::string& bad : {"a\r\nDELE 1"s, "a\n"s, "a\rb"s, "a\0b"s}) {
    for (const bool inLogin : {true, false}) {
      Desk desk;
      inLogin ? desk.client->Login(bad) : desk.client->Password(bad);
      EXPECT_EQ(failureOf([&] { desk.client->Connect(); }), pop_failure::loginRefused);
      EXPECT_EQ(desk.server.line.connections, 0);
    }
  }
}

TEST(LogIn, ConnectsWithoutCapaWhereItIsNotStood) {
  const std::vector<std::string> answers = {MemoryServer::silence, MemoryServer::hangUp, "+OK\r\nUSER\r\n",
                                            "what?\r\n"};
  for (const std::string& answer : answers) {
    Desk desk;
    desk.server.answers["CAPA"] = answer;
    desk.client->Connect();
    EXPECT_EQ(desk.server.line.connections, 2) << answer;
    desk.server.commands.clear();
    desk.client->Connect();
    EXPECT_THAT(desk.server.commands, Not(Contains("CAPA")));
  }
}

TEST(LogIn, TakesARefusedCapaAsItIs) {
  Desk desk;
  desk.server.answers["CAPA"] = "-ERR what?\r\n";
  desk.client->Connect();
  EXPECT_EQ(desk.server.line.connections, 1);
  EXPECT_THAT(desk.habits.noCapa, IsEmpty());
}

TEST(LogIn, LearnsOfPipeliningHoweverItIsSaid) {
  const std::vector<std::string> names = {"PIPELINING", "pipelining", "Pipelining yes"};
  for (const std::string& name : names) {
    Desk desk;
    desk.server.capabilities.push_back(name);
    desk.holds(2);
    desk.client->Connect();
    desk.messages().FetchAll();
    EXPECT_THAT(desk.server.line.sends, Contains("LIST\r\nUIDL\r\n")) << name;
  }
  Desk late;
  late.server.pipelining = late.server.announcesLate = true;
  late.holds(2);
  late.client->Connect();
  late.messages().FetchAll();
  EXPECT_THAT(late.server.line.sends, Contains("LIST\r\nUIDL\r\n"));
}

TEST(LogIn, CallsATrickleSilence) {
  Desk desk;
  desk.server.line.chunk = 1;
  desk.server.line.pace = std::chrono::seconds(9);
  EXPECT_EQ(failureOf([&] { desk.client->Connect(); }), pop_failure::noGreeting);
  EXPECT_LE(desk.server.line.clock, std::chrono::seconds(31));
}

TEST(LogIn, PortsOutsideTheirRangeAreRefused) {
  for (const std::int32_t port : {-1, 0, 65536, 65646}) {
    Desk desk;
    desk.client->Port(port);
    EXPECT_THROW(desk.client->Connect(), RunTimeFailure) << port;
    EXPECT_EQ(desk.client->LastError(), 0);
    EXPECT_EQ(desk.server.line.connections, 0);
  }
}

}  // namespace
}  // namespace velmora::test
