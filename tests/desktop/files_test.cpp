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

TEST_F(RealFiles, AKillInTheMiddleLeavesAFileThatIsWhole) {
  const std::string one(200'000, '1');
  const std::string other(200'000, '2');
  for (int round = 0; round < 40; ++round) {
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
      while (::write(pipe[1], "", 1) == 1) {  // one sign of life a write
        platform_.writeFile(path(), one);
        platform_.writeFile(path(), other);
      }
      _exit(1);
    }
    ::close(pipe[1]);
    char sign = 0;
    for (int i = 0; i <= 1 + round % 4; ++i) ASSERT_EQ(::read(pipe[0], &sign, 1), 1);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    ::close(pipe[0]);
    const auto found = platform_.readFile(path());
    ASSERT_TRUE(found == one || found == other) << round;
  }
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
}

}  // namespace
}  // namespace velmora
