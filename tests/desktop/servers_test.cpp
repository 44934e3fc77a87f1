#include <gmock/gmock.h>

#include <QTcpSocket>
#include <chrono>

#include "checking/deletion.h"
#include "platform/qt/services/address_race.h"
#include "support/networked_program.h"

namespace velmora {
namespace {

using test::Address;
using test::Ending;
using test::MemoryServer;
using test::Protection;
using test::ScriptedServer;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string hangUp = MemoryServer::hangUp;
const std::string silence = MemoryServer::silence;

/// A row of a table: a server that is odd in one way, and the account of that name.
struct Oddity {
  std::string what;
  std::function<void(ScriptedServer&)> prepare;
  Protection protection = Protection::None;
};

class Servers : public test::NetworkedProgram {
 protected:
  ScriptedServer& serveOddly(const Oddity& oddity) {
    ScriptedServer& server = serve(oddity.what, oddity.protection);
    oddity.prepare(server);
    return server;
  }
};

/// Has each command of the verb answered like this.
auto answering(const std::string& verb, const std::string& answer) {
  return [=](ScriptedServer& server) { server.script.answers[verb] = answer; };
}

auto greeting(const std::string& text) {
  return [=](ScriptedServer& server) { server.script.greeting = text; };
}

auto chunks(std::size_t size) {
  return [=](ScriptedServer& server) { server.chunk = size; };
}

auto endingBy(Ending ending) {
  return [=](ScriptedServer& server) { server.ending = ending; };
}

/// Announces pipelining, and hangs up when more bytes than that come in one go.
auto pipeliningUpTo(std::size_t bytes) {
  return [=](ScriptedServer& server) {
    server.script.pipelining = true;
    server.script.hearsAtMost = bytes;
  };
}

/// A message of five megabytes, as it is sent.
std::string largeMessage(const std::string& subject) {
  const std::string line = std::string(78, 'x') + "\r\n";
  std::string sent = "+OK\r\nSubject: " + subject + "\r\n\r\n";
  while (sent.size() < 5'000'000) sent += line;
  return sent + ".\r\n";
}

TEST_F(Servers, OfManyHabitsHandOutTheirMail) {
  const std::vector<Oddity> oddities = {
      {"nothing odd", [](ScriptedServer&) {}},
      {"hangs up on CAPA", answering("CAPA", hangUp)},
      {"silent on CAPA", answering("CAPA", silence)},
      {"byte by byte", chunks(1)},
      {"silent on QUIT", answering("QUIT", silence)},
      {"resets after QUIT", endingBy(Ending::Reset)},
      {"hangs up behind the last message", answering("RETR 3", largeMessage("c") + hangUp)},
      {"pipelines", [](ScriptedServer& server) { server.script.pipelining = true; }},
      {"hangs up on pipelined commands", pipeliningUpTo(15)},
      {"hears one command at a time",
       [](ScriptedServer& server) { server.script.pipelining = server.script.hearsOnlyFirst = true; }},
      {"TLS", [](ScriptedServer&) {}, Protection::Tls},
      {"TLS byte by byte", chunks(1), Protection::Tls},
      {"TLS without a good-bye", endingBy(Ending::WithoutBye), Protection::Tls},
      {"TLS and hangs up behind the last message", answering("RETR 3", largeMessage("c") + hangUp), Protection::Tls},
      {"TLS reset after QUIT", endingBy(Ending::Reset), Protection::Tls},
      {"TLS and hangs up on pipelined commands", pipeliningUpTo(15), Protection::Tls},
  };
  for (const auto& oddity : oddities) serveOddly(oddity);
  start();
  checkAll();
  for (const auto& [what, prepare, protection] : oddities) {
    EXPECT_EQ(account(what).AcntStatusText, what + " - 3 Messages");
    EXPECT_THAT(subjects(what), ElementsAre("a", "b", "c")) << what;
    EXPECT_EQ(picture(what), "MailYes") << what;
  }
  for (const auto& question : platform.asked) ADD_FAILURE() << question.text;
}

/// What the dialog about a failure says.
struct Told {
  std::int32_t number;
  std::string words;
  std::string title = "Error Establishing Connection";
};
const std::string fetching = "Error Processing Messages";

class Failing : public Servers {
 protected:
  void expectTold(const std::string& what, const Told& told) {
    SCOPED_TRACE(what);
    ASSERT_EQ(dialogs(what).size(), 1U);
    EXPECT_EQ(dialogs(what)[0].title, "Velmora - " + told.title);
    EXPECT_THAT(dialogs(what)[0].text,
                AllOf(HasSubstr("\r\n" + std::to_string(told.number) + " - "), HasSubstr(told.words)));
    EXPECT_EQ(account(what).AcntStatusText, what + " - Error Accessing Account");
    EXPECT_EQ(account(what).AcntMsgCount, 0);
    EXPECT_EQ(picture(what), "MailError");
  }
};

TEST_F(Failing, ServersAreToldOfAndTheNextOneIsTried) {
  struct Failure {
    Oddity oddity;
    Told told;
  };
  const std::vector<Failure> failures = {
      {{"silent", greeting(silence)}, {30001, "no greeting in time. It may expect a secure connection"}},
      {{"hangs up at once", greeting(hangUp)}, {30001, "closed the connection without a greeting"}},

      {{"hangs up on PASS", answering("PASS", hangUp)}, {30003, "closed the connection while logging in"}},
      {{"silent on PASS", answering("PASS", silence)}, {10060, "Connection Timed Out"}},
      {{"wrong password", [](ScriptedServer& server) { server.script.users["user"] = "other"; }}, {30007, "wrong"}},

      {{"no list", answering("LIST", "-ERR [SYS/TEMP] later\r\n")}, {30013, "[SYS/TEMP] later", fetching}},
      {{"list cut off", answering("LIST", "+OK\r\n1 60\r\n" + hangUp)}, {30012, "was lost", fetching}},
      {{"hangs up on RETR", answering("RETR 2", hangUp)}, {30012, "was lost", fetching}},
      {{"message cut off", answering("RETR 2", "+OK\r\nSubject: b\r\n\r\nTe" + hangUp)}, {30012, "lost", fetching}},
      {{"message reset",
        [](ScriptedServer& server) {
          server.script.answers["RETR 2"] = "+OK\r\nSubject: b\r\n" + hangUp;
          server.ending = Ending::Reset;
        }},
       {30012, "was lost", fetching}},
      {{"TLS message cut off", answering("RETR 2", "+OK\r\nSubject: b\r\n\r\nTe" + hangUp), Protection::Tls},
       {30012, "was lost", fetching}},
      {{"silent in a message", answering("RETR 2", "+OK\r\nSubject: b\r\n\r\nTe")}, {30014, "in time", fetching}},
  };
  for (const auto& failure : failures) serveOddly(failure.oddity);
  serve("Last");
  start();
  checkAll();
  for (const auto& [oddity, told] : failures) expectTold(oddity.what, told);
  EXPECT_EQ(platform.asked.size(), failures.size());
  EXPECT_EQ(account("Last").AcntStatusText, "Last - 3 Messages");
}

TEST_F(Servers, LoseTheChosenMessagesOrNone) {
  const std::vector<Oddity> able = {
      {"nothing odd", [](ScriptedServer&) {}},
      {"pipelines", [](ScriptedServer& server) { server.script.pipelining = true; }},
      {"resets after QUIT", endingBy(Ending::Reset)},
      {"TLS", [](ScriptedServer&) {}, Protection::Tls},
      {"TLS without a good-bye", endingBy(Ending::WithoutBye), Protection::Tls},
  };
  const std::vector<Oddity> unable = {
      {"refuses DELE", answering("DELE 2", "-ERR locked\r\n")},
      {"hangs up on QUIT", answering("QUIT", hangUp)},
      {"silent on QUIT", answering("QUIT", silence)},
      {"hangs up in its good-bye", answering("QUIT", "+OK by" + hangUp)},
      {"TLS hangs up in its good-bye", answering("QUIT", "+OK by" + hangUp), Protection::Tls},
  };
  for (const auto* oddities : {&able, &unable})
    for (const auto& oddity : *oddities) serveOddly(oddity);
  option("DeleteConfirmation", "0");
  start();
  checkAll();
  for (std::int16_t i = 1; i <= program.accounts.AcntNum(); ++i) {
    program.messages.at(i, 1).Spam = program.messages.at(i, 2).Spam = true;
    program.accounts[i].AcntSpamCount = 2;
  }
  DeleteSpamMessages(program);
  for (const auto& [what, prepare, protection] : able) {
    EXPECT_EQ(platform.servers[what].messages.size(), 1U) << what;
    EXPECT_THAT(subjects(what), ElementsAre("c")) << what;
  }
  for (const auto& [what, prepare, protection] : unable) {
    EXPECT_EQ(platform.servers[what].messages.size(), 3U) << what;
    EXPECT_THAT(subjects(what), ElementsAre("a", "b", "c")) << what;
    ASSERT_EQ(dialogs(what).size(), 1U) << what;
    EXPECT_EQ(dialogs(what)[0].title, "Velmora - Delete Connection Failure");
    EXPECT_THAT(dialogs(what)[0].text, HasSubstr("Message(s) were NOT Deleted because the connection failed"));
  }
  EXPECT_EQ(platform.asked.size(), unable.size());
}

TEST_F(Failing, AddressesAreToldOf) {
  QTcpServer gone;
  gone.listen(QHostAddress::LocalHost);
  const std::string closedPort = std::to_string(gone.serverPort());
  gone.close();
  QTcpServer mute;  // the system accepts its connections, and nobody ever answers
  mute.listen(QHostAddress::LocalHost);
  MemoryServer script;
  const ScriptedServer plain(script);
  const ScriptedServer secure(script, Protection::Tls);
  const auto at = [](std::uint16_t port, Protection protection = Protection::None) {
    return Address{"127.0.0.1", std::to_string(port), protection};
  };

  struct Failure {
    std::string what;
    Address address;
    Told told;
  };
  const std::vector<Failure> failures = {
      {"refused", {"127.0.0.1", closedPort}, {10061, "Connection refused"}},
      {"no route", {"255.255.255.255", "110"}, {10060, "Timed Out"}},
      {"no such host", {"mail.nowhere.invalid", "110"}, {11001, "Host not found"}},
      {"no host", {"", "110"}, {11001, ""}},
      {"blank in the host", {"mail server", "110"}, {11001, ""}},
      {"TLS on a plain port", at(plain.port(), Protection::Tls), {60000, "SSL on the\r\nwrong Port."}},
      {"TLS without an answer", at(mute.serverPort(), Protection::Tls), {60000, "wrong Port."}},
      {"plain on a TLS port", at(secure.port()), {30001, "It may expect a secure connection on this port."}},
      {"blank port", {"127.0.0.1", ""}, {13, "Type mismatch\r\n\r\nPlease report this error to Kestrum"}},
      {"port of words", {"127.0.0.1", "pop3"}, {13, "Type mismatch"}},
      {"port 0", {"127.0.0.1", "0"}, {5, "Invalid procedure call"}},
      {"port 70000", {"127.0.0.1", "70000"}, {5, "Invalid procedure call"}},
  };
  for (const auto& failure : failures) addAccountAt(failure.what, failure.address);
  serve("Last");
  start();
  checkAll();
  for (const auto& [what, address, told] : failures) expectTold(what, told);
  EXPECT_EQ(platform.asked.size(), failures.size());
  EXPECT_EQ(account("Last").AcntStatusText, "Last - 3 Messages");
}

TEST_F(Servers, HearWhichNameIsWanted) {
  QTcpServer listener;
  listener.listen(QHostAddress::LocalHost);
  QByteArray hello;
  QObject::connect(&listener, &QTcpServer::newConnection, [&] {
    QTcpSocket* caller = listener.nextPendingConnection();
    QObject::connect(caller, &QIODevice::readyRead, [&hello, caller] {
      hello += caller->readAll();
      caller->close();
    });
  });
  addAccountAt("Work", {"localhost", std::to_string(listener.serverPort()), Protection::Tls});
  start();
  check();
  EXPECT_TRUE(hello.contains("localhost")) << "some servers hold many names";
}

TEST_F(Servers, AreFoundByNameAndUnderBothFamilies) {
  MemoryServer& four = addAccount("localhost");
  MemoryServer& six = addAccount("::1");
  four.messages = six.messages = {test::message("a")};
  const ScriptedServer server(four);
  const ScriptedServer server6(six, Protection::Tls, QHostAddress::LocalHostIPv6);
  set("Settings/AcntPort1", std::to_string(server.port()));
  set("Settings/AcntPort2", std::to_string(server6.port()));
  set("Settings/AcntSecure2", "1");
  start();
  checkAll();
  EXPECT_EQ(program.accounts[1].AcntStatusText, "localhost - 1 Message");
  EXPECT_EQ(program.accounts[2].AcntStatusText, "::1 - 1 Message");
}

}  // namespace
}  // namespace velmora
