#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/failure.h"
#include "platform/pop/pop_client.h"
#include "support/memory_server.h"

namespace velmora::test {

/// Gives the message back as it is.
class PlainReader : public MailReader {
 public:
  ReadMail read(std::string_view message, const DateTime& now) const override {
    ReadMail mail;
    mail.Body = message;
    mail.Date = now;
    return mail;
  }
  std::string fingerprint(std::string_view bytes) const override {
    return std::to_string(std::hash<std::string_view>()(bytes));
  }
};

/// Writes down what a client tells, and may act on it.
class Recorder : public IPopClientNotify {
 public:
  std::vector<std::string> events;
  std::vector<std::pair<std::int32_t, std::int32_t>> progress;
  std::vector<Milliseconds> progressTimes;
  std::vector<std::string> received;  ///< identifiers
  std::function<void(PopClient&, const std::string&)> onEvent;
  const MemoryLine* line = nullptr;

  void Connected(PopClient& owner) override { note(owner, "Connected"); }
  void Disconnected(PopClient& owner, std::int32_t code, const std::string& /*text*/) override {
    note(owner, "Disconnected " + std::to_string(code));
  }
  void Done(PopClient& owner, std::int32_t code, const std::string& /*text*/) override {
    note(owner, "Done " + std::to_string(code));
  }
  void Progress(PopClient& owner, std::int32_t position, std::int32_t total) override {
    progress.emplace_back(position, total);
    if (line != nullptr) progressTimes.push_back(line->clock);
    if (onEvent) onEvent(owner, "Progress");
  }
  void Received(PopClient& owner, const PopMessage& message) override {
    received.push_back(message.Uid);
    if (onEvent) onEvent(owner, "Received");
  }
  void HostCertificate(PopClient& owner, const std::string& certificate, std::int32_t code,
                       const std::string& text) override {
    note(owner, "HostCertificate " + certificate + " " + std::to_string(code) + " " + text);
  }
  void StateChange(PopClient& owner, PopState oldState) override {
    note(owner, "StateChange " + std::to_string(static_cast<int>(oldState)));
  }

 private:
  void note(PopClient& owner, const std::string& event) {
    events.push_back(event);
    if (onEvent) onEvent(owner, event);
  }
};

/// A client with a server in memory behind it.
struct Desk {
  MemoryServer server;
  PlainReader reader;
  ServerHabits habits;
  Recorder recorder;
  std::shared_ptr<PopClient> client = makeClient(server);

  std::shared_ptr<PopClient> makeClient(MemoryServer& behind) { return makeClient(behind.line, behind); }

  std::shared_ptr<PopClient> makeClient(MemoryLine& line, MemoryPeer& peer) {
    const auto make = [&] { return std::make_unique<MemoryTransport>(line, peer); };
    auto made = std::make_shared<PopClient>(
        PopClient::Surroundings{make, reader, [] { return DateTime{2026, 11, 15, 16, 22, 5}; }, habits});
    made->HostName("mail.example");
    made->Port(110);
    made->Login("user");
    made->Password("secret");
    made->Timeout(10);
    made->Security(0);
    made->Notification(&recorder);
    recorder.line = &line;
    return made;
  }

  PopMessages& messages() const { return client->Messages(); }

  void holds(int count) {
    for (int i = 1; i <= count; ++i) {
      const std::string number = std::to_string(i);
      server.messages.push_back({"uid" + number, "Subject: " + number + "\r\n\r\n.Text of " + number + "\r\n"});
    }
  }

  /// The bodies fetched, whole.
  std::vector<std::string> texts() const {
    std::vector<std::string> texts;
    for (std::int16_t i = 0; i < messages().Count(); ++i) texts.push_back(messages().Item(i).Mail.Body);
    return texts;
  }

  std::vector<std::string> serverTexts() const {
    std::vector<std::string> texts;
    for (const MemoryMessage& message : server.messages) texts.push_back(message.text);
    return texts;
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
