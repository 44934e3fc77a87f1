#include "platform/qt/services/client_launchers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <array>
#include <map>
#include <string>

#include "platform/file_name.h"
#include "platform/qt/services/desktop_applications.h"
#include "platform/qt/services/private_files.h"
#include "platform/qt/services/whole_file.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/harmless_text.h"

namespace velmora {

namespace {

using Launchers = std::map<QString, QString>;  // by name, the desktop entry that each leads to

/// Bytes of the longest list that is believed.
constexpr qint64 longestList = qint64{1} << 20U;

QString listIn(const QString& folder) { return folder + "/.launchers"; }

/// A file's name may hold anything: one that would not show as it is, or not show at all, is nobody's to choose.
bool isLauncher(const QString& name, const QString& entry) {
  static const std::array<std::string, 1> endings{".exe"};
  return name.endsWith(".exe") && !name.contains('/') && name == qt(savedName(utf8(name), endings)) &&
         name == harmlessLine(utf8(name)) && QDir::isAbsolutePath(entry) && !entry.contains('\n');
}

Launchers wantedLaunchers() {
  Launchers wanted;
  for (const auto& [id, entry] : mailApplications()) {
    if (isLauncher(id + ".exe", entry)) wanted.emplace(id + ".exe", QDir::cleanPath(entry));
  }
  return wanted;
}

/// Of a list that is damaged, no line is believed.
Launchers readList(const QString& folder) {
  Launchers launchers;
  const auto content = readWholeFile(listIn(folder), longestList).value_or("");
  for (const QString& line : QString::fromUtf8(content).split('\n', Qt::SkipEmptyParts)) {
    const QString name = line.section('\t', 0, 0);
    const QString entry = line.section('\t', 1);
    if (!isLauncher(name, entry)) return {};
    launchers.emplace(name, entry);
  }
  return launchers;
}

bool writeList(const QString& folder, const Launchers& launchers) {
  QString content;
  for (const auto& [name, entry] : launchers) content += name + '\t' + entry + '\n';
  return writeWholeFile(listIn(folder), content.toUtf8());
}

bool has(const Launchers& launchers, const QString& name, const QString& entry) {
  const auto found = launchers.find(name);
  return found != launchers.end() && found->second == entry;
}

/// A link that leads nowhere is there as well.
bool isThere(const QString& path) { return QFileInfo::exists(path) || QFileInfo(path).isSymLink(); }

}  // namespace

void layLaunchers(const QString& folder) {
  const Launchers wanted = wantedLaunchers();
  if (wanted.empty() && !QFileInfo::exists(folder)) return;
  makePrivateFolder(folder);
  const Launchers listed = readList(folder);
  Launchers own;
  for (const auto& [name, entry] : listed) {
    const QString link = folder + '/' + name;
    if (QFileInfo(link).symLinkTarget() != entry) continue;
    if (has(wanted, name, entry)) {
      own.emplace(name, entry);
    } else {
      QFile::remove(link);
    }
  }
  for (const auto& [name, entry] : wanted) {
    if (!isThere(folder + '/' + name)) own.emplace(name, entry);
  }
  // Before the links are made: one that isn't in the list would stay for ever.
  if (own != listed && !writeList(folder, own)) return;
  for (const auto& [name, entry] : own) QFile::link(entry, folder + '/' + name);  // never over one that is there
}

QString entryBehind(const QString& path) {
  constexpr int mostLinks = 40;  // as many as the system follows
  QString place = path;
  for (int i = 0; i < mostLinks && !place.endsWith(".desktop"); ++i) place = QFileInfo(place).symLinkTarget();
  return QFileInfo(place).isFile() ? place : QString();
}

}  // namespace velmora
