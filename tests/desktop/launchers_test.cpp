#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <vector>

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
  QString launcher(const QString& name) const { return clients_ + name; }
  QString inFolder(const QString& name) const { return folder_.filePath(name); }

  void enter(const QString& id, const QString& keys) {
    const QString text = "[Desktop Entry]\nType=Application\nName=Mail\n" + keys + "\n";
    EXPECT_TRUE(writeWholeFile(entry(id), text.toUtf8()));
  }

  void registerForMail(const QStringList& ids) {
    QByteArray text = "[MIME Cache]\nx-scheme-handler/mailto=";
    for (QString id : ids) text += id.replace("\n", "\\n").toUtf8() + ".desktop;";
    EXPECT_TRUE(writeWholeFile(entries_ + "mimeinfo.cache", text + "\n"));
  }

  /// The names that lead to this test's entries.
  QStringList laid() const {
    QStringList names;
    for (const QFileInfo& each : QDir(clients_).entryInfoList(QDir::Files | QDir::System | QDir::Hidden)) {
      if (each.symLinkTarget().startsWith(entries_)) names += each.fileName();
    }
    return names;
  }

  /// The desktop's changes are heard of a little later.
  bool becomes(const QStringList& names) {
    return QTest::qWaitFor([&] { return platform_.provideLaunchers(), laid() == names; }, 10'000);
  }

  /// A program that tells of its start.
  QString program(const QString& name) const {
    QFile file(inFolder(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\necho $# \"$0\" > " + inFolder("started").toUtf8());
    file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    return file.fileName();
  }

  bool starts(const QString& path) {
    QFile::remove(inFolder("started"));
    if (!platform_.startProgram(utf8(path), 1)) return false;
    return QTest::qWaitFor([&] { return readWholeFile(inFolder("started"), 1000).value_or("").startsWith("0 "); },
                           10'000);
  }

  QTemporaryDir folder_;
  GmimeReader reader_;
  QtPlatform platform_{reader_};
  QString entries_ = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/applications/";
  QString clients_ = qt(platform_.programFile("Clients")) + '/';
};

TEST_F(Launchers, ComeAndGoWithTheEntriesAndLeaveWhatIsTheUsers) {
  const QStringList good{"a", "b", "org.example.Äpfel und Mail", QString(236, 'x')};
  const QStringList bad{"-x", ".x", "x ", "x\ty", "x\ny", "x\u202Ey", QString(237, 'x')};
  for (const QString& id : good + bad + QStringList{"file", "link"}) enter(id, "Exec=sh");
  ASSERT_TRUE(writeWholeFile(launcher("file.exe"), "the user's") && QFile::link("/nowhere", launcher("link.exe")));
  registerForMail(bad + good + QStringList{"file", "link"});
  const QStringList all{"a.exe", "b.exe", good[2] + ".exe", good[3] + ".exe"};
  EXPECT_TRUE(becomes(all)) << utf8(laid().join('|'));
  EXPECT_EQ(QFileInfo(launcher("a.exe")).symLinkTarget(), entry("a"));

  ASSERT_TRUE(QFile::remove(launcher("b.exe")) && QFile::link(entry("link"), launcher("b.exe")));
  ASSERT_TRUE(QFile::remove(entry("a")));
  registerForMail({"c"});
  enter("c", "Exec=sh");
  EXPECT_TRUE(becomes({"b.exe", "c.exe"})) << "the user has taken b over: " << utf8(laid().join('|'));

  for (const QByteArray& damaged : {QByteArray("c.exe\t" + entry("c").toUtf8() + "\n\n../x\t/x\n"),
                                    QByteArray(2 << 20U, '\n'), QByteArray("\xff\0\n", 3)}) {
    ASSERT_TRUE(writeWholeFile(clients_ + ".launchers", damaged));
    registerForMail({});
    enter("d", "Exec=sh");
    registerForMail({"d"});
    EXPECT_TRUE(becomes({"b.exe", "c.exe", "d.exe"})) << utf8(laid().join('|'));
    registerForMail({});
    EXPECT_TRUE(becomes({"b.exe", "c.exe"}));
  }
  EXPECT_EQ(readWholeFile(launcher("file.exe"), 1000), "the user's");
  EXPECT_EQ(QFileInfo(launcher("link.exe")).symLinkTarget(), "/nowhere");
}

TEST_F(Launchers, StartTheirApplicationsAsTheDesktopDoes) {
  const QString script = program("script");
  enter("mail", "Exec=" + script + " %u");
  enter("gone", "Exec=" + inFolder("gone"));
  enter("hidden", "Hidden=true\nExec=" + script);
  ASSERT_TRUE(writeWholeFile(entry("nonsense"), QByteArray(1000, '\xff')));
  registerForMail({"mail"});
  ASSERT_TRUE(becomes({"mail.exe"}));
  for (const auto* id : {"gone", "hidden", "nonsense", "none"}) QFile::link(entry(id), launcher(id) + ".exe");
  QFile::link("loop.exe", launcher("loop.exe"));
  QFile::link(launcher("mail.exe"), inFolder("again.exe"));
  EXPECT_TRUE(starts(launcher("mail.exe")));
  EXPECT_TRUE(starts(inFolder("again.exe")));
  EXPECT_TRUE(starts(program("PLAIN.EXE")));
  for (const auto* name : {"gone.exe", "hidden.exe", "nonsense.exe", "none.exe", "loop.exe", "."}) {
    EXPECT_FALSE(platform_.startProgram(utf8(launcher(name)), 3)) << name;
  }
}

TEST_F(Launchers, ShowTheirApplicationsPicture) {
  const ImageList list("imlPopMenu");
  const auto shown = [&](const QString& path) { return list.icon("MailClient12:" + utf8(path)).pixmap(16).toImage(); };
  const QImage none = list.icon("FolderX").pixmap(16).toImage();
  QFile::link(entry("mail"), launcher("mail.exe"));
  QDir(entries_).mkpath("../pixmaps");
  for (const auto& [file, icon, colour] : {std::tuple{inFolder("1.png"), inFolder("1.png"), Qt::red},
                                           {entries_ + "../pixmaps/blue.xpm", QString("blue"), Qt::blue}}) {
    QImage picture(16, 16, QImage::Format_RGB32);
    picture.fill(colour);
    ASSERT_TRUE(picture.save(file));
    enter("mail", "Exec=sh\nIcon=" + icon);
    EXPECT_EQ(shown(launcher("mail.exe")).pixelColor(8, 8), colour) << utf8(icon);
  }
  for (const QString& icon : {entry("mail"), inFolder("none"), QString("../../none"), QString()}) {
    enter("mail", "Exec=sh\nIcon=" + icon);
    EXPECT_EQ(shown(launcher("mail.exe")), none) << utf8(icon);
  }
  EXPECT_EQ(shown("/bin/sh"), none);
}

TEST_F(Launchers, AreChosenAsThemselves) {
  enter("mail", "Exec=sh");
  ASSERT_TRUE(QFile::link(entry("mail"), launcher("mail.exe")) && QFile::link(entry("none"), launcher("none.exe")));
  ASSERT_TRUE(writeWholeFile(launcher("X.EXE"), ""));
  const QString own = qt(platform_.programFile(""));
  const QString clients = own + "/Clients";
  struct Case {
    QString start, folder, name;
  };
  for (const Case& each : std::vector<Case>{{launcher("mail.exe"), clients, "mail.exe"},
                                            {launcher("X.EXE"), clients, "X.EXE"},
                                            {launcher("none.exe"), clients, ""},
                                            {clients, clients, ""},
                                            {inFolder("none/none.exe"), own, ""},
                                            {"none.exe", own, ""},
                                            {QString(5000, 'x'), own, ""},
                                            {"", own, ""}}) {
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      EXPECT_EQ(dialog->directory().path(), each.folder);
      EXPECT_EQ(dialog->findChild<QLineEdit*>("fileNameEdit")->text(), each.name);
      each.name.isEmpty() ? dialog->reject() : static_cast<QDialog*>(dialog)->accept();
    });
    const auto chosen = platform_.askForFile({"", "(*.exe)|*.exe|", FileQuestion::Purpose::Open, utf8(each.start)});
    EXPECT_EQ(chosen.value_or(""), each.name.isEmpty() ? "" : utf8(each.start)) << utf8(each.start);
  }
}

}  // namespace
}  // namespace velmora
