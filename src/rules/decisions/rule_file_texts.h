#pragma once

#include <string_view>

#include "platform/platform.h"

namespace velmora {

/// What the window that renames the Rules file tells first.
inline constexpr std::string_view ruleFileIntro =
    "Changing the Rules FileName will allow multiple users to have their own set of rules if the FileName is different "
    "for each user. The location of the Rule File cannot be changed and the new FileName will always have the prefix "
    "'Rules'. It is suggested to use your name as the FileName to keep each user's file separate and therefore unique.";

/// No Rules file can have the name that the user wants, for this reason.
Question ruleFileNameRefused(std::string_view appTitle, std::string_view reason);

/// Whether changes that were not saved may be lost to an import.
Question importLosesChanges();

/// Whether rules may be imported that take the place of the file in use.
Question importReplacesRules(std::string_view appTitle);

/// What an import comes to.
Question ruleImportFailed(std::string_view appTitle);
Question ruleImportSuccessful(std::string_view appTitle, bool accountsModified);

}  // namespace velmora
