#include <gmock/gmock.h>
#include <malloc.h>

#include <algorithm>

#include "platform/mail_bounds.h"
#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using namespace std::string_literals;

/// A desk whose client asks for the third of its messages, for which the server has this answer.
struct OriginalDesk : Desk {
  explicit OriginalDesk(const std::string& answer) {
    holds(4);
    server.pipelining = true;
    server.answers["LIST"] = "+OK\r\n2 9\r\n4 9\r\n7 40\r\n8 9\r\n.\r\n";
    server.answers["RETR 7"] = answer;
  }

  std::int32_t fetch() {
    return failureOf([&] {
      client->Connect();
      messages().ListMessages(PopMessages::Identifiers::Listed);
      messages().FetchOriginal(2, take);
    });
  }

  std::string got;
  PopMessages::Take take = [this](std::string_view bytes) { return got.append(bytes), true; };
};

TEST(Original, IsTheSameHoweverTheBytesArrive) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"+OK\r\nSubject: 1\r\n\r\n..\r\nmid.\r\n...\r\n. \r\n.\r\n", "Subject: 1\r\n\r\n.\r\nmid.\r\n..\r\n \r\n"},
      {"+OK\na\n.unstuffed\n..\n.\rx\n\rb\0\xfe\r\r\n.\n"s, "a\nunstuffed\n.\n\rx\n\rb\0\xfe\r\r\n"s},
      {"+OK\r\n.\r\n", ""},
  };
  for (const auto& [answer, wanted] : cases) {
    for (std::size_t chunk = 1; chunk <= answer.size(); ++chunk) {
      OriginalDesk desk(answer);
      desk.server.line.chunk = chunk;
      desk.server.line.pace = Milliseconds(60);
      EXPECT_EQ(desk.fetch(), 0);
      EXPECT_EQ(desk.got, wanted) << chunk;
      EXPECT_EQ(desk.recorder.progress.back(), std::pair(static_cast<std::int32_t>(wanted.size()), 40));
      EXPECT_TRUE(std::ranges::is_sorted(desk.recorder.progress));
      desk.client->Disconnect();
      EXPECT_EQ(desk.server.commands.back(), "QUIT");
    }
  }
}

TEST(Original, OfAnySizeIsHandedOutExactlyAndKeptNowhere) {
  std::string message;
  for (int i = 0; message.size() < mail_bounds::message * 11 / 10; ++i)
    message += std::string(static_cast<std::size_t>(i % 3), '.') + std::string(static_cast<std::size_t>(i % 997), 'x') +
               std::to_string(i) + "\r\n";
  Desk desk;
  desk.server.messages = {{"a", message}};
  desk.server.line.chunk = std::size_t{64} << 10U;
  desk.client->Connect();
  std::size_t before = 0;
  std::size_t most = 0;
  std::size_t at = 0;
  bool isSame = true;
  int turns = 0;
  desk.server.line.onTurn = [&] {
    const auto heap = mallinfo2();  // all of it 0 with sanitizers
    most = std::max(most, heap.uordblks + heap.hblkhd);
    if (++turns == 1) before = most;
  };
  desk.messages().FetchOriginal(0, [&](std::string_view bytes) {
    isSame = isSame && std::string_view(message).substr(at, bytes.size()) == bytes;
    at += bytes.size();
    desk.server.line.clock += Milliseconds(10);
    return true;
  });
  EXPECT_TRUE(isSame && at == message.size()) << at;
  EXPECT_LT(most, before + (std::size_t{1} << 20U));
  EXPECT_GT(turns, 100) << "while a slow disk holds it up";
}

TEST(Original, FailsWithoutASecondTryAndLeavesInOrder) {
  const std::string half = "+OK\r\nSubject: x\r\n\r\nTe";
  const struct {
    std::string answer;
    std::int32_t failure;
    std::string words;
    std::function<bool(Desk&)> take = [](Desk&) { return true; };
  } cases[] = {
      {"-ERR no secret\r\n", pop_failure::messageRefused, "message 3 of 4. The server says: no *****"},
      {MemoryServer::hangUp, pop_failure::connectionLost, "was lost"},
      {half, pop_failure::silentWhileFetching, "in time"},
      {"nonsense\r\n", pop_failure::protocolBroken, "nonsense"},
      {half, pop_failure::connectionLost, "could not be kept", [](Desk&) { return false; }},
      {half, pop_failure::connectionLost, "closed", [](Desk& d) { return d.client->Disconnect(), true; }},
      {half + "\r\n.\r\n", pop_failure::connectionLost, "closed", [](Desk& d) { return d.client->Disconnect(), true; }},
  };
  for (const auto& [answer, failure, words, take] : cases) {
    SCOPED_TRACE(answer + words);
    OriginalDesk desk(answer);
    int pieces = 0;
    desk.take = [&, act = take](std::string_view) { return ++pieces, act(desk); };
    EXPECT_EQ(desk.fetch(), failure);
    EXPECT_THAT(desk.client->ErrorText(), HasSubstr(words));
    EXPECT_LE(pieces, 1);
    EXPECT_EQ(desk.server.line.connections, 1);
    EXPECT_FALSE(desk.habit().oneByOne);
    EXPECT_EQ(desk.server.line.open, failure == pop_failure::messageRefused);
    EXPECT_EQ(failureOf([&] { desk.client->Disconnect(); }), 0);
    EXPECT_EQ(desk.server.commands.back() == "QUIT", failure == pop_failure::messageRefused);
  }
}

TEST(Original, EndsWhereTheConnectionBreaksAtAnyByte) {
  for (const auto fault : {&MemoryLine::dropAfter, &MemoryLine::silentAfter}) {
    std::int32_t failure = -1;
    for (std::size_t at = 0; failure != 0; ++at) {
      ASSERT_LT(at, 1000U);
      OriginalDesk desk("+OK\r\nSubject: x\r\n\r\n..\r\n.\r\n");
      desk.server.line.*fault = at;
      desk.server.line.faultyConnections = 99;
      failure = desk.fetch();
      EXPECT_TRUE(std::string_view("Subject: x\r\n\r\n.\r\n").starts_with(desk.got)) << "and nothing twice";
      EXPECT_EQ(failure == 0, desk.server.line.open);
    }
  }
}

TEST(Original, IsStoppedByLettingGoOfTheClient) {
  OriginalDesk desk("+OK\r\nSubject: x\r\n\r\n" + std::string(1000, 'x'));
  desk.server.line.chunk = 10;
  desk.server.line.pace = Milliseconds(20);
  const std::weak_ptr<PopClient> old = desk.client;
  desk.recorder.onEvent = [&](PopClient&, const std::string& event) {
    if (event != "Progress" || desk.got.size() < 100 || old.expired() || desk.client != old.lock()) return;
    desk.client->Disconnect();
    desk.client = desk.makeClient(desk.server.line, desk.server);
  };
  EXPECT_EQ(desk.fetch(), pop_failure::connectionLost);
  EXPECT_TRUE(old.expired());
  EXPECT_FALSE(desk.server.line.open);
  EXPECT_LT(desk.got.size(), 200U);
  EXPECT_EQ(desk.client->LastError(), 0);
}

TEST(Original, LetsAFailureOfItsTakerPassThrough) {
  OriginalDesk desk("+OK\r\nSubject: x\r\n\r\nTe");
  desk.take = [](std::string_view) -> bool { throw overflowFailure(); };
  EXPECT_THROW(desk.fetch(), RunTimeFailure);
  desk.client->Disconnect();
  EXPECT_EQ(desk.server.commands.back(), "RETR 7") << "a good-bye would wait behind the rest of the message";
  EXPECT_FALSE(desk.server.line.open);
}

TEST(Original, IsAskedForByANumberThatThereIs) {
  OriginalDesk desk("+OK\r\n.\r\n");
  EXPECT_EQ(failureOf([&] { desk.messages().FetchOriginal(0, desk.take); }), pop_failure::connectionLost);
  EXPECT_EQ(desk.fetch(), 0);
  for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{4}})
    EXPECT_THROW(desk.messages().FetchOriginal(index, desk.take), RunTimeFailure);
  EXPECT_EQ(desk.server.commands.back(), "RETR 7");
}

}  // namespace
}  // namespace velmora::test
