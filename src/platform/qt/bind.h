#pragma once

#include <QString>
#include <string_view>

class QLabel;
class QLineEdit;
class QMenu;
class QObject;
class QProgressBar;
class QTabBar;
class QWidget;

namespace velmora {

struct Frame;
struct Label;
struct PopupMenu;
struct ProgressBar;
struct RichTextBox;
struct TextBox;
struct Timer;
class TabStrip;
class TextView;
class Toolbar;

// Each call ties a control to the widget that shows it, for as long as both live: the widget follows the control's
// properties, and what the user does becomes the control's events.

void bind(Frame& frame, QWidget& widget);
void bind(Label& label, QLabel& widget);
void bindLink(Label& label, QLabel& widget);
void bind(ProgressBar& bar, QProgressBar& widget);
void bind(TextBox& box, QLineEdit& widget);
void bind(RichTextBox& box, TextView& widget);
void bind(TabStrip& strip, QTabBar& widget, std::string_view imageList);
void bind(PopupMenu& menu, QMenu& widget);

/// Starts a clock that ticks the timer while it is enabled. `owner` owns it.
void bind(Timer& timer, QObject& owner);

/// How the buttons of a toolbar look.
enum class ButtonLook { TextBesideIcon, TextUnderIcon };

/// Makes a row of buttons inside `parent`, which owns it, named `name`.
QWidget* makeToolbar(Toolbar& toolbar, const QString& name, ButtonLook look, QWidget* parent);

}  // namespace velmora
