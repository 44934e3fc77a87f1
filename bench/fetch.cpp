// Fetches a whole mailbox with the program's own client, and tells how long it took and how much memory.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <ctime>
#include <fstream>
#include <iostream>
#include <optional>

#include "platform/failure.h"
#include "platform/mime/gmime_reader.h"
#include "platform/pop/fields.h"
#include "platform/pop/pop_client.h"
#include "platform/qt/services/qt_transport.h"
#include "platform/qt/strings.h"

namespace {

using namespace velmora;

enum ExitCode { Fetched = 0, Misused = 2, Failed = 3 };

struct Order {
  std::string host;
  std::int32_t port = 0;
  std::string login;
  std::string password;
  bool secure = false;
  bool show = false;
};

std::optional<Order> orderOf(const std::vector<std::string>& words) {
  if (words.size() < 4) return std::nullopt;
  const auto port = pop::toCount(words[1]);
  if (!port || *port < 1 || *port > 65535) return std::nullopt;
  Order order{words[0], static_cast<std::int32_t>(*port), words[2], words[3]};
  for (auto word = words.begin() + 4; word != words.end(); ++word) {
    if (*word != "tls" && *word != "--show") return std::nullopt;
    (*word == "tls" ? order.secure : order.show) = true;
  }
  return order;
}

DateTime localNow() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  localtime_r(&now, &parts);
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

/// The most memory that this process has held so far. What `getrusage` tells would include whoever started it.
std::string peakKiB() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    if (word == "VmHWM:" && status >> word) return word;
  }
  return "unknown";
}

void show(const PopMessage& message) {
  const ReadMail& mail = message.Mail;
  const QJsonObject texts{
      {"From", qt(mail.From)},
      {"To", qt(mail.To)},
      {"Subject", qt(mail.Subject)},
      {"Date", qt(formatDateTime(mail.Date, "yyyy-mm-dd hh:mm:ss"))},
      {"Size", message.Size},
      {"Uid", qt(message.Uid)},
      {"Attachments", mail.Attachments},
      {"Body", qt(mail.Body)},
      {"Raw", QString::fromLatin1(QByteArray::fromStdString(mail.Raw).toHex())},
  };
  std::cout << QJsonDocument(texts).toJson(QJsonDocument::Compact).toStdString() << '\n';
}

void fetch(const Order& order) {
  const GmimeReader reader;
  ServerHabits habits;
  const auto client = std::make_shared<PopClient>(PopClient::Surroundings{makeQtTransport, reader, localNow, habits});
  client->HostName(order.host);
  client->Port(order.port);
  client->Login(order.login);
  client->Password(order.password);
  client->Timeout(10);
  client->Security(order.secure ? 3 : 0);

  QElapsedTimer clock;
  clock.start();
  client->Connect();
  client->Messages().FetchAll();
  client->Disconnect();
  const double seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
  const std::string peak = peakKiB();

  const std::int16_t count = client->Messages().Count();
  std::int64_t bytes = 0;
  for (std::int16_t index = 0; index < count; ++index) {
    const PopMessage& message = client->Messages().Item(index);
    bytes += message.Size;
    if (order.show) show(message);
  }
  std::cout << "messages=" << count << " bytes=" << bytes << " seconds=" << seconds << " peakKiB=" << peak << '\n';
}

}  // namespace

int main(int argc, char* argv[]) {
  const auto order = orderOf({argv + 1, argv + argc});
  if (!order) {
    std::cerr << "Usage: fetch HOST PORT LOGIN PASSWORD [tls] [--show]\n";
    return Misused;
  }
  const QCoreApplication application(argc, argv);
  try {
    fetch(*order);
    return Fetched;
  } catch (const PopFailure& failure) {
    std::cout << "error=" << failure.number() << ' ' << failure.what() << '\n';
  } catch (const RunTimeFailure& failure) {
    std::cout << "error=" << failure.number() << ' ' << failure.what() << '\n';
  }
  return Failed;
}
