#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// The text that a reader of the HTML (UTF-8) sees, in lines that end with LF and with at most one blank line between
/// them. Nothing is loaded, pictures give no text, and no HTML of 1 MiB takes longer than about a second. Needs a
/// QGuiApplication.
std::string htmlToText(std::string_view html);

}  // namespace velmora
