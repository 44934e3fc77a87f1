#include "messages/decisions/message_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <numeric>
#include <random>

namespace velmora {
namespace {

/// The sort itself, exchange by exchange.
std::vector<std::size_t> sortedByExchange(std::vector<std::string> keys, bool descending) {
  std::vector<std::size_t> order(keys.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  for (std::size_t i = 0; i < keys.size(); ++i) {
    for (std::size_t j = i + 1; j < keys.size(); ++j) {
      const bool wrong = descending ? keys[j] > keys[i] : keys[j] < keys[i];
      if (!wrong) continue;
      std::swap(keys[i], keys[j]);
      std::swap(order[i], order[j]);
    }
  }
  return order;
}

/// Alike for longer than is looked at in one go.
std::string text(int number) { return "A subject № " + std::to_string(100000 + number); }

/// Each is the beginning of those that are longer.
std::string lengthy(int number) { return std::string(static_cast<std::size_t>(number), 'x'); }

std::vector<std::string> texts(const std::vector<int>& numbers, std::string (*text)(int)) {
  std::vector<std::string> result;
  for (const int number : numbers) result.push_back(text(number));
  return result;
}

std::vector<std::string_view> views(const std::vector<std::string>& keys) { return {keys.begin(), keys.end()}; }

TEST(ExchangeOrder, IsThatOfTheExchangeSortOnAnyKeys) {
  std::mt19937 random(20261121);
  const auto below = [&random](int bound) { return std::uniform_int_distribution(0, bound - 1)(random); };
  for (int round = 0; round < 3000; ++round) {
    const int size = below(40);
    const int values = 1 + below(round % 3 == 0 ? 3 : size + 1);
    std::vector<int> numbers;
    for (int i = 0; i < size; ++i) numbers.push_back(below(values));
    if (round % 5 == 1) std::sort(numbers.begin(), numbers.end());
    if (round % 5 == 2) std::sort(numbers.rbegin(), numbers.rend());
    for (const bool descending : {false, true}) {
      const auto keys = texts(numbers, round % 2 == 0 ? text : lengthy);
      ASSERT_EQ(exchangeOrder(views(keys), descending), sortedByExchange(keys, descending)) << round;
    }
  }
}

TEST(ExchangeOrder, TakesLargeMailboxesOfTheWorstKind) {
  // Two interleaved runs of equal keys that come ever smaller: every group turns again and again.
  std::vector<int> numbers;
  for (int i = 0; i < 32767; ++i) numbers.push_back(i % 2 == 0 ? 40000 : 39000 - i);
  const auto keys = texts(numbers, text);
  const auto start = std::chrono::steady_clock::now();
  const auto order = exchangeOrder(views(keys), false);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1500));
  ASSERT_EQ(order.size(), keys.size());
}

TEST(SortKey, IsTheUpperCaseTextAndSizesCountByDigits) {
  MailMessage message;
  message.Subject = "re: straße Ñandú привет";
  message.Size = "42";
  EXPECT_EQ(sortKey(message.Subject, *sortColumn("Subject")), "RE: STRAßE ÑANDÚ ПРИВЕТ");
  EXPECT_EQ(sortKey(message.Size, *sortColumn("Size")), "000042");
  message.Size = "1234567";
  EXPECT_EQ(sortKey(message.Size, *sortColumn("Size")), "1234567");
  EXPECT_EQ(sortColumn("4"), nullptr);
}

}  // namespace
}  // namespace velmora
