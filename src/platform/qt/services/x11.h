#pragma once

#include <QtGlobal>

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace velmora {

/// Owns what the X server has answered.
template <class Reply>
using XcbReply = std::unique_ptr<Reply, decltype(&std::free)>;

/// The program's own connection to the X server; null on a desktop of another kind.
xcb_connection_t* x11Display();

/// The number of the screen that the program shows itself on.
int x11Screen();

xcb_window_t x11Root(xcb_connection_t* display);

xcb_atom_t x11Atom(xcb_connection_t* display, const std::string& name);

/// A property that is a list of numbers; none where there is no such.
std::vector<std::uint32_t> x11Numbers(xcb_connection_t* display, xcb_window_t window, xcb_atom_t property);

/// Asks the window manager for something to be done to a window, by a message of this type, since the user wants it
/// (Extended Window Manager Hints, "source indication in requests").
void x11Ask(xcb_connection_t* display, xcb_window_t window, const std::string& type,
            const std::array<std::uint32_t, 5>& words);

/// The source indication of what the user has asked for by other means than the window itself.
inline constexpr std::uint32_t forTheUser = 2;

}  // namespace velmora
#endif
