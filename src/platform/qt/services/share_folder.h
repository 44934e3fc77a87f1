#pragma once

#include <QCoreApplication>
#include <QString>

namespace velmora {

/// Where the program's pictures and help lie. The build lays the program and this folder out as the installation does.
inline QString shareFolder() { return QCoreApplication::applicationDirPath() + "/../share/velmora"; }

}  // namespace velmora
