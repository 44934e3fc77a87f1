#include "messages/decisions/message_order.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <numeric>

#include "platform/text.h"

namespace velmora {

namespace {

/// Counts at places from 0 on, with their sums (a Fenwick tree).
class CountTree {
 public:
  explicit CountTree(std::size_t places) : sums_(places + 1) {}

  void add(std::size_t place, std::int32_t count) {
    for (++place; place < sums_.size(); place += place & -place) sums_[place] += count;
  }

  /// The sum of all places before this one.
  std::size_t before(std::size_t place) const {
    std::int32_t sum = 0;
    for (; place > 0; place -= place & -place) sum += sums_[place];
    return static_cast<std::size_t>(sum);
  }

  /// The place that holds number `index`, from 0, of all that is counted.
  std::size_t find(std::size_t index) const {
    std::size_t place = 0;
    auto rest = static_cast<std::int32_t>(index);
    for (std::size_t step = std::bit_floor(sums_.size() - 1); step > 0; step /= 2) {
      if (place + step >= sums_.size() || sums_[place + step] > rest) continue;
      place += step;
      rest -= sums_[place];
    }
    return place;
  }

 private:
  std::vector<std::int32_t> sums_;
};

/// A key that is being sorted: what comes next of it, as a number that compares as its bytes do.
struct SortedKey {
  std::uint64_t next;
  std::size_t number;
};
constexpr std::size_t bytesAtOnce = 7;

/// The lowest byte tells how much there is, so that a shorter key comes first and equal numbers of keys that end here
/// mean equal keys.
std::uint64_t nextBytes(std::string_view rest) {
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < bytesAtOnce; ++i) {
    value = value << 8 | (i < rest.size() ? static_cast<unsigned char>(rest[i]) : 0U);
  }
  return value << 8 | std::min(rest.size(), bytesAtOnce + 1);
}
bool endsHere(const SortedKey& key) { return (key.next & 0xFF) <= bytesAtOnce; }

/// Keys that are alike in so many of their first bytes.
struct Alike {
  std::span<SortedKey> group;
  std::size_t bytes;
};

/// How many more bytes they have in common.
std::size_t commonBytes(std::span<const std::string_view> keys, const Alike& alike) {
  const auto rest = [&](const SortedKey& key) { return keys[key.number].substr(alike.bytes); };
  std::string_view common = rest(alike.group.front());
  for (const SortedKey& key : alike.group) {
    const std::string_view other = rest(key).substr(0, common.size());
    if (other == common) continue;
    common = common.substr(0, static_cast<std::size_t>(std::ranges::mismatch(common, other).in1 - common.begin()));
  }
  return common.size();
}

/// Sorts them by what comes next, and puts each group of equal ones on the pile, so that the first comes to lie on top.
void part(std::span<const std::string_view> keys, const Alike& alike, std::vector<Alike>& pile) {
  const auto group = alike.group;
  const std::size_t bytes = alike.bytes + commonBytes(keys, alike);
  for (SortedKey& key : group) key.next = nextBytes(keys[key.number].substr(bytes));
  std::sort(group.begin(), group.end(), [](const auto& a, const auto& b) { return a.next < b.next; });
  for (std::size_t end = group.size(); end > 0;) {
    std::size_t begin = end - 1;
    while (begin > 0 && group[begin - 1].next == group[end - 1].next) --begin;
    pile.push_back({group.subspan(begin, end - begin), bytes + bytesAtOnce});
    end = begin;
  }
}

/// For each key its rank in ascending order; equal keys share one. Returns the number of ranks. Keys are compared in
/// numbers, a few bytes after the other: to look into two texts at each comparison would take several times as long.
std::size_t rankKeys(std::span<const std::string_view> keys, std::vector<std::size_t>& ranks) {
  if (keys.empty()) return 0;
  std::vector<SortedKey> sorted;
  for (std::size_t number = 0; number < keys.size(); ++number) sorted.push_back({0, number});
  std::vector<Alike> pile;
  part(keys, {sorted, 0}, pile);
  ranks.resize(keys.size());
  std::size_t rank = 0;
  while (!pile.empty()) {
    const Alike alike = pile.back();
    pile.pop_back();
    if (alike.group.size() > 1 && !endsHere(alike.group.front())) {
      part(keys, alike, pile);
      continue;
    }
    for (const SortedKey& key : alike.group) ranks[key.number] = rank;
    ++rank;
  }
  return rank;
}

struct Arrival {
  std::size_t number;   ///< of the key
  std::size_t smaller;  ///< keys before it that belong before it
};
using Equals = std::span<const Arrival>;

/// Lays a group of equal keys behind those that are laid already. Seen key by key, the sort appends a key to its group
/// and turns every group behind that one by one place: the first of the group becomes its last. So a group is a ring,
/// and its turns are told by how many smaller keys came between its own. From the last arrival back, each turn is taken
/// back and the key that came last is taken out, which tells its place.
void layGroup(Equals group, std::vector<std::size_t>& laid) {
  if (group.size() == 1) return laid.push_back(group.front().number);
  const std::size_t base = laid.size();
  laid.resize(base + group.size());
  CountTree freePlaces(group.size());
  for (std::size_t place = 0; place < group.size(); ++place) freePlaces.add(place, 1);
  std::size_t smaller = base;
  std::size_t first = 0;  // where the ring begins, among the free places
  for (std::size_t size = group.size(); size > 0; --size) {
    const Arrival& last = group[size - 1];
    const std::size_t turns = (smaller - last.smaller) % size;
    const std::size_t taken = (first + size - turns + size - 1) % size;
    const std::size_t place = freePlaces.find(taken);
    laid[base + place] = last.number;
    freePlaces.add(place, -1);
    first = size > 1 ? taken % (size - 1) : 0;
    smaller = last.smaller;
  }
}

/// Texts side by side.
class JoinedTexts {
 public:
  void add(std::string_view text) { ends_.push_back((all_ += text).size()); }

  std::vector<std::string_view> views() const {
    std::vector<std::string_view> result;
    std::size_t begin = 0;
    for (const std::size_t end : ends_) {
      result.push_back(std::string_view(all_).substr(begin, end - begin));
      begin = end;
    }
    return result;
  }

 private:
  std::string all_;
  std::vector<std::size_t> ends_;
};

}  // namespace

const SortColumnField* sortColumn(std::string_view name) {
  const auto* found = std::find_if(sortColumns.begin(), sortColumns.end(),
                                   [name](const SortColumnField& column) { return column.name == name; });
  return found == sortColumns.end() ? nullptr : found;
}

std::string sortKey(std::string_view value, const SortColumnField& column) {
  if (column.field != &MailMessage::Size) return text::upper(value);
  constexpr std::size_t digits = 6;
  return std::string(digits - std::min(value.size(), digits), '0').append(value);
}

std::vector<std::size_t> exchangeOrder(std::span<const std::string_view> keys, bool descending) {
  std::vector<std::size_t> ranks;
  const std::size_t groups = rankKeys(keys, ranks);
  if (descending) {
    for (std::size_t& rank : ranks) rank = groups - 1 - rank;
  }
  std::vector<std::size_t> begins(groups + 1);
  for (const std::size_t rank : ranks) ++begins[rank + 1];
  std::partial_sum(begins.begin(), begins.end(), begins.begin());

  std::vector<Arrival> arrivals(keys.size());
  std::vector<std::size_t> next(begins.begin(), begins.end());
  CountTree seen(groups);
  for (std::size_t number = 0; number < keys.size(); ++number) {
    arrivals[next[ranks[number]]++] = {number, seen.before(ranks[number])};
    seen.add(ranks[number], 1);
  }
  std::vector<std::size_t> laid;
  laid.reserve(keys.size());
  for (std::size_t rank = 0; rank < groups; ++rank) {
    layGroup(Equals(arrivals).subspan(begins[rank], begins[rank + 1] - begins[rank]), laid);
  }
  return laid;
}

std::vector<std::size_t> sortedOrder(const MessageRange& messages, const SortColumnField& column, bool descending) {
  // Most of the time goes by waiting for memory, as tens of thousands of texts lie here and there: the less is done at
  // a time, the more of these waits overlap.
  std::vector<std::string_view> fields;
  for (const MailMessage& message : messages) fields.emplace_back(message.*column.field);
  JoinedTexts values;
  for (const std::string_view field : fields) values.add(field);
  JoinedTexts keys;
  for (const std::string_view value : values.views()) keys.add(sortKey(value, column));
  return exchangeOrder(keys.views(), descending);
}

}  // namespace velmora
