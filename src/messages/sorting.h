#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace velmora {

struct Program;

/// The column that messages are sorted by. The order, up or down, is the option SortOrder.
struct SortState {
  std::string SortColumnName;
  std::string LastClickedColumn;  ///< a click on it again turns the order round
  bool optionsChanged = false;    ///< and the list doesn't follow them yet
};

/// Sorts an account's messages by a column, in the order in force, and shows both on the list's headers. A column that
/// is none of the five calls for no picture and no sort, a blank one for nothing at all. Returns the order, by the
/// numbers from 0 that the messages had, and none where there was no sort.
std::vector<std::size_t> SortMessages(Program& program, std::int16_t account, const std::string& column);

/// Sets SortColumnName from a value of the option SortColumn. A value beyond all columns leaves it as it was.
void SortColumnFromOption(Program& program, std::int16_t option);

/// What the sort begins with at start-up, once the options are read.
void StartSorting(Program& program);

/// Shows on the headers what changed options say, and sorts the account showing by it. A check or a deletion that is
/// under way counts on the order of the messages: this is to be called again behind it.
void FollowSortOptions(Program& program);

/// The user clicked a column's header: sorts by it, or turns the order round where it was clicked last.
void lvwEmail_ColumnClick(Program& program, const std::string& header);

}  // namespace velmora
