#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace velmora::pop {

/// Names in capitals (RFC 2449 section 5). "UTF8 USER" where UTF8 says so (RFC 6856 section 2.1). Empty where the
/// server doesn't tell.
using Capabilities = std::set<std::string>;

/// What a server answers to CAPA before and after a login: some large ones announce pipelining only behind it.
struct Announcement {
  Capabilities before, after;
};

/// What was seen of one login behind UTF8 (RFC 6856). It may fail for that, or for what has passed when it is tried
/// without.
struct Utf8Habit {
  int blamed = 0;    ///< how often in succession it went through only without
  int failures = 0;  ///< checks in succession that got through in no way

  /// The user is to get in some day, yet not to risk twice the passwords each time.
  bool mayBeTried() const { return blamed < 2 && (failures < 2 || failures % 2 == 1); }
};

/// What is known of a server: what it announced, and what it can't do all the same.
struct ServerHabit {
  bool oneByOne = false;                  ///< it doesn't stand pipelining
  int capaBlamed = 0;                     ///< how often in succession it hung or hung up on CAPA
  std::optional<Announcement> announced;  ///< until a login fails
  std::map<std::size_t, Utf8Habit> utf8;  ///< by a hash of login and password

  bool mayBeAsked() const { return capaBlamed < 2; }
};

}  // namespace velmora::pop

namespace velmora {

/// What is known of servers, by "host:port". Lives for the whole run, over all clients.
using ServerHabits = std::map<std::string, pop::ServerHabit>;

}  // namespace velmora
