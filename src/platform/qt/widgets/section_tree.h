#pragma once

#include <QListWidget>

namespace velmora {

struct TreeView;

/// Shows the nodes of a tree of one storey, as wide as their texts. What is selected is selected at once, by mouse or
/// keys.
class SectionTree : public QListWidget {
 public:
  /// `tree` outlives the widget.
  SectionTree(TreeView& tree, const QString& name, QWidget* parent);

  QSize sizeHint() const override;

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void selectionChanged(const QItemSelection& added, const QItemSelection& removed) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;

 private:
  void showNode();

  TreeView& tree_;
  bool showing_ = false;  ///< the screen follows the control, not the other way round
};

}  // namespace velmora
