#include <gmock/gmock.h>

#include <QSslCertificate>
#include <QSslConfiguration>

#include "checking/check_cycle.h"
#include "support/networked_program.h"

namespace velmora {
namespace {

using test::Address;
using test::Protection;
using test::ScriptedServer;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A server whose certificate nobody vouches for, and a user who wants none of those.
class Certificates : public test::NetworkedProgram {
 protected:
  Certificates() {
    option("RefuseUntrusted", "1");
    option("QuickCheck", "0");
  }

  void checkAnswering(Answer answer) {
    platform.asked.clear();
    platform.answers = {answer};
    check();
  }

  const std::string certificateBox = "Velmora - Certificate Not Trusted";
  ScriptedServer& server = serve("Work", Protection::Tls);
};

TEST_F(Certificates, AreLookedAtBeforeAnythingIsSaid) {
  start();
  checkAnswering(Answer::No);
  EXPECT_THAT(titles(), ElementsAre(certificateBox)) << "and no second box";
  EXPECT_TRUE(platform.asked.front().defaultsToNo);
  EXPECT_THAT(platform.asked.front().text,
              AllOf(HasSubstr("Issued for:  localhost\r\nIssued by:  localhost\r\nValid until:  "),
                    HasSubstr("self-signed"), HasSubstr("did not match"), HasSubstr("Fingerprint (SHA-256):\r\n    ")));
  EXPECT_THAT(server.script.commands, IsEmpty());
  EXPECT_EQ(account("Work").AcntStatusText, "Work - Error Accessing Account");
  EXPECT_EQ(account("Work").AcntCertificate, "");
}

TEST_F(Certificates, ThatTheUserAcceptsAreKeptForTheAccountUntilItsServerChanges) {
  start();
  checkAnswering(Answer::Yes);
  EXPECT_THAT(subjects("Work"), ElementsAre("a", "b", "c"));
  const QByteArray shown = QSslCertificate(server.identity).digest(QCryptographicHash::Sha256).toHex(':').toUpper();
  EXPECT_EQ(platform.tree.values["Settings/AcntCertificate1"], shown.toStdString());
  checkAnswering(Answer::No);
  EXPECT_THAT(titles(), IsEmpty());
  EXPECT_THAT(subjects("Work"), ElementsAre("a", "b", "c"));
  program.frmMain.txtAcntServer.Text = "localhost";
  program.frmMain.tbrButtons[saveAccountBar]["SaveAccount"].click();
  EXPECT_FALSE(platform.tree.values.contains("Settings/AcntCertificate1"));
  checkAnswering(Answer::No);
  EXPECT_THAT(titles(), ElementsAre(certificateBox));
}

TEST_F(Certificates, ThatChangeGetNoPassword) {
  start();
  checkAnswering(Answer::Yes);
  const std::string accepted = account("Work").AcntCertificate;
  server.script.commands.clear();
  server.identity = ScriptedServer::makeIdentity();
  checkAnswering(Answer::No);
  EXPECT_THAT(server.script.commands, IsEmpty());
  ASSERT_THAT(titles(), ElementsAre(certificateBox));
  EXPECT_THAT(platform.asked.front().text, AllOf(HasSubstr("another certificate"), HasSubstr("Accepted before..."),
                                                 HasSubstr(accepted.substr(0, 40)), HasSubstr("Shown now...")));
  EXPECT_EQ(account("Work").AcntCertificate, accepted);
}

TEST_F(Certificates, ThatChangeBehindTheAnswerAreAskedAboutAgain) {
  start();
  platform.onAsked = [this] { server.identity = ScriptedServer::makeIdentity(); };
  platform.answers = {Answer::Yes, Answer::Yes, Answer::No};
  check();
  EXPECT_THAT(titles(), ElementsAre(certificateBox, certificateBox, certificateBox));
  EXPECT_THAT(server.script.commands, IsEmpty());
  platform.onAsked = [this] { program.connection.StopRequested = true; };
  platform.answers = {Answer::Yes};
  check();
  EXPECT_THAT(server.script.commands, IsEmpty()) << "the user has stopped";
}

TEST_F(Certificates, AreNoQuestionForATimedCheck) {
  start();
  AutoCheckAccounts(program);
  ASSERT_EQ(dialogs("Work").size(), 1U);
  EXPECT_THAT(dialogs("Work")[0].text, AllOf(HasSubstr("60001 - "), HasSubstr("The password was not sent.")));
  EXPECT_THAT(server.script.commands, IsEmpty());
  EXPECT_EQ(account("Work").AcntStatusText, "Work - Error Accessing Account");
}

TEST_F(Certificates, ThatTheSystemTrustsAreAskedAboutOnlyUnderAnotherName) {
  addAccountAt("Named", {"localhost", std::to_string(server.port()), Protection::Tls}).messages = {};
  QSslConfiguration system = QSslConfiguration::defaultConfiguration();
  const QSslConfiguration former = system;
  system.addCaCertificate(QSslCertificate(server.identity));
  QSslConfiguration::setDefaultConfiguration(system);
  start();
  platform.answers = {Answer::No};
  checkAll();
  QSslConfiguration::setDefaultConfiguration(former);
  EXPECT_EQ(account("Work").AcntStatusText, "Work - Error Accessing Account");
  EXPECT_EQ(account("Named").AcntStatusText, "Named - 3 Messages");
  ASSERT_THAT(titles(), ElementsAre(certificateBox));
  EXPECT_THAT(platform.asked.front().text, testing::Not(HasSubstr("self-signed")));
}

TEST_F(Certificates, AreTakenWithoutAWordWhereTheUserDoesNotMind) {
  option("RefuseUntrusted", "0");
  start();
  checkAnswering(Answer::No);
  EXPECT_THAT(titles(), IsEmpty());
  EXPECT_THAT(subjects("Work"), ElementsAre("a", "b", "c"));
}

}  // namespace
}  // namespace velmora
