#pragma once

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/reorder.h"

namespace velmora {

/// The rows of a list, numbered from 0. Their texts lie in one piece, as tens of thousands of rows are filled at once.
class ListRows {
 public:
  struct Look {
    std::string Picture;
    bool Bold = false;
  };
  struct Row : Look {
    std::vector<std::string> Cells;
  };

  /// Makes room for so many rows and cells, whose texts have so many bytes; more may come.
  void reserve(std::size_t rows, std::size_t cells, std::size_t bytes) {
    rows_.reserve(rows);
    ends_.reserve(cells);
    texts_.reserve(bytes);
  }

  /// Every row has as many cells as the first one.
  void add(std::initializer_list<std::string_view> cells) {
    columns_ = cells.size();
    rows_.push_back({ends_.size(), {}});
    for (const std::string_view cell : cells) ends_.push_back((texts_ += cell).size());
  }

  std::size_t size() const { return rows_.size(); }
  bool empty() const { return rows_.empty(); }

  /// Valid until rows are added.
  std::string_view text(std::size_t row, std::size_t column) const {
    const std::size_t cell = rows_.at(row).first + column;
    const std::size_t begin = cell == 0 ? 0 : ends_[cell - 1];
    return std::string_view(texts_).substr(begin, ends_.at(cell) - begin);
  }
  const Look& look(std::size_t row) const { return rows_.at(row).look; }
  Look& look(std::size_t row) { return rows_.at(row).look; }

  Row operator[](std::size_t row) const {
    Row result{look(row), {}};
    for (std::size_t column = 0; column < columns_; ++column) result.Cells.emplace_back(text(row, column));
    return result;
  }

  class Iterator {
   public:
    Iterator(const ListRows& rows, std::size_t at) : rows_(&rows), at_(at) {}
    Row operator*() const { return (*rows_)[at_]; }
    Iterator& operator++() {
      ++at_;
      return *this;
    }
    bool operator==(const Iterator&) const = default;

   private:
    const ListRows* rows_;
    std::size_t at_;
  };
  Iterator begin() const { return {*this, 0}; }
  Iterator end() const { return {*this, size()}; }

  void Reorder(std::span<const std::size_t> order) { reorder(std::span(rows_), order); }

 private:
  struct Place {
    std::size_t first;  ///< of the row's cells
    Look look;
  };

  std::string texts_;
  std::vector<std::size_t> ends_;  // of all cells, in the order in which they were added
  std::vector<Place> rows_;
  std::size_t columns_ = 0;
};

}  // namespace velmora
