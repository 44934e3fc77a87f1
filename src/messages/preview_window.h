#pragma once

#include <array>
#include <string>

#include "platform/controls/combo_box.h"
#include "platform/controls/form.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tab_strip.h"
#include "platform/controls/text_box.h"
#include "platform/controls/timer.h"
#include "platform/controls/toolbar.h"

namespace velmora {

/// The window that shows one message: its header fields, and on two tabs its text and its raw form. Both tabs' boxes
/// take the same place; the one that is visible lies in front.
struct PreviewWindow : Form {
  bool PreviewOpen = false;

  Label lblPrvFrom{"From:"};
  Label lblPrvTo{"To:"};
  Label lblPrvDate{"Date:"};
  Label lblPrvSubject{"Subject:"};
  TextBox txtPrvFrom;
  TextBox txtPrvTo;
  TextBox txtPrvDate;
  TextBox txtPrvSubject;

  velmora::TabStrip TabStrip;
  RichTextBox rtbBody;
  RichTextBox rtbRawMsg;

  Toolbar tbrButtons{"imlPreview",
                     {{"Save", "Save    ", "Save Email Message", "Save", "Ctrl+S"},
                      {"Save Original", "Save Original...  ", "Save the Message as the Server Has It", "Save Original",
                       "Ctrl+Shift+S"},
                      {"Print", "Print     ", "Print Message", "Print", "Ctrl+P"},
                      {"Delete", "Delete  ", "Delete Message", "Delete", "Del"},
                      {"Reply", "Reply   ", "Reply to Sender", "Reply", "Ctrl+Shift+R"},
                      {"Open", "Open   ", "Open with Email Client", "Open", "Ctrl+O"},
                      {"Exit Preview", "Exit Preview     ", "Exit Preview", "Exit Preview"}}};
  Timer tmrPrint{20, false};      ///< while a message is on its way to the printer's queue
  Timer tmrPrinter{1000, false};  ///< while the queue has it

  Frame fraAttachments;
  Label lblPrvAttachments{"Attached:"};
  ComboBox cboAttachments;
  Toolbar tbrAttachments{"imlPreview",
                         {{"SaveAttachment", "Save Attachment...", "Save the Attachment that Is Chosen",
                           "SaveAttachment", "Ctrl+Shift+A"}}};

  std::string imgEnvelope = "Envelope";  ///< a picture of the toolbar's list
};

}  // namespace velmora
