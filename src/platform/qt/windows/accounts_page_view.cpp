#include "platform/qt/windows/accounts_page_view.h"

#include <QCheckBox>
#include <QGraphicsOpacityEffect>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>

#include "accounts/accounts_page.h"
#include "options/client_and_sound.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/colour_patch.h"
#include "platform/qt/widgets/password_edit.h"
#include "platform/qt/widgets/scrolled.h"
#include "platform/qt/widgets/tab_bar.h"
#include "platform/qt/windows/account_colours_view.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

/// What stands beside a text box: its label, with the letter that leads to it, and an example.
struct TextRow {
  TextBox AccountsPage::*box;
  const char* name;
  const char* label;
  const char* hint;
  Label AccountsPage::*notice = nullptr;  ///< what takes the example's place where it isn't blank
};

constexpr TextRow nameRow{&AccountsPage::txtAcntName, "txtAcntName",
                          "&Account:", "Account Name: Maximum of 20 characters."};
constexpr TextRow serverRow{&AccountsPage::txtAcntServer, "txtAcntServer",
                            "&Server:", "Server Example: Pop3.ServiceProvider.com"};
constexpr TextRow portRow{&AccountsPage::txtAcntPort, "txtAcntPort",
                          "&Port:", "Port: Usually 110 for Normal, or 995 for Secure.",
                          &AccountsPage::lblAcntPortNotice};
constexpr TextRow loginRow{&AccountsPage::txtAcntLoginID, "txtAcntLoginID",
                           "&Login ID:", "ID used to Login to Service Provider."};
constexpr TextRow passwordRow{&AccountsPage::txtAcntPassword, "txtAcntPassword", "Pass&word:", "",
                              &AccountsPage::lblAcntPasswordNotice};
constexpr TextRow clientRow{&AccountsPage::txtAcntClient, "txtAcntClient", "E&mail Client:", ""};
constexpr TextRow soundRow{&AccountsPage::txtAcntSound, "txtAcntSound", "So&und:", ""};

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

  QLineEdit* addText(const TextRow& row) { return addBox(row, new QLineEdit(frame_)); }

  void addPassword(const TextRow& row) {
    auto* box = new PasswordEdit(frame_);
    page_.hidePassword.watch([box] { box->hidePassword(); });
    addBox(row, box);
  }

  /// Parts beside the text box before them.
  void addBeside(std::initializer_list<QWidget*> parts) {
    grid_->addWidget(makeRow(parts), row_ - 1, hintColumn, Qt::AlignLeft | Qt::AlignVCenter);
  }

  /// The buttons for a text box, which takes the keyboard when they go off.
  QWidget* makeTools(Toolbar& buttons, const char* name, QLineEdit& box) {
    auto* tools = makeToolbar(buttons, name, ButtonLook::TextBesideIcon, frame_);
    setHeir(*tools, box);
    return tools;
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

  /// A line that says more of the input above it, to a screen reader too.
  void addUnder(Label& label, const char* name, QWidget& input) {
    grid_->addWidget(makeLabel(label, name, frame_), row_++, inputColumn, 1, 2);
    label.Caption.watch([&input](const std::string& text) { input.setAccessibleDescription(qt(text)); });
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
  QLineEdit* addBox(const TextRow& row, QLineEdit* box) {
    box->setObjectName(row.name);
    box->setMinimumWidth(box->fontMetrics().averageCharWidth() * 46);
    bindInput(page_.*row.box, *box);
    Label* notice = row.notice != nullptr ? &(page_.*row.notice) : nullptr;
    auto* hint = *row.hint == '\0' && notice == nullptr ? nullptr : makeHint(row.hint);
    if (hint != nullptr) box->setAccessibleDescription(row.hint);
    addRow(row.label, box, hint);
    if (notice != nullptr) showInPlace(*notice, *hint, *box);
    return box;
  }

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

void addColour(AccountsPage& page, Fields& fields, QWidget* frame) {
  auto* patch = new ColourPatch(page.txtAcntColour, ColourPatch::Use::Show, frame);
  patch->setObjectName("txtAcntColour");
  patch->setAccessibleName("Colour of the account");
  QWidget* tools = makeToolbar(page.tbrColour, "tbrColour", ButtonLook::TextBesideIcon, frame);
  auto* button = tools->findChild<QToolButton*>();
  fields.addRow("&Colour:", fields.makeRow({patch, tools}), nullptr)->setBuddy(button);
  addColourBoxes(page, frame, *button);
}

QWidget* makeFields(AccountsPage& page, ClientAndSound& bars, QWidget* parent) {
  auto* frame = new FieldsFrame(page.fraColourBox, parent);
  frame->setObjectName("fraAcnt");
  Fields fields(page, frame);
  fields.addTick(page.chkAcntEnabled, "chkAcntEnabled", 'E', "");
  fields.addText(nameRow);
  fields.addText(serverRow);
  fields.addTick(page.chkAcntSecure, "chkAcntSecure", 'R', "Server needs a Secure Connection using SSL.");
  fields.addUnder(page.lblAcntSecure, "lblAcntSecure", *frame->findChild<QCheckBox*>("chkAcntSecure"));
  fields.addText(portRow);
  fields.addText(loginRow);
  fields.addPassword(passwordRow);
  fields.addSpace();
  addColour(page, fields, frame);
  auto* client = fields.addText(clientRow);
  fields.addBeside({fields.makeTools(bars.tbrClient[accountClientBar], "tbrClient1", *client),
                    fields.makeNote(page.lblClientName, "lblClientName"),
                    fields.makeNote(page.lblAcntRunSize, "lblAcntRunSize")});
  auto* sound = fields.addText(soundRow);
  fields.addBeside({fields.makeTools(bars.tbrSound[accountClientBar], "tbrSound1", *sound),
                    fields.makeNote(page.lblSoundName, "lblSoundName"),
                    makeTick(page.chkAcntSoundOn, "chkAcntSoundOn", 'O', frame),
                    fields.makeNote(page.lblAcntPlaySound, "lblAcntPlaySound")});
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
