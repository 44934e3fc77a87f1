#pragma once

#include <QIcon>
#include <vector>

namespace velmora {

/// The pictures laid upon each other, lowest first, as one. Each size is drawn for itself, so that it is sharp.
QIcon stackedIcon(std::vector<QIcon> layers);

}  // namespace velmora
