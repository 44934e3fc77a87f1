#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velmora::pop {

/// Characters of the shortest secret that can be struck out of a text: of a shorter one, what is struck out would tell
/// it.
inline constexpr std::size_t shortestStruckOut = 4;

/// A server's text made fit to be shown: valid UTF-8 in one line without control characters, of bounded length, and
/// `secret`, which may be blank, struck out in whatever case of letters, and however it is written behind a repeated
/// PASS. A text that holds a shorter secret than can be struck out is not shown at all.
std::string cleanWords(std::string_view text, std::string_view secret);

/// "What happened." followed by the server's own words, where there are any that may be shown.
std::string withServerWords(std::string_view what, std::string_view words, std::string_view secret);

/// What happened, of such a text.
std::string_view withoutServerWords(std::string_view text);

/// The failure that a refusal tells of by its response code (RFC 2449 section 8, RFC 3206) or, lacking one, by words
/// that servers use: mailboxInUse, temporaryTrouble, permanentTrouble, or loginRefused for [AUTH]. Nothing where it
/// tells nothing.
std::optional<std::int32_t> troubleIn(std::string_view words);

/// The refusal is for the moment only, by its code [SYS/TEMP].
bool isTemporary(std::string_view words);

/// The refusal says that logging in needs encryption.
bool asksForEncryption(std::string_view words);

}  // namespace velmora::pop
