#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/mime/text_layout.h"

namespace velmora::mime {

/// Names, in small letters, and decoded values.
using HtmlAttributes = std::vector<std::pair<std::string_view, std::string_view>>;

/// Writes the text of HTML of which it is told tag by tag. What is hidden, by its kind or its style, is left out. Tags
/// that are missing are put in as browsers do; an element that means nothing to the text leaves no trace, so that it
/// doesn't matter in which order such tags are closed.
class HtmlWriter {
 public:
  /// A start tag; its name and those of the attributes are in small letters.
  void open(std::string_view name, const HtmlAttributes& attributes);

  /// An end tag. Closes the last element of this name and those inside it.
  void close(std::string_view name);

  void text(std::string_view utf8);

  /// What was written; what is still open is closed.
  std::string take();

 private:
  enum class Role;
  struct Kind;
  struct Element {
    std::string name;
    Role role;
    bool hides = false;
    bool preformatted = false;
    std::size_t indent = 0;    ///< what it has put in front of lines
    std::size_t begin = 0;     ///< a link's place in the text
    std::string address = {};  ///< of a link
  };
  struct List {
    bool numbered = false;
    int next = 1;
  };

  static const Kind& kindOf(std::string_view name);
  void closeWhatEnds(Role role, std::string_view name);
  template <class Wanted, class Bound>
  bool closeUpTo(Wanted wanted, Bound bound);
  void closeLast();
  void begin(Element& element, const HtmlAttributes& attributes);
  void end(const Element& element);
  void beginItem(Element& element, const HtmlAttributes& attributes);
  void endLink(const Element& link);

  TextLayout layout_;
  std::vector<Element> open_;
  std::unordered_map<std::string, std::size_t> tooDeep_;  ///< elements that were ignored, whose end tags are to be too
  std::vector<List> lists_;
  std::size_t hiding_ = 0;        ///< open elements that hide what is in them
  std::size_t preformatted_ = 0;  ///< open elements that keep their blanks
};

}  // namespace velmora::mime
