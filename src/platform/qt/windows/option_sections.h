#pragma once

#include <cstddef>

class QWidget;

namespace velmora {

struct ClientAndSound;
struct OptionsPage;

/// Lays out a section of the Options page, numbered from 0, in a widget that `parent` owns. The controls outlive it.
QWidget* makeSection(std::size_t section, OptionsPage& page, ClientAndSound& bars, QWidget* parent);

}  // namespace velmora
