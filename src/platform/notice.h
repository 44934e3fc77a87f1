#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace velmora {

/// A notification of the desktop's, which is beside the user's work and never in its way. All texts are UTF-8 and may
/// hold anything: the desktop gets them bounded, harmless, and never as markup.
struct Notice {
  enum class Kind {
    New,       ///< messages have come
    Failures,  ///< quieter: something could not be done
  };

  Kind kind = Kind::New;
  std::string summary;
  std::vector<std::string> lines = {};    ///< below it, where the desktop shows any
  std::vector<std::string> choices = {};  ///< what its buttons say, where the desktop shows any

  bool operator==(const Notice&) const = default;
};

/// What becomes of a notification. Each comes later, out of the event loop, and not at all once the program is ending.
struct NoticeEvents {
  std::function<void(std::size_t choice)> chosen;  ///< by a click on it, 0, or on the button of this number, from 1 on
  std::function<void()> notShown = {};             ///< there is no service that could show it
};

}  // namespace velmora
