#include "platform/qt/widgets/check_list_view.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <utility>

#include "platform/controls/check_list.h"
#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/widgets/tips.h"
#include "platform/set_for_now.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): Qt's objects are owned by their parents

namespace velmora {

/// Gives the view the items one by one as it asks for them.
class CheckListModel : public QAbstractListModel {
 public:
  CheckListModel(CheckList& list, QObject* parent) : QAbstractListModel(parent), list_(list) {}

  /// Items have no identity but their place: a list that has grown or shrunk has done so at its end, and any of the
  /// others may have changed.
  void takeItems() {
    const int count = static_cast<int>(list_.Items().size());
    if (count > shown_) {
      beginInsertRows({}, shown_, count - 1);
      shown_ = count;
      endInsertRows();
    } else if (count < shown_) {
      beginRemoveRows({}, count, shown_ - 1);
      shown_ = count;
      endRemoveRows();
    }
    if (count > 0) emit dataChanged(index(0), index(count - 1));
  }

  void takeItem(std::int16_t number) { emit dataChanged(index(number - 1), index(number - 1)); }

  int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : shown_; }

  QVariant data(const QModelIndex& index, int role) const override {
    const auto row = static_cast<std::size_t>(index.row());
    if (!index.isValid() || row >= list_.Items().size()) return {};
    const CheckList::Item& item = list_.Items()[row];
    if (role == Qt::DisplayRole) return harmlessLine(item.Text);
    if (role == Qt::AccessibleDescriptionRole) return item.Checked ? "ticked" : "not ticked";
    if (role == Qt::CheckStateRole) return static_cast<int>(item.Checked ? Qt::Checked : Qt::Unchecked);
    return {};
  }

  bool setData(const QModelIndex& index, const QVariant& value, int role) override {
    if (role != Qt::CheckStateRole || !index.isValid()) return false;
    list_.Tick(static_cast<std::int16_t>(index.row() + 1), value.toInt() == Qt::Checked);
    return true;
  }

  Qt::ItemFlags flags(const QModelIndex& index) const override {
    return QAbstractListModel::flags(index) | Qt::ItemIsUserCheckable;
  }

 private:
  CheckList& list_;
  int shown_ = 0;
};

namespace {

/// Shortens a text to the list's width, and tells all of it in a tip.
class ShorteningDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    constexpr int gap = 4;
    return {0, QStyledItemDelegate::sizeHint(option, index).height() + gap};
  }

  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override {
    if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);
    const bool isCut = QStyledItemDelegate::sizeHint(option, index).width() > option.rect.width();
    const std::string text = isCut ? index.data().toString().toStdString() : std::string();
    showTip(text, event->globalPos(), *view->viewport(), option.rect);
    return true;
  }
};

}  // namespace

CheckListView::CheckListView(CheckList& list, const QString& name, QWidget* parent)
    : QListView(parent), list_(list), model_(new CheckListModel(list, this)) {
  setObjectName(name);
  setUniformItemSizes(true);
  setEditTriggers(NoEditTriggers);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setItemDelegate(new ShorteningDelegate(this));
  setModel(model_);
  showItems();
  list.itemsChanged.watch([this] { showItems(); });
  list.itemChanged.watch([this](std::int16_t number) { model_->takeItem(number); });
  list.ListIndex.watch([this](std::int16_t) { showChoice(); });
  list.Enabled.watch([this](bool on) { setEnabled(on); });
  list.focus.watch([this] { setFocus(); });
}

/// The rows that go would hand the choice on.
void CheckListView::showItems() {
  const SetForNow showing(showing_, true);
  model_->takeItems();
  showChoice();
}

void CheckListView::showChoice() {
  const SetForNow showing(showing_, true);
  const QModelIndex choice = model_->index(list_.ListIndex - 1);
  if (choice == currentIndex()) return;
  if (!choice.isValid()) clearSelection();
  setCurrentIndex(choice);
}

void CheckListView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QListView::currentChanged(current, previous);
  const int number = current.row() + 1;
  if (!showing_) handedOn_ = false;
  if (!showing_ && number > 0 && number != list_.ListIndex.get()) list_.Choose(static_cast<std::int16_t>(number));
}

/// A screen reader selects what it wants to be chosen.
void CheckListView::selectionChanged(const QItemSelection& added, const QItemSelection& removed) {
  QListView::selectionChanged(added, removed);
  if (!showing_ && !added.isEmpty()) setCurrentIndex(added.first().topLeft());
}

/// A button that has gone off while it was pressed by the key may have handed the keyboard on, and the user press once
/// more.
void CheckListView::focusInEvent(QFocusEvent* event) {
  handedOn_ = event->reason() == Qt::OtherFocusReason;
  QListView::focusInEvent(event);
}

void CheckListView::keyPressEvent(QKeyEvent* event) {
  if (std::exchange(handedOn_, false) && event->key() == Qt::Key_Space) return;
  if (event->key() != Qt::Key_Delete) {
    QListView::keyPressEvent(event);
  } else if (list_.DeleteKey) {
    list_.DeleteKey();
  }
}

/// What is chosen is seen, whichever keys are held down, and a click beside the items takes nothing away.
QItemSelectionModel::SelectionFlags CheckListView::selectionCommand(const QModelIndex& index,
                                                                    const QEvent* /*event*/) const {
  return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
