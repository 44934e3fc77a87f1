#pragma once

#include <QPoint>
#include <QString>
#include <functional>
#include <string>
#include <string_view>

class QCheckBox;
class QLabel;
class QLineEdit;
class QObject;
class QProgressBar;
class QWidget;

namespace velmora {

class ColouredMenu;
struct CheckBox;
struct Frame;
struct Image;
struct Label;
struct OptionGroup;
struct PopupMenu;
struct ProgressBar;
struct RichTextBox;
struct TextBox;
struct Timer;
class TextView;
class Toolbar;

// Each call ties a control to the widget that shows it, for as long as both live: the widget follows the control's
// properties, and what the user does becomes the control's events.

void bind(Frame& frame, QWidget& widget);
void bind(Label& label, QLabel& widget);
void bindLink(Label& label, QLabel& widget);
void bind(ProgressBar& bar, QProgressBar& widget);
void bind(TextBox& box, QLineEdit& widget);       ///< to read only
void bindInput(TextBox& box, QLineEdit& widget);  ///< to be changed by the user
void bind(CheckBox& box, QCheckBox& widget);
void bind(RichTextBox& box, TextView& widget);

/// The menu opens at `place` of the screen, blank for the pointer's.
void bind(PopupMenu& menu, ColouredMenu& widget, std::function<QPoint()> place = {});

/// A text for a widget that takes "&" for the mark of a shortcut: here it is a letter like any other.
QString literal(const std::string& text);

/// Likewise, but the first `letter` in it, be it a capital or not, leads to the widget.
QString withShortcut(const std::string& text, char letter);

/// Starts a clock that ticks the timer while it is enabled. `owner` owns it.
void bind(Timer& timer, QObject& owner);

/// Makes a label inside `parent`, which owns it, named `name`.
QLabel* makeLabel(Label& label, const QString& name, QWidget* parent);

/// Makes a check box inside `parent`, which owns it, named `name`. The caption's `letter` leads to it.
QCheckBox* makeTick(CheckBox& tick, const QString& name, char letter, QWidget* parent);

/// Makes a group's buttons side by side, or one below the other, inside `parent`, which owns them. The first is named
/// `name` and 1. Each of `letters` leads to one of them.
QWidget* makeOptions(OptionGroup& options, const QString& name, std::string_view letters, Qt::Orientation orientation,
                     QWidget* parent);

/// Makes a large picture out of an image list inside `parent`, which owns it, named `name`.
QLabel* makePicture(Image& image, std::string_view imageList, const QString& name, QWidget* parent);

/// Names who gets the keyboard when a button of a bar made by makeToolbar has it and goes off. `heir` outlives the bar.
void setHeir(QWidget& bar, QWidget& heir);

/// How the buttons of a toolbar look.
enum class ButtonLook { TextBesideIcon, TextUnderIcon };

/// Makes a row of buttons inside `parent`, which owns it, named `name`.
QWidget* makeToolbar(Toolbar& toolbar, const QString& name, ButtonLook look, QWidget* parent);

}  // namespace velmora
