#include "platform/mime/parts.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/mail_bounds.h"
#include "platform/mime/content_type.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

/// Each level reads the whole of its content once; real messages have a handful.
constexpr int MaxDepth = 16;

/// What the header of a part costs besides its bytes, as bytes of other work.
constexpr std::size_t partWork = 1024;

/// How a part stands to those around it.
enum class Place { Beside, Alternative, Root, Shown };

std::string withoutBrackets(std::string id) {
  std::erase_if(id, [](char c) { return c == '<' || c == '>' || c == ' ' || c == '\t'; });
  return id;
}

std::string contentId(const std::vector<Field>& fields) { return withoutBrackets(lineOf(fields, "Content-ID")); }

const ContentType plainText = {.Type = "text", .Subtype = "plain"};
const ContentType wholeMessage = {.Type = "message", .Subtype = "rfc822"};

/// Says what another alternative says, for programs that show no HTML or more than that.
bool isForm(const ContentType& type) {
  constexpr std::array<std::string_view, 4> forms = {"x-amp-html", "watch-html", "enriched", "richtext"};
  return std::ranges::any_of(forms, [&](std::string_view form) { return type.is("text", form); });
}

/// Half a message, or a multipart without parts, is of no use but as text.
bool isFragment(const ContentType& type) { return type.is("multipart") || type.is("message", "partial"); }

/// Some programs call their pictures just bytes, but by their names.
bool isNamedPicture(const ContentType& type, const Disposition& disposition) {
  constexpr std::array<std::string_view, 7> endings = {".png", ".jpg", ".jpeg", ".gif", ".bmp", ".svg", ".webp"};
  const std::string& name = disposition.FileName.Bytes.empty() ? type.Name.Bytes : disposition.FileName.Bytes;
  return type.is("application", "octet-stream") &&
         std::ranges::any_of(endings, [&](auto ending) { return text::endsWithIgnoringCase(name, ending); });
}

/// What HTML may show, and what styles it. Whatever else HTML names, a program for instance, stays attached.
bool canBeShown(const ContentType& type, const Disposition& disposition) {
  return type.is("image") || type.is("font") || type.is("text") || isNamedPicture(type, disposition);
}

Role roleOf(const ContentType& type, const Disposition& disposition, Place place) {
  if (disposition.IsAttached) return Role::Attached;
  if (isFragment(type)) return Role::LeftOut;
  if (!type.is("text") || place == Place::Shown) return canBeShown(type, disposition) ? Role::Picture : Role::Attached;
  if (type.is("text", "plain")) return Role::Plain;
  if (type.is("text", "html")) return Role::Html;
  return place == Place::Alternative && isForm(type) ? Role::LeftOut : Role::Attached;
}

bool isText(const Part& part) { return part.Is == Role::Plain || part.Is == Role::Html; }

/// As the part is in front that some gateways and programs put before the text.
bool isEmpty(const Part& part) { return part.Content.find_first_not_of(" \t\r\n") == std::string_view::npos; }

class Walk {
 public:
  explicit Walk(Reading& reading) : reading_(reading) {}

  void enter(const Entity& entity, const std::vector<Field>& fields, const ContentType& fallback, Place place,
             int depth) {
    reading_.worked(partWork);
    const ContentType type = parseContentType(lineOf(fields, "Content-Type"), fallback);
    const std::size_t index = parts_.size();
    parts_.push_back(
        {.Kind = kindOf(type), .Header = entity.Header, .Content = entity.Content, .Charset = type.Charset});
    if (const auto children = childrenOf(entity, type, depth); children.empty()) {
      addLeaf(type, fields, place);
    } else {
      parts_[index].Is = type.is("multipart", "alternative") ? Role::Alternatives : Role::Sequence;
      enterAll(children, type, place, depth + 1);
    }
    parts_[index].End = parts_.size();
  }

  /// What has to be known of all parts at once comes last.
  Parts take() {
    auto first = std::ranges::find_if(parts_, isText);
    if (first == parts_.end())
      for (const std::size_t index : substitutes_) parts_[index].Is = Role::Plain;
    first = std::ranges::find_if(parts_, [](const Part& part) { return isText(part) && !isEmpty(part); });
    if (first == parts_.end()) first = std::ranges::find_if(parts_, isText);
    for (const std::size_t index : named_) {
      Part& part = parts_[index];
      if (isText(part) && &part != &*first) part.Is = Role::Attached;
    }
    return std::move(parts_);
  }

 private:
  std::vector<Entity> childrenOf(const Entity& entity, const ContentType& type, int depth) {
    std::vector<Entity> children;
    if (!type.is("multipart") || type.Boundary.empty() || depth >= MaxDepth || left_ == 0) return children;
    for (const std::string_view child : splitMultipart(reading_, entity.Content, type.Boundary, left_))
      children.push_back(splitEntity(reading_, child));
    left_ -= children.size();
    return children;
  }

  void enterChild(const Entity& child, const ContentType& fallback, Place place, int depth) {
    enter(child, fieldsOf(reading_, child.Header), fallback, place, depth);
  }

  void enterAll(const std::vector<Entity>& children, const ContentType& type, Place place, int depth) {
    const ContentType& fallback = type.is("multipart", "digest") ? wholeMessage : plainText;
    if (place != Place::Shown && type.is("multipart", "related")) return enterRelated(children, type.Start, depth);
    const Place below = type.is("multipart", "alternative") ? Place::Alternative : Place::Beside;
    for (const Entity& child : children) enterChild(child, fallback, place == Place::Shown ? place : below, depth);
  }

  /// The root is the part that the start names. Where there is none it should be the first one; some programs put
  /// pictures before it.
  void enterRelated(const std::vector<Entity>& children, const std::string& start, int depth) {
    const auto hasStart = [id = withoutBrackets(start), this](const Entity& child) {
      return !id.empty() && contentId(fieldsOf(reading_, child.Header)) == id;
    };
    const auto root = std::ranges::find_if(children, hasStart);
    bool isFound = root != children.end();
    for (auto child = children.begin(); child != children.end(); ++child) {
      const auto before = static_cast<std::ptrdiff_t>(parts_.size());
      enterChild(*child, plainText, child == root || !isFound ? Place::Root : Place::Shown, depth);
      isFound = isFound || std::any_of(parts_.begin() + before, parts_.end(), isText);
    }
  }

  void addLeaf(const ContentType& type, const std::vector<Field>& fields, Place place) {
    Part& part = parts_.back();
    const std::size_t index = parts_.size() - 1;
    const Disposition disposition = parseDisposition(lineOf(fields, "Content-Disposition"));
    part.Is = roleOf(type, disposition, place);
    if (part.Is == Role::Picture) part.Id = contentId(fields);
    const bool otherText = part.Is == Role::Attached && type.is("text") && !disposition.IsAttached;
    if (part.Is == Role::LeftOut || otherText) substitutes_.push_back(index);
    if (place == Place::Beside && !(type.Name.Bytes.empty() && disposition.FileName.Bytes.empty()))
      named_.push_back(index);
    if (isFragment(type)) return;
    part.Encoding = valueOf(fields, "Content-Transfer-Encoding");
  }

  Reading& reading_;
  Parts parts_;
  std::vector<std::size_t> substitutes_;  ///< text only where there is no other
  std::vector<std::size_t> named_;        ///< attached where they are text, and not the first
  std::size_t left_ = mail_bounds::parts;
};

}  // namespace

Parts partsOf(Reading& reading, const Entity& message, const std::vector<Field>& fields) {
  Walk walk(reading);
  walk.enter(message, fields, plainText, Place::Beside, 0);
  return walk.take();
}

}  // namespace velmora::mime
