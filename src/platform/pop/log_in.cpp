#include "platform/pop/log_in.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <string_view>

#include "platform/ascii.h"
#include "platform/pop/fields.h"
#include "platform/pop/server_words.h"

namespace velmora::pop {
namespace {

struct Look {
  char first;
  std::string_view meaning;
};

constexpr std::string_view looksLikeMailTransfer = "It looks like a server for sending mail (SMTP), or FTP.";
constexpr std::string_view looksLikeTls = "It expects a secure connection on this port.";

constexpr std::array looks = {
    Look{'*', "It looks like an IMAP server."},
    Look{'2', looksLikeMailTransfer},
    Look{'4', looksLikeMailTransfer},
    Look{'5', looksLikeMailTransfer},
    Look{'H', "It looks like a web server."},
    Look{'<', "It looks like a web server."},
    Look{'S', "It looks like an SSH server."},
    Look{'\x15', looksLikeTls},
    Look{'\x16', looksLikeTls},
};

std::string whatItLooksLike(const Conversation& conversation) {
  const std::string_view greeting = conversation.pending();
  std::string text = "The server's greeting is not that of a POP3 server.";
  const auto look = std::ranges::find_if(looks, [&](const Look& l) { return greeting.starts_with(l.first); });
  if (look != looks.end()) text += " " + std::string(look->meaning);
  return conversation.quote(text, greeting.substr(0, greeting.find('\n')));
}

Reply readGreeting(Conversation& conversation, bool secure) {
  try {
    return conversation.reply();
  } catch (const PopFailure& failure) {
    if (failure.number() == pop_failure::protocolBroken)
      throw PopFailure(pop_failure::noGreeting, whatItLooksLike(conversation));
    if (failure.number() == pop_failure::noGreeting && !secure)
      throw PopFailure(pop_failure::noGreeting,
                       std::string(failure.what()) + " It may expect a secure connection on this port.");
    throw;
  }
}

std::string inCapitals(std::string_view word) {
  std::string capitals(word);
  std::ranges::transform(capitals, capitals.begin(), ascii::upper);
  return capitals;
}

void addCapability(Capabilities& names, std::string_view line) {
  const std::string name = inCapitals(takeWord(line));
  names.insert(name);
  if (name != "UTF8") return;
  for (auto word = takeWord(line); !word.empty(); word = takeWord(line))
    if (inCapitals(word) == "USER") names.insert("UTF8 USER");
}

std::int32_t refusalNumber(const Reply& refusal, bool userOffered) {
  if (asksForEncryption(refusal.text)) return pop_failure::loginMethodNotOffered;
  if (const auto trouble = troubleIn(refusal.text)) return *trouble;
  return userOffered ? pop_failure::loginRefused : pop_failure::loginMethodNotOffered;
}

std::string_view refusalText(std::int32_t number) {
  switch (number) {
    case pop_failure::loginMethodNotOffered:
      return "The server doesn't offer this way of logging in. It may ask for a secure connection.";
    case pop_failure::mailboxInUse:
      return "The mailbox is in use or locked.";
    case pop_failure::temporaryTrouble:
      return "The server has temporary trouble.";
    case pop_failure::permanentTrouble:
      return "The server has permanent trouble.";
    default:
      return "The server refused the user name or password.";
  }
}

void askAccess(Conversation& conversation, const std::string& command, bool userOffered) {
  const Reply reply = conversation.ask(command);
  if (reply.ok) return;
  const std::int32_t number = refusalNumber(reply, userOffered);
  const std::string text = conversation.quote(refusalText(number), reply.text);
  if (number != pop_failure::loginRefused) throw PopFailure(number, text);
  throw CredentialsRefusal(text, troubleIn(reply.text) == pop_failure::loginRefused);
}

constexpr const char* utf8Command = "UTF8";
std::string userCommand(const Credentials& credentials) { return "USER " + credentials.login; }
std::string passCommand(const Credentials& credentials) { return "PASS " + credentials.password; }

}  // namespace

void requireSendable(const Credentials& credentials) {
  constexpr std::string_view forbidden("\r\n\0", 3);
  const auto bad = [&](const std::string& text) { return text.find_first_of(forbidden) != std::string::npos; };
  if (bad(credentials.login) || bad(credentials.password))
    throw PopFailure(pop_failure::loginRefused,
                     "The user name or password holds a line break or a null character. Nothing was sent.");
}

void greet(Conversation& conversation, bool secure) {
  const Reply greeting = readGreeting(conversation, secure);
  conversation.enter(Phase::LoggingIn);
  if (greeting.ok) return;
  const std::int32_t reason = troubleIn(greeting.text).value_or(pop_failure::loginRefused);
  const std::int32_t number = reason == pop_failure::loginRefused ? pop_failure::greetedWithRefusal : reason;
  throw PopFailure(number, conversation.quote("The server greeted with a refusal.", greeting.text));
}

Capabilities askCapabilities(Conversation& conversation) {
  Capabilities names;
  try {
    if (conversation.ask("CAPA").ok) conversation.lines([&](std::string_view line) { addCapability(names, line); });
  } catch (const PopFailure& failure) {
    throw CapabilitiesFailure(failure.number(), failure.what());
  }
  return names;
}

std::vector<std::string> logInCommands(const Credentials& credentials, bool withUtf8) {
  std::vector<std::string> commands;
  if (withUtf8) commands.emplace_back(utf8Command);
  commands.push_back(userCommand(credentials));
  commands.push_back(passCommand(credentials));
  return commands;
}

bool askUtf8(Conversation& conversation) { return conversation.ask(utf8Command).ok; }

void logIn(Conversation& conversation, const Credentials& credentials, const Capabilities& offered) {
  const bool userOffered = offered.empty() || offered.contains("USER");
  askAccess(conversation, userCommand(credentials), userOffered);
  askAccess(conversation, passCommand(credentials), true);
}

Maildrop askMaildrop(Conversation& conversation) {
  const Reply reply = conversation.ask(maildropCommand);
  if (!reply.ok)
    throw PopFailure(pop_failure::messageRefused,
                     conversation.quote("The server refused to tell what the mailbox holds.", reply.text));
  std::string_view fields = reply.text;
  const std::optional<std::int64_t> count = toCount(takeWord(fields));
  if (!count || *count > std::numeric_limits<std::int32_t>::max())
    throw PopFailure(pop_failure::protocolBroken,
                     conversation.quote("The server's answer breaks the protocol.", reply.text));
  return {static_cast<std::int32_t>(*count), toCount(takeWord(fields)).value_or(0)};
}

}  // namespace velmora::pop
