// A list over the record: what it shows is asked of the record whenever it is drawn.
#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QIcon>
#include <QStringList>
#include <functional>
#include <vector>

/// One column of a list. Only `Text` must be there.
struct ListColumn {
  QString Heading{};
  std::function<QString(int row)> Text;
  Qt::Alignment Alignment = Qt::AlignLeft;

  bool Idle = false;                     // can't be chosen
  std::function<QColor(int row)> Ink{};  // an invalid colour is the list's own
  std::function<QString(int row)> ToolTip{};
  std::function<QIcon(int row)> Icon{};
  std::function<bool(int row)> Checked{};                    // with a box to tick
  std::function<void(int row, bool on)> Check{};             // the player has ticked it
  std::function<QString(int row)> EditText{};                // what an editor starts with
  std::function<bool(int row, const QString& text)> Take{};  // false leaves the editor's text out
};

/// A Qt model of such columns. It keeps nothing of the record, so that a list of any length costs
/// what is in view.
class RecordModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// With a key, which tells whose row it is, a list whose rows have become others begins afresh.
  RecordModel(QObject* parent, std::function<int()> rows, std::vector<ListColumn> columns,
              std::function<QString(int row)> key = {});

  /// Follows the record: rows that have come or gone at the end, and all texts. What is selected
  /// stays selected.
  void Refresh();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  const ListColumn& At(const QModelIndex& index) const;
  bool AreOthers(int count);

  std::function<int()> rows_;
  std::vector<ListColumn> columns_;
  std::function<QString(int row)> key_;
  QStringList keys_;
  int count_ = 0;
};

class QAbstractItemView;

/// The rows selected in a list, in order.
std::vector<int> SelectedRows(const QAbstractItemView* list);
