#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <optional>

namespace velmora {

/// Writes a file that its owner alone can read, or replaces one as a whole. Returns whether that succeeded; what was
/// there stays where it did not.
bool writeWholeFile(const QString& path, QByteArrayView content);

/// What a plain file holds; nothing where it can't be read or has more bytes than `largest`.
std::optional<QByteArray> readWholeFile(const QString& path, qint64 largest);

}  // namespace velmora
