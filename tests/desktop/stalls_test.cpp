#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTcpSocket>
#include <QTimer>
#include <optional>

#include "app/shut_down.h"
#include "platform/failure.h"
#include "platform/qt/services/address_race.h"
#include "support/networked_program.h"

namespace velmora {
namespace {

using namespace std::chrono_literals;
using test::Protection;
using test::ScriptedServer;

/// Less than any time-out that it is told from, and more than a busy machine takes for what happens at once.
constexpr qint64 promptly = 4000;

/// Stands for a moment that never came.
constexpr qint64 never = 1'000'000;

class Stalls : public test::NetworkedProgram, public testing::WithParamInterface<Protection> {
 protected:
  /// A server that falls silent in the middle of its last message.
  ScriptedServer& serveHalf(const std::string& name, bool pipelining = false) {
    ScriptedServer& server = serve(name, GetParam());
    server.script.answers["RETR 3"] = "+OK\r\nSubject: c\r\n\r\nTe";
    server.script.pipelining = pipelining;
    return server;
  }

  /// Turns the event loop until it is so, for a few seconds at most.
  static bool eventually(const std::function<bool()>& condition) {
    QElapsedTimer clock;
    for (clock.start(); !condition() && clock.elapsed() < 5000;) QApplication::processEvents(QEventLoop::AllEvents, 50);
    return condition();
  }

  /// Calls `act` when the last message has been coming for a moment.
  template <class Act>
  void whileTheLastComes(Act act) {
    watch_ = std::make_unique<QTimer>();
    QObject::connect(watch_.get(), &QTimer::timeout, [this, act] {
      if (program.connection.ReceivedCount != 3) return;
      watch_->stop();
      act();
    });
    watch_->start(100ms);
  }

  /// Checks, and presses Stop when the last message has been coming for a moment. Returns for how many milliseconds the
  /// check went on, or nothing where that moment never came.
  std::optional<qint64> stopInTheLast() {
    QElapsedTimer sinceStop;
    whileTheLastComes([&] {
      sinceStop.start();
      stop();
    });
    check();
    return sinceStop.isValid() ? std::optional(sinceStop.elapsed()) : std::nullopt;
  }

 private:
  std::unique_ptr<QTimer> watch_;
};

INSTANTIATE_TEST_SUITE_P(Over, Stalls, testing::Values(Protection::None, Protection::Tls),
                         [](const auto& protection) { return protection.param == Protection::Tls ? "Tls" : "Plain"; });

TEST_P(Stalls, StopEndsAFetchThatStandsStill) {
  option("ConnectTimeOut", "10");
  for (const bool pipelining : {false, true}) serveHalf(pipelining ? "Pipelined" : "Work", pipelining);
  serve("Home");
  start();
  for (std::int16_t tab = 1; tab <= 2; ++tab) {
    program.frmMain.TabStripEmail.SelectTab(tab);
    program.frmMain.TabStripEmail.Click();
    program.connection.ReceivedCount = 0;
    EXPECT_LT(stopInTheLast().value_or(never), promptly);
    EXPECT_EQ(program.accounts[tab].AcntStatusText, program.accounts[tab].AcntName + " - User Stopped Retrieval");
    EXPECT_EQ(tabImage(tab), "MailError");
  }
  EXPECT_TRUE(platform.asked.empty());
  EXPECT_FALSE(program.frmMain.tbrButtons[stopRetrievalBar].Visible);
}

TEST_P(Stalls, TheProgramLivesOnWhileAFetchStandsStill) {
  ScriptedServer& server = serveHalf("Work");
  start();
  std::set<std::string> frames;
  QTimer looking;
  QObject::connect(&looking, &QTimer::timeout, [&] { frames.insert(tabImage(1)); });
  looking.start(20ms);
  QElapsedTimer clock;
  clock.start();
  check();
  EXPECT_GE(clock.elapsed(), 1000) << "it waits for the whole time-out";
  EXPECT_LT(clock.elapsed(), 1000 + promptly);
  frames.erase("MailNo");
  EXPECT_GE(frames.size(), 4U) << "the picture turns ten times a second";
  EXPECT_EQ(dialogs("Work").size(), 1U);
  EXPECT_TRUE(eventually([&] { return !server.isConnected(); })) << "the server is left";
}

TEST_P(Stalls, AServerThatSendsInPiecesWaitsForNoAcknowledgement) {
  ScriptedServer& server = serve("Work", GetParam());
  server.chunk = 20;
  server.script.messages.assign(150, test::message("a"));
  start();
  QElapsedTimer clock;
  clock.start();
  check();
  EXPECT_EQ(account("Work").AcntMsgCount, 150);
  EXPECT_LT(clock.elapsed(), promptly) << "each message would take 40 ms";
}

TEST_P(Stalls, QuittingInMidFetchEndsTheProgramWithoutAWord) {
  option("ConnectTimeOut", "10");
  serveHalf("Work", true);
  const ScriptedServer& home = serve("Home");
  start();
  QElapsedTimer sinceQuit;
  whileTheLastComes([&] {
    sinceQuit.start();
    QuitApplication(program);
    QCoreApplication::exit(0);
  });
  QTimer::singleShot(0, [this] { checkAll(); });
  QApplication::exec();
  ASSERT_TRUE(sinceQuit.isValid()) << "it never stalled";
  EXPECT_LT(sinceQuit.elapsed(), promptly);
  EXPECT_TRUE(platform.asked.empty());
  EXPECT_EQ(home.connections, 0) << "the walk is over";
}

TEST_P(Stalls, QuittingWhileConnectingEndsTheProgramWithoutAWord) {
  option("ConnectTimeOut", "10");
  serve("Work", GetParam()).script.greeting = test::MemoryServer::silence;
  start();
  QElapsedTimer sinceQuit;
  QTimer::singleShot(200ms, [&] {
    sinceQuit.start();
    QuitApplication(program);
    QCoreApplication::exit(0);
  });
  QTimer::singleShot(0, [this] { check(); });
  QApplication::exec();
  EXPECT_LT(sinceQuit.elapsed(), promptly);
  EXPECT_TRUE(platform.asked.empty());
}

/// A port of ::1 that takes no more connections: whoever tries waits.
class DeadPort {
 public:
  explicit DeadPort(std::uint16_t port) : listener_(socket(AF_INET6, SOCK_STREAM, 0)) {
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_port = htons(port);
    address.sin6_addr = in6addr_loopback;
    const bool listens =
        bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 && listen(listener_, 0) == 0;
    EXPECT_TRUE(listens);
    fill(port);
  }
  ~DeadPort() { close(listener_); }
  DeadPort(const DeadPort&) = delete;
  DeadPort& operator=(const DeadPort&) = delete;

 private:
  void fill(std::uint16_t port) {
    for (bool taken = true; taken && callers_.size() < 10;) {
      callers_.push_back(std::make_unique<QTcpSocket>());
      callers_.back()->connectToHost(QHostAddress(QHostAddress::LocalHostIPv6), port);
      taken = callers_.back()->waitForConnected(200);
    }
  }

  int listener_;
  std::vector<std::unique_ptr<QTcpSocket>> callers_;
};

TEST(WaitingTest, TransportsTurnTheLoopUntilTheProgramEnds) {
  const auto transport = makeQtTransport();
  bool turned = false;
  bool goesOn = true;
  QTimer::singleShot(0, [&] { turned = true; });
  EXPECT_TRUE(transport->turn() && turned);
  QTimer::singleShot(0, [&] { QCoreApplication::exit(0), goesOn = transport->turn(); });
  QApplication::exec();
  EXPECT_FALSE(goesOn);
}

class Race : public testing::Test {
 protected:
  /// The address that answered, or the failure's number.
  QString run(const std::vector<QHostAddress>& addresses, std::uint16_t port) {
    clock_.start();
    try {
      QTcpSocket winner;
      winner.setSocketDescriptor(AddressRace(waiting_).run(addresses, port, 5s));
      return winner.peerAddress().toString();
    } catch (const PopFailure& failure) {
      return QString::number(failure.number());
    }
  }

  const QHostAddress four_{QHostAddress::LocalHost};
  const QHostAddress six_{QHostAddress::LocalHostIPv6};
  const QHostAddress nowhere_{QHostAddress::Broadcast};  // there is never a way to it
  Waiting waiting_;
  QElapsedTimer clock_;
};

TEST_F(Race, ADeadAddressCostsAMomentAndNotATimeOut) {
  QTcpServer alive;
  alive.listen(four_);
  const DeadPort dead(alive.serverPort());
  EXPECT_EQ(run({six_, four_}, alive.serverPort()), "127.0.0.1");
  EXPECT_GE(clock_.elapsed(), 200) << "the first address has a head start";
  EXPECT_LT(clock_.elapsed(), promptly);
  EXPECT_EQ(run({four_, six_}, alive.serverPort()), "127.0.0.1");
  EXPECT_LT(clock_.elapsed(), promptly) << "the dead one is not waited for";
  clock_.start();
  EXPECT_THROW(makeQtTransport()->connect("::1", alive.serverPort(), false, 100ms), PopFailure);
  EXPECT_LT(clock_.elapsed(), promptly) << "it is waited for no longer than for the time-out";
}

TEST_F(Race, RefusalsEndItAtOnce) {
  QTcpServer server;
  server.listen(four_);
  const std::uint16_t port = server.serverPort();
  EXPECT_EQ(run({six_, four_}, port), "127.0.0.1");
  EXPECT_EQ(run({nowhere_, four_}, port), "127.0.0.1");
  server.close();
  EXPECT_EQ(run({six_, four_}, port), "10061");
  EXPECT_EQ(run({four_, nowhere_}, port), "10061") << "what the first address says counts";
  EXPECT_EQ(run({nowhere_}, port), "10060");
  EXPECT_LT(clock_.elapsed(), promptly);
}

TEST(TcpCallTest, MakesOneConnectionEvenWhereThatIsResetAtOnce) {
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
  sockaddr_in address{};
  socklen_t size = sizeof address;
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), size), 0);
  ASSERT_EQ(listen(listener, 10), 0);
  ASSERT_EQ(getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size), 0);
  int ends = 0;
  const TcpCall call(QHostAddress(QHostAddress::LocalHost), ntohs(address.sin_port), [&] { ++ends; });
  const int caller = accept(listener, nullptr, nullptr);
  const linger reset{1, 0};
  ASSERT_EQ(setsockopt(caller, SOL_SOCKET, SO_LINGER, &reset, sizeof reset), 0);
  close(caller);
  QElapsedTimer clock;
  clock.start();
  while (ends == 0 && clock.elapsed() < promptly) QApplication::processEvents(QEventLoop::AllEvents, 50);
  EXPECT_EQ(call.state(), TcpCall::State::Failed);
  EXPECT_EQ(ends, 1);
  QApplication::processEvents();
  EXPECT_EQ(accept(listener, nullptr, nullptr), -1) << "there is no second connection";
  close(listener);
}

}  // namespace
}  // namespace velmora
