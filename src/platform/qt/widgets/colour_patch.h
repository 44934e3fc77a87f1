#pragma once

#include <QAbstractButton>

namespace velmora {

struct ColourBox;

/// A field of one colour.
class ColourPatch : public QAbstractButton {
 public:
  enum class Use { Show, Choose };

  /// `box` outlives the patch.
  ColourPatch(ColourBox& box, Use use, QWidget* parent);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ColourBox& box_;
};

}  // namespace velmora
