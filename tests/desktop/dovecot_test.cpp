#include "support/dovecot.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <iostream>

#include "checking/deletion.h"
#include "platform/pop/pop_client.h"
#include "support/networked_program.h"

namespace velmora {
namespace {

using test::Dovecot;
using test::Protection;
using testing::HasSubstr;

class Mailboxes : public test::NetworkedProgram {
 protected:
  static void SetUpTestSuite() { server_ = std::make_unique<Dovecot>(); }
  static void TearDownTestSuite() { server_.reset(); }

  /// The server outlives a single test, so each mailbox has a name of its own.
  void addMailbox(const std::string& name, const QStringList& files, Protection protection = Protection::None) {
    server_->addUser(QString::fromStdString(name));
    if (!files.isEmpty()) server_->deliver(QString::fromStdString(name), files);
    addAccountAt(name, {"127.0.0.1", std::to_string(server_->port(protection)), protection});
    set("Settings/AcntLoginID" + platform.tree.values["Settings/AcntNum"], name);
  }

  /// Files of so many messages, with the subjects "Message 1" and so on.
  QStringList smallMessages(int count) {
    QStringList files;
    for (int number = 1; number <= count; ++number) {
      QFile file(folder_.filePath(QString("%1.eml").arg(number, 4, 10, QChar('0'))));
      EXPECT_TRUE(file.open(QIODevice::WriteOnly));
      file.write(QString("From: a@example.org\r\nSubject: Message %1\r\n\r\nText.\r\n").arg(number).toUtf8());
      files.append(file.fileName());
    }
    return files;
  }

  /// The messages of a sample mailbox.
  QStringList samples(const QString& mailbox) {
    if (!QDir(folder_.filePath(mailbox)).exists()) test::runScript("sample_mail.py", {folder_.path()});
    QStringList files;
    for (const auto& file : QDir(folder_.filePath(mailbox)).entryInfoList({"*.eml"}, QDir::Files, QDir::Name)) {
      files.append(file.filePath());
    }
    return files;
  }

  /// A client that is logged in to a mailbox.
  std::shared_ptr<PopClient> connect(const std::string& name, Protection protection = Protection::None,
                                     IPopClientNotify* receiver = nullptr) {
    auto client = platform.makePopClient();
    client->Notification(receiver);
    client->HostName("127.0.0.1");
    client->Port(server_->port(protection));
    client->Security(protection == Protection::Tls ? 3 : 0);
    client->Login(name);
    client->Password("secret");
    client->Connect();
    return client;
  }

  static std::vector<std::string> uidsOf(PopClient& client) {
    std::vector<std::string> uids;
    for (std::int16_t i = 0; i < client.Messages().Count(); ++i) uids.push_back(client.Messages().Item(i).Uid);
    return uids;
  }

  std::int16_t countIn(const std::string& name) {
    const auto client = connect(name);
    const std::int16_t count = client->Messages().Count();
    client->Disconnect();
    return count;
  }

  inline static std::unique_ptr<Dovecot> server_;
  QTemporaryDir folder_;
};

TEST_F(Mailboxes, FortyMessagesOfManyKindsComeInAsPeopleReadThem) {
  option("ConnectTimeOut", "10");
  addMailbox("work", samples("work"), Protection::Tls);
  addMailbox("home", samples("home"));
  addMailbox("club", samples("club"), Protection::Tls);
  start();
  checkAll();
  EXPECT_TRUE(platform.asked.empty());
  EXPECT_EQ(account("work").AcntStatusText, "work - 14 Messages");
  EXPECT_EQ(account("home").AcntStatusText, "home - 13 Messages");
  EXPECT_EQ(account("club").AcntStatusText, "club - 13 Messages");
  EXPECT_EQ(program.walk.TotalMessages, 40);

  struct Sample {
    const char* mailbox;
    std::int16_t number;
    bool attach;
    const char* from;
    const char* subject;
    const char* bodyHas;
  };
  const std::vector<Sample> expected = {
      {"work", 3, false, "Amélie Vautrin <a.vautrin@example.com>", "Réservation de la salle « Étoile » confirmée",
       "À bientôt"},
      {"work", 6, false, "Prize Office <winner@lucky-parrot.invalid>",
       "CONGRATULATIONS!!! You WON 9,500,000 golden feathers",
       "Claim your golden feathers before midnight: CLICK HERE"},
      {"work", 7, false, "Иван Берёзкин <i.berezkin@example.com>", "Отчёт за третий квартал", "Добрый день!"},
      {"work", 9, false, "山田はなこ <hanako@example.com>", "来週の打ち合わせについて", "お世話になっております"},
      {"work", 10, true, "Osric Fenn <osric.fenn@example.com>", "Site photos, all of them (large!)", "whole folder"},
      {"home", 6, false, "Caspian Lowe <caspian@example.net>", "", "forgot the subject again"},
      {"club", 6, true, "Фёдор Лугов <fedor@example.org>", "Фотографии с регаты", "Всем привет!"},
  };
  for (const auto& sample : expected) {
    const MailMessage& got = mail(sample.mailbox, sample.number);
    SCOPED_TRACE(std::string(sample.mailbox) + " " + std::to_string(sample.number));
    EXPECT_EQ(got.From, sample.from);
    EXPECT_EQ(got.Subject, sample.subject);
    EXPECT_THAT(got.Body, HasSubstr(sample.bodyHas));
    EXPECT_EQ(got.Attach, sample.attach);
    EXPECT_TRUE(got.New);
  }
  const std::int64_t bytes = QFile(samples("work").at(9)).size();
  EXPECT_GT(bytes, 10'000'000);
  EXPECT_EQ(mail("work", 10).Size, std::to_string((bytes + 500) / 1000));
  EXPECT_EQ(mail("home", 8).To, "Undisclosed-Recipient");
}

TEST_F(Mailboxes, QuickCheckFetchesNothingWhileTheCountIsTheSame) {
  addMailbox("quick", smallMessages(3));
  start();
  for (int pass = 1; pass <= 2; ++pass) {
    check();
    EXPECT_EQ(account("quick").AcntStatusText, "quick - 3 Messages");
    EXPECT_EQ(mail("quick", 3).New, pass == 1);
  }
  server_->deliver("quick", smallMessages(1));
  check();
  EXPECT_EQ(account("quick").AcntNewCount, 1);
  // The server writes its log after it has answered.
  QStringList farewells;
  ASSERT_TRUE(QTest::qWaitFor([&] { return (farewells = server_->farewells().filter("(quick)")).size() == 3; }));
  EXPECT_TRUE(farewells[0].contains("Logged out") && farewells[0].contains("retr=3/"));
  EXPECT_TRUE(farewells[1].contains("Logged out") && farewells[1].contains("retr=0/0"));
  EXPECT_TRUE(farewells[2].contains("Logged out") && farewells[2].contains("retr=4/"));
}

TEST_F(Mailboxes, MarkedMessagesGoWhenTheClientLeavesAndOnlyThen) {
  addMailbox("deleting", smallMessages(4));
  auto client = connect("deleting", Protection::Tls);
  client->Messages().ListMessages();
  const auto before = uidsOf(*client);
  client->Messages().Item(1).Deleted = true;
  EXPECT_EQ(countIn("deleting"), 4);
  client.reset();
  EXPECT_EQ(countIn("deleting"), 4) << "a client that vanishes deletes nothing";

  client = connect("deleting", Protection::Tls);
  client->Messages().ListMessages();
  for (const std::int16_t index : {std::int16_t{0}, std::int16_t{2}}) client->Messages().Item(index).Deleted = true;
  client->Disconnect();
  EXPECT_EQ(client->LastError(), 0);
  client = connect("deleting");
  client->Messages().ListMessages();
  EXPECT_EQ(uidsOf(*client), (std::vector{before[1], before[3]}));
  client->Disconnect();
}

TEST_F(Mailboxes, AThousandMessagesGoAtOnceAndNoneThatCameLater) {
  option("ConnectTimeOut", "10");
  option("DeleteConfirmation", "0");
  addMailbox("full", smallMessages(1001), Protection::Tls);
  start();
  check();
  server_->deliver("full", smallMessages(1));
  std::set<std::int32_t> rows;
  for (std::int32_t row = 2; row <= 1001; ++row) rows.insert(row);
  program.frmMain.lvwEmail.UserSelected(rows, 2);
  QElapsedTimer clock;
  clock.start();
  DeleteSelectedMessages(program);
  const qint64 milliseconds = clock.elapsed();
  EXPECT_TRUE(platform.asked.empty());
  EXPECT_THAT(subjects("full"), testing::ElementsAre("Message 1"));
  EXPECT_EQ(countIn("full"), 2);
  EXPECT_LT(milliseconds, 20'000);
  std::cout << "1000 messages deleted in " << milliseconds << " ms\n";
}

TEST_F(Mailboxes, TellOfTheServersCertificate) {
  struct Receiver : IPopClientNotify {
    void HostCertificate(PopClient& /*owner*/, const std::string& certificate, std::int32_t code,
                         const std::string& text) override {
      shown.emplace_back(certificate);
      wrong = std::to_string(code) + " " + text;
    }
    std::vector<std::string> shown;
    std::string wrong;
  } receiver;
  addMailbox("certified", {});
  connect("certified", Protection::None, &receiver)->Disconnect();
  EXPECT_TRUE(receiver.shown.empty());
  connect("certified", Protection::Tls, &receiver)->Disconnect();
  ASSERT_EQ(receiver.shown.size(), 1U);
  EXPECT_THAT(receiver.shown[0], HasSubstr("CN=localhost"));
  EXPECT_THAT(receiver.wrong, HasSubstr("self-signed"));
}

}  // namespace
}  // namespace velmora
