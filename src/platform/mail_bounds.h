#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora::mail_bounds {

// Strangers decide what a message holds, so each of these is far beyond any real message and yet little enough to keep.

/// Bytes of one message that are kept as it came, and of the text made from it. What goes on behind them is read past
/// and counted.
inline constexpr std::size_t message = std::size_t{64} << 20U;

/// Bytes of the texts of all messages of a mailbox together: what a desktop has to spare.
inline constexpr std::size_t mailbox = std::size_t{512} << 20U;

/// Bytes of a header that are kept as it came. Real ones have a few thousand.
inline constexpr std::size_t raw = std::size_t{1} << 20U;

/// Fields of one header, and parts of one message: a record of each is kept while the message is read, and a field of
/// three bytes has a record of many times its size. What comes behind them is text.
inline constexpr std::size_t fields = 10'000;
inline constexpr std::size_t parts = 10'000;

/// Attachments of one message that are told of.
inline constexpr std::size_t attached = 100;

/// What stands in place of what was cut off. In a header it is a field, so that a saved message stays one.
inline constexpr std::string_view bodyMark = "\r\n\r\n[The message goes on. Velmora keeps no more of it.]";
inline constexpr std::string_view rawMark = "\r\nX-Velmora-Note: the header goes on, and no more of it is kept";

/// Cuts a text that is longer than `most` bytes between two characters or line ends and puts the mark behind it. The
/// whole is no longer than `most`, but where that is less than the mark alone.
void cut(std::string& text, std::size_t most, std::string_view mark);

}  // namespace velmora::mail_bounds
