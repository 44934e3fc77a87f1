#include "platform/qt/services/whole_file.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "platform/qt/services/private_files.h"

namespace velmora {

bool writeWholeFile(const QString& path, QByteArrayView content) {
  QSaveFile file(path);
  // Buffered, it would take a write that a full disk cut short for a whole one.
  if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return false;
  file.setPermissions(ownersFile);  // before there is anything in it; a disk that knows no rights is the user's choice
  return file.write(content.data(), content.size()) == content.size() && file.commit();
}

std::optional<QByteArray> readWholeFile(const QString& path, qint64 largest) {
  QFile file(path);
  if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  QByteArray content = file.read(largest + 1);
  if (file.error() != QFileDevice::NoError || content.size() > largest) return std::nullopt;
  return content;
}

}  // namespace velmora
