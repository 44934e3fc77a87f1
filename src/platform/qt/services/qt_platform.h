#pragma once

#include <QLockFile>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/mail_reader.h"
#include "platform/platform.h"
#include "platform/pop/pop_client.h"
#include "platform/qt/help/help_window.h"
#include "platform/qt/services/desktop_notices.h"
#include "platform/qt/services/local_time.h"
#include "platform/qt/services/machine_watch.h"
#include "platform/qt/services/print_job.h"
#include "platform/qt/services/protocol_log.h"
#include "platform/qt/services/qt_keyring.h"
#include "platform/qt/services/qt_settings.h"
#include "platform/qt/services/sound_player.h"

namespace velmora {

/// The desktop and the system that the program runs on.
class QtPlatform : public Platform {
 public:
  explicit QtPlatform(const MailReader& reader);
  ~QtPlatform() override;
  QtPlatform(const QtPlatform&) = delete;
  QtPlatform& operator=(const QtPlatform&) = delete;

  /// Read at the first use, so that what is another instance's is left alone until isOnlyInstance was asked.
  QtSettings& settingsFile();

  /// `quit` was called: an event loop that starts after it would never end.
  bool isQuitting() const { return quitting_; }

  /// Lays the program's sounds that are missing there into the user's own folder Sounds. Failures are silent.
  static void provideSounds();

  std::string applicationTitle() const override;
  DateTime now() const override { return localTime(); }
  const DateNames& dateNames() const override { return dateNames_; }
  SettingsStore& settings() override { return settingsFile(); }
  Answer MsgBox(const Question& question) override;
  bool isAsking() const override;
  std::optional<std::string> askForFile(const FileQuestion& question) override;
  std::optional<std::string> askForPassword(const PasswordQuestion& question) override;
  Keyring& keyring() override { return keyring_; }
  std::optional<std::int32_t> askForColour(std::int32_t initial) override;
  void yield() override;
  void quit() override;
  bool isOnlyInstance() override;
  void SetRunAtStartUp() override;
  void ClearRunAtStartUp() override;
  void showHelp(int context) override;
  void provideLaunchers() override;
  bool startProgram(const std::string& path, std::int16_t windowState, const std::string& address) override;
  bool playSound(const std::string& path) override;
  void stopSound() override;
  bool open(const std::string& target) override;
  bool writeFile(const std::string& path, std::string_view content) override;
  void deleteFile(const std::string& path) override;
  std::optional<std::string> readFile(const std::string& path) const override;
  std::string programFile(std::string_view name) const override;
  std::string soundFile(std::string_view name) const override;
  std::string installedFile(std::string_view name) const override;
  bool fileExists(const std::string& path) const override;
  void composeThroughPortal(const MailDraft& draft, std::function<void(PortalAnswer)> answered) override;
  bool hasNotices() override;
  void showNotice(const Notice& notice, NoticeEvents events) override;
  void withdrawNotice(Notice::Kind kind) override;
  std::unique_ptr<PrintJob> startPrinting() override;
  std::optional<std::string> attachmentOf(std::string_view message, std::size_t place) override;
  std::unique_ptr<FileDraft> startFile(const std::string& path) override;
  std::string temporaryFile(std::string_view name) const override;
  void deleteTemporaryFile(std::string_view name) override;
  void watchMachine(std::function<void()> back) override;
  Connectivity connectivity() const override;
  bool keepProtocolLog(bool wanted) override;
  std::shared_ptr<PopClient> makePopClient() override;

 private:
  pop::LogLine protocolLine();

  const MailReader& reader_;
  std::optional<QLockFile> instanceLock_;  ///< outlives the settings that it guards
  std::unique_ptr<QtSettings> settings_;
  DateNames dateNames_;
  ServerHabits serverHabits_;
  QtKeyring keyring_;
  std::unique_ptr<HelpWindow> help_;
  SoundPlayer soundPlayer_;
  std::unique_ptr<DesktopNotices> notices_;  ///< once there was one to show
  std::unique_ptr<MachineWatch> machine_;    ///< while the machine is watched
  std::optional<ProtocolLog> protocolLog_;
  std::vector<PrintWork> printing_;
  bool quitting_ = false;
};

}  // namespace velmora
