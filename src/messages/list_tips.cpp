#include "messages/list_tips.h"

#include <array>

#include "app/program.h"
#include "messages/decisions/pictures.h"
#include "platform/text.h"

namespace velmora {

namespace {

/// A column that offers tips, as the option says. Its number is its zone.
struct TipColumn {
  std::string MailMessage::*field;
  std::int16_t Options::*option;
};
constexpr std::array<TipColumn, 3> tipColumns = {{{&MailMessage::From, &Options::FromToolTips},
                                                  {&MailMessage::To, &Options::ToToolTips},
                                                  {&MailMessage::Subject, &Options::SubjectToolTips}}};

/// The zone at `x`, noZone right of the last one.
std::int16_t columnZone(const ListView& list, std::int32_t x) {
  std::int32_t right = 0;
  for (std::size_t zone = 0; zone < tipColumns.size(); ++zone) {
    right += list.Columns[zone].Width.get();
    if (x < right) return static_cast<std::int16_t>(zone);
  }
  return noZone;
}

bool isCutOff(const Program& program, const MailMessage& message, std::size_t zone) {
  const auto& column = program.frmMain.lvwEmail.Columns[zone];
  const std::int32_t width = program.frmMain.TextWidth(message.*tipColumns[zone].field, message.New);
  return column.Width - column.Margin < width;
}

/// Null for one that is gone.
const MailMessage* messageUnderPointer(Program& program) {
  const std::int16_t account = program.accounts.AcntCurrent;
  const std::int16_t number = program.pointer.HoverMessage;
  if (number < 1 || number > program.accounts[account].AcntMsgCount) return nullptr;
  return &program.messages.at(account, number);
}

std::int16_t zoneAt(Program& program, std::int32_t x) {
  const ListView& list = program.frmMain.lvwEmail;
  const MailMessage* message = program.pointer.ItemUnderPointer ? messageUnderPointer(program) : nullptr;
  const bool overPicture = x < list.PictureWidth && x < list.Columns.front().Width.get();
  return message != nullptr && overPicture && !markText(*message).empty() ? markZone : columnZone(list, x);
}

/// The text in full where the cell cuts it off, a line for each part between commas.
std::string tipText(Program& program, std::size_t zone) {
  const MailMessage* message = messageUnderPointer(program);
  if (message == nullptr || !isCutOff(program, *message, zone)) return {};
  return text::replaceAll(message->*tipColumns[zone].field, ",", "\r\n");
}

/// Its option may be off, which leaves the tip that is there: but not one that speaks of a picture beside it.
void leaveMark(Program& program) {
  if (program.pointer.ColumnZone == markZone) program.frmMain.tipEmail.ToolText = "";
}

}  // namespace

void lvwEmail_MouseMove(Program& program, std::int32_t row, std::int32_t x) {
  program.pointer.ItemUnderPointer = row > 0;
  if (row > 0) program.pointer.HoverMessage = static_cast<std::int16_t>(row);
  const std::int16_t zone = zoneAt(program, x);
  if (program.pointer.HoverMessage == program.pointer.TipMessage && zone == program.pointer.ColumnZone) return;
  leaveMark(program);
  program.pointer.TipMessage = program.pointer.HoverMessage;
  program.pointer.ColumnZone = zone;
  if (zone == noZone) {
    program.pointer.ItemUnderPointer = false;
    program.pointer.HoverMessage = 0;
    ForgetListTip(program);
    return;
  }
  if (zone == markZone) {
    program.frmMain.tipEmail.ToolText = markText(*messageUnderPointer(program));
    return;
  }
  const auto index = static_cast<std::size_t>(zone);
  if (program.options.*tipColumns[index].option == 0) return;
  program.frmMain.tipEmail.ToolText = tipText(program, index);
}

void ForgetListTip(Program& program) {
  program.pointer.TipMessage = 0;
  program.pointer.ColumnZone = noZone;
  program.frmMain.tipEmail.ToolText = "";
}

}  // namespace velmora
