#include "support/memory_server.h"

#include <algorithm>

namespace velmora::test {
namespace {

std::string ok(const std::string& text) { return "+OK " + text + "\r\n"; }
std::string error(const std::string& text) { return "-ERR " + text + "\r\n"; }

std::string headerOf(const std::string& text) {
  const std::size_t end = text.find("\r\n\r\n");
  return end == std::string::npos ? text : text.substr(0, end + 4);
}

/// What a server sends of a message: each line that starts with a dot gets another, and the final dot follows.
std::string stuffed(std::string_view text) {
  std::string result;
  bool atLineStart = true;
  for (const char c : text) {
    if (atLineStart && c == '.') result += '.';
    result += c;
    atLineStart = c == '\n';
  }
  return result + (atLineStart ? ".\r\n" : "\r\n.\r\n");
}

}  // namespace

std::string MemoryServer::opened() {
  loggedIn_ = false;
  hangsUp_ = greeting == hangUp;
  deleted_.clear();
  return hangsUp_ ? "" : greeting;
}

std::string MemoryServer::heard(std::string_view bytes) {
  if (hearsAtMost && bytes.size() > *hearsAtMost) hangsUp_ = true;
  std::string said;
  for (std::size_t end = bytes.find("\r\n"); end != std::string_view::npos && !hangsUp_; end = bytes.find("\r\n")) {
    commands.emplace_back(bytes.substr(0, end));
    said += answer(commands.back());
    bytes.remove_prefix(hearsOnlyFirst ? bytes.size() : end + 2);
  }
  return said;
}

std::string MemoryServer::answer(const std::string& command) {
  const std::size_t blank = std::min(command.find(' '), command.size());
  const std::string verb = command.substr(0, blank);
  auto scripted = answers.find(command);
  if (scripted == answers.end()) scripted = answers.find(verb);
  if (scripted == answers.end()) return serve(verb, command.substr(std::min(blank + 1, command.size())));
  hangsUp_ = scripted->second == hangUp;
  return hangsUp_ ? "" : scripted->second;
}

std::string MemoryServer::serve(const std::string& verb, const std::string& argument) {
  if (verb == "CAPA") return capa();
  if (verb == "QUIT") return quit();
  if (verb == "USER") return user_ = argument, ok("password, please");
  if (verb == "PASS") return pass(argument);
  if (!loggedIn_) return error("log in first");
  if (verb == "RSET") return deleted_.clear(), ok("unmarked");
  if (verb == "LIST" || verb == "UIDL" || verb == "STAT") return list(verb);
  return give(verb, argument);
}

std::string MemoryServer::capa() const {
  std::string text = ok("these");
  for (const std::string& name : capabilities) text += name + "\r\n";
  if (pipelining) text += "PIPELINING\r\n";
  return text + ".\r\n";
}

std::string MemoryServer::pass(const std::string& password) {
  const auto user = users.find(user_);
  if (user == users.end() || user->second != password) return error("[AUTH] wrong");
  loggedIn_ = true;
  ++logins;
  snapshot_ = messages;
  return ok("welcome");
}

std::string MemoryServer::list(const std::string& verb) const {
  std::string lines;
  std::size_t bytes = 0;
  for (std::size_t i = 0; i < snapshot_.size(); ++i) {
    const MemoryMessage& message = snapshot_[i];
    bytes += message.text.size();
    lines +=
        std::to_string(i + 1) + " " + (verb == "UIDL" ? message.uid : std::to_string(message.text.size())) + "\r\n";
  }
  if (verb == "STAT") return ok(std::to_string(snapshot_.size()) + " " + std::to_string(bytes));
  return ok("listing") + lines + ".\r\n";
}

std::string MemoryServer::give(const std::string& verb, const std::string& argument) {
  const std::size_t number = argument.empty() ? 0 : std::stoul(argument);
  if (number < 1 || number > snapshot_.size()) return error("no such message");
  const std::string& text = snapshot_[number - 1].text;
  if (verb == "RETR") return ok("message follows") + stuffed(text);
  if (verb == "TOP") return ok("header follows") + stuffed(headerOf(text));
  if (verb != "DELE") return error("unknown command");
  deleted_.insert(number - 1);
  return ok("marked");
}

std::string MemoryServer::quit() {
  hangsUp_ = true;
  std::vector<MemoryMessage> remaining;
  for (std::size_t i = 0; i < snapshot_.size(); ++i)
    if (!deleted_.contains(i)) remaining.push_back(snapshot_[i]);
  if (loggedIn_) messages = remaining;
  return ok("bye");
}

}  // namespace velmora::test
