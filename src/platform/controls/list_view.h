#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <set>
#include <string>
#include <vector>

#include "platform/controls/property.h"
#include "platform/failure.h"

namespace velmora {

/// A list with columns. Rows are numbered from 1; several may be selected.
class ListView {
 public:
  struct Column {
    std::string Text;
    Property<std::int32_t> Width;
    Property<std::string> Picture;
    bool AlignRight = false;
  };

  struct Row {
    std::vector<std::string> Cells;  ///< one for each column
    std::string Picture;
    bool Bold = false;
  };

  ListView(std::initializer_list<const char*> columns) {
    for (const char* text : columns) Columns.emplace_back().Text = text;
  }

  std::deque<Column> Columns;
  std::int32_t Width = 900;  ///< at design, in the units of the columns' widths
  Property<bool> Enabled = true;
  std::function<void()> ItemClick;                      ///< a row was chosen, before Click
  std::function<void()> Click;                          ///< the list was clicked, on a row or beside
  std::function<void()> DblClick;                       ///< likewise, twice
  std::function<void()> RightClick;                     ///< the right button came up
  std::function<void(std::int32_t)> MouseMove;          ///< the pointer is over this row, 0 for none
  std::function<void(const std::string&)> ColumnClick;  ///< the header with this text was clicked
  std::function<void()> GotFocus;
  Signal<> rowsChanged;
  Signal<> selectionChanged;  ///< the program, not the user, has changed the selection

  const std::vector<Row>& Rows() const { return rows_; }

  /// Replaces all rows in one change. No row is selected then.
  void SetRows(std::vector<Row> rows) {
    rows_ = std::move(rows);
    selected_.clear();
    rowsChanged.raise();
  }
  void Clear() { SetRows({}); }

  bool IsSelected(std::int32_t row) const { return selected_.contains(row); }

  /// The first of the selected rows. Throws subscriptFailure where there is none.
  std::int32_t SelectedItem() const {
    if (selected_.empty()) throw subscriptFailure();
    return *selected_.begin();
  }

  void Deselect(std::int32_t row) {
    if (selected_.erase(row) > 0) selectionChanged.raise();
  }

  /// Takes over what the user has selected; called by the desktop before the events that follow from it.
  void UserSelected(std::set<std::int32_t> rows) { selected_ = std::move(rows); }

 private:
  std::vector<Row> rows_;
  std::set<std::int32_t> selected_;
};

}  // namespace velmora
