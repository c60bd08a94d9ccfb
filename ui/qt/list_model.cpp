#include "ui/qt/list_model.h"

#include "platform/qt/text_codec.h"
#include "ui/qt/row_mark.h"
#include "ui/qt/tip_text.h"

namespace homewarden::view {

ListModel::ListModel(const ListView& list, QObject* parent)
    : QAbstractTableModel(parent), list_(list) {}

int ListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(list_.rows.get().size());
}

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(list_.columns.get().size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role != Qt::DisplayRole) return mark(index, role);
  const auto& rows = list_.rows.get();
  const auto row = static_cast<std::size_t>(index.row());
  const auto column = static_cast<std::size_t>(index.column());
  if (row >= rows.size() || column >= rows[row].size()) return {};
  return qt::from_code_page(rows[row][column]);
}

// A screen reader says the reason once, with the first cell.
QVariant ListModel::mark(const QModelIndex& index, int role) const {
  const auto& marks = list_.marks.get();
  const auto found = marks.find(index.row());
  if (found == marks.end()) return {};
  const QString why = qt::from_code_page(found->second);
  if (role == Qt::ToolTipRole) return tip_text(found->second);
  if (index.column() > 0) return {};
  if (role == Qt::DecorationRole) return mark_icon();
  if (role == Qt::AccessibleTextRole) return marked_text(index.data().toString(), why);
  return {};
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const auto& columns = list_.columns.get();
  const auto column = static_cast<std::size_t>(section);
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || column >= columns.size())
    return {};
  return qt::from_code_page(columns[column].caption);
}

void ListModel::reload() {
  beginResetModel();
  endResetModel();
}

void ListModel::show_marks() {
  if (rowCount() == 0 || columnCount() == 0) return;
  emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1),
                   {Qt::DecorationRole, Qt::ToolTipRole, Qt::AccessibleTextRole});
}

}  // namespace homewarden::view
