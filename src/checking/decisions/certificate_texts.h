#pragma once

#include <string>
#include <string_view>

#include "accounts/decisions/accounts.h"
#include "platform/certificate.h"
#include "platform/platform.h"

namespace velmora {

/// Why an account's server was refused for the certificate that it showed, in a sentence or two.
std::string certificateTrouble(const Account& account, const ServerCertificate& shown);

/// Asks whether the certificate is to be accepted for the account, and shows what there is to judge it by: what it
/// says, and where it differs from one that was accepted before. No is what Enter answers.
Question certificateQuestion(std::string_view appTitle, const Account& account, const ServerCertificate& shown);

}  // namespace velmora
