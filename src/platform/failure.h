#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace velmora {

/// A step that could not be carried out for a reason of this program's own (a conversion, a missing row), with the
/// customary number and description that its dialogs show.
class RunTimeFailure : public std::runtime_error {
 public:
  RunTimeFailure(std::int32_t number, const std::string& description)
      : std::runtime_error(description), number_(number) {}

  std::int32_t number() const { return number_; }

 private:
  std::int32_t number_;
};

inline RunTimeFailure invalidCallFailure() { return {5, "Invalid procedure call or argument"}; }
inline RunTimeFailure overflowFailure() { return {6, "Overflow"}; }
inline RunTimeFailure subscriptFailure() { return {9, "Subscript out of range"}; }
inline RunTimeFailure typeMismatchFailure() { return {13, "Type mismatch"}; }

/// What the POP client could not do: one of the numbers below and a text for people, which carries the server's own
/// words where it sent any.
class PopFailure : public std::runtime_error {
 public:
  PopFailure(std::int32_t number, const std::string& text) : std::runtime_error(text), number_(number) {}

  std::int32_t number() const { return number_; }

 private:
  std::int32_t number_;
};

namespace pop_failure {
inline constexpr std::int32_t connectionReset = 10054;
inline constexpr std::int32_t timedOut = 10060;
inline constexpr std::int32_t connectionRefused = 10061;
inline constexpr std::int32_t hostNotFound = 11001;
/// No greeting, or the greeting is not POP3.
inline constexpr std::int32_t noGreeting = 30001;
/// The server greeted with a refusal.
inline constexpr std::int32_t greetedWithRefusal = 30002;
inline constexpr std::int32_t closedWhileLoggingIn = 30003;
/// An answer that breaks the protocol, or is longer than any server may send.
inline constexpr std::int32_t protocolBroken = 30004;
/// The login method is not offered, for example plain login without encryption.
inline constexpr std::int32_t loginMethodNotOffered = 30005;
inline constexpr std::int32_t mailboxInUse = 30006;
/// User name or password refused. No option silences it.
inline constexpr std::int32_t loginRefused = 30007;
inline constexpr std::int32_t temporaryTrouble = 30008;
inline constexpr std::int32_t permanentTrouble = 30009;
/// The desktop's keyring, which holds the password, doesn't give it. The text is blank where the user knows that
/// already. No option silences it.
inline constexpr std::int32_t passwordOutOfReach = 30010;
/// The connection was lost while messages came in.
inline constexpr std::int32_t connectionLost = 30012;
/// The server refused to hand out a message or a listing.
inline constexpr std::int32_t messageRefused = 30013;
/// No data for the time-out while messages came in.
inline constexpr std::int32_t silentWhileFetching = 30014;
inline constexpr std::int32_t tlsHandshakeFailed = 60000;
/// The server's certificate is none that the account takes. Nothing was said to the server.
inline constexpr std::int32_t certificateRefused = 60001;
}  // namespace pop_failure

}  // namespace velmora
