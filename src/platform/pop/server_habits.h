#pragma once

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

/// What is known of a server: what it announced, and what it can't do all the same.
struct ServerHabit {
  bool oneByOne = false;                     ///< it doesn't stand pipelining
  bool noCapa = false;                       ///< it hangs or hangs up on CAPA
  bool noUtf8 = false;                       ///< it refuses a login behind UTF8
  std::optional<Announcement> announced;     ///< until a login fails
  std::set<std::string> refusedWithoutUtf8;  ///< credentials that it refused behind UTF8 and without it
};

}  // namespace velmora::pop

namespace velmora {

/// What is known of servers, by "host:port". Lives for the whole run, over all clients.
using ServerHabits = std::map<std::string, pop::ServerHabit>;

}  // namespace velmora
