#include "platform/qt/html_text.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <string_view>

namespace velmora {
namespace {

std::string repeat(std::string_view text, std::size_t times) {
  std::string repeated;
  for (std::size_t i = 0; i < times; ++i) repeated += text;
  return repeated;
}

TEST(HtmlText, GivesWhatAReaderSees) {
  const struct {
    std::string Html;
    std::string Wanted;
  } cases[] = {
      {"", ""},
      {"just text", "just text"},
      {"a\n  b", "a b"},
      {"<p>one</p><p>two<br>three</p>", "one\ntwo\nthree"},
      {"<b>a</b><i>b</i> <a href=\"http://x.example\">link</a>", "ab link"},
      {"&lt;p&gt; &amp; &uuml;&nbsp;&#8364;", "<p> & ü €"},
      {"1 < 2 <3 <", "1 < 2 <3 <"},
      {"<html><head>head<title>title</title></HEAD><body>body</body></html>", "body"},
      {"<STYLE>p { color: red }</Style>a<script>if (a < b) '</p>'</script>b", "ab"},
      {"a<script>never ends", "a"},
      {"<head>without end<p>body", "without end\nbody"},
      {"a<!-- <p>comment</p> -->b<!DOCTYPE x><?xml?>c<!-- open", "abc"},
      {"a<img alt='x > y' src=\"file:///etc/passwd\">b", "ab"},
      {"<a title=\"never closed>a</a>b", "ab"},
      {"a<unknown>b</unknown>", "ab"},
      {"<section>a</section><section>b</section>", "a\nb"},
      {"<ul><li>a</li><li>b</li></ul>", "a\nb"},
      {"<table><tr><td>a</td><td>b</td></tr></table>c", "a\nb\nc"},
      {"<p>a</p><p>&nbsp;</p><p></p><p></p><p>b</p>", "a\n\nb"},
      {repeat("<div>", 50) + "a" + repeat("</div>", 50) + "b", "a\nb"},
  };
  for (const auto& [html, wanted] : cases) EXPECT_EQ(htmlToText(html), wanted) << html;
}

TEST(HtmlText, LosesNothingOfALongText) {
  const std::string text = htmlToText(repeat("<p>x</p>", 20000));
  EXPECT_EQ(std::count(text.begin(), text.end(), 'x'), 20000);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 19999);
}

class HostileHtmlTest : public testing::TestWithParam<std::string_view> {};

TEST_P(HostileHtmlTest, IsReadInLittleTime) {
  constexpr std::size_t size = 1024 * 1024;
  const std::string html = repeat(GetParam(), size / GetParam().size());
  const auto begin = std::chrono::steady_clock::now();
  htmlToText(html);
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
  EXPECT_LT(taken.count(), 10);
  RecordProperty("milliseconds", static_cast<int>(taken.count() * 1000));
}

INSTANTIATE_TEST_SUITE_P(All, HostileHtmlTest,
                         testing::Values("<div>", "<table>", "<table><tr><td>", "<table><tr><td>x</td></tr></table>",
                                         "<blockquote>", "<font>", "<ul><li>", "<b>x", "<p>x", "<td>x", "<tr><td>x",
                                         "<li>x", "<br>", "x ", "x", "<", "<a \"", "<a '\"", "<a b='c\"d>&foo;<<x y=z>",
                                         "<!--", "<head>", "<style>", "<style></style>", "&amp;", "&", "&#", "\n",
                                         "<img src='file:///etc/passwd'>", "<span style='color:red'>x</span>",
                                         "<pre>x\n", "</div>", "<div>x</div>", "<dl><dd>", "\xFF"));

}  // namespace
}  // namespace velmora
