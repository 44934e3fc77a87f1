#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/decisions/move_file.h"
#include "platform/platform.h"

namespace velmora {

/// Whether the file is to hold the passwords, too.
Question exportPasswords(std::string_view appTitle);

/// The file has been written, or is larger than one that could be read again.
Question exportDone(std::string_view appTitle, std::string_view path, bool withPasswords);
Question exportTooLarge(std::string_view appTitle);
Question importTooLarge(std::string_view appTitle);

/// The desktop's keyring doesn't give the password of an account, for this reason.
Question exportLacksPassword(std::string_view appTitle, std::string_view account, std::string_view reason);

/// It doesn't take those of the file, or doesn't give what the file names, for this reason.
Question importNotIntoKeyring(std::string_view appTitle, std::string_view reason);

/// Why a file can't be imported; one that can't be read has no fault to name.
Question importRefused(std::string_view appTitle, std::optional<ParsedMoveFile::Fault> fault);

/// Whether an import is to be done that would change this. Nothing where it would change nothing.
std::optional<Question> importChanges(std::string_view appTitle, const MovedSettings& here, const MovedSettings& there);

/// It wouldn't.
Question importChangesNothing(std::string_view appTitle);

/// It was done, and a copy of what was there before kept at this place. With the keyring in use that holds no
/// passwords.
Question importDone(std::string_view appTitle, std::string_view copy, bool usesKeyring);

}  // namespace velmora
