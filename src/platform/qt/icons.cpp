#include "platform/qt/icons.h"

#include <QCoreApplication>
#include <QFileInfo>

#include "platform/qt/strings.h"

namespace velmora {

namespace {

/// The build lays the program and its share folder out as the installation does.
QString shareFolder() { return QCoreApplication::applicationDirPath() + "/../share/velmora"; }

QIcon fromFile(const QString& name) {
  const QString path = shareFolder() + "/icons/" + name + ".svg";
  return QFileInfo::exists(path) ? QIcon(path) : QIcon();
}

}  // namespace

QIcon ImageList::icon(const std::string& key) const {
  if (key.empty()) return {};
  const auto found = loaded_->find(key);
  if (found != loaded_->end()) return found->second;
  return loaded_->emplace(key, fromFile(qt(name_) + '/' + qt(key))).first->second;
}

QIcon applicationIcon() { return fromFile("velmora"); }

}  // namespace velmora
