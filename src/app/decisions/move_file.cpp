#include "app/decisions/move_file.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <utility>

#include "platform/text.h"

namespace velmora {

namespace {

constexpr std::string_view firstWords = "Velmora Export ";
constexpr std::int64_t version = 1;
constexpr std::string_view optionsHead = "[Options]";
constexpr std::string_view accountHead = "[Account]";
constexpr std::string_view rulesHead = "[Rules]";
constexpr std::string_view rulesKey = "Text";
constexpr std::string_view sumKey = "Sum=";

/// Finds out what happens to a file by accident; who wants to can forge it.
std::string sumOf(std::string_view text) {
  constexpr std::uint64_t offset = 14695981039346656037U;
  constexpr std::uint64_t prime = 1099511628211U;
  std::uint64_t sum = offset;
  for (const char byte : text) sum = (sum ^ static_cast<unsigned char>(byte)) * prime;
  return std::to_string(sum);
}

std::string escaped(std::string_view value) {
  std::string text;
  for (const char byte : value) {
    switch (byte) {
      case '\\':
        text += "\\\\";
        break;
      case '\n':
        text += "\\n";
        break;
      case '\r':
        text += "\\r";
        break;
      default:
        text += byte;
    }
  }
  return text;
}

std::string unescaped(std::string_view text) {
  std::string value;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      value += text[i];
      continue;
    }
    const char kind = text[++i];
    value += kind == 'n' ? '\n' : kind == 'r' ? '\r' : kind;
  }
  return value;
}

void addLine(std::string& text, std::string_view key, std::string_view value) {
  text.append(key).append("=").append(escaped(value)).append("\n");
}

template <class Record>
void addField(std::string& text, const Field<Record>& field, const Record& record) {
  std::visit([&](auto member) { addLine(text, field.key, toText(record.*member)); }, field.member);
}

template <class Record>
void takeField(const Field<Record>& field, const std::string& value, Record& record) {
  std::visit([&](auto member) { record.*member = fromText(value, record.*member); }, field.member);
}

constexpr Field<Account> keyField{"AcntKeyringKey", &Account::AcntKeyringKey};

/// A certificate is accepted by who has looked at it, not by a file.
std::vector<const Field<Account>*> movedFields() {
  std::vector<const Field<Account>*> all = {&keyField};
  for (const auto& field : accountFields()) all.push_back(&field);
  return all;
}

/// What the page lets the user set, of options that are more than a tick.
struct Bounds {
  std::int16_t Options::*option;
  std::int16_t least;
  std::int16_t most;
};

constexpr auto bounds = std::to_array<Bounds>({
    {&Options::StartUpDelay, 0, 59},
    {&Options::MsgBoxTime, 0, 59},
    {&Options::ShowEmail, 0, 2},
    {&Options::Hours, 0, 12},
    {&Options::Minutes, 0, 59},
    {&Options::RunSize, 1, 3},
    {&Options::DTheme, 0, 6},
    {&Options::ApplyStyle, 0, 3},
    {&Options::SortColumn, 0, 5},
    {&Options::ConnectTimeOut, 1, 120},
});

bool isSettable(std::int16_t Options::*option, const Options& options) {
  const auto found = std::ranges::find(bounds, option, &Bounds::option);
  const std::int16_t value = options.*option;
  return found == bounds.end() ? value == 0 || value == 1 : value >= found->least && value <= found->most;
}
bool isSettable(std::int32_t Options::* /*colour*/, const Options& /*options*/) { return true; }
bool isSettable(std::string Options::*text, const Options& options) {
  const bool isTime = text == &Options::NoCheckTimeBegin || text == &Options::NoCheckTimeEnd;
  return !isTime || (options.*text).size() == std::string_view("hh:mm").size();
}

/// The settings may be older than the file, or have been changed by hand where they come from.
void keepToWhatCanBeSet(const Options& present, Options& options) {
  constexpr std::int16_t minuteless = 12;
  for (const OptionField* option : movedOptions()) {
    std::visit(
        [&](auto member) {
          if (!isSettable(member, options)) options.*member = present.*member;
        },
        option->field.member);
  }
  if (options.Hours == minuteless) options.Minutes = 0;
  if (options.IntervalMinutes() == 0) options.Minutes = 1;
}

/// Reads a file line by line into the record whose section it is in.
class Reader {
 public:
  explicit Reader(const Options& present) : present_(present) { moved_.options = present; }

  void read(std::string_view line) {
    if (line == accountHead) moved_.accounts.emplace_back();
    if (line.starts_with('[')) {
      section_ = line;
    } else if (const auto equals = line.find('='); equals != std::string_view::npos) {
      take(line.substr(0, equals), unescaped(line.substr(equals + 1)));
    }
  }

  MovedSettings moved() && {
    keepToWhatCanBeSet(present_, moved_.options);
    return std::move(moved_);
  }

 private:
  void take(std::string_view key, const std::string& value) {
    if (section_ == optionsHead) {
      for (const OptionField* option : options_)
        if (option->field.key == key) takeField(option->field, value, moved_.options);
    } else if (section_ == accountHead) {
      for (const auto* field : fields_)
        if (field->key == key) takeField(*field, value, moved_.accounts.back());
    } else if (section_ == rulesHead && key == rulesKey) {
      moved_.rules = value;
    }
  }

  const Options& present_;
  MovedSettings moved_;
  std::string_view section_;
  std::vector<const OptionField*> options_ = movedOptions();
  std::vector<const Field<Account>*> fields_ = movedFields();
};

/// As a box of the page holds it, where it can't have line breaks either.
bool canBeTyped(const std::string& text) {
  return std::ranges::none_of(text, [](char byte) { return static_cast<unsigned char>(byte) < ' '; });
}

bool canStandTogether(const std::vector<Account>& accounts) {
  constexpr std::size_t longestName = 20;
  std::set<std::string> names;
  const auto isNew = [&names](const Account& account) {
    const bool isName = !text::trim(account.AcntName).empty() && text::length(account.AcntName) <= longestName;
    return isName && names.insert(text::upper(account.AcntName)).second && canBeTyped(account.AcntName) &&
           canBeTyped(account.AcntServer) && canBeTyped(account.AcntLoginID) && canBeTyped(account.AcntPort);
  };
  return accounts.size() <= static_cast<std::size_t>(mostAccounts) && std::ranges::all_of(accounts, isNew);
}

/// What stands in front of the last line, if that tells that nothing is missing.
std::optional<std::string_view> wholeContent(std::string_view text) {
  const auto at = text.rfind(sumKey);
  if (at == std::string_view::npos || at == 0 || text[at - 1] != '\n') return std::nullopt;
  const std::string_view content = text.substr(0, at);
  return text.substr(at + sumKey.size()) == sumOf(content) + '\n' ? std::optional(content) : std::nullopt;
}

std::optional<std::int64_t> versionOf(std::string_view text) {
  if (!text.starts_with(firstWords)) return std::nullopt;
  return text::toNumber(text.substr(firstWords.size(), text.find('\n') - firstWords.size()));
}

}  // namespace

std::vector<const OptionField*> movedOptions() {
  std::vector<const OptionField*> moved;
  for (const OptionField& option : optionFields()) {
    if (option.written == OptionField::Written::ByTheSave && option.field.key != "UseKeyring") moved.push_back(&option);
  }
  return moved;
}

std::string composeMoveFile(const MovedSettings& moved) {
  std::string text = std::string(firstWords) + std::to_string(version) + '\n';
  text.append(optionsHead).append("\n");
  for (const OptionField* option : movedOptions()) addField(text, option->field, moved.options);
  for (const Account& account : moved.accounts) {
    text.append(accountHead).append("\n");
    for (const auto* field : movedFields()) {
      if (!isEqual(*field, account, Account{})) addField(text, *field, account);
    }
  }
  text.append(rulesHead).append("\n");
  addLine(text, rulesKey, moved.rules);
  return text + std::string(sumKey) + sumOf(text) + '\n';
}

/// On its way through a mail program or an editor a file may get other line ends.
ParsedMoveFile parseMoveFile(std::string_view bytes, const Options& present) {
  using Fault = ParsedMoveFile::Fault;
  const std::string text = text::replaceAll(bytes, "\r\n", "\n");
  const auto found = versionOf(text);
  if (!found || *found < 1) return {.fault = Fault::Foreign, .moved = {}};
  if (*found > version) return {.fault = Fault::Newer, .moved = {}};
  auto rest = wholeContent(text);
  if (!rest) return {.fault = Fault::Damaged, .moved = {}};
  Reader reader(present);
  while (!rest->empty()) {
    const auto end = rest->find('\n');
    reader.read(rest->substr(0, end));
    rest->remove_prefix(std::min(end, rest->size() - 1) + 1);
  }
  ParsedMoveFile parsed{.fault = Fault::None, .moved = std::move(reader).moved()};
  if (!canStandTogether(parsed.moved.accounts)) parsed.fault = Fault::Damaged;
  return parsed;
}

}  // namespace velmora
