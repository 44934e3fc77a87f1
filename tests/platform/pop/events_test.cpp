#include <gmock/gmock.h>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

TEST(Events, ComeInOrder) {
  Desk desk;
  desk.server.line.certificate = {"CN=mail", 18, "self-signed"};
  desk.client->Security(3);
  desk.holds(1);
  desk.client->Connect();
  desk.messages().FetchAll();
  desk.client->Disconnect();
  EXPECT_THAT(desk.recorder.events, ElementsAre("StateChange 0", "HostCertificate CN=mail 18 self-signed",
                                                "StateChange 1", "StateChange 2", "Connected", "Done 0", "Done 0",
                                                "StateChange 3", "StateChange 4", "Disconnected 0", "Done 0"));
}

TEST(Events, TellOfAFailure) {
  Desk desk;
  desk.holds(1);
  desk.server.answers["RETR"] = MemoryServer::hangUp;
  desk.client->Connect();
  desk.recorder.events.clear();
  EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), pop_failure::connectionLost);
  EXPECT_THAT(desk.recorder.events, ElementsAre("StateChange 3", "Disconnected 30012", "Done 30012"));
}

TEST(Events, StopInsideAnEventEndsTheFetch) {
  for (const bool pipelining : {false, true}) {
    for (const std::string stopAt : {"Progress", "Received"}) {
      SCOPED_TRACE(stopAt);
      Desk desk;
      desk.server.pipelining = pipelining;
      desk.holds(3);
      desk.recorder.onEvent = [&](PopClient& owner, const std::string& event) {
        if (event != stopAt || &owner != desk.client.get()) return;
        const std::weak_ptr<PopClient> old = desk.client;
        desk.client->Disconnect();
        desk.client = desk.makeClient(desk.server);
        EXPECT_FALSE(old.expired());
      };
      const std::weak_ptr<PopClient> old = desk.client;
      desk.client->Connect();
      EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), pop_failure::connectionLost);
      EXPECT_TRUE(old.expired());
      EXPECT_LE(desk.recorder.received.size(), 1U);
      EXPECT_FALSE(desk.server.line.open);
      EXPECT_THAT(desk.server.commands, Not(Contains("QUIT")));
      EXPECT_THAT(desk.habits.oneByOne, IsEmpty());
      EXPECT_EQ(desk.client->LastError(), 0);
    }
  }
}

TEST(Events, StopInTheLastProgressCountsToo) {
  Desk desk;
  desk.holds(1);
  desk.recorder.onEvent = [&](PopClient& owner, const std::string& event) {
    if (event == "Progress" && desk.recorder.received.size() == 1) owner.Disconnect();
  };
  desk.client->Connect();
  EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), pop_failure::connectionLost);
}

TEST(Events, DisconnectInsideAnyEventOfConnectIsSafe) {
  Desk counting;
  counting.client->Security(3);
  counting.client->Connect();
  for (std::size_t stopAt = 1; stopAt < counting.recorder.events.size(); ++stopAt) {
    Desk desk;
    desk.client->Security(3);
    desk.recorder.onEvent = [&](PopClient& owner, const std::string&) {
      if (desk.recorder.events.size() == stopAt) owner.Disconnect();
    };
    EXPECT_EQ(failureOf([&] { desk.client->Connect(); }), pop_failure::closedWhileLoggingIn) << stopAt;
    EXPECT_FALSE(desk.server.line.open);
  }
}

TEST(Events, DisconnectInsideAnyWaitIsSafe) {
  bool ranThrough = false;
  for (int stopAt = 1; !ranThrough; ++stopAt) {
    Desk desk;
    desk.holds(2);
    int waits = 0;
    desk.server.line.onReceive = [&] {
      if (++waits == stopAt) desk.client->Disconnect();
    };
    const std::int32_t failure = failureOf([&] {
      desk.client->Connect();
      desk.messages().FetchAll();
    });
    ranThrough = waits < stopAt;
    if (ranThrough) break;
    EXPECT_TRUE(failure == pop_failure::closedWhileLoggingIn || failure == pop_failure::connectionLost) << stopAt;
    EXPECT_FALSE(desk.server.line.open);
  }
}

TEST(Events, DisconnectInsideTransportConnectIsSafe) {
  Desk desk;
  desk.server.line.onConnect = [&] { desk.client->Disconnect(); };
  EXPECT_EQ(failureOf([&] { desk.client->Connect(); }), pop_failure::closedWhileLoggingIn);
}

TEST(Events, DisconnectInsideDisconnectEndsIt) {
  for (const bool deleting : {false, true}) {
    Desk desk;
    desk.holds(1);
    desk.client->Connect();
    desk.messages().Item(0).Deleted = deleting;
    desk.server.line.onReceive = [&] { desk.client->Disconnect(); };
    EXPECT_EQ(failureOf([&] { desk.client->Disconnect(); }), deleting ? pop_failure::connectionLost : 0);
    EXPECT_FALSE(desk.server.line.open);
  }
}

TEST(Events, BlockingCallsInsideOneAreRefused) {
  Desk desk;
  desk.holds(1);
  int refused = 0;
  desk.recorder.onEvent = [&](PopClient& owner, const std::string& event) {
    if (event == "Done 0") return;
    EXPECT_THROW(owner.Connect(), RunTimeFailure);
    EXPECT_THROW(owner.Messages().FetchAll(), RunTimeFailure);
    EXPECT_THROW(owner.Messages().ListMessages(), RunTimeFailure);
    ++refused;
  };
  desk.client->Connect();
  desk.messages().FetchAll();
  EXPECT_GT(refused, 4);
  EXPECT_EQ(desk.texts(), desk.serverTexts());
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

TEST(Events, ReceiverMayGoAtAnyTime) {
  Desk desk;
  desk.holds(2);
  desk.recorder.onEvent = [](PopClient& owner, const std::string&) { owner.Notification(nullptr); };
  desk.client->Connect();
  desk.messages().FetchAll();
  EXPECT_THAT(desk.recorder.events, ElementsAre("StateChange 0"));
}

TEST(Events, LastErrorLastsUntilANewConnectionIsDescribedOrMade) {
  const std::vector<std::function<void(PopClient&)>> resets = {
      [](PopClient& c) { c.HostName("x"); }, [](PopClient& c) { c.Port(110); },  [](PopClient& c) { c.Login("x"); },
      [](PopClient& c) { c.Password("x"); }, [](PopClient& c) { c.Timeout(1); }, [](PopClient& c) { c.Security(0); },
  };
  for (const auto& reset : resets) {
    Desk desk;
    desk.client->Password("wrong");
    EXPECT_EQ(failureOf([&] { desk.client->Connect(); }), pop_failure::loginRefused);
    desk.client->Disconnect();
    EXPECT_EQ(desk.client->LastError(), pop_failure::loginRefused);
    reset(*desk.client);
    EXPECT_EQ(desk.client->LastError(), 0);
    EXPECT_EQ(desk.client->ErrorText(), "");
  }
}

TEST(Events, ItemsStayReadableUntilTheNextConnect) {
  Desk desk;
  desk.holds(2);
  desk.client->Connect();
  desk.messages().FetchAll();
  desk.client->Disconnect();
  EXPECT_EQ(desk.texts(), desk.serverTexts());
  desk.server.users.clear();
  EXPECT_EQ(failureOf([&] { desk.client->Connect(); }), pop_failure::loginRefused);
  EXPECT_EQ(desk.messages().Count(), 0);
}

TEST(Events, NothingIsFetchedWithoutAConnection) {
  Desk desk;
  desk.holds(2);
  EXPECT_EQ(failureOf([&] { desk.messages().FetchAll(); }), pop_failure::connectionLost);
  EXPECT_EQ(failureOf([&] { desk.messages().ListMessages(); }), pop_failure::connectionLost);
  desk.client->Disconnect();
  EXPECT_EQ(desk.server.line.connections, 0);
}

TEST(Events, OnlyTheOfferedModesAreTaken) {
  Desk desk;
  EXPECT_NO_THROW(desk.client->Blocking(true));
  EXPECT_NO_THROW(desk.client->AuxiliaryMode(0));
  EXPECT_THROW(desk.client->Blocking(false), RunTimeFailure);
  EXPECT_THROW(desk.client->AuxiliaryMode(1), RunTimeFailure);
}

}  // namespace
}  // namespace velmora::test
