#pragma once

#include <QAbstractTableModel>

#include "platform/controls/list_view.h"
#include "platform/qt/widgets/icons.h"

namespace velmora {

/// Gives a view the rows of a list control, one by one as it asks for them. What a stranger wrote in them is harmless.
class ListModel : public QAbstractTableModel {
 public:
  /// `list` outlives the model.
  ListModel(ListView& list, ImageList rowPictures, ImageList headerPictures, QObject* parent);

  int rowCount(const QModelIndex& parent) const override;
  int columnCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  ListView& list_;
  ImageList rowPictures_;
  ImageList headerPictures_;
};

}  // namespace velmora
