#pragma once

#include <string_view>

namespace velmora {

/// A file that is being written beside the one that it replaces, and that its owner alone can read. Without `keep`
/// nothing is left of it, and what was there stays as it was.
class FileDraft {
 public:
  virtual ~FileDraft() = default;

  /// Returns whether it could be written, as on a full disk it can't.
  virtual bool write(std::string_view bytes) = 0;

  /// Puts the file in its place, whole. Returns whether that succeeded.
  virtual bool keep() = 0;
};

}  // namespace velmora
