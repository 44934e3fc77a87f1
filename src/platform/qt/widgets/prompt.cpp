#include "platform/qt/widgets/prompt.h"

#include <QLabel>

namespace velmora {

/// Some screen readers go by the buddy of a label, others by the name.
void nameInput(QLabel& label, QWidget& input) {
  label.setBuddy(&input);
  input.setAccessibleName(label.text().remove('&').remove(':'));
}

QLabel* makePrompt(const QString& text, QWidget* input) {
  // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): its parent owns it
  auto* label = new QLabel(text, input->parentWidget());
  nameInput(*label, *input);
  return label;
}

QLabel* makePrompt(const QString& text, QWidget* input, Property<bool>& enabled) {
  auto* label = makePrompt(text, input);
  enabled.watch([label](bool on) { label->setEnabled(on); });
  return label;
}

}  // namespace velmora
