#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/controls/list_rows.h"
#include "platform/controls/property.h"
#include "platform/failure.h"

namespace velmora {

/// A list with columns. Rows are numbered from 1; several may be selected.
class ListView {
 public:
  struct Column {
    std::string Text;
    Property<std::int32_t> Width;
    std::int32_t Margin = 9;  ///< how much of the width a cell's text doesn't get; kept by the desktop
    Property<std::string> Picture;
    bool AlignRight = false;
  };

  ListView(std::initializer_list<const char*> columns) {
    for (const char* text : columns) Columns.emplace_back().Text = text;
  }

  std::deque<Column> Columns;
  std::int32_t PictureWidth = 20;  ///< how far a row's picture reaches into the first column; kept by the desktop
  std::int32_t Width = 900;        ///< at design, in the units of the columns' widths
  Property<bool> Enabled = true;
  Property<std::string> EmptyText;   ///< said in place of rows where there are none
  std::function<void()> ItemClick;   ///< a row was chosen, before Click
  std::function<void()> Click;       ///< the list was clicked, on a row or beside
  std::function<void()> DblClick;    ///< a row was clicked twice, or Enter was pressed
  std::function<void()> RightClick;  ///< the right button came up
  std::function<void()> DeleteKey;   ///< the key was pressed on the list
  /// The pointer is over this row, 0 for none, at `x` from the left edge of the first column.
  std::function<void(std::int32_t row, std::int32_t x)> MouseMove;
  std::function<void(const std::string&)> ColumnClick;  ///< the header with this text was clicked
  std::function<void()> ColumnRightClick;
  std::function<void()> GotFocus;
  Signal<> rowsChanged;
  Signal<> selectionChanged;  ///< the program, not the user, has changed the selection

  const ListRows& Rows() const { return rows_; }

  /// Replaces all rows in one change. No row is selected then.
  void SetRows(ListRows rows) {
    rows_ = std::move(rows);
    DropSelection();
  }
  void Clear() { SetRows({}); }

  /// Puts the rows into a new order: row `order[i] + 1` becomes row `i + 1`. No row is selected then.
  void Reorder(std::span<const std::size_t> order) {
    rows_.Reorder(order);
    DropSelection();
  }

  bool IsSelected(std::int32_t row) const { return std::binary_search(selected_.begin(), selected_.end(), row); }

  /// The selected row that was chosen last. Throws subscriptFailure where none is selected.
  std::int32_t SelectedItem() const {
    if (selected_.empty()) throw subscriptFailure();
    return IsSelected(current_) ? current_ : selected_.front();
  }

  void Select(std::int32_t row) {
    if (IsSelected(row)) return;
    selected_.insert(std::upper_bound(selected_.begin(), selected_.end(), row), row);
    selectionChanged.raise();
  }

  void DeselectAll() {
    if (!std::exchange(selected_, {}).empty()) selectionChanged.raise();
  }

  void DeselectAllBut(std::int32_t row) {
    if (std::erase_if(selected_, [row](std::int32_t each) { return each != row; }) > 0) selectionChanged.raise();
  }

  /// Takes over what the user has selected, in ascending order, and the row that has the focus, 0 for none; called by
  /// the desktop before the events that follow from it.
  void UserSelected(std::vector<std::int32_t> rows, std::int32_t current) {
    selected_ = std::move(rows);
    current_ = current;
  }

 private:
  void DropSelection() {
    selected_.clear();
    current_ = 0;
    rowsChanged.raise();
  }

  ListRows rows_;
  std::vector<std::int32_t> selected_;  // in ascending order: all of a large mailbox may be selected
  std::int32_t current_ = 0;
};

}  // namespace velmora
