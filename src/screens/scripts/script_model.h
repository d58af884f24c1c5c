// The lines of the script as a list: it keeps nothing of them, so that a list of any length costs
// what is in view.
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "autobet/editor.h"
#include "autobet/profile.h"

class ScriptModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column : int { MarginColumn, TextColumn, ReachedColumn, FiredColumn, kColumns };

  explicit ScriptModel(QObject* parent);

  /// Follows the record.
  void Refresh();

  /// Lines have changed: what was found at fault may be so no longer.
  void ForgetFault();

  /// Looks for the first fault and marks it.
  void CheckLines();

  /// Line n is row n - 1. One more row stands for the place behind the last line.
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

  bool IsLine(int row) const;
  LineBlock BlockOf(int row) const;
  const ScriptFault& Fault() const { return fault_; }
  bool IsFault(int row) const { return fault_.LineNumber == row + 1; }

  /// Whether runs have been counted, and this line has done nothing in any.
  bool NeverFired(int row) const;

  /// The highest count of the profile.
  std::int64_t MostReached() const { return most_; }

  /// The line with the most letters.
  const QString& Longest() const { return longest_; }

 private:
  int count_ = 0;
  QString longest_;
  std::int64_t most_ = 0;
  std::vector<LineBlock> blocks_;
  std::vector<LineProfile> profile_;
  ScriptFault fault_;
};
