#include "platform/mime/charset_names.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "platform/ascii.h"
#include "platform/mime/seven_bit.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

constexpr std::size_t longestName = 100;

struct Alias {
  std::string_view mail;  ///< letters and digits of the name
  std::string_view system;
};

constexpr std::string_view utf8;  // ASCII as well: what breaks it is most often UTF-8

constexpr std::array aliases = {
    Alias{"ASCII", utf8},
    Alias{"USASCII", utf8},
    Alias{"CSASCII", utf8},
    Alias{"US", utf8},
    Alias{"ANSIX341968", utf8},
    Alias{"ANSIX341986", utf8},
    Alias{"ISO646US", utf8},
    Alias{"ISO646IRV1991", utf8},
    Alias{"ISOIR6", utf8},
    Alias{"CP367", utf8},
    Alias{"CP20127", utf8},
    Alias{"CP65001", utf8},
    Alias{"CP65000", "UTF-7"},
    Alias{"CP1200", "UTF-16LE"},
    Alias{"CP1201", "UTF-16BE"},
    Alias{"ISO10646UCS2", "UCS-2"},
    Alias{"GB", "GB18030"},
    Alias{"CNGB", "GB18030"},
    Alias{"CHINESE", "GB18030"},
    Alias{"GB2312", "GB18030"},
    Alias{"GB231280", "GB18030"},
    Alias{"CSGB2312", "GB18030"},
    Alias{"CSISO58GB231280", "GB18030"},
    Alias{"ISOIR58", "GB18030"},
    Alias{"EUCCN", "GB18030"},
    Alias{"GBK", "GB18030"},
    Alias{"CSGBK", "GB18030"},
    Alias{"CP54936", "GB18030"},
    Alias{"MACCHINESESIMP", "GB18030"},
    Alias{"HZ", seven_bit::hz},
    Alias{"HZGB2312", seven_bit::hz},
    Alias{"CP52936", seven_bit::hz},
    Alias{"BIG5", "BIG5-HKSCS"},
    Alias{"BIGFIVE", "BIG5-HKSCS"},
    Alias{"CNBIG5", "BIG5-HKSCS"},
    Alias{"CSBIG5", "BIG5-HKSCS"},
    Alias{"BIG5ETEN", "BIG5-HKSCS"},
    Alias{"BIG5HKSCS", "BIG5-HKSCS"},
    Alias{"CP950", "BIG5-HKSCS"},
    Alias{"MACCHINESETRAD", "BIG5-HKSCS"},
    Alias{"SHIFTJIS", "CP932"},
    Alias{"SJIS", "CP932"},
    Alias{"MSKANJI", "CP932"},
    Alias{"CSSHIFTJIS", "CP932"},
    Alias{"WINDOWS31J", "CP932"},
    Alias{"CSWINDOWS31J", "CP932"},
    Alias{"MACJAPANESE", "CP932"},
    Alias{"EUCJP", "EUC-JP-MS"},
    Alias{"EUCJPMS", "EUC-JP-MS"},
    Alias{"UJIS", "EUC-JP-MS"},
    Alias{"CSEUCPKDFMTJAPANESE", "EUC-JP-MS"},
    Alias{"CP51932", "EUC-JP-MS"},
    Alias{"ISO2022JP", seven_bit::jis},
    Alias{"ISO2022JP1", seven_bit::jis},
    Alias{"ISO2022JPMS", seven_bit::jis},
    Alias{"CSISO2022JP", seven_bit::jis},
    Alias{"JIS", seven_bit::jis},
    Alias{"JIS7", seven_bit::jis},
    Alias{"CP50220", seven_bit::jis},
    Alias{"CP50221", seven_bit::jis},
    Alias{"CP50222", seven_bit::jis},
    Alias{"ISO2022JP2004", "ISO-2022-JP-3"},
    Alias{"EUCKR", "CP949"},
    Alias{"CSEUCKR", "CP949"},
    Alias{"KOREAN", "CP949"},
    Alias{"KSC5601", "CP949"},
    Alias{"KSC56011987", "CP949"},
    Alias{"KSC56011989", "CP949"},
    Alias{"CSKSC56011987", "CP949"},
    Alias{"ISOIR149", "CP949"},
    Alias{"CP51949", "CP949"},
    Alias{"MACKOREAN", "CP949"},
    Alias{"CP50225", "ISO-2022-KR"},
    Alias{"CP256", "IBM256"},
    Alias{"CP277", "IBM277"},
    Alias{"CP848", "IBM848"},
    Alias{"CP943", "IBM943"},
    Alias{"CP866U", "CP866NAV"},
    Alias{"CP866NAV", "CP866NAV"},
    Alias{"ISO88599E", "ISO-8859-9E"},
    Alias{"KZ1048", "RK1048"},
    Alias{"PTCP154", "PT154"},
    Alias{"TIS620", "CP874"},
    Alias{"ISO885911", "CP874"},
    Alias{"KOI", "KOI8-R"},
    Alias{"KOI8", "KOI8-R"},
    Alias{"KOI8R", "KOI8-R"},
    Alias{"CP20866", "KOI8-R"},
    Alias{"KOI8U", "KOI8-U"},
    Alias{"CP21866", "KOI8-U"},
    Alias{"MACROMAN", "MACINTOSH"},
    Alias{"CP10000", "MACINTOSH"},
    Alias{"MACUKRAINIAN", "MAC-UK"},
    Alias{"MACCE", "MAC-CENTRALEUROPE"},
    Alias{"MACCENTRALEUROPE", "MAC-CENTRALEUROPE"},
    Alias{"MACCENTRALEURROMAN", "MAC-CENTRALEUROPE"},
    Alias{"CP10029", "MAC-CENTRALEUROPE"},
};

/// Charsets that go by a number, of so many digits, behind any of several words.
struct Family {
  std::string_view mail;  ///< letters and digits of the word
  std::string_view system;
  std::size_t fewest;
  std::size_t most;
};

constexpr std::array families = {
    Family{"ISO8859", "ISO-8859-", 1, 2},
    Family{"ISO8559", "ISO-8859-", 1, 2},
    Family{"8859", "ISO-8859-", 1, 2},
    Family{"CP2859", "ISO-8859-", 1, 1},
    Family{"CP2860", "ISO-8859-1", 1, 1},
    Family{"LATIN", "LATIN", 1, 2},
    Family{"ISOLATIN", "LATIN", 1, 2},
    Family{"WINDOWS", "CP", 3, 5},
    Family{"MSWINDOWS", "CP", 3, 5},
    Family{"WIN", "CP", 3, 5},
    Family{"CP", "CP", 3, 5},
    Family{"MS", "CP", 3, 5},
    Family{"MSCP", "CP", 3, 5},
    Family{"ANSI", "CP", 4, 4},
    Family{"IBM", "CP", 3, 5},
    Family{"DOS", "CP", 3, 3},
    Family{"OEM", "CP", 3, 3},
    Family{"PC", "CP", 3, 3},
    Family{"CODEPAGE", "CP", 3, 5},
};

/// What a name of a charset is made of (RFC 2978 section 2.3). A slash would let iconv take what follows as its own
/// options.
bool isOfName(char c) {
  return ascii::isCapital(c) || ascii::isDigit(c) || std::string_view("-_.:+()").find(c) != std::string_view::npos;
}

bool isOfWord(char c) { return ascii::isCapital(c) || ascii::isDigit(c); }

/// What programs put in front of a name: "=3D" is a "=" that was encoded, "x-" stands before what isn't registered.
constexpr std::array<std::string_view, 5> leads = {"CHARSET=", "=", "3D", "X-", "X_"};

/// In capitals, without what stands around it: quotation marks, blanks, and what follows behind any other sign.
std::string nameIn(std::string_view named) {
  std::string name(named.substr(0, longestName));
  std::erase_if(name, [](char c) { return c <= ' ' || c == '"' || c == '\''; });
  std::ranges::transform(name, name.begin(), ascii::upper);
  for (const auto* lead = leads.begin(); lead != leads.end();) {
    const bool isLed = name.starts_with(*lead);
    if (isLed) name.erase(0, lead->size());
    lead = isLed ? leads.begin() : lead + 1;
  }
  name.erase(std::ranges::find_if_not(name, isOfName), name.end());
  return name;
}

std::string lettersOf(std::string_view name) {
  std::string letters;
  std::ranges::copy_if(name, std::back_inserter(letters), isOfWord);
  return letters;
}

/// What follows the word in the name, whatever signs stand in between; nothing where the name begins otherwise.
std::string_view behind(std::string_view name, std::string_view word) {
  while (!name.empty() && !word.empty()) {
    if (isOfWord(name.front())) {
      if (name.front() != word.front()) return {};
      word.remove_prefix(1);
    }
    name.remove_prefix(1);
  }
  return word.empty() ? name.substr(std::min(name.find_first_not_of("-_. "), name.size())) : std::string_view();
}

/// The name of a charset that goes by its number, blank for any other. What stands behind the number comes from
/// programs that forget where a name ends.
std::string numbered(std::string_view name) {
  for (const auto& [mail, system, fewest, most] : families) {
    const std::string_view rest = behind(name, mail);
    const auto end = std::ranges::find_if_not(rest, ascii::isDigit);
    std::string_view number = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
    if (number.size() < fewest || number.size() > most) continue;
    constexpr std::size_t shortestPage = 3;
    while (number.size() > shortestPage && number.starts_with('0')) number.remove_prefix(1);
    return std::string(system).append(number);
  }
  return {};
}

}  // namespace

std::string systemCharset(std::string_view named) {
  if (named.empty() || text::equalsIgnoringCase(named, "utf-8")) return {};
  std::string name = nameIn(named);
  const auto aliasOf = [&name] { return std::ranges::find(aliases, lettersOf(name), &Alias::mail); };
  // A number may name a charset that goes by another one. Some charsets have letters behind it.
  std::string number = numbered(name);
  for (; !number.empty() && number != name && aliasOf() == aliases.end(); number = numbered(name)) name = number;
  const std::string letters = lettersOf(name);
  if (letters.find("UTF8") != letters.npos) return {};
  if (letters.ends_with("UTF7")) return "UTF-7";
  const auto* const alias = aliasOf();
  return alias == aliases.end() ? name : std::string(alias->system);
}

}  // namespace velmora::mime
