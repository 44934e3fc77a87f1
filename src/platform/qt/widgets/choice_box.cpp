#include "platform/qt/widgets/choice_box.h"

#include <QWheelEvent>
#include <algorithm>

#include "platform/controls/combo_box.h"
#include "platform/qt/widgets/harmless_text.h"

namespace velmora {

ChoiceBox::ChoiceBox(ComboBox& box, const QString& name, QWidget* parent) : QComboBox(parent), box_(box) {
  constexpr int usualLength = 6;
  setObjectName(name);
  setFocusPolicy(Qt::StrongFocus);  // a wheel that turns the page must not bring the keyboard here
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);  // whatever a file may name
  setMinimumContentsLength(usualLength);
  box.List.watch([this](const auto&) { refill(); });
  box.Text.watch([this](const std::string&) { showChoice(); });
  box.Enabled.watch([this](bool on) { setEnabled(on); });
  connect(this, &QComboBox::activated, this, [this](int item) {
    const auto& list = box_.List.get();
    const auto index = static_cast<std::size_t>(item);
    box_.Choose(std::string(index < list.size() ? list[index] : box_.Text.get()));
  });
}

void ChoiceBox::wheelEvent(QWheelEvent* event) { event->ignore(); }

void ChoiceBox::refill() {
  clear();
  for (const std::string& item : box_.List.get()) addItem(harmlessLine(item));
  showChoice();
}

/// A text that isn't in the list stands behind it, for as long as it is the choice.
void ChoiceBox::showChoice() {
  const auto& list = box_.List.get();
  const std::string& text = box_.Text.get();
  const auto listed = static_cast<int>(list.size());
  if (count() > listed) removeItem(listed);
  const auto place = static_cast<int>(std::ranges::find(list, text) - list.begin());
  if (place == listed && !text.empty()) addItem(harmlessLine(text));
  setCurrentIndex(text.empty() ? -1 : place);
}

}  // namespace velmora
