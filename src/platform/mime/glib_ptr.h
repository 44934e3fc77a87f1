#pragma once

#include <glib-object.h>
#include <glib.h>

#include <memory>

namespace velmora::mime {

struct ObjectDeleter {
  void operator()(gpointer object) const { g_object_unref(object); }
};

struct MemoryDeleter {
  void operator()(gpointer memory) const { g_free(memory); }
};

/// Owns one reference to a GObject.
template <class T>
using ObjectPtr = std::unique_ptr<T, ObjectDeleter>;

/// Owns a text that GLib allocated.
using TextPtr = std::unique_ptr<char, MemoryDeleter>;

}  // namespace velmora::mime
