// How fast rules go through messages: bytes of body a second for one entry, and a whole pass of many rules.
#include <benchmark/benchmark.h>

#include <random>

#include "rules/decisions/rule_match.h"

namespace {

using namespace velmora;

/// Words of three scripts: Latin, Cyrillic, and one that has no capitals.
const std::vector<std::string> prose[] = {
    {"the ", "quick ", "offer ", "of ", "Tuesday ", "meeting ", "free ", "golden ", "and ", "feathers.\r\n",
     "Regards "},
    {"отчёт ", "за ", "третий ", "Квартал ", "добрый ", "день ", "и ", "встреча ", "бесплатно\r\n"},
    {"来週の", "打ち合わせ", "について", "お世話に", "なっております", "\r\n"}};

std::string textOf(std::size_t bytes, std::size_t script, std::mt19937& random) {
  std::string text;
  text.reserve(bytes + 40);
  while (text.size() < bytes) text += prose[script][random() % prose[script].size()];
  return text;
}

Rule ruleOf(const std::vector<std::string>& entries) {
  Rule rule;
  rule.DescCount = static_cast<std::int16_t>(entries.size());
  for (std::size_t i = 0; i < entries.size(); ++i) rule.Description.at(i + 1) = entries[i];
  return rule;
}

/// A plain entry over a body that doesn't hold its criteria, as nearly all don't.
void contains(benchmark::State& state) {
  std::mt19937 random(1);
  MailMessage message;
  message.Body = textOf(4'000'000, static_cast<std::size_t>(state.range(0)), random);
  const Rule rule =
      ruleOf({state.range(1) == 0 ? "Body Contains free offers today " : "Body Contains бесплатная встреча "});
  for (auto _ : state) {
    RuledMessage ruled(message);
    benchmark::DoNotOptimize(ruleFits(rule, ruled));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * message.Body.size()));
}

BENCHMARK(contains)->ArgsProduct({{0, 1, 2}, {0, 1}})->ArgNames({"script", "criteria"});

std::vector<MailMessage> mixedMessages(std::size_t count) {
  std::mt19937 random(2);
  std::vector<MailMessage> messages(count);
  for (MailMessage& message : messages) {
    const std::size_t script = random() % 8 < 6 ? 0 : random() % 3;
    message.From = "Osric Fenn <osric.fenn" + std::to_string(random() % 5000) + "@example.com>";
    message.To = "robin@example.org, somebody.else@example.org";
    message.Subject = textOf(30, script, random);
    // Most messages are short, some are long.
    message.Body = textOf(random() % 20 == 0 ? 40'000 : 500 + random() % 4000, script, random);
    message.Size = std::to_string(message.Body.size() / 1000 + 1);
    message.Attach = random() % 5 == 0;
  }
  return messages;
}

/// 32 rules of 4 entries, of every kind, none of which fits, so that all are tried.
std::vector<Rule> manyRules() {
  std::vector<Rule> rules;
  for (int i = 0; i < 32; ++i) {
    const std::string word = "nothing" + std::to_string(i) + ' ';
    const std::string between = i % 2 == 0 ? "OR " : "AND ";
    rules.push_back(ruleOf({"From Contains " + word, between + "Subject Contains " + word,
                            between + (i % 4 == 0 ? "Size GreaterThan 30000 " : "Subject Equals " + word),
                            between + (i % 3 == 0 ? "From Equals " : "Body Contains ") + word}));
  }
  return rules;
}

void pass(benchmark::State& state) {
  const auto messages = mixedMessages(10'000);
  const auto rules = manyRules();
  std::size_t bytes = 0;
  for (const auto& message : messages) bytes += message.Body.size();
  for (auto _ : state) {
    for (const auto& message : messages) {
      RuledMessage ruled(message);
      for (const Rule& rule : rules) benchmark::DoNotOptimize(ruleFits(rule, ruled));
    }
  }
  state.counters["MB"] = static_cast<double>(bytes) / 1e6;
}

BENCHMARK(pass)->Unit(benchmark::kMillisecond);

}  // namespace
