#pragma once

#include <cstdint>
#include <string>

namespace velmora {

/// The certificate that a secure server has shown. What it says of itself is a stranger's text, of one line each and a
/// bounded length.
struct ServerCertificate {
  std::string fingerprint;  ///< SHA-256 in hexadecimal digits, a colon between two bytes; blank where it showed none
  std::string issuedFor;
  std::string issuedBy;
  std::string validUntil;
  std::string text;            ///< all of it, in text form
  std::int32_t errorCode = 0;  ///< what is wrong with it, if anything: the first thing as a number, all in words
  std::string errorText;

  bool isTrusted() const { return errorCode == 0 && !fingerprint.empty(); }
};

/// Which certificates are taken: every one, or those alone that nothing is wrong with, and the one of this fingerprint.
struct CertificateDemand {
  bool refuseUntrusted = false;
  std::string accepted;

  bool isMetBy(const ServerCertificate& shown) const {
    return !refuseUntrusted || shown.isTrusted() || (!accepted.empty() && shown.fingerprint == accepted);
  }
};

}  // namespace velmora
