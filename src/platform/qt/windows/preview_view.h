#pragma once

#include "platform/qt/windows/form_view.h"

class QGridLayout;

namespace velmora {

struct Label;
struct PreviewWindow;
struct TextBox;

/// The preview on the screen, a window of its own that belongs to the main one.
class PreviewView : public FormView {
 public:
  /// `window` outlives the view.
  PreviewView(PreviewWindow& window, QWidget* mainWindow);

 private:
  QWidget* makeHead();
  QWidget* makeFields();
  QWidget* makeAttachments();
  QWidget* makeText();
  void addField(QGridLayout& grid, Label& label, TextBox& box, const char* name);
  void addShortcuts();

  PreviewWindow& window_;
};

}  // namespace velmora
