#include "platform/qt/services/private_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace velmora {

namespace {

/// Where users have no numbers, every file is taken for the user's own.
unsigned userOf([[maybe_unused]] const QFileInfo& file) {
#ifdef Q_OS_UNIX
  return geteuid();
#else
  return file.ownerId();
#endif
}

}  // namespace

bool isPrivate(QFileDevice::Permissions rights, unsigned owner, unsigned user) {
  constexpr auto others =
      QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther | QFileDevice::WriteOther;
  return owner == user && !(rights & others);
}

bool makePrivate(const QString& path) {
  const QFileInfo before(path);
  if (!before.exists()) return true;
  const unsigned user = userOf(before);
  // The superuser could change what belongs to others, but it is not his to change.
  if (before.ownerId() != user) return false;
  QFile::setPermissions(path, before.isDir() ? ownersFolder : ownersFile);
  // Some disks take the rights without a word and keep none.
  return isPrivate(QFileInfo(path).permissions(), before.ownerId(), user);
}

bool makePrivateFolder(const QString& folder) {
  const QDir dir(folder);
  if (!dir.exists()) {
    QDir().mkpath(QFileInfo(folder).path());
    QDir().mkdir(folder, ownersFolder);
  }
  return makePrivate(folder);
}

std::optional<QString> openToOthers(const QString& file) {
  const QString folder = QFileInfo(file).path();
  if (!makePrivateFolder(folder)) return folder;
  if (!makePrivate(file)) return file;
  return std::nullopt;
}

}  // namespace velmora
