#pragma once

class QScrollArea;
class QWidget;

namespace velmora {

/// Makes an area inside `parent`, which owns it, that scrolls what it has no room for. It goes where the keyboard goes.
QScrollArea* makeScrolled(QWidget* content, QWidget* parent);

}  // namespace velmora
