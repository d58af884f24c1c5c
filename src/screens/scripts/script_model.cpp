#include "screens/scripts/script_model.h"

#include <algorithm>

#include "autobet/script.h"
#include "screens/frame/controls.h"

ScriptModel::ScriptModel(QObject* parent) : QAbstractTableModel(parent) {}

void ScriptModel::Refresh() {
  const int count = Game.ScrCount;
  if (count > count_) {
    beginInsertRows({}, count_, count - 1);
    count_ = count;
    endInsertRows();
  } else if (count < count_) {
    beginRemoveRows({}, count, count_ - 1);
    count_ = count;
    endRemoveRows();
  }
  blocks_ = BlocksOfScript();
  profile_.clear();
  if (Game.Profile.On) profile_ = ScriptProfile();
  most_ = 0;
  for (const LineProfile& line : profile_) most_ = std::max({most_, line.Reached, line.Fired});
  const auto longest = std::max_element(Game.Script.begin(), Game.Script.begin() + count,
                                        [](const ScriptLine& a, const ScriptLine& b) {
                                          return a.LineText.size() < b.LineText.size();
                                        });
  longest_ = count > 0 ? Text(longest->LineText) : QString();
  emit dataChanged(index(0, 0), index(count_, kColumns - 1));
}

void ScriptModel::ForgetFault() {
  fault_ = {};
  MarkKinds();
}

void ScriptModel::CheckLines() {
  fault_ = MarkLines();
  emit dataChanged(index(0, 0), index(count_, kColumns - 1));
}

int ScriptModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : count_ + 1;
}

int ScriptModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

/// The record may have shrunk since the last refresh.
bool ScriptModel::IsLine(int row) const {
  return row >= 0 && row < std::min(count_, Game.ScrCount);
}

LineBlock ScriptModel::BlockOf(int row) const {
  const auto at = static_cast<std::size_t>(row);
  return at < blocks_.size() ? blocks_[at] : LineBlock();
}

bool ScriptModel::NeverFired(int row) const {
  const auto at = static_cast<std::size_t>(row);
  return most_ > 0 && at < profile_.size() && profile_[at].Fired == 0 &&
         Line(row + 1).LineKind != RemarkLine && !IsFault(row);
}

QVariant ScriptModel::data(const QModelIndex& index, int role) const {
  const int row = index.row();
  if (!IsLine(row)) return {};
  const int column = index.column();
  if (role == Qt::TextAlignmentRole && column != TextColumn)
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  if (role == Qt::ToolTipRole) {
    if (IsFault(row)) return Text(fault_.Title + "\n\n" + fault_.Text);
    if (column == MarginColumn) return tr("Click to have tracing start at this line");
    return column == TextColumn ? Text(Line(row + 1).LineText).trimmed() : QVariant();
  }
  if (role != Qt::DisplayRole) return {};
  const auto at = static_cast<std::size_t>(row);
  switch (column) {
    case MarginColumn: return Game.ShowLineNumbers ? QString::number(row + 1) : QString();
    case TextColumn: return Text(Line(row + 1).LineText);
    case ReachedColumn: return at < profile_.size() ? Count(profile_[at].Reached) : QString();
    case FiredColumn: return at < profile_.size() ? Count(profile_[at].Fired) : QString();
    default: return {};
  }
}

QVariant ScriptModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::TextAlignmentRole)
    return section == TextColumn ? QVariant(Qt::AlignLeft | Qt::AlignVCenter)
                                 : QVariant(Qt::AlignRight | Qt::AlignVCenter);
  const QStringList captions = {QString(), tr("Line"), tr("Reached"), tr("Fired")};
  const QStringList tips = {
      QString(), QString(), tr("How often runs came to the line"),
      tr("How often the condition was true, the action performed, or the block entered")};
  if (role == Qt::DisplayRole) return captions.value(section);
  return role == Qt::ToolTipRole ? tips.value(section) : QVariant();
}

Qt::ItemFlags ScriptModel::flags(const QModelIndex& index) const {
  if (!IsLine(index.row())) return Qt::ItemIsEnabled;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}
