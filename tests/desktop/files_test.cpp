#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <array>
#include <csignal>

#include "options/ini_file.h"
#include "platform/mime/gmime_reader.h"
#include "platform/qt/html_text.h"
#include "platform/qt/qt_platform.h"
#include "platform/qt/strings.h"
#include "rules/rule_file.h"
#include "rules/rules.h"
#include "support/full_disk.h"

namespace velmora {
namespace {

/// Rules of which every name is the same text.
Rules rulesNamed(const std::string& name) {
  Rules rules;
  rules.ResizeRules(100);
  rules.working.RuleCount = 100;
  for (auto& rule : rules.working.rows()) rule.Name = name;
  return rules;
}

class RealFiles : public testing::Test {
 protected:
  std::string path() const { return utf8(folder_.filePath("Rules.ini")); }

  void write(const std::string& name) {
    Rules rules = rulesNamed(name);
    IniFile file(platform_, path());
    writeRules(file, rules);
  }

  /// The name of all rules, nothing where the file isn't whole.
  std::string read() {
    Rules rules;
    IniFile file(platform_, path());
    readRules(file, rules);
    if (rules.live.RuleCount != 100) return {};
    for (const Rule& rule : rules.live.rules()) {
      if (rule.Name != rules.live[1].Name) return {};
    }
    return rules.live[1].Name;
  }

  QTemporaryDir folder_;
  GmimeReader reader_{htmlToText};
  QtPlatform platform_{reader_};
};

TEST_F(RealFiles, OnAFullDiskTheOldRulesStay) {
  write("old");
  {
    const test::FullDisk disk(100);
    write("new");
  }
  EXPECT_EQ(read(), "old");
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList("Rules.ini")) << "nothing is left beside it";
  write("new");
  EXPECT_EQ(read(), "new");
}

TEST_F(RealFiles, AKillInTheMiddleLeavesRulesThatAreWhole) {
  write("old");
  for (int round = 0; round < 20; ++round) {
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
      for (;;) {  // one sign of life a write
        write("one");
        write("another");
        if (::write(pipe[1], "", 1) != 1) _exit(1);
      }
    }
    ::close(pipe[1]);
    char sign = 0;
    for (int i = 0; i <= round % 4; ++i) ASSERT_EQ(::read(pipe[0], &sign, 1), 1);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    ::close(pipe[0]);
    const std::string name = read();
    EXPECT_TRUE(name == "one" || name == "another") << round << ": " << name;
  }
}

TEST_F(RealFiles, WhatIsNoFileOrTooLargeIsNotRead) {
  EXPECT_FALSE(platform_.readFile(path()));
  EXPECT_FALSE(platform_.readFile(utf8(folder_.path())));
  QFile large(qt(path()));
  ASSERT_TRUE(large.open(QIODevice::WriteOnly));
  large.resize(16 * 1024 * 1024);
  EXPECT_EQ(platform_.readFile(path()).value().size(), 16U * 1024 * 1024);
  large.resize(16 * 1024 * 1024 + 1);
  EXPECT_FALSE(platform_.readFile(path()));
  IniFile(platform_, path()).KeySave("v", "s", "k");
  EXPECT_EQ(large.size(), 16 * 1024 * 1024 + 1) << "nor is it replaced";
}

}  // namespace
}  // namespace velmora
