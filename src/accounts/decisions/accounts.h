#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/certificate.h"
#include "platform/settings.h"

namespace velmora {

/// What is kept of one POP account. Check box values are 1 and 0.
struct Account {
  std::int16_t AcntEnabled = 1;  ///< takes part in Check All and Auto Check
  std::string AcntName = "New Account";
  std::string AcntServer;
  std::int16_t AcntSecure = 0;
  std::string AcntPort = "110";  ///< a number only when connecting
  std::string AcntLoginID;
  std::string AcntPassword;
  std::int32_t AcntColour = 255;     ///< 0x00BBGGRR
  std::int32_t AcntColourIndex = 5;  ///< the colour box selected on the Accounts page
  std::string AcntClient;            ///< path of the email client, blank for the default one
  std::string AcntSound;             ///< path of the .wav file, blank for the default one
  std::int16_t AcntSoundOn = 1;

  // Kept only where they hold something, which takes a choice of the user's.
  std::string AcntKeyringKey;      ///< under which the desktop's keyring has the password, which is kept nowhere else
  std::string AcntCertificate;     ///< fingerprint of the certificate that the user has accepted for this server
  std::string AcntCertificateFor;  ///< for whom, by whom and until when that was issued, as it was shown
  std::string AcntCertificateBy;
  std::string AcntCertificateUntil;
};

/// What a run learns about an account. Nothing of it is kept.
struct AccountState {
  bool AcntConnected = false;    ///< the last check reached the server
  bool AcntChecked = false;      ///< a check has begun at least once
  bool AcntHasMessages = false;  ///< the last check found messages
  bool AcntHasNew = false;       ///< the last check found more messages than the one before
  bool AcntFetched = false;      ///< the last check has brought its messages in anew
  bool AcntIncomplete = false;   ///< the last retrieval may not have brought in all messages
  bool AcntSoundValid = false;
  bool AcntClientValid = false;
  bool AcntPasswordKnown = false;  ///< the keyring's entry has been read or written: AcntPassword is what it holds
  std::string AcntPasswordForNow;  ///< entered by the user where the keyring doesn't give it
  std::vector<std::string> AcntSeenIDs;  ///< of the messages that notifications have been told of, in order
  std::string AcntStatusText;
  std::string AcntLastCheckTime;
  std::string AcntLastCheckText;
  std::int16_t AcntMsgCount = 0;
  std::int16_t AcntNewCount = 0;
  std::int16_t AcntPrevCount = 0;  ///< the count that growth is measured against
  std::int16_t AcntSpamCount = 0;
  std::int16_t AcntDeleteCount = 0;
};

/// The twelve kept fields, in the order in which they are read and written.
std::span<const Field<Account>> accountFields();

/// Those that are kept only where they hold something.
std::span<const Field<Account>> chosenAccountFields();

/// The account takes this certificate from now on, whatever is wrong with it.
void acceptCertificate(Account& account, const ServerCertificate& shown);

/// The one account takes what the other one takes.
void copyCertificate(const Account& from, Account& to);

/// The account takes no certificate any more that is not trusted.
void forgetCertificate(Account& account);

/// They are reached in the same way, so that what was seen of the one's server holds for the other's.
bool haveSameServer(const Account& a, const Account& b);

/// More than anybody has, and few enough that a damaged count does no harm.
inline constexpr std::int16_t mostAccounts = 1000;

/// The numbers of accounts, from 1 on, to go over in a loop.
struct AccountNumbers {
  struct Iterator {
    std::int16_t number;

    std::int16_t operator*() const { return number; }
    Iterator& operator++() {
      ++number;
      return *this;
    }
    bool operator==(const Iterator&) const = default;
  };

  std::int16_t last;

  Iterator begin() const { return {1}; }
  Iterator end() const { return {static_cast<std::int16_t>(last + 1)}; }
};

/// The accounts, numbered from 1 to AcntNum in the order of their tabs: an account is its position. Row 0 is the
/// placeholder shown while there are none; it is never kept.
class Accounts {
 public:
  struct Row : Account, AccountState {};

  Accounts() : TabEdges(1), rows_(1), edit_(1) { BlankAccountRow(); }

  std::int16_t AcntNum() const { return static_cast<std::int16_t>(rows_.size() - 1); }
  /// The accounts, by number, as many as there are at the call.
  AccountNumbers numbers() const { return AccountNumbers{AcntNum()}; }

  std::int16_t AcntCurrent = 0;  ///< the account whose tab is selected, 0 while there is none

  /// The right edge of each account's tab, as of the last press on a strip; the total width in entry 0.
  std::vector<std::int32_t> TabEdges;

  /// The account whose tab is at `x`, 0 for none.
  std::int16_t TabAtPosition(std::int32_t x) const;

  /// Throws subscriptFailure outside 0 to AcntNum.
  Row& operator[](std::int16_t number);
  const Row& operator[](std::int16_t number) const;

  /// The working copy of the Accounts page. Throws subscriptFailure outside 0 to AcntNum.
  Account& Edit(std::int16_t number);
  void CopyAccountToEdit(std::int16_t number) { Edit(number) = static_cast<const Account&>((*this)[number]); }

  /// Makes room for accounts 0 to `count` and keeps what is there, but for AcntIncomplete and TabEdges, which are lost.
  void ResizeAccounts(std::int16_t count);

  /// The count that the tree holds. Where it holds none, or one that makes no sense, the accounts are those that have a
  /// name there, up to mostAccounts, and unless there are none at all, the tree is not to be written.
  struct Stored {
    std::int16_t count;
    bool isSound;
  };
  static Stored storedCount(const SettingsStore& store);

  /// A password that was read from the keyring's entry stays in memory for as long as the account has that entry.
  void LoadAccount(const SettingsStore& store, std::int16_t number);
  /// A password that the keyring has is left blank in the tree.
  static void SaveAccountFields(SettingsStore& store, std::int16_t number, const Account& account);
  static void DeleteAccountFields(SettingsStore& store, std::int16_t number);
  void BlankAccountRow();

 private:
  std::vector<Row> rows_;
  std::vector<Account> edit_;
};

inline constexpr std::string_view settingsSection = "Settings";

}  // namespace velmora
