#include "ui/qt/list_model.h"

#include "platform/qt/text_codec.h"

namespace homewarden {

ListModel::ListModel(const ListView& list, QObject* parent)
    : QAbstractTableModel(parent), list_(list) {}

int ListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(list_.rows.get().size());
}

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(list_.columns.get().size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || role != Qt::DisplayRole) return {};
  const auto& rows = list_.rows.get();
  const auto row = static_cast<std::size_t>(index.row());
  const auto column = static_cast<std::size_t>(index.column());
  if (row >= rows.size() || column >= rows[row].size()) return {};
  return from_code_page(rows[row][column]);
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const auto& columns = list_.columns.get();
  const auto column = static_cast<std::size_t>(section);
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || column >= columns.size())
    return {};
  return from_code_page(columns[column].caption);
}

void ListModel::reload() {
  beginResetModel();
  endResetModel();
}

}  // namespace homewarden
