// The least that any client could do with a whole mailbox: it fetches all messages and throws them away unread.
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <openssl/ssl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Released = void (*)(SSL*);

/// A connection that blocks, plain or with TLS. Any certificate is taken.
class Line {
 public:
  Line(const std::string& host, const std::string& port, bool secure) : socket_(connected(host, port)) {
    const int on = 1;
    setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    if (secure) encrypt();
  }
  ~Line() { close(socket_); }
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;

  void send(std::string_view bytes) {
    while (!bytes.empty()) bytes.remove_prefix(sendSome(bytes));
  }

  /// Waits for bytes, and returns them behind the last `kept` of those before.
  std::string_view receive(std::size_t kept = 0) {
    const std::string_view before(buffer_.data() + end_ - kept, kept);
    std::copy(before.begin(), before.end(), buffer_.begin());
    char* const free = buffer_.data() + kept;
    const std::size_t room = buffer_.size() - kept;
    const auto size = tls_ ? SSL_read(tls_.get(), free, static_cast<int>(room)) : recv(socket_, free, room, 0);
    if (size <= 0) throw std::runtime_error("the connection has ended");
    end_ = kept + static_cast<std::size_t>(size);
    return {buffer_.data(), end_};
  }

 private:
  static int connected(const std::string& host, const std::string& port) {
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(host.c_str(), port.c_str(), &hints, &found) != 0) throw std::runtime_error("no such host");
    const std::unique_ptr<addrinfo, void (*)(addrinfo*)> addresses(found, freeaddrinfo);
    const int made = socket(found->ai_family, found->ai_socktype, found->ai_protocol);
    if (made < 0 || connect(made, found->ai_addr, found->ai_addrlen) != 0) throw std::runtime_error("no connection");
    return made;
  }

  void encrypt() {
    const std::unique_ptr<SSL_CTX, void (*)(SSL_CTX*)> context(SSL_CTX_new(TLS_client_method()), SSL_CTX_free);
    SSL_CTX_set_read_ahead(context.get(), 1);
    tls_.reset(SSL_new(context.get()));
    SSL_set_fd(tls_.get(), socket_);
    if (SSL_connect(tls_.get()) != 1) throw std::runtime_error("no TLS");
  }

  std::size_t sendSome(std::string_view bytes) {
    const auto sent = tls_ ? SSL_write(tls_.get(), bytes.data(), static_cast<int>(bytes.size()))
                           : ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) throw std::runtime_error("the connection has ended");
    return static_cast<std::size_t>(sent);
  }

  int socket_;
  std::unique_ptr<SSL, Released> tls_{nullptr, SSL_free};
  std::array<char, std::size_t{256} * 1024> buffer_{};
  std::size_t end_ = 0;
};

/// Waits for one status line, after which the server is silent, and returns it.
std::string status(Line& line) {
  std::string came;
  while (!came.ends_with("\r\n")) came += line.receive();
  if (!came.starts_with("+OK")) throw std::runtime_error(came);
  return came;
}

std::string ask(Line& line, const std::string& command) {
  line.send(command + "\r\n");
  return status(line);
}

/// Counts the answers of many lines in a stream of them, by the dots that end them.
class Answers {
 public:
  /// Takes the next bytes, and returns how many of the last ones have to come again, as an ending may be cut there.
  std::size_t take(std::string_view bytes) {
    while (!bytes.empty()) {
      if (atBegin_ && bytes.front() != '+') throw std::runtime_error("a message was refused");
      atBegin_ = false;
      const auto end = bytes.find(ending);
      if (end == std::string_view::npos) break;
      bytes.remove_prefix(end + ending.size());
      atBegin_ = true;
      ++ended_;
    }
    return std::min(bytes.size(), ending.size() - 1);
  }

  std::size_t ended() const { return ended_; }

 private:
  static constexpr std::string_view ending = "\r\n.\r\n";

  bool atBegin_ = true;
  std::size_t ended_ = 0;
};

/// As many commands on their way as any socket holds, so that neither side ever waits for the other to read.
constexpr std::size_t window = 500;

std::size_t fetchAll(Line& line, std::size_t count) {
  Answers answers;
  std::size_t bytes = 0;
  for (std::size_t asked = 0, kept = 0; answers.ended() < count;) {
    if (asked < count && asked - answers.ended() <= window / 2) {
      std::string commands;
      for (; asked < count && asked - answers.ended() < window; ++asked) {
        commands += "RETR " + std::to_string(asked + 1) + "\r\n";
      }
      line.send(commands);
    }
    const auto came = line.receive(kept);
    bytes += came.size() - kept;
    kept = answers.take(came);
  }
  return bytes;
}

void drain(const std::vector<std::string>& words) {
  const auto line = std::make_unique<Line>(words[0], words[1], words.size() > 4);
  status(*line);
  ask(*line, "USER " + words[2]);
  ask(*line, "PASS " + words[3]);
  const std::string maildrop = ask(*line, "STAT").substr(4);
  std::size_t count = 0;
  std::from_chars(maildrop.data(), maildrop.data() + maildrop.size(), count);
  const std::size_t bytes = fetchAll(*line, count);
  ask(*line, "QUIT");
  std::cout << "messages=" << count << " bytes=" << bytes << '\n';
}

}  // namespace

int main(int argc, char* argv[]) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (words.size() < 4 || words.size() > 5 || (words.size() == 5 && words[4] != "tls")) {
    std::cerr << "Usage: drain HOST PORT LOGIN PASSWORD [tls]\n";
    return 2;
  }
  try {
    drain(words);
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << "drain: " << failure.what() << '\n';
    return 3;
  }
}
