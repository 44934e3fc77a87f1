#include "platform/qt/services/qt_settings.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryFile>
#include <algorithm>
#include <utility>

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

/// The library puts values into a file's words, but only in a file, and it doesn't notice where a full disk cuts that
/// short. So it does so in a draft in the same folder, which is read back.
QByteArray composed(const QMap<QString, QVariant>& values, const QString& folder) {
  QTemporaryFile draft(folder + "/Velmora.XXXXXX.draft");
  if (!draft.open()) return {};
  const QString name = draft.fileName();
  if (name.isEmpty()) return {};  // it was opened without one, and the folder takes none any more
  {
    QSettings settings(name, QSettings::IniFormat);
    for (auto each = values.begin(); each != values.end(); ++each) settings.setValue(each.key(), each.value());
  }
  const QSettings again(name, QSettings::IniFormat);
  const bool isComplete = std::all_of(values.keyBegin(), values.keyEnd(),
                                      [&](const QString& key) { return again.value(key) == values.value(key); });
  QFile written(name);
  return isComplete && isWhole(name) && written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
}

std::string reason(const char* words, const QString& file) { return words + utf8(file); }

}  // namespace

QtSettings::QtSettings()
    : file_(QSettings("Kestrum", "Velmora").fileName()),
      open_(openToOthers(file_)),
      damaged_(!open_ && (!isWhole(file_) || !read())) {
  if (!open_) removeOldDrafts(QFileInfo(file_).path());
}

bool QtSettings::read() {
  const QSettings settings(file_, QSettings::IniFormat);
  stored_.clear();
  for (const QString& key : settings.allKeys()) stored_.insert(key, settings.value(key));
  return settings.status() == QSettings::NoError;
}

std::string QtSettings::GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const {
  const QString path = pathOf(section, key);
  const QVariant value = changes_.contains(path) ? changes_.value(path) : stored_.value(path);
  return value.isValid() ? utf8(textOf(value)) : std::string(fallback);
}

void QtSettings::SaveSetting(std::string_view section, std::string_view key, std::string_view value) {
  changes_.insert(pathOf(section, key), qt(value));
}

void QtSettings::DeleteSetting(std::string_view section, std::string_view key) {
  changes_.insert(pathOf(section, key), {});
}

std::optional<std::string> QtSettings::Keep() { return write(std::exchange(changes_, {})); }

/// A file that has gone is made anew from what was read of it: somebody may be replacing it just now.
std::optional<std::string> QtSettings::write(const Values& changes) {
  if (const auto open = open_ ? open_ : openToOthers(file_))
    return reason("Other users can read or change this:\r\n", *open);
  const bool isThere = QFile::exists(file_);
  if (damaged_ || (isThere && !isWhole(file_)))
    return reason("The settings file is damaged and left as it is:\r\n", file_);
  if (changes.isEmpty()) return std::nullopt;
  if (isThere) read();
  Values values = stored_;
  for (auto each = changes.begin(); each != changes.end(); ++each) {
    each->isValid() ? void(values.insert(each.key(), *each)) : void(values.remove(each.key()));
  }
  const QByteArray text = composed(values, QFileInfo(file_).path());
  if (text.isEmpty() || !writeWholeFile(file_, text)) {
    return reason("The disk may be full, or this file or its folder read-only:\r\n", file_);
  }
  stored_ = values;
  return std::nullopt;
}

}  // namespace velmora
