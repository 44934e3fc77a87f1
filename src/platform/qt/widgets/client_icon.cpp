#include "platform/qt/widgets/client_icon.h"

#include <QFileInfo>
#include <QPixmap>
#include <QStandardPaths>

#include "platform/qt/services/client_launchers.h"
#include "platform/qt/services/desktop_applications.h"
#include "platform/qt/strings.h"

namespace velmora {

namespace {

/// Null where the file holds no picture.
QIcon pictureIn(const QString& path) {
  if (!QFileInfo(path).isFile()) return {};
  QIcon icon(path);
  return icon.pixmap(16).isNull() ? QIcon() : icon;
}

/// Older programs have their only picture beside the themes.
QIcon fromPixmaps(const QString& name) {
  for (const auto* ending : {".svg", ".png", ".xpm"}) {
    const QString path = QStandardPaths::locate(QStandardPaths::GenericDataLocation, "pixmaps/" + name + ending);
    if (!path.isEmpty()) return pictureIn(path);
  }
  return {};
}

QIcon pictureOf(const QString& name) {
  if (QFileInfo(name).isAbsolute()) return pictureIn(name);
  QIcon icon = QIcon::fromTheme(name);
  return icon.isNull() ? fromPixmaps(name) : icon;
}

}  // namespace

QIcon clientIcon(const QString& path) {
  for (const QString& name : applicationPictures(entryBehind(path))) {
    QIcon icon = pictureOf(name);
    if (!icon.isNull()) return icon;
  }
  return {};
}

std::optional<QString> clientOfKey(std::string_view key) {
  constexpr std::string_view start = "MailClient";
  if (!key.starts_with(start)) return std::nullopt;
  const auto colon = key.find_first_not_of("0123456789", start.size());
  if (colon == std::string_view::npos || colon == start.size() || key[colon] != ':') return std::nullopt;
  return qt(key.substr(colon + 1));
}

}  // namespace velmora
