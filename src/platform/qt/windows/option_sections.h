#pragma once

#include <cstdint>

class QWidget;

namespace velmora {

struct ClientAndSound;
struct OptionsPage;

/// Lays out a section of the Options page, by its node of the tree, in a widget that `parent` owns. The controls
/// outlive it.
QWidget* makeSection(std::int16_t section, OptionsPage& page, ClientAndSound& bars, QWidget* parent);

}  // namespace velmora
