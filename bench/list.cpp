// How long the real window takes for each thing that is done to its list of messages: a line for each, with the longest
// turn of the event loop that came of it, in milliseconds.
#include <glib.h>

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QHeaderView>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <algorithm>
#include <array>
#include <chrono>
#include <iostream>
#include <random>

#include "app/program.h"
#include "app/start_up.h"
#include "messages/decisions/captured_text.h"
#include "messages/message_list.h"
#include "platform/mime/gmime_reader.h"
#include "platform/qt/services/qt_platform.h"
#include "platform/qt/strings.h"
#include "platform/qt/windows/main_window_view.h"

namespace {

using namespace velmora;
using Clock = std::chrono::steady_clock;

/// The longest time for which the event loop did not wait, which is from the end of one poll to the begin of the next.
class Turns {
 public:
  static void watch() { g_main_context_set_poll_func(nullptr, poll); }
  static void begin() {
    longest = {};
    woken = Clock::now();
  }
  static double milliseconds() { return std::chrono::duration<double, std::milli>(longest).count(); }

 private:
  static gint poll(GPollFD* descriptors, guint count, gint timeOut) {
    longest = std::max(longest, Clock::now() - woken);
    const gint ready = g_poll(descriptors, count, timeOut);
    woken = Clock::now();
    return ready;
  }

  inline static Clock::time_point woken = Clock::now();
  inline static Clock::duration longest{};
};

/// What shows of a mailbox: senders that return, subjects that are answered, and all days of some years.
void fill(const MessageRange& messages) {
  std::mt19937 random(1);
  const DateNames names;
  for (MailMessage& message : messages) {
    const auto sender = std::to_string(random() % 3000);
    message.From = "Osric Fenn <osric.fenn";
    message.From += sender + "@example.com>";
    message.To = random() % 3 == 0 ? "robin@example.org, Some Body <some.body@example.org>" : "robin@example.org";
    message.Subject = random() % 4 == 0 ? "Re: Minutes of meeting № " : "Minutes of meeting № ";
    message.Subject += std::to_string(random() % 20000) + ", with all that was said there";
    const DateTime date{2015 + static_cast<int>(random() % 10), 1 + static_cast<int>(random() % 12),
                        1 + static_cast<int>(random() % 28),    static_cast<int>(random() % 24),
                        static_cast<int>(random() % 60),        static_cast<int>(random() % 60)};
    message.Date = displayDate(generalDate(date), names);
    message.Size = std::to_string(1 + random() % 500);
    message.New = random() % 10 == 0;
    message.Attach = random() % 5 == 0;
    message.Spam = random() % 20 == 0;
  }
}

/// The real window of a program with one account, whose list is worked as a user works it.
class Measurement {
 public:
  Measurement() {
    Main(program_);
    view_.resize(1000, 700);
    list_ = view_.findChild<QTreeView*>("lvwEmail");
    turn();
  }

  void run(std::int16_t count) {
    program_.messages.GrowMessageStore(count);
    fill(program_.messages.Messages(1, count));
    program_.accounts[1].AcntMsgCount = count;
    SortMessages(program_, 1, program_.order.SortColumnName);  // as a check does
    measure("show", [this] { ShowAccountMessages(program_, 1); });
    for (int section = 0; section < list_->header()->count(); ++section) sort(section);
    scroll();
    select();
    measure("show again", [this] { ShowAccountMessages(program_, 1); });
  }

 private:
  void sort(int section) {
    QHeaderView& header = *list_->header();
    const QPoint middle(header.sectionViewportPosition(section) + header.sectionSize(section) / 2, header.height() / 2);
    const std::string name = "sort by " + program_.frmMain.lvwEmail.Columns[static_cast<std::size_t>(section)].Text;
    for (const char* way : {", once", ", again"}) {
      measure(name + way, [&] { QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier, middle); });
    }
  }

  void scroll() {
    QScrollBar& bar = *list_->verticalScrollBar();
    for (const int percent : {10, 50, 99, 0}) {
      measure("scroll to " + std::to_string(percent) + " %", [&] { bar.setValue(bar.maximum() / 100 * percent); });
    }
    measure("wheel", [this] {
      QWheelEvent wheel(QPointF(50, 50), list_->viewport()->mapToGlobal(QPointF(50, 50)), {}, QPoint(0, -120),
                        Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
      QApplication::sendEvent(list_->viewport(), &wheel);
    });
  }

  void select() {
    struct Key {
      const char* name;
      Qt::Key key;
      Qt::KeyboardModifiers modifiers;
    };
    click("click a row", 3, Qt::NoModifier);
    constexpr std::array keys = {Key{"End", Qt::Key_End, Qt::NoModifier},
                                 Key{"Home", Qt::Key_Home, Qt::NoModifier},
                                 Key{"Page Down", Qt::Key_PageDown, Qt::NoModifier},
                                 Key{"Page Down again", Qt::Key_PageDown, Qt::NoModifier},
                                 Key{"Down", Qt::Key_Down, Qt::NoModifier},
                                 Key{"Shift+End", Qt::Key_End, Qt::ShiftModifier},
                                 Key{"Shift+Home", Qt::Key_Home, Qt::ShiftModifier},
                                 Key{"Ctrl+A", Qt::Key_A, Qt::ControlModifier},
                                 Key{"Down with all selected", Qt::Key_Down, Qt::NoModifier}};
    for (const Key& each : keys) measure(each.name, [&] { QTest::keyClick(list_, each.key, each.modifiers); });
    measure("Ctrl+A once more", [this] { QTest::keyClick(list_, Qt::Key_A, Qt::ControlModifier); });
    click("Ctrl+click with all selected", 5, Qt::ControlModifier);
    click("click with all selected", 5, Qt::NoModifier);
    measure("to the end", [this] { list_->scrollToBottom(); });
    click("Shift+click with all between", list_->model()->rowCount() - 2, Qt::ShiftModifier);
  }

  void click(const std::string& name, int row, Qt::KeyboardModifiers keys) {
    const QPoint middle = list_->visualRect(list_->model()->index(row, 0)).center();
    measure(name, [&] { QTest::mouseClick(list_->viewport(), Qt::LeftButton, keys, middle); });
  }

  template <class Act>
  void measure(const std::string& name, Act act) {
    Turns::begin();
    QTimer::singleShot(0, &view_, act);
    turn();
    std::cout << name << '\t' << Turns::milliseconds() << '\n';
  }

  /// What follows from a step comes in turns of its own, and all of them soon.
  static void turn() {
    QEventLoop loop;
    QTimer::singleShot(120, &loop, &QEventLoop::quit);
    loop.exec();
  }

  GmimeReader reader_;
  QtPlatform platform_{reader_};
  Program program_{platform_};
  MainWindowView view_{program_.frmMain};
  QTreeView* list_ = nullptr;
};

void writeSettings(const QString& folder) {
  QDir(folder).mkdir("Kestrum");
  QFile file(folder + "/Kestrum/Velmora.conf");
  if (!file.open(QIODevice::WriteOnly)) return;
  file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  file.write("[Settings]\nAcntNum=1\nFirstUse=1\nAcntName1=Work\nOptions\\RunStartUp=0\nOptions\\MessageSort=1\n");
}

}  // namespace

int main(int argc, char* argv[]) {
  const QTemporaryDir home;
  for (const auto* folder : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
    qputenv(folder, home.path().toUtf8());
  }
  const QApplication application(argc, argv);
  QApplication::setApplicationName("Velmora");
  QApplication::setOrganizationName("Kestrum");
  QApplication::setQuitOnLastWindowClosed(false);
  writeSettings(home.path());
  Turns::watch();
  Measurement().run(argc > 1 ? static_cast<std::int16_t>(std::atoi(argv[1])) : std::int16_t{30'000});
}
