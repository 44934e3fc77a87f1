#include "platform/pop/reply_reader.h"

#include <gtest/gtest.h>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using pop::ReplyReader;
using namespace std::string_literals;

std::optional<std::string> readStatus(ReplyReader& reader) {
  const auto reply = reader.status();
  return reply ? std::optional((reply->ok ? "good|" : "bad|") + reply->text) : std::nullopt;
}

/// Lines joined by '|', once the listing is complete.
std::function<std::optional<std::string>(ReplyReader&)> listingReader() {
  return [text = std::string()](ReplyReader& reader) mutable -> std::optional<std::string> {
    const bool complete = reader.lines([&](std::string_view line) { text.append(line).append("|"); });
    return complete ? std::optional(text) : std::nullopt;
  };
}

std::optional<std::string> readMessage(ReplyReader& reader) { return reader.message(); }

struct Case {
  std::string bytes;
  std::function<std::optional<std::string>(ReplyReader&)> read;
  std::string expected;
};

std::vector<Case> cases() {
  return {
      {"+OK\r\n", readStatus, "good|"},
      {"+ok  hello \n", readStatus, "good|hello"},
      {"-Err [IN-USE]\0busy\x1b\r\n"s, readStatus, "bad|[IN-USE]\0busy\x1b"s},
      {".\r\n", listingReader(), ""},
      {"1 20\r\n2 \xff\n..dot\r\n\r\n.\n", listingReader(), "1 20|2 \xff|.dot||"},
      {".\r\n", readMessage, ""},
      {"a\r\n\r\n..b\r\n...\r\n.\r\n", readMessage, "a\r\n\r\n.b\r\n..\r\n"},
      {"a\n.unstuffed\n.\rx\n\rb\0\xfe\n.\n"s, readMessage, "a\nunstuffed\n\rx\n\rb\0\xfe\n"s},
      {"mid.\r\n. \r\n.\r\n", readMessage, "mid.\r\n \r\n"},
  };
}

TEST(ReplyReader, ReadsTheSameHoweverTheBytesArrive) {
  for (const Case& whole : cases()) {
    for (std::size_t cut = 0; cut < whole.bytes.size(); ++cut) {
      SCOPED_TRACE(whole.bytes + " cut at " + std::to_string(cut));
      ReplyReader reader;
      auto read = whole.read;
      reader.feed(std::string_view(whole.bytes).substr(0, cut));
      ASSERT_EQ(read(reader), std::nullopt);
      reader.feed(std::string_view(whole.bytes).substr(cut));
      reader.feed("+OK next\r\n");
      ASSERT_EQ(read(reader), whole.expected);
      EXPECT_EQ(reader.pending(), "+OK next\r\n");
    }
  }
}

TEST(ReplyReader, RefusesWhatIsNoStatusAtItsFirstByte) {
  for (const std::string bytes : {"x", "\n", "* OK\r\n", "+O\r\n", "-ER\r\n", "+KO\r\n"}) {
    ReplyReader reader;
    reader.feed(bytes);
    EXPECT_EQ(failureOf([&] { reader.status(); }), pop_failure::protocolBroken) << bytes;
  }
}

TEST(ReplyReader, BoundsEveryLineCountAndAnswer) {
  const auto status = [](ReplyReader& r) { r.status(); };
  const auto list = [](ReplyReader& r) { r.lines([](std::string_view) {}); };
  const auto message = [](ReplyReader& r) { r.message(); };
  struct Bound {
    std::string piece;
    std::size_t times;  ///< that pass; one more doesn't
    std::function<void(ReplyReader&)> read;
  };
  const std::vector<Bound> bounds = {
      {"+", ReplyReader::maximumStatusLine, status},
      {"1", ReplyReader::maximumListLine, list},
      {"1\n", ReplyReader::maximumListLines, list},
      {std::string(1000, '1') + "\n", ReplyReader::maximumListing / 1000, list},
      {std::string(1U << 20U, 'x'), ReplyReader::maximumMessage >> 20U, message},
  };
  for (const Bound& bound : bounds) {
    ReplyReader reader;
    const auto feed = [&] {
      reader.feed(bound.piece);
      bound.read(reader);
    };
    for (std::size_t i = 0; i < bound.times; ++i) ASSERT_EQ(failureOf(feed), 0) << bound.piece.substr(0, 9) << i;
    EXPECT_EQ(failureOf(feed), pop_failure::protocolBroken) << bound.piece.substr(0, 9);
  }
}

}  // namespace
}  // namespace velmora::test
