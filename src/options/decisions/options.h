#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "platform/settings.h"

namespace velmora {

/// Every setting of the program's Options page, with its default. Check box values are 1 and 0; colours have the form
/// 0x00BBGGRR. Nothing is validated on load.
struct Options {
  std::int16_t RunStartUp = 1;         ///< start the program at logon
  std::int16_t EmailCheckStartUp = 0;  ///< check all enabled accounts at start-up
  std::int16_t StartUpDelay = 0;       ///< seconds before that check
  std::int16_t MinimizeStartUp = 0;
  std::int16_t UseInterval = 0;  ///< Auto Check
  std::int16_t NoCheck = 0;      ///< a quiet period without Auto Check
  std::string NoCheckTimeBegin = "00:00";
  std::string NoCheckTimeEnd = "00:00";
  std::int16_t ShowEmailMsgBox = 0;
  std::int16_t MsgBoxTime = 0;  ///< seconds, 0 keeps the Auto Check Message open
  std::int16_t ShowEmail = 0;   ///< 0 new messages only, 1 any messages, 2 always
  std::int16_t Hours = 0;       ///< of the Auto Check interval
  std::int16_t Minutes = 30;
  std::string DefaultClient;
  std::string DefaultSound;
  std::int16_t RunSize = 3;  ///< window state of the email client: 1 normal, 3 maximized
  std::int16_t PlaySound = 1;
  std::int16_t DTheme = 5;
  std::int32_t TopColour = 0x99B1BF;
  std::int32_t MiddleColour = 0xEFEFEF;
  std::int32_t BottomColour = 0x577C91;
  std::int16_t ShowNewOnly = 0;
  std::int16_t RestoreColWidth = 1;
  std::int16_t ButtonStyle = 0;
  std::int16_t ApplyStyle = 0;
  std::int16_t FromToolTips = 1;
  std::int16_t ToToolTips = 1;
  std::int16_t SubjectToolTips = 1;
  std::int16_t MessageSort = 1;
  std::int16_t SortColumn = 4;  ///< 0 last used, 1 From, 2 To, 3 Subject, 4 Date, 5 Size
  std::int16_t SortOrder = 1;   ///< 0 ascending, else descending
  std::int16_t CloseButton = 1;
  std::int16_t QuickCheck = 1;
  std::int16_t DeleteConfirmation = 1;
  std::int16_t SuppressConnectErrors = 0;
  std::int16_t SuppressRetrieveErrors = 0;
  std::int16_t ConnectTimeOut = 10;  ///< seconds
  std::int16_t NotifyNew = 0;        ///< tell of what timed checks find in a notification of the desktop
  std::int16_t NotifyFailures = 0;   ///< tell of failures of timed checks in one, too
  std::int16_t FollowMachine = 0;    ///< timed checks wait for the network, and come soon after sleep
  std::int16_t KeepInterval = 0;     ///< times of checks are compared as moments
  std::int16_t UseKeyring = 0;       ///< the desktop's keyring holds the passwords
  std::int16_t RefuseUntrusted = 0;  ///< servers whose certificate can't be trusted
  std::int16_t ProtocolLog = 0;      ///< write what is said to servers; off at each start

  // Kept in the same section, though not set on the page.
  std::string SortColumnLastUsed = "4";
  std::string RulesIniFileName = "Rules.ini";

  /// Minutes from one Auto Check to the next.
  int IntervalMinutes() const { return Hours * 60 + Minutes; }
};

inline constexpr std::string_view optionsSection = "Settings\\Options";

/// An option in the settings tree: when it is read, and whether saving the options writes it. One that
/// is neither holds for a run.
struct OptionField {
  enum class Read { AtStartUp, WithTheList, WithTheMenus, Never };
  enum class Written { ByTheSave, Elsewhere, Never };

  Field<Options> field;
  Read read = Read::AtStartUp;
  Written written = Written::ByTheSave;

  /// The page sets it.
  bool isOfPage() const { return written != Written::Elsewhere; }
};

/// All options, in the order in which they are read and written.
std::span<const OptionField> optionFields();

/// Reads the options of one moment, each with the default of a new record.
void loadOptions(const SettingsStore& store, OptionField::Read moment, Options& options);

/// Copies the options that a save takes over, which are those that the page sets.
void takeOver(const Options& edited, Options& options);

/// Writes all options that a save writes.
void writeOptions(SettingsStore& store, const Options& options);

}  // namespace velmora
