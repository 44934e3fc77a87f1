#include <gmock/gmock.h>

#include <algorithm>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::SizeIs;
using namespace std::string_literals;

TEST(LogIn, NeverSendsWhatWouldInjectCommands) {
  for (const std::string& bad : {"a\r\nDELE 1"s, "a\n"s, "a\rb"s, "a\0b"s}) {
    for (const bool inLogin : {true, false}) {
      Desk desk;
      inLogin ? desk.client->Login(bad) : desk.client->Password(bad);
      EXPECT_EQ(failureOf([&] { desk.client->Connect(); }), pop_failure::loginRefused);
      EXPECT_EQ(desk.server.line.connections, 0);
    }
  }
}

TEST(LogIn, ConnectsWithoutCapaWhereItsAnswerIsNone) {
  Desk desk;
  desk.server.answers["CAPA"] = "?";
  for (const int connections : {2, 4, 5}) {
    desk.client->Connect();
    EXPECT_EQ(desk.server.line.connections, connections) << "twice in succession is no accident";
  }
}

TEST(LogIn, AsksOnceInARunWhatAServerOffers) {
  for (const bool pipelining : {false, true}) {
    Desk desk;
    desk.server.pipelining = pipelining;
    desk.holds(3);
    const auto asked = [&] { return std::ranges::count(desk.server.commands, "CAPA"); };
    const auto fetch = [&] { desk.client->Connect(), desk.messages().FetchAll(), desk.client->Disconnect(); };
    fetch();
    const auto first = asked();
    fetch();
    EXPECT_EQ(asked(), first);
    EXPECT_TRUE(desk.hasAllTexts());
    desk.client->Password("wrong");
    EXPECT_EQ(failureOf(fetch), pop_failure::loginRefused);
    desk.client->Password("secret");
    fetch();
    EXPECT_EQ(asked(), 2 * first) << "a login that fails may have failed for what is no longer true";
  }
}

using Answers = std::map<std::string, std::string>;

/// A server that announces UTF8 for user names, too, and answers each connection in its own way, the last one's on.
struct ChangingServer {
  Desk desk;
  std::vector<Answers> answers;

  ChangingServer(bool pipelining, std::vector<Answers> all) : answers(std::move(all)) {
    desk.server.pipelining = pipelining;
    desk.server.capabilities.emplace_back("UTF8 USER");
    desk.server.line.onConnect = [this] {
      const auto connection = static_cast<std::size_t>(desk.server.line.connections);
      desk.server.answers = answers[std::min(connection, answers.size()) - 1];
      desk.server.answers.emplace("UTF8", "+OK\r\n");
    };
  }

  std::int32_t connect() const {
    return failureOf([this] { desk.client->Connect(); });
  }

  auto heard(const std::string& command) const { return std::ranges::count(desk.server.commands, command); }
};

const Answers refuses = {{"PASS", "-ERR no\r\n"}};

TEST(LogIn, LeavesOutWhatMayHaveMadeItFail) {
  struct Case {
    std::string name;
    bool pipelining;
    std::vector<Answers> answers;
    std::int32_t failure;
    int connections, passwords;
    std::int32_t next = 0;  ///< what another try comes to
    bool oneByOne = false;
  };
  const Answers hatesUtf8 = {{"UTF8", MemoryServer::hangUp}};
  const Answers hangsUp = {{"PASS", MemoryServer::hangUp}};
  const Answers isSilent = {{"PASS", MemoryServer::silence}};
  const Answers isSure = {{"PASS", "-ERR [AUTH] no\r\n"}};
  const Answers isLocked = {{"PASS", "-ERR [IN-USE] no\r\n"}};
  const Answers resets = {{"CAPA", MemoryServer::hangUp}, {"USER", MemoryServer::hangUp}};
  const Answers breaksBehind = {{"STAT", MemoryServer::hangUp}};
  const auto closed = pop_failure::closedWhileLoggingIn;
  const auto refused = pop_failure::loginRefused;
  const std::vector<Case> cases = {
      {"stands all", true, {{}}, 0, 1, 1},
      {"refuses UTF8 itself", true, {{{"UTF8", "-ERR what?\r\n"}}}, 0, 1, 1},
      {"refuses behind no UTF8", true, {{{"UTF8", "-ERR what?\r\n"}, {"PASS", "-ERR no\r\n"}}}, refused, 1, 1, refused},
      {"hangs up on the two together", true, {hangsUp, {}}, 0, 2, 2, 0, true},
      {"is silent on the two together", true, {isSilent, {}}, 0, 2, 2, 0, true},
      {"hangs up on the batch", true, {breaksBehind, {}}, 0, 2, 2, 0, true},
      {"is locked by the batch", true, {breaksBehind, isLocked, {}}, closed, 2, 2, 0, true},
      {"hangs up on UTF8", false, {hatesUtf8}, 0, 2, 1},
      {"hangs up on UTF8, pipelined", true, {hatesUtf8}, 0, 2, 1, 0, true},
      {"refuses behind UTF8", true, {refuses, {}}, 0, 2, 2},
      {"refuses for sure", true, {isSure}, refused, 1, 1, refused},
      {"refuses always", true, {refuses}, refused, 2, 2, refused},
      {"hangs up always", true, {hangsUp}, closed, 2, 2, closed, true},
      {"resets the second one", true, {hangsUp, resets, {}}, closed, 2, 1, 0, true},
      {"is locked", true, {isLocked}, pop_failure::mailboxInUse, 1, 1, pop_failure::mailboxInUse},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    ChangingServer changing(c.pipelining, c.answers);
    EXPECT_EQ(changing.connect(), c.failure);
    EXPECT_EQ(changing.desk.server.line.connections, c.connections);
    EXPECT_EQ(changing.heard("PASS secret"), c.passwords);
    EXPECT_EQ(changing.desk.habit().oneByOne, c.oneByOne);
    EXPECT_EQ(changing.connect(), c.next);
  }
}

TEST(LogIn, RisksFewRefusalsAndFindsTheWayThatGoesThrough) {
  ChangingServer changing(true, {refuses});
  for (const auto& [password, passwords] :
       {std::pair("wrong", 2), {"wrong", 3}, {"wrong", 4}, {"other", 2}, {"wrong", 5}}) {
    changing.desk.client->Password(password);
    EXPECT_EQ(changing.connect(), pop_failure::loginRefused);
    EXPECT_EQ(changing.heard(std::string("PASS ") + password), passwords) << "one a check";
  }
  EXPECT_EQ(changing.heard("UTF8"), 4) << "and each way in its turn";

  // Once it is in order it lets nobody in behind UTF8.
  ChangingServer unable(false, {refuses, refuses, {}});
  unable.desk.server.line.onReceive = [&] {
    auto& server = unable.desk.server;
    if (!server.commands.empty() && server.commands.back() == "UTF8")
      server.answers.insert(refuses.begin(), refuses.end());
  };
  std::vector<std::pair<std::int32_t, std::ptrdiff_t>> seen;
  for (int check = 1; check <= 6; ++check) {
    const auto before = unable.heard("PASS secret");
    const std::int32_t failure = unable.connect();
    seen.emplace_back(failure, unable.heard("PASS secret") - before);
  }
  const auto refused = pop_failure::loginRefused;
  EXPECT_THAT(seen, ElementsAre(Pair(refused, 2), Pair(refused, 1), Pair(0, 1), Pair(0, 2), Pair(0, 2), Pair(0, 1)));
}

TEST(LogIn, SendsNoPasswordBehindAUserNameThatMayBeRefused) {
  Desk desk;
  desk.server.pipelining = true;
  desk.server.capabilities = {"STLS"};
  desk.server.answers["USER"] = "-ERR plaintext is disabled\r\n";
  EXPECT_EQ(failureOf([&] { desk.client->Connect(); }), pop_failure::loginMethodNotOffered);
  EXPECT_THAT(desk.server.commands, Not(Contains("PASS secret")));
}

TEST(Quit, IsHeardBehindAListingThatNobodyWants) {
  Desk desk;
  desk.server.pipelining = true;
  desk.holds(2);
  for (const bool ahead : {true, false}) {
    desk.server.commands.clear();
    desk.client->ListAhead(ahead);
    desk.client->Connect();
    desk.client->Disconnect();
    EXPECT_EQ(std::ranges::count(desk.server.commands, "UIDL"), ahead ? 1 : 0);
    EXPECT_EQ(desk.server.commands.back(), "QUIT");
  }
  desk.client->ListAhead(true);
  desk.client->Connect();
  EXPECT_THROW(desk.messages().FetchOriginal(0, [](std::string_view) { return true; }), RunTimeFailure)
      << "its answer would be taken for another's";
}

TEST(Quit, WithoutDeletionsNeverFailsAndIsShort) {
  for (const std::string& answer : {MemoryServer::silence, MemoryServer::hangUp, "-ERR no\r\n"s, "?\r\n"s}) {
    Desk desk;
    desk.server.answers["QUIT"] = answer;
    desk.holds(1);
    desk.client->Connect();
    const Milliseconds before = desk.server.line.clock;
    EXPECT_EQ(failureOf([&] { desk.client->Disconnect(); }), 0);
    EXPECT_LE(desk.server.line.clock - before, std::chrono::seconds(3));
    EXPECT_FALSE(desk.server.line.open);
    EXPECT_EQ(desk.client->LastError(), 0);
  }
}

TEST(Quit, SaysNoGoodByeInTheMiddleOfAnAnswer) {
  Desk desk;
  desk.server.pipelining = true;
  desk.server.answers["RETR 1"] = "-ERR not this\r\n";
  desk.holds(3);
  desk.client->Connect();
  desk.messages().Item(1).Deleted = true;
  EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), pop_failure::messageRefused);
  EXPECT_EQ(failureOf([&] { desk.client->Disconnect(); }), pop_failure::connectionLost);
  EXPECT_THAT(desk.server.commands, Not(Contains("QUIT")));
  EXPECT_THAT(desk.server.messages, SizeIs(3));
  EXPECT_FALSE(desk.server.line.open);
}

}  // namespace
}  // namespace velmora::test
