#include "platform/qt/widgets/section_tree.h"

#include <QScrollBar>

#include "platform/controls/tree_view.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/icons.h"
#include "platform/set_for_now.h"

namespace velmora {

SectionTree::SectionTree(TreeView& tree, const QString& name, QWidget* parent) : QListWidget(parent), tree_(tree) {
  setObjectName(name);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  const ImageList images(tree.ImageList);
  for (const TreeView::Node& node : tree.Nodes) {
    // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the list owns it
    new QListWidgetItem(images.icon(node.Picture), qt(node.Text), this);
  }
  tree.SelectedItem.watch([this](std::int16_t) { showNode(); });
  tree.focus.watch([this] {
    if (isVisibleTo(window())) setFocus();  // else it would get the keys, and nobody see it
  });
}

QSize SectionTree::sizeHint() const {
  const int bar = verticalScrollBar()->sizeHint().width();
  return {sizeHintForColumn(0) + bar + 2 * frameWidth(), sizeHintForRow(0) * count() + 2 * frameWidth()};
}

void SectionTree::showNode() {
  const SetForNow showing(showing_, true);
  setCurrentRow(tree_.SelectedItem - 1);
}

/// The control may answer with another node than the one chosen.
void SectionTree::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QListWidget::currentChanged(current, previous);
  const int node = current.row() + 1;
  if (!showing_ && node > 0 && node != tree_.SelectedItem.get()) tree_.Select(static_cast<std::int16_t>(node));
}

/// A screen reader selects what it wants to be chosen.
void SectionTree::selectionChanged(const QItemSelection& added, const QItemSelection& removed) {
  QListWidget::selectionChanged(added, removed);
  if (!showing_ && !added.isEmpty()) setCurrentRow(added.first().top());
}

/// A section always shows, whichever keys are held down, and a click beside the nodes takes nothing away.
QItemSelectionModel::SelectionFlags SectionTree::selectionCommand(const QModelIndex& index,
                                                                  const QEvent* /*event*/) const {
  return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

}  // namespace velmora
