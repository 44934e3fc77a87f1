#include "platform/mime/encoded_words.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "platform/mime/charset.h"
#include "platform/mime/raw_text.h"
#include "platform/mime/transfer.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

constexpr auto Nowhere = std::string_view::npos;
constexpr std::size_t MaxCharsetName = 100;

/// What a word costs, as bytes of other work.
constexpr std::size_t wordWork = 1024;

struct Word {
  std::string_view Charset;
  char Encoding = 'Q';
  std::string_view Text;
  std::size_t End = 0;  ///< where the value goes on
};

/// Finds the encoded words of a value, front to back.
class WordFinder {
 public:
  explicit WordFinder(std::string_view value) : value_(value) {}

  /// The word at `begin`, where "=?" stands.
  std::optional<Word> at(std::size_t begin) {
    const auto charsetEnd = value_.substr(0, begin + 2 + MaxCharsetName).find('?', begin + 2);
    if (charsetEnd == Nowhere || charsetEnd + 2 >= value_.size() || value_[charsetEnd + 2] != '?') return std::nullopt;
    const std::string_view charset = value_.substr(begin + 2, charsetEnd - begin - 2);
    const char encoding = value_[charsetEnd + 1];
    if (charset.empty() || charset.find(' ') != Nowhere || std::string_view("BbQq").find(encoding) == Nowhere)
      return std::nullopt;
    const std::size_t textBegin = charsetEnd + 3;
    const std::size_t close = closeFrom(textBegin);
    if (close == Nowhere || value_.substr(textBegin, close - textBegin).find("=?") != Nowhere) return std::nullopt;
    return Word{charset.substr(0, charset.find('*')), encoding, value_.substr(textBegin, close - textBegin), close + 2};
  }

 private:
  /// Never looks at the same bytes twice, so that words left open cost no more than others.
  std::size_t closeFrom(std::size_t begin) {
    if (close_ < begin) close_ = value_.find("?=", begin);
    return close_;
  }

  std::string_view value_;
  std::size_t close_ = 0;
};

std::string bytesOf(const Word& word) {
  if (word.Encoding == 'B' || word.Encoding == 'b') return decodeTransfer(word.Text, "base64");
  std::string text(word.Text);
  std::replace(text.begin(), text.end(), '_', ' ');
  return decodeTransfer(text, "quoted-printable");
}

bool isBlank(std::string_view text) { return text.find_first_not_of(" \t") == Nowhere; }

/// Puts the runs together while words and the text between them come in.
class RunCollector {
 public:
  explicit RunCollector(Reading& reading) : reading_(reading) {}

  void add(const Word& word) {
    reading_.worked(wordWork);
    if (!bytes_.empty() && !text::equalsIgnoringCase(charset_, word.Charset)) endWords();
    charset_ = word.Charset;
    bytes_ += bytesOf(word);
    afterWord_ = true;
  }

  void add(std::string_view text, bool wordFollows) {
    if (text.empty() || (afterWord_ && wordFollows && isBlank(text))) return;
    endWords();
    afterWord_ = false;
    runs_.push_back({std::string(text), false});
  }

  std::vector<Run> take() {
    endWords();
    return std::move(runs_);
  }

 private:
  void endWords() {
    if (!bytes_.empty()) runs_.push_back({toUtf8(reading_.converters, bytes_, charset_), true});
    bytes_.clear();
  }

  Reading& reading_;
  std::vector<Run> runs_;
  std::string_view charset_;
  std::string bytes_;
  bool afterWord_ = false;
};

}  // namespace

std::vector<Run> decodedRuns(Reading& reading, std::string_view value) {
  const std::string text = rawText(reading, value);
  const std::string_view view = text;
  WordFinder finder(view);
  RunCollector runs(reading);
  std::size_t done = 0;
  for (auto begin = view.find("=?"); begin != Nowhere;) {
    const auto word = finder.at(begin);
    if (word) {
      runs.add(view.substr(done, begin - done), true);
      runs.add(*word);
      done = word->End;
    }
    begin = view.find("=?", word ? done : begin + 2);
  }
  runs.add(view.substr(done), false);
  return runs.take();
}

std::string decodedText(Reading& reading, std::string_view value) {
  std::string text;
  for (const Run& run : decodedRuns(reading, value)) text += run.Text;
  return text;
}

}  // namespace velmora::mime
