#include "screens/frame/record_model.h"

#include <QAbstractItemView>
#include <QItemSelectionModel>
#include <algorithm>
#include <utility>

RecordModel::RecordModel(QObject* parent, std::function<int()> rows,
                         std::vector<ListColumn> columns, std::function<QString(int)> key)
    : QAbstractTableModel(parent),
      rows_(std::move(rows)),
      columns_(std::move(columns)),
      key_(std::move(key)) {
  Refresh();
}

bool RecordModel::AreOthers(int count) {
  if (!key_) return false;
  QStringList keys;
  for (int row = 0; row < count; ++row) keys << key_(row);
  const QStringList before = std::exchange(keys_, keys);
  const qsizetype both = std::min(keys.size(), before.size());
  return !std::equal(keys.begin(), keys.begin() + both, before.begin());
}

void RecordModel::Refresh() {
  const int count = rows_();
  if (AreOthers(count)) {
    beginResetModel();
    count_ = count;
    endResetModel();
  } else if (count > count_) {
    beginInsertRows({}, count_, count - 1);
    count_ = count;
    endInsertRows();
  } else if (count < count_) {
    beginRemoveRows({}, count, count_ - 1);
    count_ = count;
    endRemoveRows();
  }
  if (count_ > 0) emit dataChanged(index(0, 0), index(count_ - 1, columnCount() - 1));
}

int RecordModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : count_; }

int RecordModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

const ListColumn& RecordModel::At(const QModelIndex& index) const {
  return columns_[static_cast<unsigned>(index.column())];
}

QVariant RecordModel::data(const QModelIndex& index, int role) const {
  // The record may have shrunk since the last refresh.
  if (!index.isValid() || index.row() >= rows_()) return {};
  const ListColumn& column = At(index);
  const int row = index.row();
  switch (role) {
    case Qt::DisplayRole: return column.Text(row);
    case Qt::EditRole: return column.EditText ? column.EditText(row) : column.Text(row);
    case Qt::TextAlignmentRole: return QVariant(column.Alignment | Qt::AlignVCenter);
    case Qt::ForegroundRole: {
      const QColor ink = column.Ink ? column.Ink(row) : QColor();
      return ink.isValid() ? QVariant(ink) : QVariant();
    }
    case Qt::ToolTipRole: return column.ToolTip ? column.ToolTip(row) : QVariant();
    case Qt::DecorationRole: return column.Icon ? column.Icon(row) : QVariant();
    case Qt::CheckStateRole:
      return column.Checked ? QVariant(column.Checked(row) ? Qt::Checked : Qt::Unchecked)
                            : QVariant();
    default: return {};
  }
}

bool RecordModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || index.row() >= rows_()) return false;
  const ListColumn& column = At(index);
  if (role == Qt::CheckStateRole && column.Check) {
    column.Check(index.row(), value.toInt() == Qt::Checked);
  } else if (role != Qt::EditRole || !column.Take || !column.Take(index.row(), value.toString())) {
    return false;
  }
  emit dataChanged(index, index);
  return true;
}

QVariant RecordModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal)
    return QAbstractTableModel::headerData(section, orientation, role);
  const ListColumn& column = columns_[static_cast<unsigned>(section)];
  if (role == Qt::DisplayRole) return column.Heading;
  if (role == Qt::TextAlignmentRole) return QVariant(column.Alignment | Qt::AlignVCenter);
  return {};
}

Qt::ItemFlags RecordModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  if (!index.isValid()) return flags;
  if (At(index).Idle) return Qt::NoItemFlags;
  if (At(index).Check) flags |= Qt::ItemIsUserCheckable;
  if (At(index).Take) flags |= Qt::ItemIsEditable;
  return flags;
}

std::vector<int> SelectedRows(const QAbstractItemView* list) {
  std::vector<int> rows;
  for (const QModelIndex& index : list->selectionModel()->selectedIndexes()) {
    if (rows.empty() || rows.back() != index.row()) rows.push_back(index.row());
  }
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}
