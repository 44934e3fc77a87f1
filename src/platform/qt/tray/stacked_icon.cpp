#include "platform/qt/tray/stacked_icon.h"

#include <QIconEngine>
#include <QPainter>
#include <utility>

namespace velmora {

namespace {

/// Keeps no picture itself: Qt's own cache, which is bounded, holds those of the layers.
class StackedIconEngine : public QIconEngine {
 public:
  explicit StackedIconEngine(std::vector<QIcon> layers) : layers_(std::move(layers)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    for (const QIcon& layer : layers_) layer.paint(painter, rect, Qt::AlignCenter, mode, state);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap result(size);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    paint(&painter, result.rect(), mode, state);
    return result;
  }

  /// What the trays over D-Bus are sent.
  QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
    return {{16, 16}, {22, 22}, {24, 24}, {32, 32}, {48, 48}, {64, 64}};
  }

  QIconEngine* clone() const override { return new StackedIconEngine(*this); }  // NOLINT: the icon owns it

 private:
  std::vector<QIcon> layers_;
};

}  // namespace

QIcon stackedIcon(std::vector<QIcon> layers) {
  return QIcon(new StackedIconEngine(std::move(layers)));  // NOLINT: the icon owns it
}

}  // namespace velmora
