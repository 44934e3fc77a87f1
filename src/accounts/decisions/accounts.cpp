#include "accounts/decisions/accounts.h"

#include <algorithm>
#include <array>

#include "platform/failure.h"

namespace velmora {

namespace {

constexpr auto fields = std::to_array<Field<Account>>({
    {"AcntEnabled", &Account::AcntEnabled},
    {"AcntName", &Account::AcntName},
    {"AcntServer", &Account::AcntServer},
    {"AcntSecure", &Account::AcntSecure},
    {"AcntPort", &Account::AcntPort},
    {"AcntLoginID", &Account::AcntLoginID},
    {"AcntPassword", &Account::AcntPassword},
    {"AcntColour", &Account::AcntColour},
    {"AcntColourIndex", &Account::AcntColourIndex},
    {"AcntClient", &Account::AcntClient},
    {"AcntSound", &Account::AcntSound},
    {"AcntSoundOn", &Account::AcntSoundOn},
});

constexpr auto chosenFields = std::to_array<Field<Account>>({
    {"AcntKeyringKey", &Account::AcntKeyringKey},
    {"AcntCertificate", &Account::AcntCertificate},
    {"AcntCertificateFor", &Account::AcntCertificateFor},
    {"AcntCertificateBy", &Account::AcntCertificateBy},
    {"AcntCertificateUntil", &Account::AcntCertificateUntil},
});

SettingsPlace placeOf(std::int16_t number) { return {settingsSection, std::to_string(number)}; }

template <class Rows>
auto& rowOf(Rows& rows, std::int16_t number) {
  if (number < 0 || static_cast<std::size_t>(number) >= rows.size()) throw subscriptFailure();
  return rows[static_cast<std::size_t>(number)];
}

}  // namespace

std::span<const Field<Account>> accountFields() { return fields; }
std::span<const Field<Account>> chosenAccountFields() { return chosenFields; }

void acceptCertificate(Account& account, const ServerCertificate& shown) {
  account.AcntCertificate = shown.fingerprint;
  account.AcntCertificateFor = shown.issuedFor;
  account.AcntCertificateBy = shown.issuedBy;
  account.AcntCertificateUntil = shown.validUntil;
}

void copyCertificate(const Account& from, Account& to) {
  to.AcntCertificate = from.AcntCertificate;
  to.AcntCertificateFor = from.AcntCertificateFor;
  to.AcntCertificateBy = from.AcntCertificateBy;
  to.AcntCertificateUntil = from.AcntCertificateUntil;
}

void forgetCertificate(Account& account) { acceptCertificate(account, {}); }

bool haveSameServer(const Account& a, const Account& b) {
  return a.AcntServer == b.AcntServer && a.AcntPort == b.AcntPort && a.AcntSecure == b.AcntSecure;
}

Accounts::Row& Accounts::operator[](std::int16_t number) { return rowOf(rows_, number); }
const Accounts::Row& Accounts::operator[](std::int16_t number) const { return rowOf(rows_, number); }

Account& Accounts::Edit(std::int16_t number) { return rowOf(edit_, number); }

void Accounts::ResizeAccounts(std::int16_t count) {
  rows_.resize(static_cast<std::size_t>(count) + 1);
  edit_.resize(rows_.size());
  for (auto& row : rows_) row.AcntIncomplete = false;
  TabEdges.assign(rows_.size(), 0);
}

std::int16_t Accounts::TabAtPosition(std::int32_t x) const {
  const auto found = std::find_if(TabEdges.begin() + 1, TabEdges.end(), [x](std::int32_t edge) { return edge > x; });
  return found == TabEdges.end() ? std::int16_t{0} : static_cast<std::int16_t>(found - TabEdges.begin());
}

Accounts::Stored Accounts::storedCount(const SettingsStore& store) {
  const std::string stored = store.GetSetting(settingsSection, "AcntNum", "");
  const auto count = fromText<std::int16_t>(stored, -1);
  if (count >= 0 && count <= mostAccounts) return {count, true};
  std::int16_t named = 0;
  const auto hasName = [&store](int number) {
    return !store.GetSetting(settingsSection, "AcntName" + std::to_string(number), "").empty();
  };
  while (named < mostAccounts && hasName(named + 1)) ++named;
  return {named, stored.empty() && named == 0};
}

void Accounts::LoadAccount(const SettingsStore& store, std::int16_t number) {
  Row& row = (*this)[number];
  Account& account = row;
  const std::string formerKey = account.AcntKeyringKey;
  const std::string password = account.AcntPassword;
  for (const auto& field : fields) loadField(store, placeOf(number), field, account);
  for (const auto& field : chosenFields) loadField(store, placeOf(number), field, account);
  if (account.AcntKeyringKey.empty()) return;
  row.AcntPasswordKnown = row.AcntPasswordKnown && account.AcntKeyringKey == formerKey;
  account.AcntPassword = row.AcntPasswordKnown ? password : std::string();
}

void Accounts::SaveAccountFields(SettingsStore& store, std::int16_t number, const Account& record) {
  const SettingsPlace place = placeOf(number);
  Account account = record;
  if (!account.AcntKeyringKey.empty()) account.AcntPassword.clear();
  for (const auto& field : fields) saveField(store, place, field, account);
  for (const auto& field : chosenFields) {
    if (!isEqual(field, account, {})) {
      saveField(store, place, field, account);
    } else if (!store.GetSetting(place.section, place.key(field.key), "").empty()) {
      store.DeleteSetting(place.section, place.key(field.key));
    }
  }
}

void Accounts::DeleteAccountFields(SettingsStore& store, std::int16_t number) {
  const SettingsPlace place = placeOf(number);
  for (const auto& field : fields) store.DeleteSetting(place.section, place.key(field.key));
  for (const auto& field : chosenFields) store.DeleteSetting(place.section, place.key(field.key));
}

void Accounts::BlankAccountRow() {
  Account& blank = rows_.front();
  blank = Account{};
  blank.AcntEnabled = 0;
  blank.AcntName.clear();
  blank.AcntPort.clear();
}

}  // namespace velmora
