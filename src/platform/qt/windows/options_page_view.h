#pragma once

class QWidget;

namespace velmora {

struct ClientAndSound;
struct OptionsPage;

/// Lays out the controls of the Options page in a widget that `parent` owns. They outlive it.
QWidget* makeOptionsPage(OptionsPage& page, ClientAndSound& bars, QWidget* parent);

}  // namespace velmora
