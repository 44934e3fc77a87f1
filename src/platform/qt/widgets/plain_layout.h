#pragma once

class QWidget;

namespace velmora {

/// A layout without margins of its own, for parts that stand in other parts.
template <class Layout>
Layout* plainLayout(QWidget* parent) {
  auto* layout = new Layout(parent);  // NOLINT(cppcoreguidelines-owning-memory): its parent owns it
  layout->setContentsMargins(0, 0, 0, 0);
  return layout;
}

}  // namespace velmora
