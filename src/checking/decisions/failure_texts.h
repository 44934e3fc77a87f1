#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

#include "platform/platform.h"

namespace velmora {

/// What each dialog about a server is called, behind the program's title.
namespace failure_title {
inline constexpr std::string_view establishing = "Error Establishing Connection";
inline constexpr std::string_view processing = "Error Processing Messages";
inline constexpr std::string_view test = "Test Connection Failure";
inline constexpr std::string_view deleting = "Delete Connection Failure";
inline constexpr std::string_view fetchingOriginal = "Fetch Message Failure";
}  // namespace failure_title

/// A failure as a dialog tells it.
struct FailureReport {
  std::int32_t number = 0;
  std::string text;
};

/// Number and description of any failure of the program's own.
FailureReport describe(const std::exception& failure);

/// Its number and what the dialogs say of it.
std::string failureReason(const FailureReport& report);

/// Numbers that the options to suppress connection and retrieval errors silence.
bool isSilencedOnConnect(std::int32_t number);
bool isSilencedOnRetrieve(std::int32_t number);

/// The dialog for a failure of the POP client.
Question connectionError(std::string_view appTitle, std::string_view accountName, const FailureReport& report,
                         std::string_view title);

/// The dialog for a password that the desktop's keyring doesn't give.
Question passwordError(std::string_view appTitle, std::string_view accountName, const FailureReport& report,
                       std::string_view title);

/// The dialog for any other failure.
Question unexpectedError(std::string_view appTitle, std::string_view accountName, const FailureReport& report,
                         std::string_view title);

/// What a connection test says of an account whose port is none.
Question portError(std::string_view appTitle, std::string_view accountName);

/// What a connection test that succeeded says.
Question testSucceeded(std::string_view appTitle);

}  // namespace velmora
