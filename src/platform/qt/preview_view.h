#pragma once

#include <QWidget>

class QGridLayout;

namespace velmora {

struct Label;
struct PreviewWindow;
struct TextBox;

/// The preview on the screen, a window of its own that belongs to the main one.
class PreviewView : public QWidget {
 public:
  /// `window` outlives the view.
  PreviewView(PreviewWindow& window, QWidget* mainWindow);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QWidget* makeHead();
  QWidget* makeFields();
  QWidget* makeText();
  void addField(QGridLayout& grid, Label& label, TextBox& box, const char* name);
  void addShortcuts();
  void followForm();
  void centreOnScreen();

  PreviewWindow& window_;
};

}  // namespace velmora
