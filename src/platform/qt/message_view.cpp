#include "platform/qt/message_view.h"

#include <QAbstractTableModel>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <set>

#include "platform/qt/focus_watcher.h"
#include "platform/qt/icons.h"
#include "platform/qt/strings.h"

namespace velmora {

namespace {

/// Gives a view the rows of a list control.
class ListModel : public QAbstractTableModel {
 public:
  ListModel(ListView& list, ImageList rowPictures, ImageList headerPictures, QObject* parent)
      : QAbstractTableModel(parent),
        list_(list),
        rowPictures_(std::move(rowPictures)),
        headerPictures_(std::move(headerPictures)) {
    list.rowsChanged.watch([this] {
      beginResetModel();
      endResetModel();
    });
    for (int section = 0; section < static_cast<int>(list.Columns.size()); ++section) {
      list.Columns[static_cast<std::size_t>(section)].Picture.watch(
          [this, section](const std::string&) { emit headerDataChanged(Qt::Horizontal, section, section); });
    }
  }

  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(list_.Rows().size());
  }

  int columnCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(list_.Columns.size());
  }

  QVariant data(const QModelIndex& index, int role) const override {
    const auto& row = list_.Rows().at(static_cast<std::size_t>(index.row()));
    const auto column = static_cast<std::size_t>(index.column());
    switch (role) {
      case Qt::DisplayRole:
        return qt(row.Cells.at(column));
      case Qt::DecorationRole:
        return column == 0 ? rowPictures_.icon(row.Picture) : QVariant();
      case Qt::FontRole:
        return row.Bold ? boldFont() : QVariant();
      case Qt::TextAlignmentRole:
        return static_cast<int>(Qt::AlignVCenter | (list_.Columns[column].AlignRight ? Qt::AlignRight : Qt::AlignLeft));
      case Qt::AccessibleDescriptionRole:
        return qt(row.Picture);
      default:
        return {};
    }
  }

  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (orientation != Qt::Horizontal) return {};
    const auto& column = list_.Columns.at(static_cast<std::size_t>(section));
    if (role == Qt::DisplayRole) return qt(column.Text);
    if (role == Qt::DecorationRole) return headerPictures_.icon(column.Picture);
    return {};
  }

 private:
  static QVariant boldFont() {
    QFont font;
    font.setBold(true);
    return font;
  }

  ListView& list_;
  ImageList rowPictures_;
  ImageList headerPictures_;
};

void tell(const std::function<void()>& event) {
  if (event) event();
}

}  // namespace

MessageView::MessageView(ListView& list, const ImageList& rowPictures, const ImageList& headerPictures, QWidget* parent)
    : QTreeView(parent), list_(list) {
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAlternatingRowColors(true);
  setSelectionMode(ExtendedSelection);
  setMouseTracking(true);
  // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the view owns it
  setModel(new ListModel(list, rowPictures, headerPictures, this));
  followWidths();
  list_.Enabled.watch([this](bool on) { setEnabled(on); });
  list_.selectionChanged.watch([this] { showSelection(); });
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { takeSelection(); });
  watchFocus(*this, [this] { tell(list_.GotFocus); });
}

void MessageView::followWidths() {
  header()->setStretchLastSection(false);
  header()->setSectionsMovable(false);
  for (int section = 0; section < static_cast<int>(list_.Columns.size()); ++section) {
    list_.Columns[static_cast<std::size_t>(section)].Width.watch(
        [this, section](std::int32_t width) { header()->resizeSection(section, width); });
  }
  connect(header(), &QHeaderView::sectionResized, this, [this](int section, int /*oldWidth*/, int width) {
    list_.Columns.at(static_cast<std::size_t>(section)).Width = width;
  });
}

void MessageView::takeSelection() {
  std::set<std::int32_t> rows;
  for (const auto& index : selectionModel()->selectedRows()) rows.insert(index.row() + 1);
  list_.UserSelected(std::move(rows));
}

void MessageView::showSelection() {
  const QSignalBlocker quiet(selectionModel());
  for (const auto& index : selectionModel()->selectedRows()) {
    if (list_.IsSelected(index.row() + 1)) continue;
    selectionModel()->select(index, QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
  }
  viewport()->update();
}

void MessageView::choose(bool onRow) {
  if (onRow) tell(list_.ItemClick);
  tell(list_.Click);
}

void MessageView::mouseMoveEvent(QMouseEvent* event) {
  QTreeView::mouseMoveEvent(event);
  if (list_.MouseMove) list_.MouseMove(indexAt(event->position().toPoint()).row() + 1);
}

void MessageView::mouseReleaseEvent(QMouseEvent* event) {
  QTreeView::mouseReleaseEvent(event);
  if (event->button() == Qt::LeftButton) choose(indexAt(event->position().toPoint()).isValid());
}

void MessageView::mouseDoubleClickEvent(QMouseEvent* event) {
  QTreeView::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton) tell(list_.DblClick);
}

void MessageView::contextMenuEvent(QContextMenuEvent* /*event*/) { tell(list_.RightClick); }

void MessageView::keyPressEvent(QKeyEvent* event) {
  const auto before = selectionModel()->selectedRows();
  QTreeView::keyPressEvent(event);
  if (selectionModel()->selectedRows() != before) choose(true);
}

void MessageView::leaveEvent(QEvent* event) {
  QTreeView::leaveEvent(event);
  if (list_.MouseMove) list_.MouseMove(0);
}

}  // namespace velmora
