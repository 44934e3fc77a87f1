#pragma once

class QWidget;

namespace velmora {

struct OptionsPage;

/// Lays out the controls of the Options page in a widget that `parent` owns. `options` outlives it.
QWidget* makeOptionsPage(OptionsPage& options, QWidget* parent);

}  // namespace velmora
