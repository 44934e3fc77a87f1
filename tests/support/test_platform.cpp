#include "support/test_platform.h"

#include "platform/text.h"

namespace velmora::test {

namespace {

/// Connects to whichever of the servers bears the host's name.
class RoutedTransport : public pop::Transport {
 public:
  explicit RoutedTransport(std::map<std::string, MemoryServer>& servers) : servers_(servers) {}

  void connect(const std::string& host, std::uint16_t port, bool secure, pop::Milliseconds timeOut) override {
    const auto server = servers_.find(host);
    if (server == servers_.end()) throw PopFailure(pop_failure::hostNotFound, "Host " + host + " not found");
    line_ = server->second.makeTransport();
    line_->connect(host, port, secure, timeOut);
  }
  ServerCertificate certificate() const override { return line_ ? line_->certificate() : ServerCertificate{}; }
  void send(std::string_view bytes) override {
    if (line_) line_->send(bytes);
  }
  std::string receive(pop::Milliseconds wait) override { return line_ ? line_->receive(wait) : std::string(); }
  bool turn() override { return !line_ || line_->turn(); }
  bool isOpen() const override { return line_ && line_->isOpen(); }
  void abort() override {
    if (line_) line_->abort();
  }
  pop::Milliseconds now() const override { return line_ ? line_->now() : pop::Milliseconds(0); }

 private:
  std::map<std::string, MemoryServer>& servers_;
  std::unique_ptr<pop::Transport> line_;
};

/// Understands messages of plain header fields, one line each.
class PlainReader : public MailReader {
 public:
  ReadMail read(std::string_view message, const DateTime& now, const Pause& /*pause*/) const override {
    ReadMail mail;
    const auto end = message.find("\r\n\r\n");
    mail.Raw = std::string(message.substr(0, end));
    if (end != std::string_view::npos) mail.Body = std::string(message.substr(end + 4));
    mail.From = field(mail.Raw, "From");
    mail.To = field(mail.Raw, "To");
    mail.Subject = field(mail.Raw, "Subject");
    mail.Sender = mail.From;
    mail.Attachments = static_cast<std::int16_t>(text::toNumber(field(mail.Raw, "Attachments")).value_or(0));
    mail.Attached.resize(static_cast<std::size_t>(mail.Attachments), {"notes.txt", "text/plain", 1500});
    mail.Date = parseGeneralDate(field(mail.Raw, "Date")).value_or(now);
    return mail;
  }

  /// Of one word each: "Attachments: 1" has one that holds its body.
  std::optional<std::string> attachment(std::string_view message, std::size_t place,
                                        const Pause& /*pause*/) const override {
    const ReadMail mail = read(message, {}, [] {});
    if (place >= static_cast<std::size_t>(mail.Attachments)) return std::nullopt;
    return mail.Body;
  }

  std::string fingerprint(std::string_view bytes) const override {
    return std::to_string(std::hash<std::string_view>()(bytes));
  }

 private:
  static std::string field(const std::string& header, const std::string& name) {
    const std::string lines = "\r\n" + header + "\r\n";
    const auto at = lines.find("\r\n" + name + ": ");
    if (at == std::string::npos) return {};
    const auto begin = at + name.size() + 4;
    return lines.substr(begin, lines.find("\r\n", begin) - begin);
  }
};

/// Stands where the test says.
class ScriptedPrintJob : public PrintJob {
 public:
  explicit ScriptedPrintJob(TestPlatform& platform) : platform_(platform) { ++platform_.printJobs; }
  ~ScriptedPrintJob() override { --platform_.printJobs; }
  ScriptedPrintJob(const ScriptedPrintJob&) = delete;
  ScriptedPrintJob& operator=(const ScriptedPrintJob&) = delete;

  const PrintState& goOn() override { return platform_.printState; }
  void print(PrintText text) override { platform_.printed.push_back(std::move(text)); }

 private:
  TestPlatform& platform_;
};

/// Lays the file among those that were written once it is kept.
class MemoryDraft : public FileDraft {
 public:
  MemoryDraft(TestPlatform& platform, std::string path) : platform_(platform), path_(std::move(path)) {}

  bool write(std::string_view bytes) override {
    content_ += bytes;
    return platform_.canWriteFiles;
  }
  bool keep() override { return platform_.writeFile(path_, content_); }

 private:
  TestPlatform& platform_;
  std::string path_;
  std::string content_;
};

std::string path(std::string_view section, std::string_view key) {
  return std::string(section) + "/" + std::string(key);
}

}  // namespace

std::string MemorySettings::GetSetting(std::string_view section, std::string_view key,
                                       std::string_view fallback) const {
  read.emplace_back(key);
  const auto found = values.find(path(section, key));
  return found == values.end() ? std::string(fallback) : found->second;
}

void MemorySettings::SaveSetting(std::string_view section, std::string_view key, std::string_view value) {
  written.emplace_back(key);
  change(path(section, key), std::string(value));
}

void MemorySettings::DeleteSetting(std::string_view section, std::string_view key) {
  change(path(section, key), std::nullopt);
}

std::optional<std::string> MemorySettings::Keep() {
  const auto former = std::exchange(former_, {});
  if (refusal) {
    for (const auto& [at, value] : former) change(at, value);
    former_.clear();
  }
  if (!refusal && onKept) onKept();
  return refusal;
}

void MemorySettings::change(const std::string& at, std::optional<std::string> value) {
  const auto found = values.find(at);
  former_.try_emplace(at, found == values.end() ? std::nullopt : std::optional(found->second));
  if (value) {
    values[at] = *std::move(value);
  } else {
    values.erase(at);
  }
}

bool MemoryKeyring::refuses() {
  ++uses;
  if (onUse) onUse();
  return refusal.has_value();
}

KeyringAnswer MemoryKeyring::read(const std::string& key) {
  if (refuses()) return *refusal;
  const auto found = entries.find(key);
  if (found == entries.end()) return {.outcome = KeyringAnswer::Outcome::NotFound};
  return {.outcome = KeyringAnswer::Outcome::Done, .password = found->second};
}

KeyringAnswer MemoryKeyring::write(const std::string& key, const std::string& password) {
  if (refuses()) return *refusal;
  entries[key] = password;
  if (onChanged) onChanged();
  return {.outcome = KeyringAnswer::Outcome::Done};
}

KeyringAnswer MemoryKeyring::remove(const std::string& key) {
  if (refuses()) return *refusal;
  entries.erase(key);
  if (onChanged) onChanged();
  return {.outcome = KeyringAnswer::Outcome::Done};
}

TestPlatform::TestPlatform()
    : makeTransport([this] { return std::make_unique<RoutedTransport>(servers); }),
      reader(std::make_shared<PlainReader>()) {}

Answer TestPlatform::MsgBox(const Question& question) {
  asked.push_back(question);
  if (onAsked) onAsked();
  if (answers.empty()) return Answer::Ok;
  const Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

void TestPlatform::yield() {
  if (onYield) onYield();
}

std::shared_ptr<PopClient> TestPlatform::makePopClient() {
  return std::make_shared<PopClient>(
      PopClient::Surroundings{makeTransport, *reader, [this] { return clock; }, habits_});
}

std::unique_ptr<PrintJob> TestPlatform::startPrinting() { return std::make_unique<ScriptedPrintJob>(*this); }

std::unique_ptr<FileDraft> TestPlatform::startFile(const std::string& path) {
  return std::make_unique<MemoryDraft>(*this, path);
}

}  // namespace velmora::test
