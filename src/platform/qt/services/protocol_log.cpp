#include "platform/qt/services/protocol_log.h"

#include <QDateTime>
#include <QFileInfo>

#include "platform/qt/services/private_files.h"

namespace velmora {

ProtocolLog::ProtocolLog(const QString& path) : file_(path) {
  const QFileInfo file(path);
  former_ = file.path() + '/' + file.completeBaseName() + "-before." + file.suffix();
  QFile::remove(former_);
  file_.remove();
  begin();
}

void ProtocolLog::write(std::string_view line) {
  QByteArray bytes = QDateTime::currentDateTime().toString("yyyy-MM-dd HH:mm:ss.zzz ").toLatin1();
  bytes.append(line.data(), static_cast<qsizetype>(line.size())).append('\n');
  if (file_.isOpen() && file_.pos() + bytes.size() > largest) beginNext();
  if (file_.isOpen() && file_.write(bytes) != bytes.size()) file_.close();
}

/// Only a file that it makes itself is opened, with its rights from the first moment on.
void ProtocolLog::begin() { file_.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered, ownersFile); }

void ProtocolLog::beginNext() {
  const QString path = file_.fileName();
  file_.close();
  QFile::remove(former_);
  if (!QFile::rename(path, former_)) QFile::remove(path);  // something else has the former one's place
  begin();
}

}  // namespace velmora
