#include "platform/usable_file.h"

#include "platform/platform.h"
#include "platform/text.h"

namespace velmora {

bool isUsableFile(const Platform& platform, const std::string& path, std::string_view ending) {
  return text::endsWithIgnoringCase(path, ending) && platform.fileExists(path);
}

}  // namespace velmora
