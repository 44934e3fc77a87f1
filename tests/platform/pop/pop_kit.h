#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/failure.h"
#include "platform/mail_bounds.h"
#include "platform/pop/pop_client.h"
#include "support/memory_server.h"

namespace velmora::test {

/// Gives the message back as it is.
class PlainReader : public MailReader {
 public:
  std::function<void(const Pause&)> onRead;

  ReadMail read(std::string_view message, const DateTime& /*now*/, const Pause& pause) const override {
    if (onRead) onRead(pause);
    ReadMail mail;
    mail.Body = message;
    return mail;
  }
  std::optional<std::string> attachment(std::string_view /*message*/, std::size_t /*place*/,
                                        const Pause& /*pause*/) const override {
    return std::nullopt;
  }
  std::string fingerprint(std::string_view bytes) const override {
    return std::to_string(std::hash<std::string_view>()(bytes));
  }
};

/// Writes down what a client tells, and may act on it.
class Recorder : public IPopClientNotify {
 public:
  std::vector<std::pair<std::int32_t, std::int32_t>> progress;
  std::vector<std::string> received;  ///< identifiers
  std::function<void(PopClient&, const std::string&)> onEvent;

  void Connected(PopClient& owner) override { note(owner, "Connected"); }
  void Disconnected(PopClient& owner, std::int32_t /*code*/, const std::string& /*text*/) override {
    note(owner, "Disconnected");
  }
  void Done(PopClient& owner, std::int32_t code, const std::string& /*text*/) override {
    note(owner, "Done " + std::to_string(code));
  }
  void Progress(PopClient& owner, std::int32_t position, std::int32_t total) override {
    progress.emplace_back(position, total);
    note(owner, "Progress");
  }
  void Received(PopClient& owner, const PopMessage& message) override {
    received.push_back(message.Uid);
    note(owner, "Received");
  }
  void HostCertificate(PopClient& owner, const std::string& /*certificate*/, std::int32_t /*code*/,
                       const std::string& /*text*/) override {
    note(owner, "HostCertificate");
  }
  void StateChange(PopClient& owner, PopState /*oldState*/) override { note(owner, "StateChange"); }

 private:
  void note(PopClient& owner, const std::string& event) {
    if (onEvent) onEvent(owner, event);
  }
};

/// A client with a server in memory behind it.
struct Desk {
  MemoryServer server;
  PlainReader reader;
  ServerHabits habits;
  Recorder recorder;
  std::shared_ptr<PopClient> client = makeClient(server.line, server);

  std::shared_ptr<PopClient> makeClient(MemoryLine& line, MemoryPeer& peer, std::size_t room = mail_bounds::mailbox,
                                        const std::function<pop::LogLine()>& log = {}) {
    const auto make = [&] { return std::make_unique<MemoryTransport>(line, peer); };
    const auto now = [] { return DateTime{}; };
    auto made = std::make_shared<PopClient>(PopClient::Surroundings{make, reader, now, habits, room, log});
    made->HostName("mail.example");
    made->Login("user");
    made->Password("secret");
    made->Notification(&recorder);
    return made;
  }

  pop::ServerHabit& habit() { return habits["mail.example:110"]; }

  PopMessages& messages() const { return client->Messages(); }

  void holds(int count) {
    for (int i = 1; i <= count; ++i) {
      const std::string number = std::to_string(i);
      server.messages.push_back({"uid" + number, "Subject: " + number + "\r\n\r\n.Text of " + number + "\r\n"});
    }
  }

  /// What the client has of each message.
  template <class Field>
  std::vector<Field> all(Field PopMessage::*field) const {
    std::vector<Field> fields;
    for (std::int16_t i = 0; i < messages().Count(); ++i) fields.push_back(messages().Item(i).*field);
    return fields;
  }

  bool hasAllTexts() const {
    bool has = messages().Count() == std::ssize(server.messages);
    for (std::int16_t i = 0; has && i < messages().Count(); ++i)
      has = messages().Item(i).Mail.Body == server.messages[static_cast<std::size_t>(i)].text;
    return has;
  }
};

/// The number of the PopFailure that `call` throws, 0 where it throws none.
inline std::int32_t failureOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const PopFailure& failure) {
    return failure.number();
  }
  return 0;
}

}  // namespace velmora::test
