#include "platform/qt/qt_settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "platform/qt/strings.h"

namespace velmora {

namespace {

constexpr auto ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

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

/// Before there is anything in it: the file that replaces it later takes over who may read it.
void makePrivate(const QString& file) {
  QDir().mkpath(QFileInfo(file).path());
  QFile made(file);
  if (!made.exists() && !made.open(QIODevice::WriteOnly | QIODevice::NewOnly, ownerOnly)) return;
  made.setPermissions(ownerOnly);
}

}  // namespace

QtSettings::QtSettings()
    : settings_("Kestrum", "Velmora"),
      damaged_(settings_.status() != QSettings::NoError || !isWhole(settings_.fileName())) {
  settings_.setFallbacksEnabled(false);
  if (!damaged_) makePrivate(settings_.fileName());
}

std::string QtSettings::GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const {
  return utf8(textOf(settings_.value(pathOf(section, key), qt(fallback))));
}

void QtSettings::SaveSetting(std::string_view section, std::string_view key, std::string_view value) {
  if (!damaged_) settings_.setValue(pathOf(section, key), qt(value));
}

void QtSettings::DeleteSetting(std::string_view section, std::string_view key) {
  if (!damaged_) settings_.remove(pathOf(section, key));
}

}  // namespace velmora
