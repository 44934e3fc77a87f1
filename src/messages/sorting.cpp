#include "messages/sorting.h"

#include <utility>
#include <vector>

#include "app/program.h"
#include "messages/decisions/message_order.h"
#include "messages/email_page.h"
#include "messages/message_list.h"

namespace velmora {

namespace {

void showOnHeaders(Program& program, const std::string& column) {
  const char* picture = program.options.SortOrder != 0 ? "Descending" : "Ascending";
  for (auto& header : program.frmMain.lvwEmail.Columns) header.Picture = header.Text == column ? picture : "Blank";
}

/// The Options page goes with it: its next save would turn the order back.
void turnRound(Program& program) {
  const std::int16_t order = program.options.SortOrder == 0 ? 1 : 0;
  program.options.SortOrder = order;
  ChangeOptions(program, [order](Options& edit) { edit.SortOrder = order; });
}

}  // namespace

std::vector<std::size_t> SortMessages(Program& program, std::int16_t account, const std::string& column) {
  if (column.empty()) return {};
  showOnHeaders(program, column);
  const SortColumnField* field = sortColumn(column);
  if (field == nullptr) return {};
  auto order = sortedOrder(messagesOf(program, account), *field, program.options.SortOrder != 0);
  program.messages.Reorder(account, order);
  return order;
}

void SortColumnFromOption(Program& program, std::int16_t option) {
  if (option == 0) program.order.SortColumnName = program.options.SortColumnLastUsed;
  if (option >= 1 && option <= static_cast<std::int16_t>(sortColumns.size())) {
    program.order.SortColumnName = sortColumns[static_cast<std::size_t>(option - 1)].name;
  }
}

void StartSorting(Program& program) {
  SortColumnFromOption(program, program.options.SortColumn);
  program.order.LastClickedColumn = program.order.SortColumnName;
  if (program.options.MessageSort == 1) showOnHeaders(program, program.order.SortColumnName);
}

void FollowSortOptions(Program& program) {
  if (program.activity != Activity::Idle || !std::exchange(program.order.optionsChanged, false)) return;
  showOnHeaders(program, "");
  if (program.options.MessageSort != 1) return;
  SortColumnFromOption(program, program.options.SortColumn);
  showOnHeaders(program, program.order.SortColumnName);
  const std::int16_t account = program.accounts.AcntCurrent;
  ShowMessagesReordered(program, account, SortMessages(program, account, program.order.SortColumnName));
}

void lvwEmail_ColumnClick(Program& program, const std::string& header) {
  const std::int16_t account = program.accounts.AcntCurrent;
  if (program.accounts[account].AcntMsgCount == 0 || program.options.MessageSort == 0) return;
  // A check or a deletion that is under way counts on the order.
  if (program.activity != Activity::Idle) return;
  program.options.SortColumnLastUsed = program.order.SortColumnName = header;
  if (program.order.LastClickedColumn == header) turnRound(program);
  program.order.LastClickedColumn = header;
  ShowMessagesReordered(program, account, SortMessages(program, account, header));
}

}  // namespace velmora
