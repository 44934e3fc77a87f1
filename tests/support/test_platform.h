#pragma once

#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/platform.h"
#include "platform/pop/pop_client.h"
#include "support/memory_server.h"

namespace velmora::test {

/// A settings tree in memory, which notes in which order it is used.
class MemorySettings : public SettingsStore {
 public:
  std::map<std::string, std::string> values;  ///< by section, "/" and key
  std::vector<std::string> written;           ///< keys, in order
  mutable std::vector<std::string> read;      ///< likewise
  std::optional<std::string> refusal;         ///< why nothing can be kept
  std::function<void()> onKept;

  std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const override;
  void SaveSetting(std::string_view section, std::string_view key, std::string_view value) override;
  void DeleteSetting(std::string_view section, std::string_view key) override;
  std::optional<std::string> Keep() override;
  void Protect() override { refusal = "protected"; }

 private:
  void change(const std::string& at, std::optional<std::string> value);

  std::map<std::string, std::optional<std::string>> former_;  ///< what was there before it changed, since the last Keep
};

/// A keyring in memory.
class MemoryKeyring : public Keyring {
 public:
  std::map<std::string, std::string> entries;
  std::optional<KeyringAnswer> refusal;  ///< what it answers instead of doing anything
  std::function<void()> onUse;           ///< before each answer
  std::function<void()> onChanged;
  int uses = 0;

  KeyringAnswer read(const std::string& key) override;
  KeyringAnswer write(const std::string& key, const std::string& password) override;
  KeyringAnswer remove(const std::string& key) override;
  void giveUp() override {}

 private:
  bool refuses();
};

/// The outside in memory: a clock that stands, answers by script, and POP3 servers by host name. Tests that want a
/// real network or real messages set the two members for it before the program starts.
class TestPlatform : public Platform {
 public:
  TestPlatform();

  std::function<std::unique_ptr<pop::Transport>()> makeTransport;
  std::shared_ptr<const MailReader> reader;

  MemorySettings tree;
  SettingsStore* store = &tree;  ///< the one in use
  DateTime clock{2026, 11, 15, 16, 21, 5};
  std::map<std::string, MemoryServer> servers;
  std::vector<Question> asked;
  std::deque<Answer> answers;  ///< given in turn; where none is left, Ok
  std::function<void()> onAsked;
  std::function<void()> onYield;
  std::set<std::string> files;
  std::map<std::string, std::string> written;  ///< content by path
  std::optional<std::string> chosenFile;       ///< what the user answers to every question for a file
  std::vector<FileQuestion> filesAsked;
  std::function<void()> onFileAsked;
  MemoryKeyring ring;
  std::optional<std::string> enteredPassword;  ///< what the user answers to every question for a password
  std::vector<PasswordQuestion> passwordsAsked;
  std::optional<std::int32_t> chosenColour;  ///< what the user answers to every question for a colour
  std::vector<std::int32_t> coloursAsked;    ///< from which each began
  std::function<void()> onColourAsked;
  int launchersProvided = 0;
  std::vector<std::string> opened;
  std::vector<std::string> played;  ///< sounds, by path
  std::function<void()> onSound;
  bool canHear = true;
  int soundsStopped = 0;
  std::vector<std::string> deletedFiles;
  std::vector<MailDraft> composed;                              ///< that were given to the portal
  std::optional<PortalAnswer> portal = PortalAnswer::NotThere;  ///< what it answers at once, if it does
  bool noticesThere = true;
  int noticesSought = 0;                               ///< how often it was asked whether they are
  std::vector<std::pair<Notice, NoticeEvents>> shown;  ///< notifications
  bool asking = false;                                 ///< a dialog waits
  PrintState printState;                               ///< where every print job stands
  std::vector<PrintText> printed;
  int printJobs = 0;  ///< that are there now
  std::vector<int> helpShown;
  std::vector<std::string> started;  ///< path and window state
  bool canStartPrograms = true;
  std::function<void()> machineIsBack;  ///< empty while the machine isn't watched
  Connectivity network = Connectivity::Unknown;
  std::vector<bool> protocolLogs;  ///< begun and ended
  bool canWriteFiles = true;
  bool onlyInstance = true;
  bool hasQuit = false;
  int logonEntriesMade = 0;
  int logonEntriesRemoved = 0;

  std::string applicationTitle() const override { return "Velmora"; }
  DateTime now() const override { return clock; }
  const DateNames& dateNames() const override { return months_; }
  SettingsStore& settings() override { return *store; }
  Answer MsgBox(const Question& question) override;
  bool isAsking() const override { return asking; }
  std::optional<std::string> askForFile(const FileQuestion& question) override {
    filesAsked.push_back(question);
    if (onFileAsked) onFileAsked();
    return chosenFile;
  }
  std::optional<std::string> askForPassword(const PasswordQuestion& question) override {
    passwordsAsked.push_back(question);
    return enteredPassword;
  }
  Keyring& keyring() override { return ring; }
  std::optional<std::int32_t> askForColour(std::int32_t initial) override {
    coloursAsked.push_back(initial);
    if (onColourAsked) onColourAsked();
    return chosenColour;
  }
  void yield() override;
  void quit() override { hasQuit = true; }
  bool isOnlyInstance() override { return onlyInstance; }
  void SetRunAtStartUp() override { ++logonEntriesMade; }
  void ClearRunAtStartUp() override { ++logonEntriesRemoved; }
  void showHelp(int context) override { helpShown.push_back(context); }
  void provideLaunchers() override { ++launchersProvided; }
  bool startProgram(const std::string& path, std::int16_t windowState, const std::string& address) override {
    started.push_back(path + " " + std::to_string(windowState) + (address.empty() ? "" : " " + address));
    return canStartPrograms;
  }
  bool playSound(const std::string& path) override {
    played.push_back(path);
    if (onSound) onSound();
    return canHear;
  }
  void stopSound() override { ++soundsStopped; }
  bool open(const std::string& target) override {
    opened.push_back(target);
    return canStartPrograms;
  }
  bool writeFile(const std::string& path, std::string_view content) override {
    if (canWriteFiles) written[path] = content;
    return canWriteFiles;
  }
  void deleteFile(const std::string& path) override { written.erase(path); }
  std::optional<std::string> readFile(const std::string& path) const override {
    const auto found = written.find(path);
    return found == written.end() ? std::nullopt : std::optional(found->second);
  }
  std::string programFile(std::string_view name) const override { return "/home/" + std::string(name); }
  std::string soundFile(std::string_view name) const override { return "/home/Sounds/" + std::string(name); }
  std::string installedFile(std::string_view name) const override { return "/share/" + std::string(name); }
  bool fileExists(const std::string& path) const override { return files.contains(path) || written.contains(path); }
  void composeThroughPortal(const MailDraft& draft, std::function<void(PortalAnswer)> answered) override {
    composed.push_back(draft);
    if (portal) answered(*portal);
  }
  bool hasNotices() override {
    ++noticesSought;
    return noticesThere;
  }
  void showNotice(const Notice& notice, NoticeEvents events) override { shown.emplace_back(notice, std::move(events)); }
  void withdrawNotice(Notice::Kind /*kind*/) override {}
  std::unique_ptr<PrintJob> startPrinting() override;
  std::optional<std::string> attachmentOf(std::string_view message, std::size_t place) override {
    return reader->attachment(message, place, [] {});
  }
  std::unique_ptr<FileDraft> startFile(const std::string& path) override;
  std::string temporaryFile(std::string_view name) const override { return "/temporary/" + std::string(name); }
  void deleteTemporaryFile(std::string_view name) override { deletedFiles.emplace_back(name); }
  void watchMachine(std::function<void()> back) override { machineIsBack = std::move(back); }
  Connectivity connectivity() const override { return network; }
  bool keepProtocolLog(bool wanted) override {
    protocolLogs.push_back(wanted);
    return canWriteFiles || !wanted;
  }
  std::shared_ptr<PopClient> makePopClient() override;

 private:
  DateNames months_;
  ServerHabits habits_;
};

}  // namespace velmora::test
