#include "platform/pop/server_words.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

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

constexpr std::array<std::string_view, 8> encryptionPhrases = {
    "plaintext", "plain text", "cleartext", "clear text", "encrypt", "non-secure", "requires tls", "requires ssl",
};

std::string lowered(std::string_view words) {
  std::string result(words);
  std::ranges::transform(result, result.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return result;
}

std::optional<std::int32_t> firstSign(std::span<const Sign> signs, auto matches) {
  const auto found = std::ranges::find_if(signs, [&](const Sign& sign) { return matches(sign.words); });
  if (found == signs.end()) return std::nullopt;
  return found->number;
}

struct Utf8Form {
  unsigned char firstLow, firstHigh;
  std::size_t length;
  unsigned char secondLow, secondHigh;
};

// Without the control characters U+0000 to U+001F and U+007F to U+009F, and without surrogates and overlong forms.
constexpr std::array utf8Forms = {
    Utf8Form{0x20, 0x7E, 1, 0, 0},       Utf8Form{0xC2, 0xC2, 2, 0xA0, 0xBF}, Utf8Form{0xC3, 0xDF, 2, 0x80, 0xBF},
    Utf8Form{0xE0, 0xE0, 3, 0xA0, 0xBF}, Utf8Form{0xE1, 0xEC, 3, 0x80, 0xBF}, Utf8Form{0xED, 0xED, 3, 0x80, 0x9F},
    Utf8Form{0xEE, 0xEF, 3, 0x80, 0xBF}, Utf8Form{0xF0, 0xF0, 4, 0x90, 0xBF}, Utf8Form{0xF1, 0xF3, 4, 0x80, 0xBF},
    Utf8Form{0xF4, 0xF4, 4, 0x80, 0x8F},
};

bool within(char c, unsigned low, unsigned high) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= low && byte <= high;
}

bool startsWith(std::string_view text, const Utf8Form& form) {
  if (text.size() < form.length || !within(text[0], form.firstLow, form.firstHigh)) return false;
  if (form.length > 1 && !within(text[1], form.secondLow, form.secondHigh)) return false;
  const auto continues = [](char c) { return within(c, 0x80, 0xBF); };
  return form.length < 3 || std::ranges::all_of(text.substr(2, form.length - 2), continues);
}

/// Bytes of the character that the text starts with, 0 where it starts with none that can be shown.
std::size_t characterLength(std::string_view text) {
  const auto form = std::ranges::find_if(utf8Forms, [&](const Utf8Form& f) { return startsWith(text, f); });
  return form == utf8Forms.end() ? 0 : form->length;
}

std::string cleaned(std::string_view text) {
  std::string clean;
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    clean.append(text.substr(0, length));
    text.remove_prefix(std::max<std::size_t>(length, 1));
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

bool isPlain(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

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
  return firstSign(phrases, [&](std::string_view phrase) { return low.find(phrase) != std::string::npos; });
}

bool isTemporary(std::string_view words) { return lowered(words).starts_with("[sys/temp]"); }

bool asksForEncryption(std::string_view words) {
  const std::string low = lowered(words);
  return std::ranges::any_of(encryptionPhrases,
                             [&](std::string_view phrase) { return low.find(phrase) != std::string::npos; });
}

}  // namespace velmora::pop
