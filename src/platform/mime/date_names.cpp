#include "platform/mime/date_names.h"

#include <algorithm>
#include <array>

#include "platform/text.h"

namespace velmora::mime {

namespace {

constexpr std::array<std::string_view, 12> months = {"January",   "February", "March",    "April",
                                                     "May",       "June",     "July",     "August",
                                                     "September", "October",  "November", "December"};
constexpr std::size_t shortestMonth = 3;

struct Zone {
  std::string_view name;
  int minutes;
};

/// A name that several zones go by stands for the one that RFC 5322 says, else for the one of most people.
constexpr std::array zones = {
    Zone{"Z", 0},      Zone{"UTC", 0},     Zone{"UT", 0},      Zone{"GMT", 0},    Zone{"WET", 0},    Zone{"EST", -300},
    Zone{"EDT", -240}, Zone{"CST", -360},  Zone{"CDT", -300},  Zone{"MST", -420}, Zone{"MDT", -360}, Zone{"PST", -480},
    Zone{"PDT", -420}, Zone{"CET", 60},    Zone{"CEST", 120},  Zone{"MEZ", 60},   Zone{"MESZ", 120}, Zone{"MET", 60},
    Zone{"MEST", 120}, Zone{"BST", 60},    Zone{"WEST", 60},   Zone{"EET", 120},  Zone{"EEST", 180}, Zone{"MSK", 180},
    Zone{"MSD", 240},  Zone{"SAST", 120},  Zone{"PKT", 300},   Zone{"IST", 330},  Zone{"NPT", 345},  Zone{"WIB", 420},
    Zone{"ICT", 420},  Zone{"HKT", 480},   Zone{"SGT", 480},   Zone{"AWST", 480}, Zone{"JST", 540},  Zone{"KST", 540},
    Zone{"ACST", 570}, Zone{"ACDT", 630},  Zone{"AEST", 600},  Zone{"AEDT", 660}, Zone{"NZST", 720}, Zone{"NZDT", 780},
    Zone{"NST", -210}, Zone{"NDT", -150},  Zone{"AST", -240},  Zone{"ADT", -180}, Zone{"BRT", -180}, Zone{"BRST", -120},
    Zone{"ART", -180}, Zone{"AKST", -540}, Zone{"AKDT", -480}, Zone{"HST", -600},
};

}  // namespace

std::optional<int> monthNamed(std::string_view word) {
  if (word.size() < shortestMonth) return std::nullopt;
  const auto* const found = std::ranges::find_if(
      months, [word](std::string_view name) { return text::equalsIgnoringCase(name.substr(0, word.size()), word); });
  if (found == months.end()) return std::nullopt;
  return static_cast<int>(found - months.begin()) + 1;
}

std::optional<int> zoneNamed(std::string_view word) {
  const auto* const found =
      std::ranges::find_if(zones, [word](const Zone& zone) { return text::equalsIgnoringCase(zone.name, word); });
  if (found == zones.end()) return std::nullopt;
  return found->minutes;
}

}  // namespace velmora::mime
