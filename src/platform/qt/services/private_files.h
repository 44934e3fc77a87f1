#pragma once

#include <QFileDevice>
#include <QString>
#include <optional>

namespace velmora {

constexpr auto ownersFile = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
constexpr auto ownersFolder = ownersFile | QFileDevice::ExeOwner;

/// A file or a folder with these rights keeps what it holds to this user, its owner. Others may pass through a folder
/// as long as they can neither list it nor lay anything into it.
bool isPrivate(QFileDevice::Permissions rights, unsigned owner, unsigned user);

/// Takes a file or a folder from everybody but the program's user. A link stands for what it leads to, and what belongs
/// to somebody else stays as it is. Returns whether it is private then: where it isn't the user's own, or stands on a
/// disk that knows no rights, it is not. What isn't there is open to nobody.
bool makePrivate(const QString& path);

/// The same, and makes the folder where there is none. Those above it are made as anybody makes them.
bool makePrivateFolder(const QString& folder);

/// What leaves a file open to others, though all has been tried: the folder that it lies in, which is made where there
/// is none, or the file itself.
std::optional<QString> openToOthers(const QString& file);

}  // namespace velmora
