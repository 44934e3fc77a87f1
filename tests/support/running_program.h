#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/program.h"
#include "app/start_up.h"
#include "checking/decisions/failure_texts.h"
#include "support/test_platform.h"

namespace velmora::test {

/// The whole program but for the desktop, on accounts whose servers live in memory.
class RunningProgram : public testing::Test {
 protected:
  /// Adds an account to the settings tree, and its server, which bears the account's name.
  MemoryServer& addAccount(const std::string& name, bool enabled = true) {
    const auto number = std::to_string(++accounts_);
    set("Settings/AcntNum", number);
    set("Settings/FirstUse", "1");
    set("Settings/AcntEnabled" + number, enabled ? "1" : "0");
    set("Settings/AcntName" + number, name);
    set("Settings/AcntServer" + number, name);
    set("Settings/AcntLoginID" + number, "user");
    set("Settings/AcntPassword" + number, "secret");
    return platform.servers[name];
  }

  void option(const std::string& key, const std::string& value) { set("Settings\\Options/" + key, value); }
  void set(const std::string& path, const std::string& value) { platform.tree.values[path] = value; }

  void start() { ASSERT_TRUE(Main(program)); }

  std::string panel(int number) { return program.frmMain.StatusBar.Panels(number).Text; }
  std::string tab(int number) { return program.frmMain.TabStripEmail.Tabs(number).Caption; }
  std::string tabImage(int number) { return program.frmMain.TabStripEmail.Tabs(number).Image; }
  void checkAll() { program.frmMain.tbrButtons[checkAllBar]["CheckAll"].click(); }
  void check() { program.frmMain.tbrEmail["EmailCheck"].click(); }
  void stop() { program.frmMain.tbrButtons[stopRetrievalBar]["StopRetrieval"].click(); }

  void clickRow(std::int32_t row) {
    ListView& list = program.frmMain.lvwEmail;
    list.UserSelected({row}, row);
    list.ItemClick();
    list.Click();
  }

  /// The identifiers of the messages in an account's mailbox.
  std::vector<std::string> onServer(const std::string& name) {
    std::vector<std::string> result;
    for (const auto& each : platform.servers[name].messages) result.push_back(each.uid);
    return result;
  }

  /// The titles of the dialogs shown so far.
  std::vector<std::string> titles() const {
    std::vector<std::string> result;
    for (const auto& question : platform.asked) result.push_back(question.title);
    return result;
  }

  TestPlatform platform;
  Program program{platform};

 private:
  int accounts_ = 0;
};

inline MemoryMessage message(const std::string& uid, const std::string& headers = "From: a@example.org\r\n") {
  return {uid, headers + "Subject: " + uid + "\r\n\r\nText of " + uid + "\r\n"};
}

}  // namespace velmora::test
