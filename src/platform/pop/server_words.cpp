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
constexpr std::size_t shortestStruckOut = 4;

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

constexpr std::array phrases = {
    Sign{"lock busy", pop_failure::mailboxInUse},       Sign{"already lock", pop_failure::mailboxInUse},
    Sign{"mailbox lock", pop_failure::mailboxInUse},    Sign{"mailbox is lock", pop_failure::mailboxInUse},
    Sign{"maildrop lock", pop_failure::mailboxInUse},   Sign{"maildrop is lock", pop_failure::mailboxInUse},
    Sign{"lock mail", pop_failure::mailboxInUse},       Sign{"mailbox in use", pop_failure::mailboxInUse},
    Sign{"maildrop in use", pop_failure::mailboxInUse}, Sign{"already in use", pop_failure::mailboxInUse},
    Sign{"already open", pop_failure::mailboxInUse},    Sign{"another session", pop_failure::mailboxInUse},
    Sign{"temporar", pop_failure::temporaryTrouble},    Sign{"try again later", pop_failure::temporaryTrouble},
    Sign{"try later", pop_failure::temporaryTrouble},   Sign{"too many", pop_failure::temporaryTrouble},
    Sign{"too often", pop_failure::temporaryTrouble},   Sign{"too frequent", pop_failure::temporaryTrouble},
    Sign{"server busy", pop_failure::temporaryTrouble}, Sign{"service unavailable", pop_failure::temporaryTrouble},
    Sign{"permanent", pop_failure::permanentTrouble},
};

/// What servers say of trouble with a mailbox, though the user name and password were right.
constexpr std::array mailboxTroubles = {
    Sign{"internal error", pop_failure::temporaryTrouble},
    Sign{"internal server error", pop_failure::temporaryTrouble},
    Sign{"maintenance", pop_failure::temporaryTrouble},
    Sign{"overload", pop_failure::temporaryTrouble},
    Sign{"unavailable", pop_failure::temporaryTrouble},
    Sign{"not available", pop_failure::temporaryTrouble},
    Sign{"timed out", pop_failure::temporaryTrouble},
    Sign{"timeout", pop_failure::temporaryTrouble},
    Sign{"out of memory", pop_failure::temporaryTrouble},
    Sign{"cannot allocate", pop_failure::temporaryTrouble},
    Sign{"no space left", pop_failure::temporaryTrouble},
    Sign{"disk full", pop_failure::temporaryTrouble},
    Sign{"is damaged", pop_failure::permanentTrouble},
    Sign{"corrupt", pop_failure::permanentTrouble},
    Sign{"chdir", pop_failure::permanentTrouble},
    Sign{"no such file", pop_failure::permanentTrouble},
    Sign{"not a directory", pop_failure::permanentTrouble},
    Sign{"input/output error", pop_failure::permanentTrouble},
    Sign{"i/o error", pop_failure::permanentTrouble},
    Sign{"read-only file", pop_failure::permanentTrouble},
    Sign{"quota", pop_failure::permanentTrouble},
    Sign{"open maildir", pop_failure::permanentTrouble},
    Sign{"open mailbox", pop_failure::permanentTrouble},
    Sign{"open maildrop", pop_failure::permanentTrouble},
    Sign{"open the mail", pop_failure::permanentTrouble},
    Sign{"read maildir", pop_failure::permanentTrouble},
    Sign{"scan maildir", pop_failure::permanentTrouble},
    Sign{"access maildir", pop_failure::permanentTrouble},
    Sign{"access mailbox", pop_failure::permanentTrouble},
    Sign{"server error", pop_failure::permanentTrouble},
    Sign{"system error", pop_failure::permanentTrouble},
};

/// Where a server speaks of these at all, they may be to blame, and the user is to know.
constexpr std::array<std::string_view, 8> credentialPhrases = {
    "password", "passwd", "username", "user name", "credential", "authenti", "login incorrect", "logon",
};

constexpr std::array<std::string_view, 8> encryptionPhrases = {
    "plaintext", "plain text", "cleartext", "clear text", "encrypt", "non-secure", "requires tls", "requires ssl",
};

std::string lowered(std::string_view words) {
  std::string result(words);
  std::ranges::transform(result, result.begin(), ascii::lower);
  return result;
}

std::optional<std::int32_t> firstSign(std::span<const Sign> signs, auto matches) {
  const auto found = std::ranges::find_if(signs, [&](const Sign& sign) { return matches(sign.words); });
  if (found == signs.end()) return std::nullopt;
  return found->number;
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
  return std::string(what) + (clean.empty() ? "" : " The server says: " + clean);
}

std::optional<std::int32_t> troubleIn(std::string_view words) {
  const std::string low = lowered(words);
  const auto byCode = firstSign(responseCodes, [&](std::string_view code) { return low.starts_with(code); });
  if (byCode) return byCode;
  const auto isSaid = [&](std::string_view phrase) { return low.find(phrase) != std::string::npos; };
  const auto byPhrase = firstSign(phrases, isSaid);
  if (byPhrase || std::ranges::any_of(credentialPhrases, isSaid)) return byPhrase;
  return firstSign(mailboxTroubles, isSaid);
}

bool isTemporary(std::string_view words) { return lowered(words).starts_with("[sys/temp]"); }

bool asksForEncryption(std::string_view words) {
  const std::string low = lowered(words);
  return std::ranges::any_of(encryptionPhrases,
                             [&](std::string_view phrase) { return low.find(phrase) != std::string::npos; });
}

}  // namespace velmora::pop
