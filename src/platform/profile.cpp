#include "platform/profile.h"

#include <algorithm>
#include <optional>

#include "platform/text.h"

namespace velmora {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r\v\f";
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string folded(std::string_view name) { return text::upper(trimmed(name)); }

std::optional<std::string_view> headerOf(std::string_view line) {
  line = trimmed(line);
  const auto end = line.find(']');
  if (!line.starts_with('[') || end == std::string_view::npos) return std::nullopt;
  return line.substr(1, end - 1);
}

/// Where the equals sign stands, npos in a line that holds no value.
std::size_t equalsSign(std::string_view line) {
  return trimmed(line).starts_with(';') ? std::string_view::npos : line.find('=');
}

std::string_view valueOf(std::string_view line) { return trimmed(line.substr(equalsSign(line) + 1)); }

std::string_view withoutQuotes(std::string_view value) {
  const bool isQuoted =
      value.size() > 1 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
  return isQuoted ? value.substr(1, value.size() - 2) : value;
}

std::string oneLine(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (c == '\r' || c == '\n' || c == '\0') c = ' ';
  }
  return result;
}

}  // namespace

Profile::Profile(std::string_view text) : sections_(1) {
  if (text.starts_with(byteOrderMark)) {
    mark_ = byteOrderMark;
    text.remove_prefix(byteOrderMark.size());
  }
  for (bool first = true; !text.empty(); first = false) {
    const auto feed = text.find('\n');
    const auto whole = text.substr(0, feed == std::string_view::npos ? feed : feed + 1);
    const std::size_t end = whole.ends_with("\r\n") ? 2 : whole.ends_with('\n') ? 1 : 0;
    if (first && end == 2) lineEnd_ = "\r\n";
    add({std::string(whole.substr(0, whole.size() - end)), std::string(whole.substr(whole.size() - end))});
    text.remove_prefix(whole.size());
  }
}

void Profile::add(Line line) {
  if (const auto header = headerOf(line.text)) {
    names_.try_emplace(folded(*header), sections_.size());
    sections_.emplace_back().lines.push_back(std::move(line));
    return;
  }
  Section& section = sections_.back();
  const auto equals = equalsSign(line.text);
  if (equals != std::string::npos) {
    section.keys.try_emplace(folded(std::string_view(line.text).substr(0, equals)), section.lines.size());
  }
  section.lines.push_back(std::move(line));
}

const Profile::Section* Profile::find(std::string_view section) const {
  const auto found = names_.find(folded(section));
  return found == names_.end() ? nullptr : &sections_[found->second];
}

std::string Profile::GetPrivateProfileSection(std::string_view section, std::size_t size) const {
  const Section* found = find(section);
  if (found == nullptr) return {};
  std::string result;
  for (const Line& line : found->lines) {
    const auto equals = equalsSign(line.text);
    if (headerOf(line.text) || equals == std::string::npos) continue;
    result.append(trimmed(std::string_view(line.text).substr(0, equals))).append("=");
    result.append(valueOf(line.text)).append(1, '\0');
  }
  return text::length(result) < size ? result : std::string(text::left(result, size - 2));
}

std::string Profile::GetPrivateProfileString(std::string_view section, std::string_view key, std::string_view fallback,
                                             std::size_t size) const {
  std::string_view value = fallback;
  if (const Section* found = find(section)) {
    const auto line = found->keys.find(folded(key));
    if (line != found->keys.end()) value = withoutQuotes(valueOf(found->lines[line->second].text));
  }
  return std::string(text::left(value, size - 1));
}

Profile::Section& Profile::findOrAdd(const std::string& name) {
  const auto found = names_.find(folded(name));
  if (found != names_.end()) return sections_[found->second];
  auto& before = sections_.back().lines;
  if (!before.empty() && before.back().end.empty()) before.back().end = lineEnd_;
  add({"[" + name + "]", lineEnd_});
  return sections_.back();
}

void Profile::WritePrivateProfileString(std::string_view section, std::string_view key, std::string_view value) {
  const std::string content = oneLine(value);
  Section& place = findOrAdd(oneLine(section));
  const auto found = place.keys.find(folded(oneLine(key)));
  if (found != place.keys.end()) {
    std::string& line = place.lines[found->second].text;
    line = line.substr(0, equalsSign(line) + 1) + content;
    return;
  }
  // Blank lines at a section's end set it apart from the next one.
  const auto isBlank = [](const Line& line) { return trimmed(line.text).empty(); };
  const auto last = std::find_if_not(place.lines.rbegin(), place.lines.rend(), isBlank).base();
  Line& before = *(last - 1);
  if (before.end.empty()) before.end = lineEnd_;
  place.keys.emplace(folded(oneLine(key)), static_cast<std::size_t>(last - place.lines.begin()));
  place.lines.insert(last, {oneLine(key) + "=" + content, lineEnd_});
}

std::string Profile::readBack(std::string_view value) { return std::string(withoutQuotes(trimmed(oneLine(value)))); }

std::string Profile::text() const {
  std::string result = mark_;
  for (const Section& section : sections_) {
    for (const Line& line : section.lines) result.append(line.text).append(line.end);
  }
  return result;
}

}  // namespace velmora
