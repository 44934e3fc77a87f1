#include "platform/pop/reply_reader.h"

#include <gtest/gtest.h>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

using pop::ReplyReader;
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
