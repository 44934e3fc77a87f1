#include <gtest/gtest.h>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

/// Lines of a dialogue as they go over the line: "S " before the server's, "C " before the client's.
using Transcript = std::vector<std::string>;

/// Says the server's lines, and holds the client to its own.
class Reciter : public MemoryPeer {
 public:
  explicit Reciter(const Transcript& script) : script_(script) {}

  std::string opened() override { return speak(); }
  std::string heard(std::string_view bytes) override {
    while (!bytes.empty()) {
      const std::size_t end = bytes.find("\r\n");
      EXPECT_EQ("C " + std::string(bytes.substr(0, end)), isOver() ? "" : script_[next_++]);
      bytes.remove_prefix(end + 2);
    }
    return speak();
  }
  bool hangsUp() const override { return isOver(); }
  bool isOver() const { return next_ == script_.size(); }

 private:
  std::string speak() {
    std::string said;
    while (!isOver() && script_[next_].starts_with("S ")) said += script_[next_++].substr(2) + "\r\n";
    return said;
  }

  const Transcript& script_;
  std::size_t next_ = 0;
};

const Transcript logInPlain = {"S +OK ready",   "C CAPA",        "S -ERR what?", "C USER user",  "S +OK",
                               "C PASS secret", "S +OK welcome", "C CAPA",       "S -ERR what?", "C STAT"};
const Transcript logInPipelining = {"S +OK ready", "C CAPA",       "S +OK",         "S USER",        "S .",
                                    "C USER user", "S +OK",        "C PASS secret", "S +OK welcome", "C CAPA",
                                    "S +OK",       "S Pipelining", "S .",           "C STAT"};

Transcript operator+(Transcript first, const Transcript& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

struct Case {
  std::string name;
  Transcript script;
  std::function<void(PopClient&)> act;
};

void fetch(PopClient& client) {
  client.Messages().FetchAll();
  EXPECT_EQ(client.Messages().Item(0).Mail.Body, "Subject: 1\r\n\r\n.\r\n");
  EXPECT_EQ(client.Messages().Item(1).Mail.Body, "Subject: 2\r\n");
}

void deleteB(PopClient& client) {
  client.Messages().ListMessages();
  for (std::int16_t i = 0; i < client.Messages().Count(); ++i)
    client.Messages().Item(i).Deleted = client.Messages().Item(i).Uid == "b";
}

std::vector<Case> cases() {
  return {
      {"nothing asked", logInPlain + Transcript{"S +OK 0 0", "C QUIT", "S +OK"}, [](PopClient&) {}},
      {"empty mailbox", logInPlain + Transcript{"S +OK 0 0", "C QUIT", "S +OK"},
       [](PopClient& c) { c.Messages().FetchAll(); }},
      {"fetch", logInPlain + Transcript{"S +OK 2 60", "C LIST",       "S +OK", "S 1 40", "S 2 20",   "S .",
                                        "C UIDL",     "S +OK",        "S 1 a", "S 2 b",  "S .",      "C RETR 1",
                                        "S +OK",      "S Subject: 1", "S ",    "S ..",   "S .",      "C RETR 2",
                                        "S +OK",      "S Subject: 2", "S .",   "C QUIT", "S +OK bye"},
       fetch},
      {"pipelined fetch",
       logInPipelining + Transcript{"S +OK 2 60", "C LIST",       "C UIDL",       "S +OK",  "S 1 40",   "S 2 20",
                                    "S .",        "S +OK",        "S 1 a",        "S 2 b",  "S .",      "C RETR 1",
                                    "C RETR 2",   "S +OK",        "S Subject: 1", "S ",     "S ..",     "S .",
                                    "S +OK",      "S Subject: 2", "S .",          "C QUIT", "S +OK bye"},
       fetch},
      {"delete",
       logInPlain + Transcript{"S +OK 3 60", "C LIST", "S -ERR no", "C UIDL", "S +OK", "S 1 a", "S 2 b", "S 3 b", "S .",
                               "C DELE 2", "S +OK", "C DELE 3", "S +OK", "C QUIT", "S +OK bye"},
       deleteB},
      {"pipelined delete",
       logInPipelining + Transcript{"S +OK 3 60", "C LIST", "C UIDL", "S +OK", "S .", "S +OK", "S 1 b", "S 2 a",
                                    "S 3 b", "S .", "C DELE 1", "C DELE 3", "S +OK", "S +OK", "C QUIT", "S +OK bye"},
       deleteB},
  };
}

TEST(Transcript, IsTheSameHoweverTheBytesArrive) {
  for (const Case& c : cases()) {
    for (std::size_t chunk = 1; chunk < 300; ++chunk) {
      SCOPED_TRACE(c.name + " in chunks of " + std::to_string(chunk));
      Reciter reciter(c.script);
      MemoryLine line;
      line.chunk = chunk;
      Desk desk;
      const auto client = desk.makeClient(line, reciter);
      client->Connect();
      c.act(*client);
      client->Disconnect();
      EXPECT_TRUE(reciter.isOver());
    }
  }
}

}  // namespace
}  // namespace velmora::test
