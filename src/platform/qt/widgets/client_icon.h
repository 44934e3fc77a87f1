#pragma once

#include <QIcon>
#include <QString>
#include <optional>
#include <string_view>

namespace velmora {

/// The picture of the application that a launcher leads to, as the desktop shows it now. Null for any other file, and
/// where there is none to be had.
QIcon clientIcon(const QString& path);

/// The path in the key of an email client's picture, which is "MailClient", a number, ":" and the path.
std::optional<QString> clientOfKey(std::string_view key);

}  // namespace velmora
