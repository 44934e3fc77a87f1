#include "platform/pop/server_words.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "platform/ascii.h"
#include "platform/characters.h"
#include "platform/failure.h"
#include "platform/text.h"

namespace velmora::pop {
namespace {

constexpr std::size_t maximumWords = 400;
constexpr std::string_view saysServer = " The server says: ";

struct Sign {
  std::string_view words;
  std::int32_t number;
};

constexpr std::array responseCodes = {
    Sign{"[auth]", pop_failure::loginRefused},
    Sign{"[in-use]", pop_failure::mailboxInUse},
    Sign{"[login-delay]", pop_failure::temporaryTrouble},
    Sign{"[sys/temp]", pop_failure::temporaryTrouble},
    Sign{"[sys/perm]", pop_failure::permanentTrouble},
};

// What servers say where they have no codes.

constexpr auto users = std::to_array<std::string_view>({"user", "account"});
constexpr auto access = std::to_array<std::string_view>({"pass", "auth", "login", "logon", "log in", "credential"});
constexpr auto rejects = std::to_array<std::string_view>(
    {"invalid", "wrong", "bad", "unknown", "incorrect", "not found", "no user", "mismatch"});
constexpr auto fails = std::to_array<std::string_view>({"error", "fail", "unable", "can't", "cannot", "can not",
                                                        "could not", "couldn't", "damaged", "missing", "unexpected",
                                                        "no $home", "dir invalid", "has no maildir", "unreadable"});
constexpr auto nobody =
    std::to_array<std::string_view>({"no such mailbox", "no such user", "no such account", "find mailbox",
                                     "unknown mailbox", "invalid mailbox", "mailbox not found", "not exist", "denied"});
constexpr auto mailboxes =
    std::to_array<std::string_view>({"mailbox", "mail box", "maildir", "maildrop", "mail drop", "inbox", "$home",
                                     "mail file", "spool", "mail fol", "mail dir", "mail sto", "/mail/", "envelope"});
constexpr auto services = std::to_array<std::string_view>({"server", "service", "system", "backend", "database"});
constexpr auto isAway = std::to_array<std::string_view>({"unavailable", "not available", "down"});
constexpr auto surelyPassing = std::to_array<std::string_view>({"temporar", "internal", "refer to server log"});
constexpr auto lockPhrases = std::to_array<std::string_view>(
    {"lock busy", "lock file", "already lock", "lock mail", "already in use", "already open", "another session"});
constexpr auto held = std::to_array<std::string_view>(
    {"lock", "in use", "busy", "other session", "another client", "another connection"});
constexpr auto passing = std::to_array<std::string_view>(
    {"try again later", "try later", "server busy", "maintenance", "overload", "timed out", "timeout", "out of memory",
     "cannot allocate", "no space left", "disk full", "crashed", "shutdown", "database error"});
constexpr auto tooMuch = std::to_array<std::string_view>(
    {"too many", "too often", "too frequent", "too fast", "login limit", "exceeded", "maximum number of"});
constexpr auto broken = std::to_array<std::string_view>({"permanent", "is damaged", "corrupt", "chdir", "no such file",
                                                         "not a directory", "input/output", "i/o error",
                                                         "read-only file", "stale", "server error", "system error"});

using Phrases = std::span<const std::string_view>;

struct Meaning {
  std::int32_t number;
  Phrases words;
  Phrases besides = {};  ///< one of which must be there, too
};

/// The first that fits counts. Where the user name or the password may be to blame, the user is to know, whatever else
/// the server says.
constexpr std::array meanings = {
    Meaning{pop_failure::loginRefused, rejects, users},
    Meaning{pop_failure::loginRefused, rejects, access},
    Meaning{pop_failure::loginRefused, nobody},
    Meaning{pop_failure::temporaryTrouble, surelyPassing},
    Meaning{pop_failure::loginRefused, fails, access},
    Meaning{pop_failure::mailboxInUse, lockPhrases},
    Meaning{pop_failure::mailboxInUse, held, mailboxes},
    Meaning{pop_failure::temporaryTrouble, isAway, services},
    Meaning{pop_failure::temporaryTrouble, isAway, mailboxes},
    Meaning{pop_failure::temporaryTrouble, passing},
    Meaning{pop_failure::temporaryTrouble, tooMuch},
    Meaning{pop_failure::permanentTrouble, broken},
    Meaning{pop_failure::permanentTrouble, fails, mailboxes},
};

constexpr auto encryptionPhrases =
    std::to_array<std::string_view>({"plaintext", "plain text", "cleartext", "clear text", "encryption", "encrypted",
                                     "non-secure", "requires tls", "requires ssl", "insecure"});

std::string lowered(std::string_view words) {
  std::string result(words);
  std::ranges::transform(result, result.begin(), ascii::lower);
  return result;
}

/// What a server repeats of a user name tells nothing, whatever words are in it.
std::string withoutAddresses(std::string words) {
  constexpr std::string_view blanks = " \t";
  for (auto at = words.find('@'); at != std::string::npos; at = words.find('@', at)) {
    const auto before = words.find_last_of(blanks, at);
    const auto begin = before == std::string::npos ? 0 : before + 1;
    const auto end = std::min(words.find_first_of(blanks, at), words.size());
    words.erase(begin, end - begin);
    at = begin;
  }
  return words;
}

bool saysAny(std::string_view said, Phrases phrases) {
  return std::ranges::any_of(phrases, [&](std::string_view each) { return said.find(each) != std::string_view::npos; });
}

/// Whether a character can be shown: a byte that is none can't, nor can a control character.
bool isShown(std::string_view character) {
  constexpr char32_t lastControl = 0x9F;
  if (character.size() > 1) return text::decoded(character) > lastControl;
  return character[0] >= ' ' && character[0] <= '~';
}

std::string cleaned(std::string_view text) {
  std::string clean;
  while (!text.empty()) {
    const std::string_view character = text.substr(0, text::characterSize(text));
    if (isShown(character)) clean.append(character);
    text.remove_prefix(character.size());
  }
  return std::string(text::trim(clean));
}

/// A letter and its capital are one character each, so that places in a text and in its capitals are counted alike.
std::string withoutSecret(std::string_view words, std::string_view secret) {
  const std::string capitals = text::upper(words);
  const std::string hidden = text::upper(secret);
  const std::size_t length = text::length(hidden);
  std::string_view ahead = capitals;
  std::string shown;
  while (!hidden.empty()) {
    const std::size_t at = text::find(ahead, hidden);
    if (at == std::string_view::npos) break;
    if (length < shortestStruckOut) return {};
    const std::string_view before = text::left(words, text::length(ahead.substr(0, at)));
    shown.append(before).append("*****");
    words.remove_prefix(before.size());
    words.remove_prefix(text::left(words, length).size());
    ahead.remove_prefix(at + hidden.size());
  }
  return shown.append(words);
}

bool isPlain(char c) { return ascii::isDigit(c) || ascii::isLetter(c); }

/// The first letter or digit, blank where there is none.
std::string firstPlain(std::string_view text) {
  const auto found = std::ranges::find_if(text, isPlain);
  return found == text.end() ? std::string() : lowered(std::string(1, *found));
}

/// A server that repeats the command may write the secret in many ways: escaped, in another charset, cut off. So all
/// that it repeats of it goes, where it begins like the secret.
std::string withoutCommand(const std::string& words, std::string_view secret) {
  constexpr std::string_view command = "pass ";
  const auto begin = lowered(words).find(command);
  if (secret.empty() || begin == std::string::npos) return words;
  const auto end = begin + command.size();
  const std::string meant = firstPlain(secret);
  if (!meant.empty() && firstPlain(std::string_view(words).substr(end)) != meant) return words;
  return words.substr(0, end) + "*****";
}

}  // namespace

std::string cleanWords(std::string_view text, std::string_view secret) {
  // Control characters between its letters must not hide the secret, nor the end of what is shown a part of it.
  const std::string words = withoutSecret(withoutCommand(cleaned(text), secret), cleaned(secret));
  return words.size() <= maximumWords ? words : std::string(text::leftBytes(words, maximumWords)) + "...";
}

std::string withServerWords(std::string_view what, std::string_view words, std::string_view secret) {
  const std::string clean = cleanWords(words, secret);
  return std::string(what) + (clean.empty() ? "" : std::string(saysServer) + clean);
}

std::string_view withoutServerWords(std::string_view text) { return text.substr(0, text.find(saysServer)); }

std::optional<std::int32_t> troubleIn(std::string_view words) {
  const std::string low = lowered(words);
  const auto byCode =
      std::ranges::find_if(responseCodes, [&](const Sign& sign) { return low.starts_with(sign.words); });
  if (byCode != responseCodes.end()) return byCode->number;
  const std::string said = withoutAddresses(low);
  const auto meant = std::ranges::find_if(meanings, [&](const Meaning& meaning) {
    return saysAny(said, meaning.words) && (meaning.besides.empty() || saysAny(said, meaning.besides));
  });
  if (meant == meanings.end() || meant->number == pop_failure::loginRefused) return std::nullopt;
  return meant->number;
}

bool isTemporary(std::string_view words) { return lowered(words).starts_with("[sys/temp]"); }

bool asksForEncryption(std::string_view words) {
  const std::string said = withoutAddresses(lowered(words));
  return saysAny(said, encryptionPhrases) && !saysAny(said, rejects);
}

}  // namespace velmora::pop
