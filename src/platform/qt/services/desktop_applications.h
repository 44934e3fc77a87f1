#pragma once

#include <QString>
#include <QStringList>
#include <map>

namespace velmora {

/// The applications that the desktop knows for writing mail: by the identifier of each, without its ending, the path of
/// its desktop entry.
std::map<QString, QString> mailApplications();

/// Starts the application of a desktop entry the way the desktop does it, to open these addresses if any, and sets the
/// number of its process where that is known. Returns whether it could be started: not where the entry is none, or
/// where its program is gone.
bool startApplication(const QString& entry, const QStringList& addresses, qint64& process);

/// Opens an address ("https:", "mailto:", "file:") with the application that the desktop has for its kind, a file by
/// what it holds. Returns whether one could be started.
bool openWithApplication(const QString& address);

/// What shows the application of a desktop entry: the path of a picture, or names in the desktop's theme, best first.
/// None where the entry names none.
QStringList applicationPictures(const QString& entry);

}  // namespace velmora
