#include "platform/mime/parts.h"

#include <cstddef>
#include <utility>

#include "platform/mail_bounds.h"
#include "platform/mime/content_type.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

/// Each level reads the whole of its content once; real messages have a handful.
constexpr int MaxDepth = 16;

constexpr std::size_t MaxValue = std::size_t{16} * 1024;

/// What the header of a part costs besides its bytes, as bytes of other work.
constexpr std::size_t partWork = 1024;

bool saysAttached(std::string_view disposition) {
  return text::equalsIgnoringCase(disposition.substr(0, 10), "attachment");
}

std::string contentId(std::string_view value) {
  std::string id = unfold(value, MaxValue);
  std::erase_if(id, [](char c) { return c == '<' || c == '>' || c == ' ' || c == '\t'; });
  return id;
}

ContentType plainText() { return {"text", "plain", {}, {}}; }

class Walk {
 public:
  explicit Walk(Reading& reading) : reading_(reading) {}

  void enter(const Entity& entity, const ContentType& fallback, int depth) {
    reading_.worked(partWork);
    const std::vector<Field> fields = fieldsOf(reading_, entity.Header);
    const ContentType type = parseContentType(unfold(valueOf(fields, "Content-Type"), MaxValue), fallback);
    if (type.is("multipart") && enterParts(entity, type, depth)) return;
    add(type, fields, entity.Content);
  }

  Parts take() { return std::move(parts_); }

 private:
  /// False where there are no parts.
  bool enterParts(const Entity& entity, const ContentType& type, int depth) {
    if (type.Boundary.empty() || depth >= MaxDepth || left_ == 0) return false;
    const std::vector<std::string_view> children = splitMultipart(reading_, entity.Content, type.Boundary, left_);
    left_ -= children.size();
    const ContentType fallback =
        type.is("multipart", "digest") ? ContentType{"message", "rfc822", {}, {}} : plainText();
    for (const std::string_view child : children) enter(splitEntity(reading_, child), fallback, depth + 1);
    return !children.empty();
  }

  void add(const ContentType& type, const std::vector<Field>& fields, std::string_view content) {
    // Half a message is of no use but as text.
    const bool fragment = type.is("multipart") || type.is("message", "partial");
    if (!fragment && saysAttached(valueOf(fields, "Content-Disposition"))) {
      ++parts_.Attached;
    } else if (fragment) {
      parts_.OtherText.push_back({content, {}, {}});
    } else if (type.is("text")) {
      textsOf(type).push_back({content, valueOf(fields, "Content-Transfer-Encoding"), type.Charset});
    } else {
      parts_.NonTextIds.push_back(contentId(valueOf(fields, "Content-ID")));
    }
  }

  std::vector<TextPart>& textsOf(const ContentType& type) {
    if (type.is("text", "plain")) return parts_.Plain;
    return type.is("text", "html") ? parts_.Html : parts_.OtherText;
  }

  Reading& reading_;
  Parts parts_;
  std::size_t left_ = mail_bounds::parts;
};

}  // namespace

Parts partsOf(Reading& reading, const Entity& message) {
  Walk walk(reading);
  walk.enter(message, plainText(), 0);
  return walk.take();
}

}  // namespace velmora::mime
