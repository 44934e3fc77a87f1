#include "platform/qt/windows/message_list_view.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>
#include <limits>

#include "platform/controls/text_box.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/focus_watcher.h"
#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/widgets/hint_colour.h"
#include "platform/qt/widgets/list_model.h"
#include "platform/qt/widgets/tips.h"

namespace velmora {

namespace {

void tell(const std::function<void()>& event) {
  if (event) event();
}

/// Reaches to the right edge, where the columns are narrower.
class Header : public QHeaderView {
 public:
  explicit Header(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

 protected:
  void paintEvent(QPaintEvent* event) override {
    QHeaderView::paintEvent(event);
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.rect = viewport()->rect();
    option.rect.setLeft(length() - offset());
    option.position = QStyleOptionHeader::End;
    QPainter painter(viewport());
    if (!option.rect.isEmpty()) style()->drawControl(QStyle::CE_HeaderSection, &option, &painter, this);
  }
};

}  // namespace

MessageListView::MessageListView(ListView& list, ToolTip& tip, const ImageList& rowPictures,
                                 const ImageList& headerPictures, QWidget* parent)
    : QTreeView(parent), list_(list), tip_(tip) {
  setRootIsDecorated(false);
  setHeader(new Header(this));                    // NOLINT(cppcoreguidelines-owning-memory): the view owns it
  setFrameStyle(QFrame::Panel | QFrame::Sunken);  // which has all its lines at every scaling
  setUniformRowHeights(true);
  setAlternatingRowColors(true);
  setSelectionMode(ExtendedSelection);
  setMouseTracking(true);
  setTabKeyNavigation(false);
  // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the view owns it
  setModel(new ListModel(list, rowPictures, headerPictures, this));
  followWidths();
  followHeader();
  measureMargins();
  list_.Enabled.watch([this](bool on) { setEnabled(on); });
  list_.EmptyText.watch([this](const std::string&) { describe(); });
  list_.rowsChanged.watch([this] { describe(); });
  list_.selectionChanged.watch([this] { showSelection(); });
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this](const QItemSelection& added) {
    takeSelection();
    if (choosing_) return;
    // A screen reader has chosen.
    if (!added.isEmpty()) selectionModel()->setCurrentIndex(added.first().topLeft(), QItemSelectionModel::NoUpdate);
    choose(selectionModel()->hasSelection());
  });
  watchFocus(*this, [this] {
    if (!pointerOnRow_) tell(list_.GotFocus);
  });
}

/// Says why the list is empty, where it is.
void MessageListView::describe() {
  setAccessibleDescription(list_.Rows().empty() ? qt(list_.EmptyText.get()) : QString());
  viewport()->update();
}

void MessageListView::followWidths() {
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

void MessageListView::followHeader() {
  header()->setSectionsClickable(true);
  header()->setHighlightSections(false);
  connect(header(), &QHeaderView::sectionClicked, this, [this](int section) {
    if (list_.ColumnClick) list_.ColumnClick(list_.Columns.at(static_cast<std::size_t>(section)).Text);
  });
  header()->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(header(), &QHeaderView::customContextMenuRequested, this, [this] { tell(list_.ColumnRightClick); });
}

/// Asks the style how much of a wide cell it leaves to the text.
void MessageListView::measureMargins() {
  constexpr int wide = 1000;
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.showDecorationSelected = true;  // as a tree sets it that selects whole rows
  option.text = "x";
  option.rect = QRect(0, 0, wide, option.decorationSize.height());
  const int besideText = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, this) + 1);
  for (std::size_t column = 0; column < list_.Columns.size(); ++column) {
    option.features = QStyleOptionViewItem::HasDisplay;
    if (column == 0) option.features |= QStyleOptionViewItem::HasDecoration;
    if (column == 0) list_.PictureWidth = style()->subElementRect(QStyle::SE_ItemViewItemText, &option, this).left();
    const int left = style()->subElementRect(QStyle::SE_ItemViewItemText, &option, this).width();
    list_.Columns[column].Margin = wide - left + besideText;
  }
}

int MessageListView::textWidth(const std::string& text, bool bold) const {
  QFont shown = font();
  shown.setBold(bold);
  return QFontMetrics(shown).horizontalAdvance(harmlessLine(text));
}

void MessageListView::tellPointer(const QPoint& position) {
  const int row = indexAt(position).row() + 1;
  pointerOnRow_ = row > 0;
  if (list_.MouseMove) list_.MouseMove(row, position.x() + header()->offset());
}

/// In ascending order, from 1. The model of the selection would be asked about each row by itself, and look at all of
/// its columns.
std::vector<std::int32_t> MessageListView::selectedRows() const {
  std::vector<std::int32_t> rows;
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row + 1);
  }
  std::sort(rows.begin(), rows.end());
  return rows;
}

void MessageListView::takeSelection() { list_.UserSelected(selectedRows(), currentIndex().row() + 1); }

void MessageListView::showSelection() {
  const QSignalBlocker quiet(selectionModel());
  QItemSelection kept;
  for (const std::int32_t row : selectedRows()) {
    const QModelIndex index = model()->index(row - 1, 0);
    if (list_.IsSelected(row)) kept.select(index, index);
  }
  selectionModel()->select(kept, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  viewport()->update();
}

void MessageListView::choose(bool onRow) {
  takeSelection();
  if (onRow) tell(list_.ItemClick);
  tell(list_.Click);
}

void MessageListView::mousePressEvent(QMouseEvent* event) {
  choosing_ = true;
  pressedAt_ = event->position().toPoint();
  QTreeView::mousePressEvent(event);
}

void MessageListView::mouseMoveEvent(QMouseEvent* event) {
  QTreeView::mouseMoveEvent(event);
  tellPointer(event->position().toPoint());
}

void MessageListView::mouseReleaseEvent(QMouseEvent* event) {
  QTreeView::mouseReleaseEvent(event);
  choosing_ = false;
  const QPoint position = event->position().toPoint();
  if (event->button() == Qt::RightButton) return;  // its menu follows
  tellPointer(position);
  // A drag may end beside the rows that it has selected.
  const bool dragged = (position - pressedAt_).manhattanLength() >= QApplication::startDragDistance();
  choose(dragged ? selectionModel()->hasSelection() : indexAt(position).isValid());
}

void MessageListView::mouseDoubleClickEvent(QMouseEvent* event) {
  QTreeView::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid()) tell(list_.DblClick);
}

QPoint MessageListView::placeAtRow() const {
  const QRect cell = visualRect(currentIndex());
  const bool inSight = viewport()->rect().contains(QPoint(0, cell.bottom()));
  return viewport()->mapToGlobal(inSight ? QPoint(0, cell.bottom()) : QPoint());
}

void MessageListView::contextMenuEvent(QContextMenuEvent* event) {
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  if (!byKey) tellPointer(event->pos());
  menuPlace_ = byKey ? placeAtRow() : event->globalPos();
  const bool onRow = byKey ? selectionModel()->hasSelection() : indexAt(event->pos()).isValid();
  choosing_ = false;
  takeSelection();
  if (onRow) tell(list_.ItemClick);
  tell(list_.RightClick);
}

void MessageListView::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    tell(list_.DblClick);
  } else if (key == Qt::Key_Delete) {
    tell(list_.DeleteKey);
  } else {
    const auto before = selectedRows();
    choosing_ = true;
    if ((key == Qt::Key_Down || key == Qt::Key_Up) && before.empty()) {
      setCurrentIndex(currentIndex().isValid() ? currentIndex() : model()->index(0, 0));
    } else {
      QTreeView::keyPressEvent(event);
    }
    choosing_ = false;
    if (selectedRows() != before) choose(selectionModel()->hasSelection());
  }
}

void MessageListView::leaveEvent(QEvent* event) {
  QTreeView::leaveEvent(event);
  pointerOnRow_ = false;
  if (list_.MouseMove) list_.MouseMove(0, std::numeric_limits<std::int32_t>::max());
}

bool MessageListView::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QTreeView::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const QModelIndex index = indexAt(help->pos());
  tellPointer(help->pos());
  showTip(index.isValid() ? std::string_view(tip_.ToolText.get()) : std::string_view(), help->globalPos(), *viewport(),
          visualRect(index), tip_.DelayTime);
  return true;
}

void MessageListView::paintEvent(QPaintEvent* event) {
  QTreeView::paintEvent(event);
  if (!list_.Rows().empty() || list_.EmptyText.get().empty()) return;
  QPainter painter(viewport());
  painter.setPen(hintColour(palette()));
  painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, qt(list_.EmptyText.get()));
}

void MessageListView::changeEvent(QEvent* event) {
  QTreeView::changeEvent(event);
  if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange) measureMargins();
}

}  // namespace velmora
