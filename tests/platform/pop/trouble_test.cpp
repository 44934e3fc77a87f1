#include <gmock/gmock.h>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

/// A whole session. Returns the number of its failure.
std::int32_t checkMail(Desk& desk) {
  return failureOf([&] {
    desk.client->Connect();
    desk.messages().FetchAll();
    desk.client->Disconnect();
  });
}

using Fault = std::optional<std::size_t> MemoryLine::*;

struct Case {
  Fault fault;
  bool pipelining;
  std::size_t chunk;
};

std::vector<Case> cases() {
  std::vector<Case> all;
  for (const Fault fault : {&MemoryLine::dropAfter, &MemoryLine::silentAfter})
    for (const bool pipelining : {false, true})
      for (const std::size_t chunk : {1U, 5U, 100'000U}) all.push_back({fault, pipelining, chunk});
  return all;
}

bool isDocumented(std::int32_t failure, Fault fault) {
  if (fault == &MemoryLine::dropAfter)
    return failure == pop_failure::noGreeting || failure == pop_failure::closedWhileLoggingIn ||
           failure == pop_failure::connectionLost;
  return failure == pop_failure::noGreeting || failure == pop_failure::timedOut ||
         failure == pop_failure::silentWhileFetching;
}

/// Lets the first connections fail after `at` bytes.
std::int32_t checkMailWithFault(Desk& desk, const Case& c, std::size_t at, int connections) {
  desk.server.pipelining = c.pipelining;
  desk.server.line.chunk = c.chunk;
  desk.server.line.*c.fault = at;
  desk.server.line.faultyConnections = connections;
  desk.holds(4);
  return checkMail(desk);
}

TEST(Trouble, AtEveryByteEndsInADocumentedFailureOrInAllMessages) {
  for (const Case& c : cases()) {
    std::int32_t failure = -1;
    for (std::size_t at = 0; failure != 0; ++at) {
      ASSERT_LT(at, 2000U);
      Desk desk;
      failure = checkMailWithFault(desk, c, at, 99);
      EXPECT_EQ(desk.client->LastError(), failure);
      EXPECT_FALSE(desk.server.line.open);
      if (failure == 0) {
        EXPECT_EQ(desk.texts(), desk.serverTexts());
      } else {
        EXPECT_TRUE(isDocumented(failure, c.fault)) << failure << " at " << at;
      }
    }
  }
}

TEST(Trouble, InAPipelinedFetchIsOvercomeAtEveryByte) {
  for (const Case& c : cases()) {
    if (!c.pipelining) continue;
    bool fetching = false;
    for (std::size_t at = 0; at < 900; ++at) {
      Desk desk;
      const std::int32_t failure = checkMailWithFault(desk, c, at, 1);
      fetching = fetching || !desk.habits.oneByOne.empty();
      if (fetching) {
        ASSERT_EQ(failure, 0) << at;
      }
      if (failure == 0) {
        ASSERT_EQ(desk.texts(), desk.serverTexts()) << at;
      }
    }
    EXPECT_TRUE(fetching);
  }
}

TEST(Trouble, OfTheNetworkPassesThrough) {
  for (const std::int32_t number : {pop_failure::connectionRefused, pop_failure::hostNotFound, pop_failure::timedOut,
                                    pop_failure::connectionReset, pop_failure::tlsHandshakeFailed}) {
    Desk desk;
    desk.server.line.connectFailure = PopFailure(number, "no");
    EXPECT_EQ(checkMail(desk), number);
    EXPECT_EQ(desk.client->LastError(), number);
    EXPECT_EQ(desk.client->ErrorText(), "no");
  }
}

}  // namespace
}  // namespace velmora::test
