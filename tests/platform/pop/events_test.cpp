#include <gmock/gmock.h>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::Not;

/// Connects, fetches, deletes one of two messages, and stops at a chance to do so. False where there are fewer.
bool stopsAt(int chance) {
  Desk desk;
  desk.client->Security(3);
  desk.holds(2);
  int chances = 0;
  int stage = 0;
  int stoppedIn = 0;
  const auto meet = [&] {
    if (++chances != chance) return;
    stoppedIn = stage;
    desk.client->Disconnect();
  };
  desk.server.line.onConnect = desk.server.line.onReceive = meet;
  desk.recorder.onEvent = [&](PopClient&, const std::string& event) {
    if (event != "Done 0") meet();
  };
  const std::int32_t failure = failureOf([&] {
    desk.client->Connect();
    ++stage;
    desk.messages().FetchAll();
    ++stage;
    desk.messages().Item(0).Deleted = true;
    desk.client->Disconnect();
  });
  EXPECT_FALSE(desk.server.line.open);
  if (chances < chance) return false;
  const std::int32_t expected = stoppedIn == 0 ? pop_failure::closedWhileLoggingIn : pop_failure::connectionLost;
  const bool deleted = stoppedIn == 2 && failure == 0 && desk.server.messages.size() == 1;
  EXPECT_TRUE(failure == expected || deleted) << failure;
  return true;
}

TEST(Events, DisconnectIsSafeInsideAllOfThemAndInsideEachWait) {
  int chance = 1;
  while (stopsAt(chance) && !HasFailure()) ++chance;
  EXPECT_GT(chance, 20) << "or it failed at this one";
}

TEST(Events, ClientMayBeReplacedInsideOne) {
  for (const bool pipelining : {false, true}) {
    for (const std::string stopAt : {"Progress", "Received"}) {
      SCOPED_TRACE(stopAt);
      Desk desk;
      desk.server.pipelining = pipelining;
      desk.holds(3);
      const std::weak_ptr<PopClient> old = desk.client;
      desk.recorder.onEvent = [&](PopClient& owner, const std::string& event) {
        if (event != stopAt || &owner != desk.client.get()) return;
        desk.client->Disconnect();
        desk.client = desk.makeClient(desk.server.line, desk.server);
        EXPECT_FALSE(old.expired());
      };
      desk.client->Connect();
      EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), pop_failure::connectionLost);
      EXPECT_TRUE(old.expired());
      EXPECT_LE(desk.recorder.received.size(), 1U);
      EXPECT_FALSE(desk.server.line.open);
      EXPECT_THAT(desk.server.commands, Not(Contains("QUIT")));
      EXPECT_FALSE(desk.habit().oneByOne);
      EXPECT_EQ(desk.client->LastError(), 0);
    }
  }
}

TEST(Events, ComeWhileMessagesAreRead) {
  const std::vector<std::function<void(Desk&)>> stops = {
      {}, [](Desk& d) { d.client->Disconnect(); }, [](Desk& d) { d.server.line.ending = true; }};
  for (const auto& stop : stops) {
    for (const int messages : {3, 500}) {  // hard ones, or many that are all there
      Desk desk;
      MemoryLine& line = desk.server.line;
      const auto work = [&] { line.clock += Milliseconds(5); };
      desk.reader.onRead = [&](const Pause& pause) {
        work();
        for (int i = 0; messages == 3 && i < 10'000; ++i) pause(), work();
      };
      desk.holds(messages);
      desk.server.pipelining = true;
      desk.client->Connect();
      if (messages == 3) line.chunk = 20;
      Milliseconds turned = line.clock;
      int turns = 0;
      line.onTurn = [&] {
        EXPECT_LE(line.clock - turned, Milliseconds(60));
        turned = line.clock;
        if (++turns == 10 && stop) stop(desk);
      };
      line.onReceive = [&] { turned = line.clock += std::chrono::minutes(5); };  // a slow handler is no silence
      EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), stop ? pop_failure::connectionLost : 0);
      EXPECT_TRUE(stop ? turns == 10 && line.clock == turned : turns > 10 && desk.hasAllTexts());
      EXPECT_EQ(line.open, !stop);
      EXPECT_GE(std::ssize(desk.recorder.progress) + 1, turns) << "so that a stop is met";
      EXPECT_FALSE(desk.habit().oneByOne);
    }
  }
}

TEST(Events, FailureOfAHandlerPassesThroughAndTheConnectionCanStillBeEnded) {
  Desk desk;
  desk.holds(2);
  desk.recorder.onEvent = [](PopClient&, const std::string& event) {
    if (event == "Received") throw overflowFailure();
  };
  desk.client->Connect();
  EXPECT_THROW(desk.messages().FetchAll(), RunTimeFailure);
  EXPECT_EQ(desk.client->LastError(), 0);
  desk.client->Disconnect();
  EXPECT_EQ(desk.server.commands.back(), "QUIT");
}

TEST(Client, CountsNoFurtherThanTheProgram) {
  Desk huge;
  huge.server.answers["STAT"] = "+OK 32768 1\r\n";
  huge.client->Connect();
  EXPECT_THROW(huge.messages().Count(), RunTimeFailure);
  EXPECT_THROW(huge.messages().FetchAll(), RunTimeFailure);
  EXPECT_THROW(huge.messages().ListMessages(), RunTimeFailure);
}

TEST(Client, KeepsItemsAndFailuresUntilTheNextConnection) {
  Desk desk;
  desk.holds(2);
  EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), pop_failure::connectionLost);
  EXPECT_EQ(failureOf([&] { desk.messages().ListMessages(); }), pop_failure::connectionLost);
  EXPECT_EQ(desk.server.line.connections, 0);
  desk.client->Connect();
  EXPECT_EQ(desk.client->LastError(), 0);
  desk.messages().FetchAll();
  desk.client->Disconnect();
  EXPECT_TRUE(desk.hasAllTexts());
  desk.client->Password("wrong");
  EXPECT_EQ(failureOf([&] { desk.client->Connect(); }), pop_failure::loginRefused);
  EXPECT_EQ(desk.messages().Count(), 0);
  desk.client->Disconnect();
  EXPECT_EQ(desk.client->LastError(), pop_failure::loginRefused);
  desk.client->Password("secret");
  EXPECT_EQ(desk.client->LastError(), 0);
  EXPECT_EQ(desk.client->ErrorText(), "");
}

}  // namespace
}  // namespace velmora::test
