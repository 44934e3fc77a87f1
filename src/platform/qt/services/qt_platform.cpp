#include "platform/qt/services/qt_platform.h"

#include <QApplication>
#include <QColorDialog>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <QUrl>
#include <algorithm>

#include "platform/qt/services/client_launchers.h"
#include "platform/qt/services/core_dumps.h"
#include "platform/qt/services/desktop_applications.h"
#include "platform/qt/services/file_dialogs.h"
#include "platform/qt/services/local_time.h"
#include "platform/qt/services/mail_portal.h"
#include "platform/qt/services/maximise.h"
#include "platform/qt/services/print_job.h"
#include "platform/qt/services/private_files.h"
#include "platform/qt/services/qt_transport.h"
#include "platform/qt/services/run_at_logon.h"
#include "platform/qt/services/share_folder.h"
#include "platform/qt/services/whole_file.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/widgets/legible_colour.h"
#include "platform/qt/windows/password_dialog.h"

namespace velmora {

namespace {

DateNames userDateNames() {
  DateNames names;
  const QLocale locale;
  for (int month = 1; month <= 12; ++month) {
    const auto index = static_cast<std::size_t>(month - 1);
    names.abbreviated.at(index) = utf8(locale.monthName(month, QLocale::ShortFormat));
    names.full.at(index) = utf8(locale.monthName(month, QLocale::LongFormat));
  }
  // Qt counts the days of the week from 1 for Monday.
  for (int day = 0; day < 7; ++day) {
    names.weekdays.at(static_cast<std::size_t>(day)) = utf8(locale.dayName(day == 0 ? 7 : day, QLocale::LongFormat));
  }
  return names;
}

/// The program's own folder of this kind. It is the user's alone, and so is the one that holds it.
QString ownFolder(QStandardPaths::StandardLocation kind) {
  QString folder = QStandardPaths::writableLocation(kind);
  makePrivateFolder(QFileInfo(folder).path());
  makePrivateFolder(folder);
  return folder;
}

/// Where message files are laid for other programs.
QString temporaryFolder() {
  const QString systemRoot = qEnvironmentVariable("systemroot");
  if (!systemRoot.isEmpty()) return systemRoot + "/Temp";
  QString folder = ownFolder(QStandardPaths::CacheLocation) + "/temporary";
  makePrivateFolder(folder);
  return folder;
}

/// Where every dialog for a file begins.
QString programFolder() { return ownFolder(QStandardPaths::AppDataLocation); }

/// Where the user keeps what he takes out of other places.
QString usersFolder() {
  const QString downloads = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
  return QFileInfo(downloads).isDir() ? downloads : QDir::homePath();
}

QString soundsFolder() { return programFolder() + "/Sounds"; }

QMessageBox::Icon iconOf(Question::Icon icon) {
  if (icon == Question::Icon::None) return QMessageBox::NoIcon;
  return icon == Question::Icon::Critical ? QMessageBox::Critical : QMessageBox::Information;
}

QMessageBox::StandardButtons buttonsOf(Question::Buttons buttons) {
  switch (buttons) {
    case Question::Buttons::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case Question::Buttons::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    default:
      return QMessageBox::Ok;
  }
}

Answer answerOf(Question::Buttons buttons, int pressed) {
  if (buttons == Question::Buttons::Ok) return Answer::Ok;
  if (pressed == QMessageBox::Cancel) return Answer::Cancel;
  return pressed == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

/// Makes room for the text's own lines, which a message box would break anew, and for the title beside the window's
/// buttons. A server's words may be long.
void widen(QMessageBox& box) {
  auto* label = box.findChild<QLabel*>("qt_msgbox_label");
  if (label == nullptr) return;
  constexpr int widest = 640;
  constexpr int windowButtons = 100;
  const int text = label->fontMetrics().size(Qt::TextExpandTabs, box.text()).width();
  const int title = label->fontMetrics().horizontalAdvance(box.windowTitle()) + windowButtons;
  label->setMinimumWidth(std::min(std::max(text, title), widest));
}

/// A window that is always on top would hide what waits for an answer.
void keepInFront(QDialog& dialog) {
  const auto windows = QApplication::topLevelWidgets();
  const bool covered = std::any_of(windows.begin(), windows.end(), [](const QWidget* window) {
    return window->isVisible() && window->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
  });
  dialog.setWindowFlag(Qt::WindowStaysOnTopHint, covered);
}

}  // namespace

QtPlatform::QtPlatform(const MailReader& reader) : reader_(reader), dateNames_(userDateNames()) {}

/// A job that was let go of in the middle of its way to the printer takes itself back, if it has a moment for that.
QtPlatform::~QtPlatform() {
  QDeadlineTimer moment(1000);
  const auto isOver = [](const PrintWork& work) { return work.expired(); };
  while (!std::ranges::all_of(printing_, isOver) && !moment.hasExpired()) QThread::msleep(10);
}

std::string QtPlatform::applicationTitle() const {
  return utf8(QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName());
}

Answer QtPlatform::MsgBox(const Question& question) {
  if (quitting_) return answerOf(question.buttons, QMessageBox::No);
  QMessageBox box(iconOf(question.icon), harmlessLine(question.title), breakable(harmlessText(question.text), 200),
                  buttonsOf(question.buttons), QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  // The first, whatever the desktop would choose.
  box.setDefaultButton(question.defaultsToNo ? QMessageBox::No : QMessageBox::Yes);
  box.setEscapeButton(QMessageBox::No);  // closing the box must not lose anything
  widen(box);
  keepInFront(box);
  return answerOf(question.buttons, box.exec());
}

bool QtPlatform::isAsking() const {
  return QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr;
}

std::optional<std::string> QtPlatform::askForFile(const FileQuestion& question) {
  if (quitting_) return std::nullopt;
  QFileDialog dialog(QApplication::activeWindow(), {}, question.forUser ? usersFolder() : programFolder());
  keepInFront(dialog);
  return question.purpose == FileQuestion::Purpose::Open ? fileToOpen(dialog, question)
                                                         : fileToSave(dialog, question, quitting_);
}

std::optional<std::string> QtPlatform::askForPassword(const PasswordQuestion& question) {
  if (quitting_) return std::nullopt;
  PasswordDialog dialog(question, QApplication::activeWindow());
  keepInFront(dialog);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.password();
}

std::optional<std::int32_t> QtPlatform::askForColour(std::int32_t initial) {
  if (quitting_) return std::nullopt;
  QColorDialog dialog(colourOf(initial), QApplication::activeWindow());
  dialog.setWindowTitle("Select Colour");
  keepInFront(dialog);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  const QColor chosen = dialog.currentColor();
  return chosen.red() | (chosen.green() << 8) | (chosen.blue() << 16);
}

void QtPlatform::yield() { QCoreApplication::processEvents(); }

void QtPlatform::quit() {
  quitting_ = true;
  if (help_) help_->close();
  QCoreApplication::exit(0);
}

void QtPlatform::provideSounds() {
  const QDir installed(shareFolder() + "/sounds");
  QDir().mkpath(soundsFolder());
  for (const QString& name : installed.entryList({"*.wav"}, QDir::Files)) {
    QFile::copy(installed.filePath(name), soundsFolder() + '/' + name);  // never over a file that is there
  }
}

QtSettings& QtPlatform::settingsFile() {
  if (!settings_) settings_ = std::make_unique<QtSettings>();
  return *settings_;
}

bool QtPlatform::isOnlyInstance() {
  if (instanceLock_ && instanceLock_->isLocked()) return true;
  const QString folder = QFileInfo(QtSettings::fileName()).path();
  makePrivateFolder(folder);  // the first start finds none
  instanceLock_.emplace(folder + "/Velmora.lock");
  instanceLock_->setStaleLockTime(0);  // only the end of the other program frees it, not its age
  // Where no lock can be made, as on a full or read-only disk, the user still gets a program.
  return instanceLock_->tryLock() || instanceLock_->error() != QLockFile::LockFailedError;
}

void QtPlatform::SetRunAtStartUp() { addLogonEntry(); }

void QtPlatform::ClearRunAtStartUp() { removeLogonEntry(); }

void QtPlatform::showHelp(int context) {
  if (!help_) help_ = std::make_unique<HelpWindow>(shareFolder() + "/help");
  help_->showTopic(context);
}

void QtPlatform::provideLaunchers() { layLaunchers(programFolder() + "/Clients"); }

bool QtPlatform::startProgram(const std::string& path, std::int16_t windowState, const std::string& address) {
  constexpr std::int16_t maximized = 3;
  const QString entry = entryBehind(qt(path));
  const QStringList arguments = address.empty() ? QStringList() : QStringList(qt(address));
  qint64 process = 0;
  const bool started = withFormerDumpLimit([&] {
    return entry.isEmpty() ? QProcess::startDetached(QFileInfo(qt(path)).absoluteFilePath(), arguments, {}, &process)
                           : startApplication(entry, arguments, process);
  });
  if (process != 0 && windowState == maximized) maximiseWindowOf(process);
  return started;
}

bool QtPlatform::playSound(const std::string& path) { return !quitting_ && soundPlayer_.play(qt(path)); }

void QtPlatform::stopSound() { soundPlayer_.stop(); }

bool QtPlatform::open(const std::string& target) {
  const QString text = qt(target);
  const bool isFile = QFileInfo(text).isAbsolute();
  // "mailto: someone" is an address with a blank that belongs to none.
  const QString address = isFile ? QUrl::fromLocalFile(text).toString(QUrl::FullyEncoded) : QString(text).remove(' ');
  return withFormerDumpLimit([&] { return openWithApplication(address); });
}

bool QtPlatform::writeFile(const std::string& path, std::string_view content) {
  return writeWholeFile(qt(path), content);
}

void QtPlatform::deleteFile(const std::string& path) { QFile::remove(qt(path)); }

std::optional<std::string> QtPlatform::readFile(const std::string& path) const {
  const auto content = readWholeFile(qt(path), largestReadFile);
  if (!content) return std::nullopt;
  return content->toStdString();
}

std::string QtPlatform::programFile(std::string_view name) const {
  return utf8(QDir(programFolder()).absoluteFilePath(QFileInfo(qt(name)).fileName()));
}

std::string QtPlatform::soundFile(std::string_view name) const { return utf8(soundsFolder() + '/' + qt(name)); }

std::string QtPlatform::installedFile(std::string_view name) const {
  return utf8(QDir(shareFolder()).absoluteFilePath(qt(name)));
}

bool QtPlatform::fileExists(const std::string& path) const { return QFileInfo(qt(path)).isFile(); }

void QtPlatform::composeThroughPortal(const MailDraft& draft, std::function<void(PortalAnswer)> answered) {
  MailPortal::compose(draft, [this, answered = std::move(answered)](PortalAnswer answer) {
    if (!quitting_) answered(answer);
  });
}

bool QtPlatform::hasNotices() { return !quitting_ && DesktopNotices::areThere(); }

void QtPlatform::showNotice(const Notice& notice, NoticeEvents events) {
  if (quitting_) return;
  if (!notices_) notices_ = std::make_unique<DesktopNotices>([this] { return quitting_; });
  notices_->show(notice, std::move(events));
}

void QtPlatform::withdrawNotice(Notice::Kind kind) {
  if (notices_ && !quitting_) notices_->withdraw(kind);
}

std::unique_ptr<PrintJob> QtPlatform::startPrinting() {
  std::erase_if(printing_, [](const PrintWork& work) { return work.expired(); });
  return makePrintJob(printing_.emplace_back());
}

std::optional<std::string> QtPlatform::attachmentOf(std::string_view message, std::size_t place) {
  return reader_.attachment(message, place, [this] { yield(); });
}

std::unique_ptr<FileDraft> QtPlatform::startFile(const std::string& path) { return draftOf(qt(path)); }

std::string QtPlatform::temporaryFile(std::string_view name) const { return utf8(temporaryFolder() + '/' + qt(name)); }

void QtPlatform::deleteTemporaryFile(std::string_view name) { QFile::remove(qt(temporaryFile(name))); }

void QtPlatform::watchMachine(std::function<void()> back) {
  machine_ = back ? std::make_unique<MachineWatch>(std::move(back)) : nullptr;
}

Connectivity QtPlatform::connectivity() const { return machine_ ? machine_->connectivity() : Connectivity::Unknown; }

bool QtPlatform::keepProtocolLog(bool wanted) {
  protocolLog_.reset();
  if (!wanted) return true;
  protocolLog_.emplace(qt(programFile(protocolLogName)));
  return protocolLog_->goesOn();
}

/// The log may end before the connection does.
pop::LogLine QtPlatform::protocolLine() {
  if (!protocolLog_) return {};
  return [this](std::string_view line) {
    if (protocolLog_) protocolLog_->write(line);
  };
}

std::shared_ptr<PopClient> QtPlatform::makePopClient() {
  return std::make_shared<PopClient>(PopClient::Surroundings{makeQtTransport, reader_, localTime, serverHabits_,
                                                             mail_bounds::mailbox, [this] { return protocolLine(); }});
}

}  // namespace velmora
