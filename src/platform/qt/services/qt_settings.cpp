#include "platform/qt/services/qt_settings.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryFile>
#include <algorithm>

#include "platform/qt/services/private_files.h"
#include "platform/qt/services/whole_file.h"
#include "platform/qt/strings.h"

namespace velmora {

namespace {

QString pathOf(std::string_view section, std::string_view key) {
  return qt(section).replace('\\', '/') + '/' + qt(key);
}

/// A value with commas that somebody wrote by hand without quotation marks is read as a list.
QString textOf(const QVariant& value) {
  return value.typeId() == QMetaType::QStringList ? value.toStringList().join(',') : value.toString();
}

/// A quotation mark without its partner would swallow the lines that follow.
bool hasPairedQuotes(const QByteArray& text) {
  int marks = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == '\\') {
      ++i;
    } else if (text[i] == '"') {
      ++marks;
    }
  }
  return marks % 2 == 0;
}

bool isSettingsLine(const QByteArray& line) {
  const QByteArray text = line.trimmed();
  if (text.isEmpty() || text.startsWith('[') || text.startsWith(';')) return true;
  return text.contains('=') && hasPairedQuotes(text);
}

/// Every line is one of a settings file, the last one included: the library that reads the file skips what it doesn't
/// understand, and would write the rest back without it.
bool isWhole(const QString& name) {
  QFile file(name);
  if (!file.exists()) return true;
  if (!file.open(QIODevice::ReadOnly)) return false;
  const QByteArray bytes = file.readAll();
  if (!bytes.isEmpty() && !bytes.endsWith('\n')) return false;
  const auto lines = bytes.split('\n');
  return !bytes.contains('\0') && std::all_of(lines.begin(), lines.end(), isSettingsLine);
}

/// What a program that was killed in the middle of a save has left, which may hold passwords. One that is as young as a
/// minute may be somebody's who is saving now.
void removeOldDrafts(const QString& folder) {
  constexpr int minute = 60;
  for (const QFileInfo& draft : QDir(folder).entryInfoList({"Velmora.??????.draft*"}, QDir::Files)) {
    if (draft.lastModified().secsTo(QDateTime::currentDateTime()) > minute) QFile::remove(draft.filePath());
  }
}

}  // namespace

QtSettings::QtSettings()
    : file_(QSettings("Kestrum", "Velmora").fileName()),
      open_(openToOthers(file_)),
      damaged_(!open_ && (!isWhole(file_) || !read())) {
  if (!open_) removeOldDrafts(QFileInfo(file_).path());
  soon_.setSingleShot(true);
  QObject::connect(&soon_, &QTimer::timeout, &soon_, [this] { save(); });
}

QtSettings::~QtSettings() { save(); }

bool QtSettings::read() {
  const QSettings settings(file_, QSettings::IniFormat);
  values_.clear();
  for (const QString& key : settings.allKeys()) values_.insert(key, settings.value(key));
  return settings.status() == QSettings::NoError;
}

std::string QtSettings::GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const {
  return utf8(textOf(values_.value(pathOf(section, key), qt(fallback))));
}

void QtSettings::SaveSetting(std::string_view section, std::string_view key, std::string_view value) {
  change(pathOf(section, key), qt(value));
}

void QtSettings::DeleteSetting(std::string_view section, std::string_view key) { change(pathOf(section, key), {}); }

void QtSettings::change(const QString& path, const QVariant& value) {
  apply(path, value);
  if (!isKept()) return;
  changes_.insert(path, value);
  soon_.start(0);
}

void QtSettings::apply(const QString& path, const QVariant& value) {
  if (value.isValid()) {
    values_.insert(path, value);
  } else {
    values_.remove(path);
  }
}

/// Where it can't be written, the next change tries again. A file that has gone is made anew from what was read of it:
/// somebody may be replacing it just now.
void QtSettings::save() {
  if (changes_.isEmpty() || openToOthers(file_)) return;
  if (QFile::exists(file_) && (!isWhole(file_) || !read())) return;
  for (auto each = changes_.begin(); each != changes_.end(); ++each) apply(each.key(), each.value());
  const QByteArray text = composed();
  if (!text.isEmpty() && writeWholeFile(file_, text)) changes_.clear();
}

/// The library puts values into a file's words, but only in a file, and it doesn't notice where a full disk cuts that
/// short. So it does so in a draft, which is read back.
QByteArray QtSettings::composed() const {
  QTemporaryFile draft(QFileInfo(file_).path() + "/Velmora.XXXXXX.draft");
  if (!draft.open()) return {};
  const QString name = draft.fileName();
  if (name.isEmpty()) return {};  // it was opened without one, and the folder takes none any more
  {
    QSettings settings(name, QSettings::IniFormat);
    for (auto each = values_.begin(); each != values_.end(); ++each) settings.setValue(each.key(), each.value());
  }
  const QSettings again(name, QSettings::IniFormat);
  const bool isComplete = std::all_of(values_.keyBegin(), values_.keyEnd(),
                                      [&](const QString& key) { return again.value(key) == values_.value(key); });
  QFile written(name);
  return isComplete && isWhole(name) && written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
}

}  // namespace velmora
