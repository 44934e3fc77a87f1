#include "platform/qt/windows/accounts_page_view.h"

#include <QApplication>
#include <QCheckBox>
#include <QGraphicsOpacityEffect>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>
#include <array>

#include "accounts/accounts_page.h"
#include "options/client_and_sound.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/colour_patch.h"
#include "platform/qt/widgets/scrolled.h"
#include "platform/qt/widgets/tab_bar.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

/// What stands beside a text box: its label, with the letter that leads to it, and an example.
struct TextRow {
  TextBox AccountsPage::*box;
  const char* name;
  const char* label;
  const char* hint;
};

constexpr TextRow nameRow{&AccountsPage::txtAcntName, "txtAcntName",
                          "&Account:", "Account Name: Maximum of 20 characters."};
constexpr TextRow serverRow{&AccountsPage::txtAcntServer, "txtAcntServer",
                            "&Server:", "Server Example: Pop3.ServiceProvider.com"};
constexpr TextRow portRow{&AccountsPage::txtAcntPort, "txtAcntPort",
                          "&Port:", "Port: Usually 110 for Normal, or 995 for Secure."};
constexpr TextRow loginRow{&AccountsPage::txtAcntLoginID, "txtAcntLoginID",
                           "&Login ID:", "ID used to Login to Service Provider."};
constexpr TextRow passwordRow{&AccountsPage::txtAcntPassword, "txtAcntPassword", "Pass&word:", ""};
constexpr TextRow clientRow{&AccountsPage::txtAcntClient, "txtAcntClient", "E&mail Client:", ""};
constexpr TextRow soundRow{&AccountsPage::txtAcntSound, "txtAcntSound", "So&und:", ""};

/// The names of the six colours, for those who can't see them.
constexpr std::array colourNames = {"Blue", "Cyan", "Green", "Magenta", "Red", "Black"};

constexpr int labelColumn = 0;
constexpr int inputColumn = 1;
constexpr int hintColumn = 2;

/// The box of colours goes when the pointer leaves it for the fields around it.
class FieldsFrame : public QWidget {
 public:
  FieldsFrame(Frame& colours, QWidget* parent) : QWidget(parent), colours_(colours) { setMouseTracking(true); }

 protected:
  void mouseMoveEvent(QMouseEvent* event) override {
    colours_.Visible = false;
    QWidget::mouseMoveEvent(event);
  }

 private:
  Frame& colours_;
};

/// Fills the grid of an account's fields from top to bottom, which is also the order of the key Tab.
class Fields {
 public:
  Fields(AccountsPage& page, QWidget* frame) : page_(page), frame_(frame), grid_(new QGridLayout(frame)) {
    grid_->setColumnStretch(hintColumn, 1);
    grid_->setHorizontalSpacing(10);
  }

  void addText(const TextRow& row, QWidget* beside = nullptr) {
    auto* box = new QLineEdit(frame_);
    box->setObjectName(row.name);
    box->setMinimumWidth(box->fontMetrics().averageCharWidth() * 46);
    if (row.box == &AccountsPage::txtAcntPassword) {
      box->setEchoMode(QLineEdit::Password);
      box->setStyleSheet("lineedit-password-character: 42");
    }
    bindInput(page_.*row.box, *box);
    auto* hint = beside != nullptr ? nullptr : makeHint(row.hint);
    if (*row.hint != '\0') box->setAccessibleDescription(row.hint);
    addRow(row.label, box, beside != nullptr ? beside : hint);
    if (row.box == &AccountsPage::txtAcntPort) showInPlace(page_.lblAcntPortNotice, *hint, *box);
  }

  /// A label names the box for a screen reader too.
  QLabel* addRow(const char* label, QWidget* input, QWidget* beside) {
    auto* text = new QLabel(label, frame_);
    text->setBuddy(input);
    grid_->addWidget(text, row_, labelColumn, Qt::AlignRight | Qt::AlignVCenter);
    grid_->addWidget(input, row_, inputColumn);
    if (beside != nullptr) grid_->addWidget(beside, row_, hintColumn, Qt::AlignLeft | Qt::AlignVCenter);
    ++row_;
    return text;
  }

  void addTick(CheckBox& tick, const char* name, char letter, const char* hint) {
    grid_->addWidget(makeTick(tick, name, letter, frame_), row_, inputColumn, Qt::AlignLeft);
    grid_->addWidget(makeHint(hint), row_, hintColumn, Qt::AlignLeft | Qt::AlignVCenter);
    ++row_;
  }

  /// Parts side by side.
  QWidget* makeRow(std::initializer_list<QWidget*> parts) {
    auto* row = new QWidget(frame_);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    for (QWidget* part : parts) layout->addWidget(part);
    return row;
  }

  void addSpace() { grid_->setRowMinimumHeight(row_++, 8); }
  void addStretch() { grid_->setRowStretch(row_++, 1); }

  /// A blank one takes no room.
  QLabel* makeNote(Label& label, const char* name) {
    QLabel* note = makeLabel(label, name, frame_);
    label.Caption.watch([&label, note](const std::string& text) { note->setVisible(label.Visible && !text.empty()); });
    return note;
  }

 private:
  QLabel* makeHint(const char* text) {
    auto* hint = new QLabel(text, frame_);
    auto* pale = new QGraphicsOpacityEffect(hint);
    pale->setOpacity(0.65);  // still well readable, which the palette's own pale text is not
    hint->setGraphicsEffect(pale);
    return hint;
  }

  /// A notice stands where the hint does, dark, and is what a screen reader tells of the box.
  static void showInPlace(Label& notice, QLabel& hint, QLineEdit& box) {
    notice.Caption.watch([&hint, &box, usual = hint.text()](const std::string& text) {
      hint.setText(text.empty() ? usual : qt(text));
      hint.graphicsEffect()->setEnabled(text.empty());
      box.setAccessibleDescription(hint.text());
    });
  }

  AccountsPage& page_;
  QWidget* frame_;
  QGridLayout* grid_;
  int row_ = 0;
};

QString boxName(std::size_t box) { return QStringLiteral("lblColourBox%1").arg(box + 1); }

QWidget* makeColourBoxes(AccountsPage& page, QWidget* frame) {
  auto* group = new QGroupBox(frame);
  group->setObjectName("fraColourBox");
  group->setAutoFillBackground(true);
  auto* row = new QHBoxLayout(group);
  for (std::size_t i = 0; i < page.lblColourBox.size(); ++i) {
    auto* patch = new ColourPatch(page.lblColourBox[i], ColourPatch::Use::Choose, group);
    patch->setObjectName(boxName(i));
    patch->setAccessibleName(colourNames[i]);
    patch->setToolTip(colourNames[i]);
    row->addWidget(patch);
  }
  group->setTitle(literal(page.fraColourBox.Caption));
  return group;
}

/// Where the button is. The pointer must get there without crossing the fields' ground.
void showBesideButton(QWidget& boxes, const QWidget& button) {
  const QWidget& bar = *button.parentWidget();
  boxes.adjustSize();
  boxes.move(bar.mapTo(boxes.parentWidget(), QPoint(bar.width(), bar.height() - boxes.height())));
  boxes.show();
  boxes.raise();
}

/// The box of the account's colour, or the first where it has another one.
std::size_t chosenBox(const AccountsPage& page) {
  for (std::size_t box = 0; box < page.lblColourBox.size(); ++box) {
    if (page.lblColourBox[box].BackColour == page.txtAcntColour.BackColour.get()) return box;
  }
  return 0;
}

/// The boxes take the keyboard and hand it back to the button; where the user takes it elsewhere, they go.
void followColours(AccountsPage& page, QWidget& boxes, QToolButton& button) {
  Frame& colours = page.fraColourBox;
  colours.Visible.watch([&page, &boxes, &button](bool on) {
    if (on) {
      showBesideButton(boxes, button);
      boxes.findChild<ColourPatch*>(boxName(chosenBox(page)))->setFocus(Qt::OtherFocusReason);
    } else {
      if (boxes.isAncestorOf(QApplication::focusWidget())) button.setFocus();
      boxes.hide();
    }
  });
  QObject::connect(qApp, &QApplication::focusChanged, &boxes, [&colours, &boxes](QWidget*, QWidget* now) {
    if (now != nullptr && !boxes.isAncestorOf(now)) colours.Visible = false;
  });
}

void addColour(AccountsPage& page, Fields& fields, QWidget* frame) {
  auto* patch = new ColourPatch(page.txtAcntColour, ColourPatch::Use::Show, frame);
  patch->setObjectName("txtAcntColour");
  patch->setAccessibleName("Colour of the account");
  QWidget* tools = makeToolbar(page.tbrColour, "tbrColour", ButtonLook::TextBesideIcon, frame);
  auto* button = tools->findChild<QToolButton*>();
  fields.addRow("&Colour:", fields.makeRow({patch, tools}), nullptr)->setBuddy(button);
  followColours(page, *makeColourBoxes(page, frame), *button);
}

QWidget* makeFields(AccountsPage& page, ClientAndSound& bars, QWidget* parent) {
  auto* frame = new FieldsFrame(page.fraColourBox, parent);
  frame->setObjectName("fraAcnt");
  Fields fields(page, frame);
  fields.addTick(page.chkAcntEnabled, "chkAcntEnabled", 'E', "");
  fields.addText(nameRow);
  fields.addText(serverRow);
  fields.addTick(page.chkAcntSecure, "chkAcntSecure", 'R', "Server needs a Secure Connection using SSL.");
  fields.addText(portRow);
  fields.addText(loginRow);
  fields.addText(passwordRow);
  fields.addSpace();
  addColour(page, fields, frame);
  fields.addText(
      clientRow,
      fields.makeRow({makeToolbar(bars.tbrClient[accountClientBar], "tbrClient1", ButtonLook::TextBesideIcon, frame),
                      fields.makeNote(page.lblClientName, "lblClientName"),
                      fields.makeNote(page.lblAcntRunSize, "lblAcntRunSize")}));
  fields.addText(
      soundRow,
      fields.makeRow({makeToolbar(bars.tbrSound[accountClientBar], "tbrSound1", ButtonLook::TextBesideIcon, frame),
                      fields.makeNote(page.lblSoundName, "lblSoundName"),
                      makeTick(page.chkAcntSoundOn, "chkAcntSoundOn", 'O', frame),
                      fields.makeNote(page.lblAcntPlaySound, "lblAcntPlaySound")}));
  fields.addStretch();
  bind(page.fraAcnt, *frame);
  return frame;
}

QWidget* makeTools(AccountsPage& page, QWidget* parent) {
  auto* tools = new QWidget(parent);
  tools->setObjectName("fraAcntToolBar");
  auto* row = new QHBoxLayout(tools);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(makeToolbar(page.tbrAcnts, "tbrAcnts", ButtonLook::TextBesideIcon, tools));
  row->addStretch(1);
  row->addWidget(makeToolbar(page.tbrMoveButtons, "tbrMoveButtons", ButtonLook::TextBesideIcon, tools));
  bind(page.fraAcntToolBar, *tools);
  return tools;
}

}  // namespace

QWidget* makeAccountsPage(AccountsPage& page, ClientAndSound& bars, QWidget* parent) {
  auto* widget = new QWidget(parent);
  auto* column = new QVBoxLayout(widget);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(makeTools(page, widget));
  column->addWidget(new TabBar(page.TabStripAcnts, "TabStripAcnts", "Accounts", widget, "imlTabIcons"));
  column->addWidget(makeScrolled(makeFields(page, bars, widget), widget), 1);
  return widget;
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
