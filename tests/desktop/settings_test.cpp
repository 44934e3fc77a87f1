#include <gmock/gmock.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "accounts/decisions/accounts.h"
#include "options/decisions/options.h"
#include "platform/qt/services/private_files.h"
#include "platform/qt/services/qt_settings.h"
#include "platform/qt/services/run_at_logon.h"
#include "platform/qt/strings.h"
#include "support/full_disk.h"

namespace velmora {
namespace {

class SettingsFile : public testing::Test {
 protected:
  void TearDown() override {
    QFile(path_).setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    QFile::remove(path_);
  }

  void write(const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path_).path());
    QFile file(path_);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }

  QByteArray content() {
    QFile file(path_);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  QString path_ = QtSettings::fileName();
};

TEST_F(SettingsFile, KeepsEveryTextExactly) {
  const std::string texts[] = {"",     " blanks ",   "a,b",         "\"quoted\"", "x=1;y",
                               "%41%", "@Invalid()", "back\\slash", "1\n2",       "Zürich €"};
  int number = 0;
  {
    QtSettings settings;
    for (const auto& text : texts) settings.SaveSetting("Settings", "AcntPassword" + std::to_string(++number), text);
    settings.SaveSetting("Settings\\Options", "AcntPassword1", "of another section");
    settings.SaveSetting("Settings", "Gone", "1");
    settings.DeleteSetting("Settings", "Gone");
    EXPECT_FALSE(settings.Keep());
  }
  const QtSettings again;
  number = 0;
  for (const auto& text : texts) {
    EXPECT_EQ(again.GetSetting("Settings", "AcntPassword" + std::to_string(++number), "default"), text);
  }
  for (const auto* none : {"AcntPassword", "Gone"}) EXPECT_EQ(again.GetSetting("Settings", none, "-"), "-") << none;
  EXPECT_EQ(again.GetSetting("Nowhere", "AcntPassword1", "default"), "default");
}

constexpr auto others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther;

TEST_F(SettingsFile, IsItsOwnersAloneHoweverItCameAbout) {
  const QString folder = QFileInfo(path_).path();
  const QString elsewhere = folder + "/elsewhere";
  write("[Settings]\nAcntNum=1\n");
  QFile::setPermissions(path_, ownersFile | others);
  QFile::setPermissions(folder, ownersFolder | others);
  QtSettings settings;
  settings.SaveSetting("Settings", "AcntName1", "kept");
  EXPECT_FALSE((QFile::permissions(path_) | QFile::permissions(folder)) & others);
  const std::pair<std::string, std::function<void()>> ways[] = {
      {"replaced", [] {}},
      {"opened", [&] { QFile::setPermissions(path_, ownersFile | others); }},
      {"linked", [&] { ASSERT_TRUE(QFile::rename(path_, elsewhere) && QFile::link(elsewhere, path_)); }},
      {"made anew", [&] { ASSERT_TRUE(QFile::remove(path_)); }},
  };
  for (const auto& [way, happen] : ways) {
    happen();
    settings.SaveSetting("Settings", "AcntPassword1", way);
    EXPECT_FALSE(settings.Keep()) << way;
    EXPECT_TRUE(content().contains("AcntPassword1=" + QByteArray::fromStdString(way))) << way;
    EXPECT_TRUE(content().contains("AcntName1=kept")) << way;
    EXPECT_FALSE(QFile::permissions(path_) & others) << way;
    EXPECT_EQ(QFileInfo(path_).isSymLink(), way == "linked");
  }
  QFile::remove(elsewhere);
}

TEST_F(SettingsFile, OfSomebodyElseIsNeitherReadNorWritten) {
  const QByteArray theirs = "[Settings]\nAcntNum=1\n";
  const auto give = [](const QString& path, uid_t user) { return chown(path.toUtf8(), user, gid_t(-1)) == 0; };
  for (const QString& what : {path_, QFileInfo(path_).path()}) {
    write(theirs);
    const uid_t user = geteuid();
    if (!give(what, user + 1)) GTEST_SKIP() << "only the superuser can give a file away";
    {
      QtSettings settings;
      EXPECT_EQ(settings.openFile(), what);
      EXPECT_EQ(settings.GetSetting("Settings", "AcntNum", "none"), "none");
      settings.SaveSetting("Settings", "AcntNum", "2");
      EXPECT_TRUE(settings.Keep());
    }
    EXPECT_EQ(content(), theirs);
    give(what, user);
  }
}

TEST(Privacy, IsAMatterOfOwnerAndRights) {
  const auto may = [](QFileDevice::Permissions rights) { return isPrivate(ownersFolder | rights, 7, 7); };
  EXPECT_TRUE(may({}));
  EXPECT_TRUE(may(QFileDevice::ExeGroup | QFileDevice::ExeOther)) << "a folder to go through";
  for (const auto right :
       {QFileDevice::ReadGroup, QFileDevice::WriteGroup, QFileDevice::ReadOther, QFileDevice::WriteOther})
    EXPECT_FALSE(may(right)) << right;
  EXPECT_FALSE(isPrivate(ownersFolder, 0, 7));
  EXPECT_FALSE(isPrivate(ownersFolder, 7, 0));
}

TEST_F(SettingsFile, IsReplacedWholeWhenAllChangesAreMade) {
  write("[Settings]\nAcntName1=old\n");
  QtSettings settings;
  QFile former(path_);
  ASSERT_TRUE(former.open(QIODevice::ReadOnly));
  settings.SaveSetting("Settings", "AcntName1", "new");
  settings.DeleteSetting("Settings", "Gone");
  settings.SaveSetting("Settings", "AcntName2", "other");
  EXPECT_EQ(content(), "[Settings]\nAcntName1=old\n") << "one save of many changes";
  EXPECT_FALSE(settings.Keep());
  EXPECT_TRUE(content().contains("[Settings]\nAcntName1=new\nAcntName2=other\n")) << content().toStdString();
  EXPECT_EQ(former.readAll(), "[Settings]\nAcntName1=old\n") << "never written in place: a kill would leave half";
}

TEST_F(SettingsFile, AFullDiskLeavesItAsItWas) {
  QtSettings settings;
  for (int number = 1; number <= 50; ++number)
    settings.SaveSetting("Settings", "AcntName" + std::to_string(number), "x");
  settings.Keep();
  const QByteArray before = content();
  for (const rlim_t room : {0, 100, 400}) {
    const test::FullDisk disk(room);
    settings.SaveSetting("Settings", "AcntName1", std::string(20, 'y'));
    EXPECT_TRUE(settings.Keep()) << room;
    EXPECT_EQ(content(), before) << room;
    EXPECT_EQ(settings.GetSetting("Settings", "AcntName1", ""), "x") << room;
  }
  settings.SaveSetting("Settings", "AcntName1", "z");
  EXPECT_FALSE(settings.Keep()) << "there is room again";
  EXPECT_EQ(content().size(), before.size());
  EXPECT_EQ(QDir(QFileInfo(path_).path()).entryList(QDir::Files), QStringList("Velmora.conf"));
}

TEST_F(SettingsFile, WrittenByHandIsReadAsItLooks) {
  write("[Settings]\nAcntName1=a,b\nAcntName2=\"a, \\\"b\\\"\"\nOptions\\Minutes=45\nOptions\\Hours=many\n");
  const QtSettings settings;
  EXPECT_FALSE(settings.isDamaged());
  EXPECT_EQ(settings.GetSetting("Settings", "AcntName1", ""), "a,b");
  EXPECT_EQ(settings.GetSetting("Settings", "AcntName2", ""), "a, \"b\"");
  Options options;
  loadOptions(settings, OptionField::Read::AtStartUp, options);
  EXPECT_EQ(options.Minutes, 45);
  EXPECT_EQ(options.Hours, 0);
}

TEST_F(SettingsFile, DamagedIsReadAsFarAsItCanBeAndNeverWritten) {
  const std::pair<QByteArray, std::string> damaged[] = {
      {"[Settings]\nAcntNum=1\nAcntPassword1=p\xE4ssw\n", "1"},
      {QByteArray("\x00\xff\x17garbage\n[[[", 15), ""},
      {QByteArray(100000, 'x') + '\n', ""},
      {"no equals sign\n[Settings]\nAcntNum=1\nAcntPassword1=secret\n", "1secret"},
      {"[Settings]\nAcntName1=a\"b\nAcntNum=1\nAcntPassword1=secret\n", "1secret"},
      {"[Settings]\nAcntNum=1\nAcntPassword1=secr", "1"},
      {"\xEF\xBB\xBFno equals sign\n[Settings]\nAcntNum=1\nAcntPassword1=secret\n", "1secret"},
  };
  for (const auto& [bytes, read] : damaged) {
    write(bytes);
    QtSettings settings;
    EXPECT_TRUE(settings.isDamaged()) << bytes.left(40).toStdString();
    const std::string number = settings.GetSetting("Settings", "AcntNum", "");
    EXPECT_EQ(number + settings.GetSetting("Settings", "AcntPassword1", ""), read) << bytes.left(40).toStdString();
    settings.SaveSetting("Settings", "FirstUse", "1");
    settings.DeleteSetting("Settings", "AcntNum");
    EXPECT_TRUE(settings.Keep());
    EXPECT_EQ(content(), bytes);
  }
}

TEST_F(SettingsFile, RemovesOldDraftsAndNothingElse) {
  const QDir folder = QFileInfo(path_).dir();
  folder.mkpath(".");
  for (const auto* name : {"Velmora.aBc123.draft", "Velmora.dEf456.draft", "Velmora.conf.backup"}) {
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    if (QString(name).contains("dEf456")) continue;
    file.setFileTime(QDateTime::currentDateTime().addSecs(-3600), QFileDevice::FileModificationTime);
  }
  const QtSettings settings;
  EXPECT_EQ(folder.entryList({"Velmora.*.draft", "*.backup"}),
            QStringList({"Velmora.conf.backup", "Velmora.dEf456.draft"}));
  for (const auto* name : {"Velmora.dEf456.draft", "Velmora.conf.backup"}) QFile::remove(folder.filePath(name));
}

TEST_F(SettingsFile, CutShortAnywhereIsDamaged) {
  {
    QtSettings settings;
    for (const auto* key : {"AcntName1", "AcntNum", "AcntPassword1", "FirstUse"})
      settings.SaveSetting("Settings", key, "1");
    settings.SaveSetting("Settings\\Options", "Minutes", "45");
    settings.Keep();
    settings.Protect();
    EXPECT_TRUE(settings.Keep());
  }
  const QByteArray whole = content();
  for (const QByteArray& all : {whole, whole.chopped(1)}) {
    write(all);
    EXPECT_EQ(QtSettings().GetSetting("Settings", "AcntNum", "") + (QtSettings().isDamaged() ? " damaged" : ""), "1");
  }
  for (qsizetype length = 1; length + 1 < whole.size(); ++length) {
    write(whole.left(length));
    QtSettings settings;
    EXPECT_TRUE(settings.isDamaged()) << length;
    settings.SaveSetting("Settings", "Probe", "1");
    EXPECT_TRUE(settings.Keep()) << length;
    EXPECT_EQ(content(), whole.left(length));
  }
}

TEST(LogonEntry, CanBeRemovedAgain) {
  const QString path =
      QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/autostart/Velmora.desktop";
  addLogonEntry();
  EXPECT_TRUE(QFileInfo::exists(path));
  removeLogonEntry();
  removeLogonEntry();
  EXPECT_FALSE(QFileInfo::exists(path));
}

}  // namespace
}  // namespace velmora
