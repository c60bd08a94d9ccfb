#pragma once

#include <QAbstractTableModel>

#include "ui/controls.h"

namespace homewarden::view {

// Shows the rows of a ListView to Qt without copying them: a text is decoded when it is asked for.
class ListModel : public QAbstractTableModel {
 public:
  explicit ListModel(const ListView& list, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  // Cells that a row does not have are empty.
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  // The rows or the columns have changed; everything is shown anew.
  void reload();
  // Other rows are marked, or for other reasons; selection and place stay.
  void show_marks();

 private:
  QVariant mark(const QModelIndex& index, int role) const;

  const ListView& list_;
};

}  // namespace homewarden::view
