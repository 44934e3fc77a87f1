#pragma once

#include <QIcon>
#include <map>
#include <memory>
#include <string>

namespace velmora {

/// The pictures of one image list, by key, sharp at every size. Copies share what they have loaded.
class ImageList {
 public:
  /// How a picture looks on a control that is disabled.
  enum class WhenDisabled { Grey, AsItIs };

  explicit ImageList(std::string name, WhenDisabled whenDisabled = WhenDisabled::Grey)
      : name_(std::move(name)), whenDisabled_(whenDisabled) {}

  /// Blank keys, and keys without a picture, give an empty icon. The key of an email client (`clientOfKey`) gives its
  /// picture as it is now, or else the list's picture "FolderX".
  QIcon icon(const std::string& key) const;

 private:
  std::string name_;
  WhenDisabled whenDisabled_;
  std::shared_ptr<std::map<std::string, QIcon>> loaded_ = std::make_shared<std::map<std::string, QIcon>>();
};

/// The program's own picture.
QIcon applicationIcon();

}  // namespace velmora
