#pragma once

#include <QByteArrayView>
#include <QString>

namespace velmora {

/// Writes a file, or replaces it as a whole. Returns whether that succeeded; what was there stays where it did not.
bool writeWholeFile(const QString& path, QByteArrayView content);

}  // namespace velmora
