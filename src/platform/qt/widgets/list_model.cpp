#include "platform/qt/widgets/list_model.h"

#include <QFont>
#include <utility>

#include "platform/qt/strings.h"
#include "platform/qt/widgets/harmless_text.h"

namespace velmora {

namespace {

int alignment(const ListView::Column& column) {
  return static_cast<int>(Qt::AlignVCenter | (column.AlignRight ? Qt::AlignRight : Qt::AlignLeft));
}

QString sortState(const std::string& picture) {
  if (picture == "Ascending") return ", sorted ascending";
  if (picture == "Descending") return ", sorted descending";
  return {};
}

QVariant boldFont() {
  QFont font;
  font.setBold(true);
  return font;
}

}  // namespace

ListModel::ListModel(ListView& list, ImageList rowPictures, ImageList headerPictures, QObject* parent)
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

int ListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(list_.Rows().size());
}

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(list_.Columns.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};  // what a copy asks for where no row is the current one
  const ListRows& rows = list_.Rows();
  const auto row = static_cast<std::size_t>(index.row());
  const auto column = static_cast<std::size_t>(index.column());
  switch (role) {
    case Qt::DisplayRole:
      return harmlessLine(rows.text(row, column));
    case Qt::DecorationRole:
      return column == 0 ? rowPictures_.icon(rows.look(row).Picture) : QVariant();
    case Qt::FontRole:
      return rows.look(row).Bold ? boldFont() : QVariant();
    case Qt::TextAlignmentRole:
      return alignment(list_.Columns[column]);
    case Qt::AccessibleDescriptionRole:
      return qt(rows.look(row).Picture);
    default:
      return {};
  }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  const auto& column = list_.Columns.at(static_cast<std::size_t>(section));
  switch (role) {
    case Qt::DisplayRole:
      return qt(column.Text);
    case Qt::DecorationRole:
      // A blank picture would move the text away from that of the cells.
      return column.Picture == "Blank" ? QVariant() : headerPictures_.icon(column.Picture);
    case Qt::TextAlignmentRole:
      return alignment(column);
    case Qt::AccessibleTextRole:
      return qt(column.Text) + sortState(column.Picture);
    default:
      return {};
  }
}

}  // namespace velmora
