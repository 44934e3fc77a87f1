#include "platform/qt/widgets/icons.h"

#include <QFileInfo>

#include "platform/qt/services/share_folder.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/client_icon.h"

namespace velmora {

namespace {

QIcon fromFile(const QString& name, ImageList::WhenDisabled whenDisabled) {
  const QString path = shareFolder() + "/icons/" + name + ".svg";
  if (!QFileInfo::exists(path)) return {};
  QIcon icon(path);
  icon.addFile(path, QSize(),
               QIcon::Selected);  // not tinted with the colour of the selection, in which it would vanish
  if (whenDisabled == ImageList::WhenDisabled::AsItIs) icon.addFile(path, QSize(), QIcon::Disabled);
  return icon;
}

}  // namespace

QIcon ImageList::icon(const std::string& key) const {
  if (key.empty()) return {};
  if (const auto client = clientOfKey(key)) {
    QIcon own = clientIcon(*client);
    return own.isNull() ? icon("FolderX") : own;
  }
  const auto found = loaded_->find(key);
  if (found != loaded_->end()) return found->second;
  return loaded_->emplace(key, fromFile(qt(name_) + '/' + qt(key), whenDisabled_)).first->second;
}

QIcon applicationIcon() { return fromFile("velmora", ImageList::WhenDisabled::Grey); }

}  // namespace velmora
