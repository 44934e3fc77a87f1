#include "platform/qt/windows/preview_view.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>

#include "messages/preview_window.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/choice_box.h"
#include "platform/qt/widgets/icons.h"
#include "platform/qt/widgets/room.h"
#include "platform/qt/widgets/tab_bar.h"
#include "platform/qt/widgets/text_view.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

constexpr QSize startSize(720, 560);
constexpr QSize leastSize(374, 267);

}  // namespace

PreviewView::PreviewView(PreviewWindow& window, QWidget* mainWindow)
    : FormView(window, mainWindow, Qt::Window), window_(window) {
  setObjectName("frmPreview");
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(6, 4, 6, 6);
  column->addWidget(makeHead());
  column->addWidget(makeFields());
  column->addWidget(makeAttachments());
  column->addWidget(makeText(), 1);
  bind(window_.tmrPrint, *this);
  bind(window_.tmrPrinter, *this);
  setMinimumSize(leastSize);
  resize(inFontOf(*this, startSize).boundedTo(roomFor(*this)));
  addShortcuts();
  followForm();
}

QWidget* PreviewView::makeHead() {
  auto* head = new QWidget(this);
  auto* row = new QHBoxLayout(head);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(makeToolbar(window_.tbrButtons, "tbrPreview", ButtonLook::TextBesideIcon, head));
  row->addStretch(1);
  auto* picture = new QLabel(head);
  picture->setObjectName("imgEnvelope");
  constexpr QSize pictureSize(32, 32);
  const ImageList images(window_.tbrButtons.ImageList);
  picture->setPixmap(images.icon(window_.imgEnvelope).pixmap(pictureSize, devicePixelRatioF()));
  row->addWidget(picture);
  return head;
}

QWidget* PreviewView::makeFields() {
  auto* fields = new QWidget(this);
  auto* grid = new QGridLayout(fields);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setVerticalSpacing(3);
  addField(*grid, window_.lblPrvFrom, window_.txtPrvFrom, "txtPrvFrom");
  addField(*grid, window_.lblPrvTo, window_.txtPrvTo, "txtPrvTo");
  addField(*grid, window_.lblPrvDate, window_.txtPrvDate, "txtPrvDate");
  addField(*grid, window_.lblPrvSubject, window_.txtPrvSubject, "txtPrvSubject");
  return fields;
}

void PreviewView::addField(QGridLayout& grid, Label& label, TextBox& box, const char* name) {
  auto* caption = new QLabel(grid.parentWidget());
  auto* field = new QLineEdit(grid.parentWidget());
  bind(label, *caption);
  bind(box, *field);
  field->setObjectName(name);
  field->setAccessibleName(QString(caption->text()).remove(':'));
  caption->setBuddy(field);
  const int row = grid.rowCount();
  grid.addWidget(caption, row, 0);
  grid.addWidget(field, row, 1);
}

QWidget* PreviewView::makeAttachments() {
  auto* frame = new QWidget(this);
  bind(window_.fraAttachments, *frame);
  auto* row = new QHBoxLayout(frame);
  row->setContentsMargins(0, 0, 0, 0);
  auto* caption = makeLabel(window_.lblPrvAttachments, "lblPrvAttachments", frame);
  auto* choice = new ChoiceBox(window_.cboAttachments, "cboAttachments", frame);
  choice->setAccessibleName("Attachments");
  caption->setBuddy(choice);
  row->addWidget(caption);
  row->addWidget(choice, 1);
  row->addWidget(makeToolbar(window_.tbrAttachments, "tbrAttachments", ButtonLook::TextBesideIcon, frame));
  return frame;
}

/// Both boxes take the same place.
QWidget* PreviewView::makeText() {
  auto* frame = new QWidget(this);
  auto* column = new QVBoxLayout(frame);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(new TabBar(window_.TabStrip, "TabStrip", "Parts of the message", frame));
  for (const auto& [box, name, accessibleName] :
       {std::tuple{&window_.rtbBody, "rtbBody", "Body"}, {&window_.rtbRawMsg, "rtbRawMsg", "Raw message"}}) {
    auto* view = new TextView(frame);
    view->setObjectName(name);
    view->setAccessibleName(accessibleName);
    bind(*box, *view);
    column->addWidget(view, 1);
  }
  return frame;
}

void PreviewView::addShortcuts() {
  for (Toolbar* bar : {&window_.tbrButtons, &window_.tbrAttachments}) {
    for (const Button& button : bar->Buttons) {
      if (button.Keys.get().empty()) continue;
      auto* keys = new QShortcut(QKeySequence(qt(button.Keys.get())), this);
      keys->setAutoRepeat(false);  // a key held down would ask over and over
      connect(keys, &QShortcut::activated, this, [bar, &button] {
        if (bar->Enabled) button.click();
      });
    }
  }
  const auto showTab = [this](const QKeySequence& keys, auto tab) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this,
            [this, tab] { window_.TabStrip.SelectTab(tab(window_.TabStrip.SelectedItem())); });
  };
  showTab(Qt::CTRL | Qt::Key_1, [](int) { return 1; });
  showTab(Qt::CTRL | Qt::Key_2, [](int) { return 2; });
  showTab(Qt::CTRL | Qt::Key_Tab, [](int selected) { return 3 - selected; });
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
