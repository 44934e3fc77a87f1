#include "platform/mime/html_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace velmora::mime {
namespace {

std::string textOf(std::string_view html) {
  const Pause noPause = [] {};
  Converters converters;
  Reading reading(converters, noPause);
  return htmlToText(reading, html);
}

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
      {"<p>one</p><p>two<br>three</p><div>four</div>five", "one\n\ntwo\nthree\n\nfour\nfive"},
      {"<p class=MsoNormal>a</p><p style='Margin: 0 0px'>b</p><p style='margin:0 0 16px'>c", "a\nb\n\nc"},
      {"a<br><br><br>b<br></div>c", "a\n\nb\nc"},
      {"<p>a</p><p>&nbsp;</p><p></p><p></p><p>b</p>", "a\n\nb"},
      {"<div>a</div><div>&nbsp;</div><div>b&nbsp; c </div>", "a\n\nb  c"},
      {"&lt;p&gt; &amp; &uuml;&nbsp;&#8364;&#x20AC;", "<p> & ü €€"},
      {"1 < 2 <3", "1 < 2 <3"},
      {"&copy 2024 &lt5 &notit; &nosuch; &amp;amp; &#0;&#xD800;&#9999999; &",
       "© 2024 <5 ¬it; &nosuch; &amp; \uFFFD\uFFFD\uFFFD &"},
      // What is hidden.
      {"<html><head><title>title</title></HEAD><body>body</body></html>", "body"},
      {"<STYLE>p { color: red }</Style>a<script>if (a < b) '</p>'</script>b", "ab"},
      {"a<script>never ends", "a"},
      {"<head>without end<p>body", "without end\n\nbody"},
      {"a<!-- <p>comment</p> -->b<!DOCTYPE x><?xml?>c<!-->d</ e>f<!-- open", "abcdf"},
      {"a<div style=' DISPLAY : none '>b<p>c<ul><li>d</ul></div>e<p hidden>f</p>", "ae"},
      {"<ul style='display:none'><li>a</ul><ol><li>b</ol>", "1. b"},
      {"<p><![if !supportLists]>1.<![endif]> a</p><!--[if mso]>b<![endif]--><!--[if !mso]><!-->c<!--<![endif]-->",
       "1. a\n\nc"},
      {"<span style=display:none>a<span>b</span>c</span>d<div style='font-size:0;max-height:0px'>e</div>f", "df"},
      {"<a style='mso-hide:all'>a</a><p style='max-height:0;overflow:hidden'>b", "a"},
      {repeat("<div>", 500) + "<p>a</p>" + repeat("</div>", 500) + "<div hidden>" + repeat("<i>", 500) +
           repeat("</i>", 500) + "b</div>c",
       "a\nc"},
      {"<p style='font-size:0'>a<p style='opacity:0.5;max-height:0.5em'>b", "a\n\nb"},
      {"<div hidden>a <img data-x='" + repeat("b > ", 500) + "'>c</div>d", "d"},
      // What is broken.
      {"a<unknown>b</unknown></li></ul>c", "abc"},
      {"<td>a</tr></table>b", "ab"},
      {"<a title=\"never closed>a</a>b <i title='>c", "ab c"},
      {"<p>a<table><td>b</p>c</table>d", "a\n\nb\nc\nd"},
      {repeat("<div>", 1000) + "a" + repeat("</div>", 1000) + "b", "a\nb"},
      // Lists.
      {"<ul><li>a</li><li>b<ol start=9><li>c<br>d</li><li>e</li></ol></li></ul>f",
       "• a\n• b\n  9. c\n     d\n  10. e\n\nf"},
      {"<ol><li value=5>a<li value=x>b<li></ol><li>c", "5. a\n6. b\n\n• c"},
      {"<dl><dt>a<dd>b<dt>c</dl>", "a\n  b\nc"},
      {"<ol><li><blockquote>a<br>b</blockquote></ol>", "1. > a\n   > b"},
      // Tables.
      {"<table><tr><th>a<th>b<tr><td><p>c</p><td><td>d</table>e", "a\tb\nc\t\td\ne"},
      {"<table><tr><td>a<br>b<td>c<tr><td><table><tr><td>d<td>e</table><td>f</table>", "a\nb\nc\nd\te\nf"},
      {"<table><tr><td><p>a</p></td></tr><tr><td><p>b</p></td></tr></table>", "a\n\nb"},
      {"<table><tr><td>a<tr><td><p>b<table><tr><td>c<td>d<tr><td><p>e<td>f</table><tr><td><p>g</table>",
       "a\n\nb\n\nc\td\ne\tf\n\ng"},
      // Quotes, rules and what is preformatted.
      {"a<blockquote>b<br>c<blockquote>d</blockquote></blockquote>e", "a\n\n> b\n> c\n\n> > d\n\ne"},
      {"a<hr>b", "a\n----------\nb"},
      {"<pre>a  b\n\tc \r\n\n\n d</pre>e  f", "a  b\n\tc\n\n d\n\ne f"},
      {"<span style='white-space: pre-wrap'>a\n  b</span>\n c", "a\n  b c"},
      // Links and pictures.
      {"<a href='http://x.example/'>link</a> on", "link <http://x.example/> on"},
      {"<a href='https://x.example/'>X.example</a>, <a href=mailto:a@b.example>a@b.example</a>",
       "X.example, a@b.example"},
      {"<a href='#top'>a</a><a href='JavaScript:x()'>b</a><a href='x.html'>c</a><a>d</a>", "abcd"},
      {"<a href=http://x.example/><div>a</div></a>b", "a <http://x.example/>\nb"},
      {"<a href='http://\n x.example/'><img src=x></a>", "<http://x.example/>"},
      {"a<img alt='x > y' src=\"file:///etc/passwd\">b", "a x > y b"},
      {"<a href=http://x.example/a><table><tr><td>b</table></a>", "b <http://x.example/a>"},
      {"<a href='mailto:a@b.example?subject=c'>a@b.example</a><img alt=☺>", "a@b.example☺"},
      {"<a href='http://x.example/?a=1&copy=2&amp;b=3'>c</a>", "c <http://x.example/?a=1&copy=2&b=3>"},
  };
  for (const auto& [html, wanted] : cases) EXPECT_EQ(textOf(html), wanted) << html.substr(0, 200);
}

TEST(HtmlText, LosesNothingOfALongText) {
  const std::string paragraphs = textOf(repeat("<p>x</p>", 20000));
  EXPECT_EQ(std::count(paragraphs.begin(), paragraphs.end(), 'x'), 20000);
  // Far more than the parser is given at once, and longer than anything but a picture in an address.
  const std::string picture = "<p>a<img src='data:image/png;base64," + repeat("QUFB/+", 50000) + "' alt=b>c";
  EXPECT_EQ(textOf(picture), "abc");
  EXPECT_EQ(textOf("<script>" + repeat("if (a <b \"c\") d; ", 5000) + "</script>a"), "a");
  EXPECT_EQ(textOf("<pre>" + repeat("a b\n", 20000) + "</pre>").size(), 79999U);
}

}  // namespace
}  // namespace velmora::mime
