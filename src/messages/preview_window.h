#pragma once

#include <array>
#include <string>

#include "platform/controls/form.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tab_strip.h"
#include "platform/controls/text_box.h"
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
                     {{"Save", "Save    ", "Save Email Message", "Save"},
                      {"Print", "Print     ", "Print Message", "Print"},
                      {"Delete", "Delete  ", "Delete Message", "Delete"},
                      {"Reply", "Reply   ", "Reply to Sender", "Reply"},
                      {"Open", "Open   ", "Open with Email Client", "Open"},
                      {"Exit Preview", "Exit Preview     ", "Exit Preview", "Exit Preview"}}};
  std::string imgEnvelope = "Envelope";  ///< a picture of the toolbar's list
};

}  // namespace velmora
