#include "platform/qt/services/qt_settings.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStringDecoder>
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

/// The library would read other bytes as replacement characters, and write those.
bool isUtf8(const QByteArray& text) {
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString decoded = decoder(text);
  return !decoder.hasError();
}

/// The library that reads the file skips what it doesn't understand, and would write the rest back without it.
bool isSettingsLine(const QByteArray& line) {
  const QByteArray text = line.trimmed();
  if (text.contains('\0') || !isUtf8(text)) return false;
  if (text.isEmpty() || text.startsWith(';')) return true;
  return hasPairedQuotes(text) && text.contains(text.startsWith('[') ? ']' : '=');
}

/// What a file of the program's own begins and ends with, so that one that was cut at the end of a line is known for
/// what it is. One that was written by hand needs neither.
constexpr const char* firstLine = "; Settings of Velmora. The last line tells that nothing is missing.\n";
constexpr const char* lastLine = "; Nothing is missing.\n";

/// The lines of a file that can be trusted. The end of one that was cut may be half a value.
QByteArray goodLines(const QByteArray& bytes) {
  QByteArrayList lines = bytes.split('\n');
  lines.removeLast();
  lines.removeIf([](const QByteArray& line) { return !isSettingsLine(line); });
  return lines.isEmpty() ? QByteArray() : lines.join('\n') + '\n';
}

/// Without what an editor may add in front or take from the end of a file that it leaves whole.
QByteArray plain(QByteArray bytes) {
  if (bytes.startsWith("\xEF\xBB\xBF")) bytes.remove(0, 3);
  if (bytes.endsWith(QByteArray(lastLine).chopped(1))) bytes.append('\n');
  return bytes;
}

bool isWhole(const QByteArray& bytes) {
  return goodLines(bytes) == bytes && (!bytes.startsWith(firstLine) || bytes.contains(lastLine));
}

using Values = QMap<QString, QVariant>;

struct Contents {
  Values values;
  bool whole = true;
};

Contents valuesIn(const QString& name) {
  const QSettings settings(name, QSettings::IniFormat);
  Contents contents;
  for (const QString& key : settings.allKeys()) contents.values.insert(key, settings.value(key));
  contents.whole = settings.status() == QSettings::NoError;
  return contents;
}

bool openDraft(QTemporaryFile& draft, const QString& folder) {
  draft.setFileTemplate(folder + "/Velmora.XXXXXX.draft");
  return draft.open() && !draft.fileName().isEmpty();  // a folder that takes none any more gives one without a name
}

/// Of a damaged file the good lines count. The library reads them from a draft, since a quotation mark without its
/// partner would swallow them.
Contents contentsOf(const QString& name) {
  QFile file(name);
  if (!file.exists()) return {};
  if (!file.open(QIODevice::ReadOnly)) return {{}, false};
  const QByteArray bytes = plain(file.readAll());
  if (isWhole(bytes)) return valuesIn(name);
  QTemporaryFile draft;
  if (!openDraft(draft, QFileInfo(name).path())) return {{}, false};
  draft.write(goodLines(bytes));
  draft.flush();
  return {valuesIn(draft.fileName()).values, false};
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
/// short. So it does so in a draft, which is read back.
QByteArray composed(const Values& values, const QString& folder) {
  QTemporaryFile draft;
  if (!openDraft(draft, folder)) return {};
  {
    QSettings settings(draft.fileName(), QSettings::IniFormat);
    for (auto each = values.begin(); each != values.end(); ++each) settings.setValue(each.key(), each.value());
  }
  QFile written(draft.fileName());
  if (valuesIn(written.fileName()).values != values || !written.open(QIODevice::ReadOnly)) return {};
  const QByteArray text = written.readAll();
  return isWhole(text) ? firstLine + text + lastLine : QByteArray();
}

std::string reason(const char* words, const QString& file) { return words + utf8(file); }

}  // namespace

QtSettings::QtSettings() : open_(openToOthers(file_)) {
  if (open_) return;
  removeOldDrafts(QFileInfo(file_).path());
  Contents found = contentsOf(file_);
  stored_ = std::move(found.values);
  damaged_ = !found.whole;
}

QString QtSettings::fileName() { return QSettings("Kestrum", "Velmora").fileName(); }

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

/// A file that has gone, or was emptied, is made anew from what was read of it: somebody may be replacing it just now.
std::optional<std::string> QtSettings::write(const Values& changes) {
  if (const auto open = open_ ? open_ : openToOthers(file_))
    return reason("Other users can read or change this:\r\n", *open);
  Contents now = contentsOf(file_);
  if (damaged_ || !now.whole) return reason("The settings file is damaged and left as it is:\r\n", file_);
  if (changes.isEmpty()) return std::nullopt;
  Values values = now.values.isEmpty() ? stored_ : std::move(now.values);
  for (auto each = changes.begin(); each != changes.end(); ++each) {
    values.insert(each.key(), each.value());
    if (!each->isValid()) values.remove(each.key());
  }
  const QByteArray text = composed(values, QFileInfo(file_).path());
  if (text.isEmpty() || !writeWholeFile(file_, text)) {
    return reason("The disk may be full, or this file or its folder read-only:\r\n", file_);
  }
  stored_ = std::move(values);
  return std::nullopt;
}

}  // namespace velmora
