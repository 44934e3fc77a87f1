#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "platform/text.h"

namespace velmora {

/// The user's settings tree: sections of keys with texts. All values are text, numbers in decimal digits. What is saved
/// and removed counts at once, and outlives the program once it is kept.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  /// The stored text, or `fallback` where the key or its section is absent. Never fails.
  virtual std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const = 0;

  /// Replaces the value, making section and key as needed.
  virtual void SaveSetting(std::string_view section, std::string_view key, std::string_view value) = 0;

  /// Removes the one key.
  virtual void DeleteSetting(std::string_view section, std::string_view key) = 0;

  /// Keeps all that was saved and removed since the last time, or nothing of it: then the tree is again what it was,
  /// and the reason comes back, in words for the user. Also where nothing was saved it tells whether something could
  /// be.
  virtual std::optional<std::string> Keep() = 0;

  /// What is stored makes no sense to the caller: from now on nothing is kept, so that it isn't overwritten.
  virtual void Protect() = 0;
};

/// One stored value of a record: where it lies in the tree and in the record. Its default is what a new record holds.
template <class Record>
struct Field {
  std::string_view key;
  std::variant<std::int16_t Record::*, std::int32_t Record::*, std::string Record::*> member;
};

/// Where a record's values lie: a section, and what follows each key ("" or the number of a row).
struct SettingsPlace {
  std::string_view section;
  std::string suffix;

  std::string key(std::string_view name) const { return std::string(name) + suffix; }
};

inline std::string toText(const std::string& value) { return value; }
template <std::integral Number>
std::string toText(Number value) {
  return std::to_string(value);
}

inline std::string fromText(const std::string& stored, const std::string& /*fallback*/) { return stored; }
/// A text that is no number of this width gives the fallback: the tree may have been edited by hand.
template <std::integral Number>
Number fromText(const std::string& stored, Number fallback) {
  const auto value = text::toNumber(stored);
  return value && std::in_range<Number>(*value) ? static_cast<Number>(*value) : fallback;
}

template <class Record>
void loadField(const SettingsStore& store, const SettingsPlace& place, const Field<Record>& field, Record& record) {
  std::visit(
      [&](auto member) {
        const auto fallback = Record{}.*member;
        record.*member = fromText(store.GetSetting(place.section, place.key(field.key), toText(fallback)), fallback);
      },
      field.member);
}

template <class Record>
void saveField(SettingsStore& store, const SettingsPlace& place, const Field<Record>& field, const Record& record) {
  std::visit([&](auto member) { store.SaveSetting(place.section, place.key(field.key), toText(record.*member)); },
             field.member);
}

template <class Record>
void copyField(const Field<Record>& field, const Record& from, Record& to) {
  std::visit([&](auto member) { to.*member = from.*member; }, field.member);
}

template <class Record>
bool isEqual(const Field<Record>& field, const Record& a, const Record& b) {
  return std::visit([&](auto member) { return a.*member == b.*member; }, field.member);
}

}  // namespace velmora
