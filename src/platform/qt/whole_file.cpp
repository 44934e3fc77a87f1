#include "platform/qt/whole_file.h"

#include <QSaveFile>

namespace velmora {

bool writeWholeFile(const QString& path, QByteArrayView content) {
  QSaveFile file(path);
  // Buffered, it would take a write that a full disk cut short for a whole one.
  return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
         file.write(content.data(), content.size()) == content.size() && file.commit();
}

}  // namespace velmora
