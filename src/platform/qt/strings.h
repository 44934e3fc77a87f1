#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace velmora {

/// UTF-8 text as Qt's; bytes that are none become replacement characters.
inline QString qt(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

inline std::string utf8(const QString& text) { return text.toStdString(); }

/// A caption without the blanks that once set its button's width.
inline QString trimmed(std::string_view caption) { return qt(caption).trimmed(); }

}  // namespace velmora
