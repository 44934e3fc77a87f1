#pragma once

#include <QtGlobal>

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>

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

}  // namespace velmora
#endif
