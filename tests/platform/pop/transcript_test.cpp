#include <gtest/gtest.h>

#include <sstream>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using namespace std::string_literals;

/// Says the server's lines of a script, and holds the client to its own. A script has "S " before the lines of the
/// server, "C " before those of the client, and '|' between them.
class Reciter : public MemoryPeer {
 public:
  explicit Reciter(const std::string& script) {
    std::istringstream lines(script);
    for (std::string line; std::getline(lines, line, '|');) script_.push_back(line);
  }

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

  std::vector<std::string> script_;
  std::size_t next_ = 0;
};

const std::string refused = "S -ERR what?|";
const std::string usual = "S +OK|S USER|S .|";
const std::string pipelining = "S +OK|S Pipelining yes|S user|S .|";

// Lines of dots and blanks, and bytes that are none of a text, with line ends of their own.
const std::string message1 = "S +OK|S Subject: 1|S |S ..|S mid.|S ...|S . |S |S .|";
const std::string message2 = "S +OK|S a\n.unstuffed\n.\rx\n\rb\0\xfe|S .|"s;

const std::string utf8 = "S +OK|S utf8 user|S .|";

/// A pipelined login, and what is asked behind it.
const std::string together = "C USER user|C PASS  sec  ret |S +OK|S +OK welcome|C STAT|C LIST|C UIDL|";

const std::string greeting = "S +OK ready|C CAPA|";

/// Behind the answer to CAPA, up to STAT, with the answer to CAPA after the login.
std::string steps(const std::string& after) {
  return "C USER user|S +OK|C PASS  sec  ret |S +OK welcome|C CAPA|" + after + "C STAT|";
}

/// Up to STAT, with the answers to CAPA before and after.
std::string logIn(const std::string& before, const std::string& after) { return greeting + before + steps(after); }

struct Case {
  std::string name;
  std::string script;
  std::function<void(PopClient&)> act;
};

void fetch(PopClient& client) {
  client.Messages().FetchAll();
  EXPECT_EQ(client.Messages().Item(0).Mail.Body, "Subject: 1\r\n\r\n.\r\nmid.\r\n..\r\n \r\n\r\n");
  EXPECT_EQ(client.Messages().Item(0).Size, 32);
  EXPECT_EQ(client.Messages().Item(1).Mail.Body, "a\nunstuffed\n\rx\n\rb\0\xfe\r\n"s);
}

void deleteB(PopClient& client) {
  client.Messages().ListMessages();
  for (std::int16_t i = 0; i < client.Messages().Count(); ++i)
    client.Messages().Item(i).Deleted = client.Messages().Item(i).Uid == "b";
}

std::vector<Case> cases() {
  return {
      {"empty mailbox", logIn(refused, refused) + "S +OK 0 0|C QUIT|S +OK",
       [](PopClient& c) { c.Messages().FetchAll(); }},
      {"fetch",
       "S \r\n\t|" + logIn(usual, refused) +
           "S +OK 2 60|C LIST|S +OK|S +ok 4 40|S +ok 9 20|S .|C UIDL|S +ok \n4 a\n9 b\n.|C RETR 4|" + message1 +
           "S |C RETR 9|" + message2 + "S |C QUIT|S +OK bye",
       fetch},
      {"pipelined fetch",
       logIn(usual, pipelining) +
           "C LIST|C UIDL|S +OK 2 60|S +OK|S 1 40|S 2 20|S .|S +OK|S 1 a|S 2 b|S .|C RETR 1|C RETR 2|" + message1 +
           message2 + "C QUIT|S +OK bye",
       fetch},
      {"UTF8", greeting + utf8 + "C UTF8|S -ERR no|" + steps(refused) + "S +OK 0 0|C QUIT|S +OK",
       [](PopClient& c) { c.Messages().FetchAll(); }},
      {"nothing wanted of what was asked for ahead",
       greeting + "S +OK|S PIPELINING|S USER|S UTF8 other user|S .|C UTF8|C USER user|C PASS  sec  ret |"
                  "S +OK|S +OK|S +OK|C STAT|C LIST|C UIDL|S +OK 1 9|S +OK|S 1 9|S .|S -ERR none|C QUIT|S +OK",
       [](PopClient&) {}},
      {"delete",
       logIn(refused, refused) +
           "S +OK 3 60|C LIST|S -ERR no|C UIDL|S +OK|S 1 a|S 2 b|S 3 b|S .|C DELE 2|S +OK|C DELE 3|S +OK|C QUIT|"
           "S +OK bye",
       deleteB},
      {"pipelined delete",
       greeting + pipelining + together +
           "S +OK 3 60|S +OK|S 2 9|S 4 9|S 8 9|S .|S +OK|S 2 b|S 4 a|S 8 b|S .|C DELE 2|C DELE 8|"
           "S +OK|S +OK|C QUIT|S +OK bye",
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
      client->Password(" sec  ret ");
      client->Connect();
      c.act(*client);
      client->Disconnect();
      EXPECT_TRUE(reciter.isOver());
    }
  }
}

}  // namespace
}  // namespace velmora::test
