// The games of a log, one by one.
#pragma once

#include <QTableView>
#include <QWidget>
#include <vector>

#include "screens/frame/record_model.h"
#include "screens/statistics/games_read.h"

class QScrollBar;

/// A table over the file, with a bar that reaches any game of millions. It keeps nothing of the log
/// but the stretch of records in view.
class GamesTable : public QWidget {
  Q_OBJECT

 public:
  /// Shows what `log` holds, by the classes of `choice`; both outlive it.
  GamesTable(const GamesRead& log, const GameChoice& choice);

  /// Begins afresh for a column: its heading tells which.
  void ShowColumn(int column);

  /// Follows the log.
  void Refresh();

  /// The game at the top, from 1.
  std::int64_t TopGame() const;
  void GoTo(std::int64_t game);
  void Select(std::int64_t game);

  const RecordModel& Rows() const { return *rows_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Currency ValueAt(int row) const;
  Currency RollsAt(int row) const;
  GameClass ClassAt(int row) const;
  void BarActed(int action);
  void ShowBar();

  const GamesRead& log_;
  const GameChoice& choice_;
  QTableView* tblRaw_;
  QScrollBar* vscrRaw_;
  RecordModel* rows_ = nullptr;
  mutable std::int64_t blockAt_ = 0;  // the number of the first record read
  mutable std::vector<GameRecord> block_;
};
