#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <csignal>
#include <set>

#include "options/decisions/ini_file.h"
#include "platform/mime/gmime_reader.h"
#include "platform/qt/services/private_files.h"
#include "platform/qt/services/protocol_log.h"
#include "platform/qt/services/qt_platform.h"
#include "platform/qt/services/whole_file.h"
#include "platform/qt/strings.h"
#include "support/full_disk.h"

namespace velmora {
namespace {

class RealFiles : public testing::Test {
 protected:
  std::string path() const { return utf8(folder_.filePath("Rules.ini")); }

  QTemporaryDir folder_;
  GmimeReader reader_;
  QtPlatform platform_{reader_};
};

TEST_F(RealFiles, OnAFullDiskTheOldOneStays) {
  EXPECT_TRUE(platform_.writeFile(path(), "older"));
  QFile::setPermissions(qt(path()), ownersFile | QFileDevice::ReadOther);
  EXPECT_TRUE(platform_.writeFile(path(), "old"));
  EXPECT_FALSE(QFile::permissions(qt(path())) & QFileDevice::ReadOther);
  {
    const test::FullDisk disk(100);
    EXPECT_FALSE(platform_.writeFile(path(), std::string(200, 'x')));
  }
  EXPECT_EQ(platform_.readFile(path()), "old");
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList("Rules.ini")) << "nothing is left beside it";
}

TEST_F(RealFiles, AProtocolLogIsPrivateBoundedAndNoLink) {
  const QString elsewhere = folder_.filePath("elsewhere"), before = folder_.filePath("protocol-before.log");
  const QString path = folder_.filePath("protocol.log");
  EXPECT_TRUE(platform_.writeFile(utf8(elsewhere), "untouched"));
  ASSERT_TRUE(QFile::link(elsewhere, path) && QFile::link(elsewhere, before));
  ProtocolLog log(path);
  for (int line = 0; line < 30'000; ++line) log.write("< +OK message follows, " + std::to_string(line));
  for (const QString& file : {path, before}) {
    EXPECT_TRUE(QFileInfo(file).size() > 100 && QFileInfo(file).size() <= ProtocolLog::largest);
    EXPECT_EQ(QFile::permissions(file) & ~QFile::Permissions(QFile::ReadUser | QFile::WriteUser), ownersFile);
  }
  EXPECT_EQ(platform_.readFile(utf8(elsewhere)), "untouched");
  EXPECT_TRUE(platform_.readFile(utf8(path))->ends_with("follows, 29999\n"));
  ProtocolLog anew(path);
  EXPECT_FALSE(QFileInfo::exists(before));
  const test::FullDisk disk(30);
  anew.write("more than fits");
  EXPECT_FALSE(anew.goesOn() || ProtocolLog(folder_.filePath("nowhere/protocol.log")).goesOn());
}

/// Has a child write, and kills it at its stop of this number: it stops before each system call and behind it. Returns
/// whether it had not ended by then.
bool isKilledAt(int stop, const QString& path, const std::string& content) {
  const pid_t child = fork();
  if (child == 0) {
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0 && std::raise(SIGSTOP) == 0) writeWholeFile(path, content);
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  for (int i = 0; i < stop && WIFSTOPPED(status); ++i) {
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    waitpid(child, &status, 0);
  }
  if (!WIFSTOPPED(status)) return false;
  kill(child, SIGKILL);
  waitpid(child, &status, 0);
  return true;
}

TEST_F(RealFiles, AKillAtAnySystemCallLeavesAWholeOne) {
  const std::string older = "[Rules]\nRuleCount=0\n";
  const std::string newer(100'000, 'n');
  std::set<std::string> found;
  for (int stop = 1; platform_.writeFile(path(), older) && isKilledAt(stop, qt(path()), newer); ++stop) {
    found.insert(platform_.readFile(path()).value_or("none"));
  }
  EXPECT_EQ(found, (std::set{older, newer}));
}

TEST_F(RealFiles, WhatIsNoFileOrTooLargeIsNotRead) {
  EXPECT_FALSE(platform_.readFile(path()));
  for (const auto& none : {utf8(folder_.path()), std::string("/dev/zero"), std::string("/proc/self/mem")}) {
    EXPECT_FALSE(platform_.readFile(none)) << none;
  }
  QFile large(qt(path()));
  ASSERT_TRUE(large.open(QIODevice::WriteOnly));
  large.resize(largestReadFile);
  EXPECT_EQ(platform_.readFile(path()).value().size(), largestReadFile);
  large.resize(largestReadFile + 1);
  EXPECT_FALSE(platform_.readFile(path()));
  IniFile(platform_, path()).KeySave("v", "s", "k");
  EXPECT_EQ(static_cast<std::size_t>(large.size()), largestReadFile + 1) << "nor is it replaced";
  EXPECT_EQ(platform_.programFile("../../x"), platform_.programFile("x"));
  EXPECT_EQ(platform_.programFile("") + "/x", platform_.programFile("x"));
}

TEST_F(RealFiles, QuestionsShowPlainTextAndTakeEscForNo) {
  using enum Question::Buttons;
  for (const auto& [buttons, key, answer] : {std::tuple{YesNo, Qt::Key_Escape, Answer::No},
                                             {YesNoCancel, Qt::Key_Escape, Answer::No},
                                             {YesNoCancel, Qt::Key_Return, Answer::Yes},
                                             {Ok, Qt::Key_Escape, Answer::Ok}}) {
    QTimer::singleShot(0, [key = key] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      EXPECT_EQ(box->findChild<QLabel*>("qt_msgbox_label")->textFormat(), Qt::PlainText) << "a server's words";
      QTest::keyClick(box, key);
    });
    Question question;
    question.buttons = buttons;
    EXPECT_EQ(platform_.MsgBox(question), answer);
  }
}

TEST_F(RealFiles, AreSavedUnderTheNameThatTheDialogShows) {
  const QString typed = folder_.filePath("x.desktop");
  QStringList shown;
  const std::function<void()> answer = [&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
    shown += name->text();
    if (shown.size() == 1) name->setText(typed);
    QTimer::singleShot(0, dialog, answer);  // where it comes again
    static_cast<QDialog*>(dialog)->accept();
  };
  QTimer::singleShot(0, answer);
  EXPECT_EQ(platform_.askForFile({".bashrc", "Email (*.eml)|*.eml|Text (*.txt)|*.txt|"}), utf8(typed) + ".eml");
  EXPECT_EQ(shown, QStringList({"bashrc.eml", "x.desktop.eml"}));
}

TEST_F(RealFiles, ThatAreThereAreOpenedUnderAnyName) {
  const FileQuestion question{"", "(*.ini)|*.ini|", FileQuestion::Purpose::Open};
  const QString chosen = folder_.filePath("Rules");
  ASSERT_TRUE(platform_.writeFile(utf8(chosen), ""));
  QTimer::singleShot(0, [&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    EXPECT_EQ(dialog->nameFilters(), QStringList("(*.ini)"));
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(chosen);
    static_cast<QDialog*>(dialog)->accept();
  });
  EXPECT_EQ(platform_.askForFile(question), utf8(chosen));
  QTimer::singleShot(0, [this] { platform_.quit(); });
  QApplication::exec();  // Without it, Qt would end every later dialog of this process, too.
  EXPECT_FALSE(platform_.askForFile(question)) << "there is no event loop any more that could end";
}

}  // namespace
}  // namespace velmora
