#pragma once

class QWidget;

namespace velmora {

struct RulesPage;

/// Lays out the Rules page inside `parent`, which owns it. `page` outlives it.
QWidget* makeRulesPage(RulesPage& page, QWidget* parent);

}  // namespace velmora
