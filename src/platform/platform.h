#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/date_time.h"
#include "platform/file_draft.h"
#include "platform/keyring.h"
#include "platform/machine.h"
#include "platform/mail_draft.h"
#include "platform/notice.h"
#include "platform/printing.h"
#include "platform/settings.h"

namespace velmora {

class PopClient;

/// A message box: what it says, and what the user answered.
struct Question {
  enum class Icon { None, Information, Critical };
  enum class Buttons { Ok, YesNo, YesNoCancel };

  std::string text;  ///< line breaks CR LF
  std::string title;
  Icon icon = Icon::Information;
  Buttons buttons = Buttons::Ok;
  bool defaultsToNo = false;  ///< Enter answers No, since Yes is not to be said by the way

  bool operator==(const Question&) const = default;
};
/// A question that is not answered, as when its dialog is closed, counts as one answered No.
enum class Answer { Ok, Yes, No, Cancel };

/// A dialog that asks for a password.
struct PasswordQuestion {
  std::string text;  ///< line breaks CR LF
  std::string title;

  bool operator==(const PasswordQuestion&) const = default;
};

/// A dialog that asks for a file: for the name of one to write, where it asks before replacing one, or for one that is
/// there.
struct FileQuestion {
  enum class Purpose { Save, Open };

  std::string name;    ///< proposed, without a folder
  std::string filter;  ///< for each kind of file its description, "|", its pattern, "|"
  Purpose purpose = Purpose::Save;
  std::string start = {};  ///< of one to open: the file or the folder to begin at, blank for the program's own folder
  bool forUser = false;    ///< one to save is begun where the user keeps such files, not in the program's own folder

  bool operator==(const FileQuestion&) const = default;
};

/// Bytes of the largest file that is read.
inline constexpr std::size_t largestReadFile = std::size_t{4} << 20U;

/// The protocol log, in the user's own folder of the program.
inline constexpr std::string_view protocolLogName = "protocol.log";

/// The one door to the outside. Everything but what stands behind it is a function of values.
class Platform {
 public:
  virtual ~Platform() = default;

  /// The file name of the program without its extension, the first part of every dialog title.
  virtual std::string applicationTitle() const = 0;

  virtual DateTime now() const = 0;
  virtual const DateNames& dateNames() const = 0;

  virtual SettingsStore& settings() = 0;

  /// Asks and waits for the answer while the event loop turns.
  virtual Answer MsgBox(const Question& question) = 0;

  /// A dialog or a menu of the program's waits for what the user says.
  virtual bool isAsking() const = 0;

  /// Returns the path that the user chose, nothing where he cancelled. The dialog opens in the program's own folder
  /// unless the question names another place. A link is returned as itself, not as what it leads to.
  /// One to save under has a name as `file_name.h` makes it, proposed and returned, with an ending of the filter: where
  /// the user's isn't such, the dialog comes again with what would be. One to open is there, but may bear any name.
  virtual std::optional<std::string> askForFile(const FileQuestion& question) = 0;

  /// Returns the password that the user has entered, nothing where he entered none.
  virtual std::optional<std::string> askForPassword(const PasswordQuestion& question) = 0;

  /// The keyring of the user's desktop, which nothing touches before the first call.
  virtual Keyring& keyring() = 0;

  /// Has the user choose a colour, 0x00BBGGRR, beginning with this one; nothing where he cancelled.
  virtual std::optional<std::int32_t> askForColour(std::int32_t initial) = 0;

  /// Lets the event loop run once.
  virtual void yield() = 0;

  /// Ends the event loop, and with it everything that waits inside it.
  virtual void quit() = 0;

  /// No other instance of the program runs on these settings. The answer holds until the program ends; to be asked
  /// before the settings are used.
  virtual bool isOnlyInstance() = 0;

  /// Makes and removes the entry that starts the program at logon. Failures are silent.
  virtual void SetRunAtStartUp() = 0;
  virtual void ClearRunAtStartUp() = 0;

  /// Opens the help at the topic of this number.
  virtual void showHelp(int context) = 0;

  /// Lays a launcher, a file NAME.exe, for each mail program that the desktop knows into the folder Clients of the
  /// user's own folder, and takes away those of its own that lead nowhere any more. What the user has put there stays.
  /// Failures are silent.
  virtual void provideLaunchers() = 0;

  /// Starts a program, or the application that a launcher leads to, in a window of this state where the system lets it
  /// be told (1 normal, 3 maximized), with an address as its argument unless that is blank. Returns whether it could be
  /// started.
  virtual bool startProgram(const std::string& path, std::int16_t windowState, const std::string& address) = 0;

  /// Plays a .wav file to its end, or half a minute of it, while the event loop turns; a later call ends an earlier
  /// one. Returns whether anything could be heard.
  virtual bool playSound(const std::string& path) = 0;

  /// Ends the sound that is on, if one is.
  virtual void stopSound() = 0;

  /// Opens a file or an address with the program that the desktop has for it. Returns whether one could be started.
  virtual bool open(const std::string& target) = 0;

  /// Writes a file that its owner alone can read, or replaces one as a whole. Returns whether that succeeded; what was
  /// there stays where it did not.
  virtual bool writeFile(const std::string& path, std::string_view content) = 0;

  /// Removes a file that the program has written, if it is there.
  virtual void deleteFile(const std::string& path) = 0;

  /// What a file holds; nothing where it can't be read or is too large.
  virtual std::optional<std::string> readFile(const std::string& path) const = 0;

  /// The path of a file in the user's own folder of the program, whatever folder the name asks for; of that folder for
  /// a blank name.
  virtual std::string programFile(std::string_view name) const = 0;

  /// The path of one of the program's own sounds, which stand in the folder Sounds of the user's own folder; of that
  /// folder for a blank name.
  virtual std::string soundFile(std::string_view name) const = 0;

  /// The path of a file that was installed with the program.
  virtual std::string installedFile(std::string_view name) const = 0;

  /// A plain file stands at this path.
  virtual bool fileExists(const std::string& path) const = 0;

  /// Has the desktop's portal for mail show a message to be written on, where there is such a portal. Returns at once;
  /// the answer comes later, out of the event loop, and not at all once the program is ending.
  virtual void composeThroughPortal(const MailDraft& draft, std::function<void(PortalAnswer)> answered) = 0;

  /// A service that shows notifications runs, or the desktop would start it.
  virtual bool hasNotices() = 0;

  /// Has the desktop show a notification in the place of the last one of its kind.
  virtual void showNotice(const Notice& notice, NoticeEvents events) = 0;

  /// Takes away the notification of a kind, if one is there.
  virtual void withdrawNotice(Notice::Kind kind) = 0;

  /// Begins to print on the user's default printer, without asking him. Never null.
  virtual std::unique_ptr<PrintJob> startPrinting() = 0;

  /// The content of the attachment at this place of a whole message, as `MailReader::attachment` gives it, while the
  /// event loop turns. Nothing else may be read meanwhile.
  virtual std::optional<std::string> attachmentOf(std::string_view message, std::size_t place) = 0;

  /// Begins a file; nothing where that can't be done.
  virtual std::unique_ptr<FileDraft> startFile(const std::string& path) = 0;

  /// The path of a file in the program's own temporary folder, where it may be laid for other programs.
  virtual std::string temporaryFile(std::string_view name) const = 0;

  /// Removes a file of that folder, if it is there.
  virtual void deleteTemporaryFile(std::string_view name) = 0;

  /// Watches the machine from now on: `back` is called, out of the event loop, whenever it has woken from sleep or has
  /// its network back. An empty one ends that.
  virtual void watchMachine(std::function<void()> back) = 0;

  /// As it is now; Unknown while the machine isn't watched.
  virtual Connectivity connectivity() const = 0;

  /// Begins the protocol log anew and has all connections that begin from now on written into it, or ends that. Returns
  /// whether that succeeded.
  virtual bool keepProtocolLog(bool wanted) = 0;

  virtual std::shared_ptr<PopClient> makePopClient() = 0;
};

}  // namespace velmora
