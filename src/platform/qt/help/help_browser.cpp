#include "platform/qt/help/help_browser.h"
#include "platform/qt/services/desktop_applications.h"

#include <QDir>
#include <QEvent>
#include <QImageReader>
#include <QTextCursor>
#include <QUrl>
#include <algorithm>
#include <cmath>

namespace velmora {

namespace {

/// More than anybody looks at, and few enough to paint.
constexpr qsizetype mostMarks = 1000;

/// No picture is shown wider.
constexpr double widestPicture = 640;

const QString pageStyle =
    "p, li, td { line-height: 125% } li { margin-bottom: 4px } td { padding: 4px 10px 4px 0px } "
    "table { margin-top: 8px } img { vertical-align: middle }";

/// How bright a colour looks, from 0 to 1.
double brightness(const QColor& colour) {
  const auto linear = [](float part) { return std::pow(static_cast<double>(part), 2.2); };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

bool isReadable(const QColor& text, const QColor& ground) {
  const auto [dark, light] = std::minmax({brightness(text), brightness(ground)});
  return (light + 0.05) / (dark + 0.05) >= 4.5;
}

QColor mixed(const QColor& a, const QColor& b) {
  return {(a.red() + b.red()) / 2, (a.green() + b.green()) / 2, (a.blue() + b.blue()) / 2};
}

/// The palette's colour for links, or one nearer to that of the text: many dark palettes keep the dark blue of light
/// ones.
QColor linkColour(const QPalette& palette) {
  QColor colour = palette.color(QPalette::Link);
  for (int step = 0; step < 4 && !isReadable(colour, palette.color(QPalette::Base)); ++step) {
    colour = mixed(colour, palette.color(QPalette::Text));
  }
  return colour;
}

/// Stands for a picture that isn't there and takes hardly any room. An empty one would not do: the document would look
/// for the file by itself.
QImage noPicture() {
  QImage image(100, 1, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  return image;
}

}  // namespace

HelpBrowser::HelpBrowser(const QString& folder, const std::vector<HelpPage>& pages, QWidget* parent)
    : QTextBrowser(parent), folder_(QDir(folder).absolutePath()), pages_(pages) {
  setOpenLinks(false);
  setPlaceholderText("The pages of the help are missing. Installing Velmora again brings them back.");
  document()->setDocumentMargin(14);
  // The browser itself knows a new page only after it has told of it.
  connect(this, &QTextBrowser::sourceChanged, this, [this](const QUrl& url) { shown_ = numberOf(url); });
  connect(this, &QTextBrowser::anchorClicked, this, &HelpBrowser::follow);
  useStyle();
}

void HelpBrowser::showPage(int number) {
  if (number < 0 || number >= static_cast<int>(pages_.size())) return;
  setSource(urlOf(pages_[static_cast<std::size_t>(number)]));
}

QUrl HelpBrowser::urlOf(const HelpPage& page) const { return QUrl::fromLocalFile(folder_ + '/' + page.file); }

int HelpBrowser::numberOf(const QUrl& url) const {
  const QUrl wanted = url.adjusted(QUrl::RemoveFragment);
  const auto found =
      std::find_if(pages_.begin(), pages_.end(), [&](const HelpPage& page) { return urlOf(page) == wanted; });
  return found == pages_.end() ? -1 : static_cast<int>(found - pages_.begin());
}

void HelpBrowser::follow(const QUrl& link) {
  if (link.scheme() == "https" || link.scheme() == "mailto") {
    openWithApplication(link.toString(QUrl::FullyEncoded));
  } else {
    setSource(link);
  }
}

void HelpBrowser::doSetSource(const QUrl& url, QTextDocument::ResourceType /*type*/) {
  if (numberOf(url) >= 0) QTextBrowser::doSetSource(url, QTextDocument::HtmlResource);
}

/// An answer without a value would make the document open the file by itself.
QVariant HelpBrowser::loadResource(int type, const QUrl& name) {
  const QUrl url = QUrl::fromLocalFile(folder_ + '/').resolved(name);
  if (type == QTextDocument::ImageResource) return picture(url.toLocalFile());
  const int page = type == QTextDocument::HtmlResource ? numberOf(url) : -1;
  return page < 0 ? QString("") : pages_[static_cast<std::size_t>(page)].html;
}

/// Drawn for the screen's own pixels, since the document scales roughly.
QImage HelpBrowser::picture(const QString& path) const {
  if (!liesIn(folder_, path) && !liesIn(folder_ + "/../icons", path)) return noPicture();
  QImageReader reader(path);
  const QSizeF size = reader.size();
  if (size.isEmpty()) return noPicture();
  const double ratio = devicePixelRatioF();
  reader.setScaledSize((size * ratio * std::min(1.0, widestPicture / size.width())).toSize());
  QImage image = reader.read();
  if (image.isNull()) return noPicture();
  image.setDevicePixelRatio(ratio);
  return image;
}

void HelpBrowser::mark(const QStringList& words) {
  QList<QTextEdit::ExtraSelection> marks;
  QTextCharFormat format;
  format.setBackground(palette().highlight());
  format.setForeground(palette().highlightedText());
  QTextCursor first;
  for (const QString& word : words) {
    QTextCursor found = document()->find(word);
    if (!found.isNull() && (first.isNull() || found < first)) first = found;
    for (; !found.isNull() && marks.size() < mostMarks; found = document()->find(word, found)) {
      marks.append({found, format});
    }
  }
  setExtraSelections(marks);
  if (first.isNull()) return;
  first.setPosition(first.selectionStart());
  setTextCursor(first);
}

void HelpBrowser::useStyle() {
  document()->setDefaultStyleSheet(pageStyle + QString("a { color: %1 }").arg(linkColour(palette()).name()));
}

void HelpBrowser::changeEvent(QEvent* event) {
  QTextBrowser::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  useStyle();
  reload();
}

}  // namespace velmora
