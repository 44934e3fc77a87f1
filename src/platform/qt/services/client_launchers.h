#pragma once

#include <QString>

namespace velmora {

/// Lays a link NAME.exe to the desktop entry of each mail program that the desktop knows into this folder, which is
/// made where there is need of it, and takes away those that lead to no such entry any more. A list beside them tells
/// which links are the program's own; all else in the folder is the user's, and so is a link that leads elsewhere than
/// the list says. Failures are silent.
void layLaunchers(const QString& folder);

/// The desktop entry that a link leads to, over other links or at once; blank where the path leads to none.
QString entryBehind(const QString& path);

}  // namespace velmora
