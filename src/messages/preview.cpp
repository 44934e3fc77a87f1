#include "messages/preview.h"

#include <utility>

#include "app/program.h"
#include "checking/auto_check.h"
#include "checking/deletion.h"
#include "messages/decisions/message_file.h"
#include "messages/decisions/original_texts.h"
#include "messages/hand_over.h"
#include "messages/message_list.h"
#include "messages/save_original.h"
#include "platform/file_name.h"
#include "platform/text.h"

namespace velmora {

namespace {

constexpr int bodyTab = 1;

/// The help's topic of the preview.
constexpr int previewHelp = 131;

/// All kinds hold the same text.
constexpr const char* messageFilter =
    "OutLook Express (*.eml)|*.eml|Email Message (*.msg)|*.msg|Text File (*.txt)|*.txt|";

void fill(PreviewWindow& window, const MailMessage& message) {
  window.txtPrvFrom.Text = message.From;
  window.txtPrvTo.Text = message.To;
  window.txtPrvDate.Text = message.Date;
  window.txtPrvSubject.Text = message.Subject;
  window.rtbBody.Text = message.Body;
  window.rtbRawMsg.Text = rawText(message);
  const auto lines = attachmentLines(message.Attached);
  window.fraAttachments.Visible = !lines.empty();
  window.cboAttachments.List = lines;
  window.cboAttachments.Text = lines.empty() ? std::string() : lines.front();
}

void frmPreview_Load(Program& program) {
  PreviewWindow& window = program.frmPreview;
  program.frmPreview.PreviewOpen = true;
  SuspendAutoCheck(program, TimerAction::Suspend);
  window.Caption = program.AppTitle + " - Preview  ";
  window.centre.raise();
  window.TabStrip.SelectTab(bodyTab);
}

/// The box in front takes the focus.
void focusText(const PreviewWindow& window) { (window.rtbBody.Visible ? window.rtbBody : window.rtbRawMsg).SetFocus(); }

void TabStrip_Click(PreviewWindow& window) {
  const bool body = window.TabStrip.SelectedItem() == bodyTab;
  window.rtbBody.Visible = body;
  window.rtbRawMsg.Visible = !body;
  focusText(window);
}

/// What the preview shows goes, whatever else is selected in the list.
void deleteMessage(Program& program) {
  program.frmPreview.Visible = false;
  SuspendAutoCheck(program, TimerAction::Suspend);
  program.frmMain.lvwEmail.DeselectAllBut(program.list.SelectedMessage);
  DeleteSelection(program);
  frmPreview_Unload(program);
}

void tbrButtons_ButtonClick(Program& program, const Button& button) {
  const auto caption = text::trim(button.Caption.get());
  if (caption == "Save") SaveMessageAs(program);
  if (caption == "Save Original...") SaveOriginal(program);
  if (caption == "Print") PrintMessage(program);
  if (caption == "Reply") ReplyToMessage(program);
  if (caption == "Open") OpenMessage(program);
  if (caption == "Delete") deleteMessage(program);
  if (caption == "Exit Preview") frmPreview_Unload(program);
}

}  // namespace

void ConnectPreview(Program& program) {
  PreviewWindow& window = program.frmPreview;
  window.TabStrip.Add("Body (Plain Text Only)", "");
  window.TabStrip.Add("Raw Message", "");
  window.rtbRawMsg.Visible = false;
  window.TabStrip.Click = [&window] { TabStrip_Click(window); };
  window.tbrButtons.ButtonClick = [&program](Button& button) { tbrButtons_ButtonClick(program, button); };
  window.tbrAttachments.ButtonClick = [&program](Button&) { SaveAttachment(program); };
  window.Activate = [&program] {
    if (!program.frmMessage.AutoMessageOpen && !program.frmRuleReport.RuleReportOpen) focusText(program.frmPreview);
  };
  window.Help = [&program] { program.platform.showHelp(previewHelp); };
  window.Close = [&program] { frmPreview_Unload(program); };
}

void PreviewMessage(Program& program) {
  if (selectedMail(program) == nullptr) return;
  if (!program.frmPreview.PreviewOpen) frmPreview_Load(program);
  FollowInPreview(program);
  program.frmPreview.Visible = true;
  program.frmPreview.activate.raise();
}

void FollowInPreview(Program& program) {
  const MailMessage* message = selectedMail(program);
  if (program.frmPreview.PreviewOpen && message != nullptr) fill(program.frmPreview, *message);
}

void frmPreview_Unload(Program& program) {
  if (!program.frmPreview.PreviewOpen) return;
  DeleteTemporaryFiles(program);
  program.frmPreview.PreviewOpen = false;
  program.frmPreview.Visible = false;
  fill(program.frmPreview, {});
  LetAutoCheckGoOn(program);
}

void SaveMessageAs(Program& program) {
  const MailMessage* message = selectedMail(program);
  if (message == nullptr) return;
  // A check may come while the dialog is open, and another message be the selected one.
  const std::string proposed = proposedFileName(message->Subject);
  const std::string content = messageFileText(*message);
  const auto chosen = program.platform.askForFile({proposed, messageFilter});
  if (!program.frmPreview.PreviewOpen) return;  // the program has ended meanwhile
  // A cancelled dialog keeps the name that it was given, and the message is written under it all the same, in the
  // current folder. But nobody has been asked there whether to replace a file.
  const std::string path = chosen ? *chosen : savedName(proposed, fileEndings(messageFilter));
  if (!chosen && (path.empty() || program.platform.fileExists(path))) return;
  program.platform.writeFile(path, content);
}

}  // namespace velmora
