#include <gtest/gtest.h>

#include <QDir>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "platform/mime/gmime_reader.h"
#include "platform/qt/services/qt_platform.h"
#include "platform/qt/services/whole_file.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/icons.h"

namespace velmora {
namespace {

/// With desktop entries that are registered as those of installed programs are.
class Launchers : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(QDir().mkpath(entries_) && QDir().mkpath(clients_)); }
  void TearDown() override {
    QDir(clients_).removeRecursively();
    for (const QString& each : QDir(entries_).entryList(QDir::Files | QDir::Hidden)) QFile::remove(entries_ + each);
  }

  QString entry(const QString& id) const { return entries_ + id + ".desktop"; }
  QString launcher(const QString& id) const { return clients_ + id + ".exe"; }
  bool link(const QString& from, const QString& to) { return QFile::remove(from), QFile::link(to, from); }

  void enter(const QStringList& ids, const QString& keys) {
    const QString text = "[Desktop Entry]\nType=Application\nName=Mail\n" + keys + "\n";
    for (const QString& id : ids) EXPECT_TRUE(writeWholeFile(entry(id), text.toUtf8()));
  }

  /// Has the desktop know these for mail, and waits until those have launchers: it hears of changes a little later.
  void registerForMail(const QStringList& ids, const QStringList& expected) {
    if (HasFailure()) return;
    QString list = "[MIME Cache]\nx-scheme-handler/mailto=";
    for (QString id : ids) list += id.replace("\n", "\\n") + ".desktop;";
    EXPECT_TRUE(writeWholeFile(entries_ + "mimeinfo.cache", (list + "\n").toUtf8()));
    QStringList laid;
    const auto isSo = [&] {
      platform_.provideLaunchers();
      laid.clear();
      for (const QFileInfo& each : QDir(clients_).entryInfoList(QDir::Files | QDir::System | QDir::Hidden)) {
        if (each.symLinkTarget().startsWith(entries_)) laid += each.completeBaseName();
      }
      return laid == expected;
    };
    EXPECT_TRUE(QTest::qWaitFor(isSo, 10'000)) << utf8(laid.join('|'));
  }

  /// Starts what tells of it in a file.
  bool starts(const QString& path) {
    QFile::remove(started_);
    return platform_.startProgram(utf8(path), 1, {}) &&
           QTest::qWaitFor([this] { return QFile::exists(started_); }, 10'000);
  }

  QTemporaryDir folder_;
  GmimeReader reader_;
  QtPlatform platform_{reader_};
  QString entries_ = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/applications/";
  QString clients_ = qt(platform_.programFile("Clients")) + '/';
  QString started_ = folder_.filePath("started");
};

TEST_F(Launchers, ComeAndGoWithTheEntriesAndLeaveWhatIsTheUsers) {
  const QStringList good{"a", "b", "org.example.Äpfel und Mail", QString(236, 'x')};
  const QStringList others{"-x", ".x", "x ", "x\ty", "x\ny", "x\u202Ey", QString(237, 'x'), "file", "link"};
  enter(good + others, "Exec=sh");
  ASSERT_TRUE(writeWholeFile(launcher("file"), "the user's") && link(launcher("link"), "/nowhere"));
  registerForMail(others + good, good);
  EXPECT_EQ(QFileInfo(launcher("a")).symLinkTarget(), entry("a"));
  ASSERT_TRUE(link(launcher("b"), entry("link")));  // the user takes it over
  ASSERT_TRUE(QFile::remove(entry("a")));
  registerForMail({"a", "link"}, {"b"});
  for (const QByteArray& damaged : {"c.exe\t" + entry("c").toUtf8() + "\nx\t/x\n", QByteArray(2 << 20U, '\n')}) {
    enter({"c"}, "Exec=sh");
    registerForMail({"c"}, {"b", "c"});
    ASSERT_TRUE(writeWholeFile(clients_ + ".launchers", damaged));
    registerForMail({}, {"b", "c"});
    enter({"d"}, "Exec=sh");
    registerForMail({"d"}, {"b", "c", "d"});
    registerForMail({}, {"b", "c"});
  }
  EXPECT_EQ(readWholeFile(launcher("file"), 1000), "the user's");
  EXPECT_EQ(QFileInfo(launcher("link")).symLinkTarget(), "/nowhere");
}

TEST_F(Launchers, StartTheirApplicationsAsTheDesktopDoes) {
  const QString plain = folder_.filePath("PLAIN.EXE");
  ASSERT_TRUE(writeWholeFile(plain, "#!/bin/sh\n[ $# = 0 ] && > " + started_.toUtf8()));
  QFile::setPermissions(plain, QFile::ReadOwner | QFile::ExeOwner);
  enter({"mail"}, "Exec=" + plain + " %u");
  enter({"gone"}, "Exec=" + plain + "x");
  enter({"hidden"}, "Hidden=true\nExec=" + plain);
  ASSERT_TRUE(writeWholeFile(entry("nonsense"), QByteArray(1000, '\xff')));
  registerForMail({"mail"}, {"mail"});
  const QString again = folder_.filePath("again.exe");
  ASSERT_TRUE(link(again, launcher("mail")));
  for (const QString& path : {launcher("mail"), again, plain}) EXPECT_TRUE(starts(path)) << utf8(path);
  for (const auto* id : {"gone", "hidden", "nonsense", "none"}) EXPECT_TRUE(link(launcher(id), entry(id)));
  EXPECT_TRUE(link(launcher("loop"), launcher("loop")));
  for (const auto* id : {"gone", "hidden", "nonsense", "none", "loop"}) EXPECT_FALSE(starts(launcher(id))) << id;
}

TEST_F(Launchers, ShowTheirApplicationsPicture) {
  const ImageList list("imlPopMenu");
  const auto shown = [&](const QString& path) { return list.icon("MailClient12:" + utf8(path)).pixmap(16).toImage(); };
  const QImage none = list.icon("FolderX").pixmap(16).toImage();
  const QString own = folder_.filePath("own.png");
  const QString shared = entries_ + "../pixmaps/shared.xpm";
  ASSERT_TRUE(QDir().mkpath(entries_ + "../pixmaps") && link(launcher("mail"), entry("mail")));
  for (const auto& [icon, file, colour] : {std::tuple{own, own, Qt::red}, {QString("shared"), shared, Qt::blue}}) {
    QImage picture(16, 16, QImage::Format_RGB32);
    picture.fill(colour);
    enter({"mail"}, "Exec=sh\nIcon=" + icon);
    EXPECT_TRUE(picture.save(file) && shown(launcher("mail")).pixelColor(8, 8) == colour) << utf8(icon);
    EXPECT_TRUE(QFile::remove(file) && shown(launcher("mail")) == none) << utf8(icon);
  }
  EXPECT_TRUE(shown(launcher("none")) == none && shown("/bin/sh") == none);
}

TEST_F(Launchers, AreChosenAsThemselves) {
  ASSERT_TRUE(writeWholeFile(entry("mail"), "") && link(launcher("mail"), entry("mail")));
  const QString own = qt(platform_.programFile(""));
  const QString clients = own + "/Clients";
  using Case = std::tuple<QString, QString, QString>;
  for (const auto& [start, folder, name] :
       {Case{launcher("mail"), clients, "mail.exe"}, Case{launcher("none"), clients, ""}, Case{clients, clients, ""},
        Case{clients + "/x/y", own, ""}, Case{"C:\\x.exe", own, ""}, Case{"", own, ""}}) {
    QTimer::singleShot(0, [folder = folder, name = name] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      EXPECT_EQ(dialog->directory().path(), folder);
      EXPECT_EQ(dialog->findChild<QLineEdit*>("fileNameEdit")->text(), name);
      name.isEmpty() ? dialog->reject() : static_cast<QDialog*>(dialog)->accept();
    });
    const auto chosen = platform_.askForFile({"", "(*.exe)|*.exe|", FileQuestion::Purpose::Open, utf8(start)});
    EXPECT_EQ(chosen, name.isEmpty() ? std::nullopt : std::optional(utf8(start)));
  }
}

}  // namespace
}  // namespace velmora
