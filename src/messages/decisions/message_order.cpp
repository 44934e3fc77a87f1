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

/// For each key its rank in the order of the sort; equal keys share one. Returns the number of ranks.
std::size_t rankKeys(std::span<const std::string> keys, bool descending, std::vector<std::size_t>& ranks) {
  std::vector<std::size_t> order(keys.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    const int difference = keys[a].compare(keys[b]);
    return descending ? difference > 0 : difference < 0;
  });
  ranks.resize(keys.size());
  std::size_t rank = 0;
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (i > 0 && keys[order[i]] != keys[order[i - 1]]) ++rank;
    ranks[order[i]] = rank;
  }
  return keys.empty() ? 0 : rank + 1;
}

struct Arrival {
  std::size_t number;   ///< of the key
  std::size_t smaller;  ///< keys before it that belong before it
};
using Equals = std::vector<Arrival>;

/// Lays a group of equal keys behind those that are laid already. Seen key by key, the sort appends a key to its group
/// and turns every group behind that one by one place: the first of the group becomes its last. So a group is a ring,
/// and its turns are told by how many smaller keys came between its own. From the last arrival back, each turn is taken
/// back and the key that came last is taken out, which tells its place.
void layGroup(const Equals& group, std::vector<std::size_t>& laid) {
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

}  // namespace

const SortColumnField* sortColumn(std::string_view name) {
  const auto* found = std::find_if(sortColumns.begin(), sortColumns.end(),
                                   [name](const SortColumnField& column) { return column.name == name; });
  return found == sortColumns.end() ? nullptr : found;
}

std::string sortKey(const MailMessage& message, const SortColumnField& column) {
  const std::string& value = message.*column.field;
  if (column.field != &MailMessage::Size) return text::upper(value);
  constexpr std::size_t digits = 6;
  return value.size() < digits ? std::string(digits - value.size(), '0') + value : value;
}

std::vector<std::size_t> exchangeOrder(std::span<const std::string> keys, bool descending) {
  std::vector<std::size_t> ranks;
  std::vector<Equals> groups(rankKeys(keys, descending, ranks));
  CountTree seen(groups.size());
  for (std::size_t number = 0; number < keys.size(); ++number) {
    groups[ranks[number]].push_back({number, seen.before(ranks[number])});
    seen.add(ranks[number], 1);
  }
  std::vector<std::size_t> laid;
  laid.reserve(keys.size());
  for (const Equals& group : groups) layGroup(group, laid);
  return laid;
}

}  // namespace velmora
