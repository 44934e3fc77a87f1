#pragma once

#include <QListView>

namespace velmora {

class CheckList;
class CheckListModel;

/// A list of texts with a check box each. Items are read as they are painted, so that thousands of them cost nothing.
class CheckListView : public QListView {
 public:
  /// `list` outlives the view.
  CheckListView(CheckList& list, const QString& name, QWidget* parent);

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void selectionChanged(const QItemSelection& added, const QItemSelection& removed) override;
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;

 private:
  void showItems();
  void showChoice();

  CheckList& list_;
  CheckListModel* model_;
  bool handedOn_ = false;  ///< the keyboard came here by itself, and no key has followed yet
  bool showing_ = false;   ///< the view follows the program, not the user
};

}  // namespace velmora
