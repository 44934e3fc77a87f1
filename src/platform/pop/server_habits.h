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
  static constexpr int enough = 2;

  int blamed = 0;           ///< how often it went through only without: from `enough` on UTF8 is left out
  bool failedBoth = false;  ///< with it and without; then each attempt is made in but one way, in turn
  bool withoutNext = false;
};

/// What is known of a server: what it announced, and what it can't do all the same.
struct ServerHabit {
  bool stepByStep = false;                ///< it doesn't stand user name and password in one go
  bool oneByOne = false;                  ///< it doesn't stand pipelining behind the login
  bool noCapa = false;                    ///< it hangs or hangs up on CAPA
  std::optional<Announcement> announced;  ///< until a login fails
  std::map<std::size_t, Utf8Habit> utf8;  ///< by a hash of login and password
};

}  // namespace velmora::pop

namespace velmora {

/// What is known of servers, by "host:port". Lives for the whole run, over all clients.
using ServerHabits = std::map<std::string, pop::ServerHabit>;

}  // namespace velmora
