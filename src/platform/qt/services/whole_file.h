#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <memory>
#include <optional>

namespace velmora {

class FileDraft;

/// Begins a file that its owner alone can read, and that is put in its place as a whole; null where that can't be done.
std::unique_ptr<FileDraft> draftOf(const QString& path);

/// Writes such a file, or replaces one. Returns whether that succeeded; what was there stays where it did not.
bool writeWholeFile(const QString& path, QByteArrayView content);

/// What a plain file holds; nothing where it can't be read or has more bytes than `largest`.
std::optional<QByteArray> readWholeFile(const QString& path, qint64 largest);

}  // namespace velmora
