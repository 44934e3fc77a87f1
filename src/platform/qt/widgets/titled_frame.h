#pragma once

#include <QGroupBox>

namespace velmora {

struct Frame;

/// A frame with its caption, which may have a colour of its own.
class TitledFrame : public QGroupBox {
 public:
  /// `frame` outlives the widget.
  TitledFrame(Frame& frame, const QString& name, QWidget* parent);

 protected:
  void initStyleOption(QStyleOptionGroupBox* option) const override;

 private:
  Frame& frame_;
};

}  // namespace velmora
