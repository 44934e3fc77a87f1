#include "platform/qt/services/printer_paper.h"

#include <QLocale>
#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <cups/pwg.h>
#endif

namespace velmora {

Paper usualPaper() {
  constexpr std::int32_t edge = 360;
  constexpr Paper letter{12240, 15840, edge, edge, edge, edge};
  constexpr Paper a4{11906, 16838, edge, edge, edge, edge};
  return QLocale::system().measurementSystem() == QLocale::ImperialUSSystem ? letter : a4;
}

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)

namespace {

/// From hundredths of a millimetre.
std::int32_t twips(int length) {
  constexpr int most = 1'000'000;
  return (std::clamp(length, 0, most) * 144 + 127) / 254;
}

bool isSheet(const Paper& paper) {
  constexpr std::int32_t inch = 1440;
  constexpr std::int32_t least = 2 * inch;
  constexpr std::int32_t most = 100 * inch;
  return std::min(paper.width, paper.height) >= least && std::max(paper.width, paper.height) <= most;
}

/// Edges that leave nothing to print on are nonsense.
std::int32_t edge(int length, std::int32_t side) { return std::min(twips(length), side / 4); }

Paper paperFrom(const cups_size_t& size) {
  Paper paper{.width = twips(size.width), .height = twips(size.length)};
  paper.left = edge(size.left, paper.width);
  paper.right = edge(size.right, paper.width);
  paper.top = edge(size.top, paper.height);
  paper.bottom = edge(size.bottom, paper.height);
  return paper;
}

/// Users and printers name sizes in three ways.
const pwg_media_t* sizeCalled(const std::string& name) {
  for (auto* find : {&pwgMediaForPWG, &pwgMediaForLegacy, &pwgMediaForPPD}) {
    if (const auto* size = find(name.c_str())) return size;
  }
  return nullptr;
}

/// What the user has saved for the printer, or what it takes itself. The library's own answer would be Letter wherever
/// the user has saved nothing.
std::string nameOfPaper(http_t* http, cups_dest_t& printer, cups_dinfo_t& abilities) {
  for (const auto* option : {"media", "PageSize"}) {
    const char* saved = cupsGetOption(option, printer.num_options, printer.options);
    if (saved != nullptr) return std::string(std::string_view(saved).substr(0, std::string_view(saved).find(',')));
  }
  ipp_attribute_t* own = cupsFindDestDefault(http, &printer, &abilities, "media");
  const char* name = own == nullptr ? nullptr : ippGetString(own, 0, nullptr);
  return name == nullptr ? std::string() : name;
}

std::optional<Paper> toldPaper(http_t* http, cups_dest_t& printer, cups_dinfo_t& abilities) {
  const pwg_media_t* wanted = sizeCalled(nameOfPaper(http, printer, abilities));
  if (wanted == nullptr) return std::nullopt;
  cups_size_t size{};
  if (cupsGetDestMediaBySize(http, &printer, &abilities, wanted->width, wanted->length, CUPS_MEDIA_FLAGS_DEFAULT,
                             &size) == 0) {
    return std::nullopt;
  }
  return paperFrom(size);
}

}  // namespace

Paper paperOf(http_t* http, cups_dest_t& printer, cups_dinfo_t& abilities, const Paper& usual) {
  const auto told = toldPaper(http, printer, abilities);
  return told && isSheet(*told) ? *told : usual;
}

#endif

}  // namespace velmora
