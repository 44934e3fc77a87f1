#pragma once

#include <QObject>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/mime/gmime_reader.h"
#include "platform/qt/services/qt_transport.h"
#include "platform/qt/widgets/bind.h"
#include "support/running_program.h"
#include "support/scripted_server.h"

namespace velmora::test {

/// Where an account finds its server.
struct Address {
  std::string host = "127.0.0.1";
  std::string port;
  Protection protection = Protection::None;
};

/// The whole program on real sockets, reading real messages, with its timers ticking. Time-outs last one second.
class NetworkedProgram : public RunningProgram {
 protected:
  NetworkedProgram() {
    platform.makeTransport = makeQtTransport;
    platform.reader = std::make_shared<GmimeReader>();
    option("ConnectTimeOut", "1");
    option("MessageSort", "0");
    bind(program.frmMain.tmrRetrieveMessage, timers_);
  }

  /// Adds an account whose server is `address`, and returns the script that bears the account's name.
  MemoryServer& addAccountAt(const std::string& name, const Address& address) {
    MemoryServer& script = addAccount(name);
    numbers_[name] = static_cast<std::int16_t>(numbers_.size() + 1);
    const auto number = std::to_string(numbers_[name]);
    set("Settings/AcntServer" + number, address.host);
    set("Settings/AcntPort" + number, address.port);
    set("Settings/AcntSecure" + number, address.protection == Protection::Tls ? "1" : "0");
    return script;
  }

  /// Adds an account with a server of its own, which holds the messages a, b and c.
  ScriptedServer& serve(const std::string& name, Protection protection = Protection::None) {
    MemoryServer& script = platform.servers[name];
    script.messages = {message("a"), message("b"), message("c")};
    auto& server = *servers_.emplace_back(std::make_unique<ScriptedServer>(script, protection));
    addAccountAt(name, {"127.0.0.1", std::to_string(server.port()), protection});
    return server;
  }

  Accounts::Row& account(const std::string& name) { return program.accounts[numbers_.at(name)]; }
  MailMessage& mail(const std::string& name, std::int16_t number) {
    return program.messages.at(numbers_.at(name), number);
  }
  std::string picture(const std::string& name) { return tabImage(numbers_.at(name)); }

  std::vector<std::string> subjects(const std::string& name) {
    std::vector<std::string> result;
    for (std::int16_t i = 1; i <= account(name).AcntMsgCount; ++i) result.push_back(mail(name, i).Subject);
    return result;
  }

  /// The dialogs that spoke of an account.
  std::vector<Question> dialogs(const std::string& name) const {
    std::vector<Question> result;
    for (const auto& question : platform.asked) {
      if (question.text.find("Account: " + name + "   ") != std::string::npos) result.push_back(question);
    }
    return result;
  }

 private:
  QObject timers_;
  std::map<std::string, std::int16_t> numbers_;
  std::vector<std::unique_ptr<ScriptedServer>> servers_;
};

}  // namespace velmora::test
