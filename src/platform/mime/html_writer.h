#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/mime/text_layout.h"

namespace velmora::mime {

/// Names, in small letters, and decoded values.
using HtmlAttributes = std::vector<std::pair<std::string_view, std::string_view>>;

/// Writes the text of HTML from what a parser tells of its elements, one after the other. What is hidden, by its kind
/// or its style, is left out.
class HtmlWriter {
 public:
  /// An element begins. Its name is in small letters.
  void open(std::string_view name, const HtmlAttributes& attributes);

  /// The last element that was opened and not closed ends.
  void close();

  void text(std::string_view utf8);

  /// Elements that are open.
  std::size_t depth() const { return open_.size(); }

  /// What comes is no markup until its end.
  bool isInScript() const;

  std::string take() { return layout_.take(); }

 private:
  enum class Role;
  struct Kind;
  struct Element {
    Role role;
    bool hides = false;
    std::size_t indent = 0;    ///< what it has put in front of lines
    std::size_t begin = 0;     ///< a link's place in the text
    std::string address = {};  ///< of a link
  };
  struct List {
    bool numbered = false;
    int next = 1;
  };

  static Role roleOf(std::string_view name);
  void begin(Element& element, const HtmlAttributes& attributes);
  void end(const Element& element);
  void beginItem(Element& element, const HtmlAttributes& attributes);
  void endLink(const Element& link);

  TextLayout layout_;
  std::vector<Element> open_;
  std::vector<List> lists_;
  std::size_t hiding_ = 0;        ///< open elements that hide what is in them
  std::size_t preformatted_ = 0;  ///< open elements that keep their blanks
};

}  // namespace velmora::mime
