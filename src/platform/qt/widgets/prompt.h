#pragma once

#include "platform/controls/property.h"

class QLabel;
class QString;
class QWidget;

namespace velmora {

/// Names an input after the label in front of it, whose letter leads to it.
void nameInput(QLabel& label, QWidget& input);

/// Makes the label in front of an input, beside which it stands. `text` has the letter that leads to it.
QLabel* makePrompt(const QString& text, QWidget* input);

/// The same, grey while the input is off.
QLabel* makePrompt(const QString& text, QWidget* input, Property<bool>& enabled);

}  // namespace velmora
