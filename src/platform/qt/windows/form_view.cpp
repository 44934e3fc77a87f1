#include "platform/qt/windows/form_view.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QShortcut>
#include <QWindow>
#include <utility>

#include "platform/controls/form.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/forget_minimised.h"
#include "platform/qt/widgets/icons.h"
#include "platform/qt/widgets/room.h"

namespace velmora {

FormView::FormView(Form& form, QWidget* parent, Qt::WindowFlags flags) : QDialog(parent, flags), form_(form) {
  setWindowIcon(applicationIcon());
}

void FormView::followForm() {
  form_.Caption.watch([this](const std::string& caption) { setWindowTitle(trimmed(caption)); });
  form_.AlwaysOnTop.watch([this](bool on) { setAlwaysOnTop(on); });
  appears_.setSingleShot(true);
  connect(&appears_, &QTimer::timeout, this, &FormView::appear);
  form_.Visible.watch([this](bool on) {
    appears_.stop();
    comesForward_ = false;
    if (!on) {
      hide();
    } else if (patience().count() == 0 || form_.HiddenWithMain) {
      appear();
    } else {
      appears_.start(patience());
    }
  });
  // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): its parent owns it
  auto* help = new QShortcut(QKeySequence::HelpContents, this);
  connect(help, &QShortcut::activated, this, [this] {
    if (form_.Help) form_.Help();
  });
  form_.centre.watch([this] { centreOnScreen(); });
  form_.activate.watch([this] {
    if (appears_.isActive()) {
      comesForward_ = true;
      return;
    }
    if (isMinimized()) showNormal();
    raise();
    if (QApplication::activeWindow() != nullptr) activateWindow();  // else the user is at work with another program
  });
}

/// Never above a question that waits for its answer, which would keep it from being used.
void FormView::appear() {
  if (patience().count() > 0 && QApplication::activeModalWidget() != nullptr) {
    appears_.start(patience());
    return;
  }
  if (!form_.HiddenWithMain) arrange();  // else it stands where it stood
  forgetMinimised(*this);
  show();
  if (std::exchange(comesForward_, false)) form_.activate.raise();
}

/// The widget would hide to take over a flag; its window need not.
void FormView::setAlwaysOnTop(bool on) {
  if (windowHandle() == nullptr) {
    setWindowFlag(Qt::WindowStaysOnTopHint, on);
    return;
  }
  overrideWindowFlags(windowFlags().setFlag(Qt::WindowStaysOnTopHint, on));
  windowHandle()->setFlag(Qt::WindowStaysOnTopHint, on);
}

void FormView::centreOnScreen() {
  QRect place(QPoint(), size() + windowFrame);
  place.moveCenter((parentWidget() != nullptr ? parentWidget() : this)->screen()->availableGeometry().center());
  move(place.topLeft());
}

void FormView::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (form_.Close) form_.Close();
}

void FormView::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && isActiveWindow() && form_.Activate) form_.Activate();
}

}  // namespace velmora
