// How long a click on a column's header takes, but for the screen, by the number of messages.
#include <benchmark/benchmark.h>

#include <random>

#include "messages/decisions/message_order.h"

namespace {

using namespace velmora;

enum Kind { Random, FewSubjects, TurnedRound };

/// Subjects of messages that carry bodies, as a sort finds them.
void fill(MessageStore& store, std::int16_t count, Kind kind) {
  std::mt19937 random(1);
  store.ResizeAccountStore(1);
  store.GrowMessageStore(count);
  unsigned next = 40000;
  for (MailMessage& message : store.Messages(1, count)) {
    const auto number = kind == TurnedRound ? --next : random() % (kind == FewSubjects ? 7 : 100000);
    message.Subject = "Re: a subject of the usual length, number " + std::to_string(100000 + number);
    message.Body = std::string(2000, 'x');
  }
}

void sortBySubject(benchmark::State& state) {
  const auto count = static_cast<std::int16_t>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    MessageStore store;
    fill(store, count, static_cast<Kind>(state.range(1)));
    state.ResumeTiming();
    store.Reorder(1, sortedOrder(store.Messages(1, count), *sortColumn("Subject"), false));
    state.PauseTiming();
    store = {};
    state.ResumeTiming();
  }
}

BENCHMARK(sortBySubject)
    ->ArgsProduct({{1000, 10000, 32767}, {Random, FewSubjects, TurnedRound}})
    ->Unit(benchmark::kMillisecond);

}  // namespace
