// The Games Log: the finished games as a population, in a histogram or in a table.
#pragma once

#include <QElapsedTimer>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "figures/games_view.h"
#include "screens/frame/screen.h"
#include "screens/statistics/histogram_painter.h"

class QAbstractButton;
class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QScrollArea;
class QScrollBar;
class QTableView;
class RecordModel;
struct Report;

/// The panel of the histogram.
class picHistogramBox : public QWidget {
  Q_OBJECT

 public:
  explicit picHistogramBox(QWidget* parent);

  void Show(HistogramPicture picture);
  void SetReach(double reach);
  const HistogramPicture& Picture() const { return picture_; }

  /// Points at a bar; -1 for none.
  void PointAt(int bar);

 signals:
  void Pointed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  HistogramFrame Frame() const;

  HistogramPicture picture_;
};

/// A log as it was read last.
struct GamesRead {
  std::string Path;
  std::string Stamp;  // tells whether the file is still the one that was read
  int Column = -1;
  GamePopulation Games;
  std::string Failure;  // why nothing could be read

  /// Reads the log where it is another file, another column, or has changed since. True when it was
  /// read.
  bool Follow(const std::string& path, int column);
};

class frmGames : public Screen {
  Q_OBJECT

 public:
  explicit frmGames(QWidget* table);

 protected:
  void ShowRecord() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeMenus();
  void MakeHead(QBoxLayout* column);
  void MakeViews(QBoxLayout* column);
  void MakeFigures(QBoxLayout* column);
  QWidget* MakeClasses();
  QWidget* MakeLines(const QString& caption, const char* name, std::size_t count);
  void MakeTable();

  void NewLog();
  void Merge();
  void Compare();
  void MakeRoom();
  void Export();
  void Print();
  Report FiguresReport() const;
  Report DataReport() const;
  void SetBreakPoint();
  void AskAndFind();
  void FindAgain(bool forward);

  std::int64_t TopGame() const;
  void GoTo(std::int64_t game);
  void BarActed(int action);

  bool ReadLogs();
  void Figure();
  void ShowHead();
  void ShowClasses();
  void ShowLines();
  void ShowPicture();
  void ShowShares();
  void ShowPointed();
  void ShowBar();
  void TakeDeviation(bool ofValue);

  int Column() const;
  QString NameOfColumn() const;
  Currency RollsOf(int row) const;

  GamesRead log_;
  GamesRead other_;        // what it is compared with
  std::string otherPath_;  // empty for nothing
  bool sameDice_ = false;
  GameChoice choice_;
  int barWidth_ = 0;  // of what was figured
  bool stale_ = true;
  GamesSummary summary_;
  GamesSummary otherSummary_;
  std::optional<PairedDifference> pairs_;
  QElapsedTimer sinceRead_;
  qint64 readTook_ = 0;  // milliseconds
  std::string findText_;
  double deviations_ = 1;
  std::vector<int> exported_;
  mutable std::int64_t blockAt_ = 0;  // of the records that the table shows
  mutable std::vector<GameRecord> block_;

  QComboBox* cmbView_ = nullptr;
  QLabel* lblStatus_ = nullptr;
  QLabel* lblLegend_ = nullptr;
  picHistogramBox* picHistogram_ = nullptr;
  QLabel* lblPointer_ = nullptr;
  QLabel* lblEmpty_ = nullptr;
  QWidget* data_ = nullptr;
  QTableView* tblRaw_ = nullptr;
  RecordModel* rows_ = nullptr;
  QScrollBar* vscrRaw_ = nullptr;
  std::array<QCheckBox*, kGameClasses> chkInclude_{};
  std::array<QLabel*, kGameClasses> lblClass_{};
  QLineEdit* txtSDCount_ = nullptr;
  QLineEdit* txtValueCount_ = nullptr;
  QLabel* lblSDShare_ = nullptr;
  QLabel* lblValueShare_ = nullptr;
  QLabel* lblComparison_ = nullptr;
  QScrollArea* figures_ = nullptr;
  struct Line {
    QLabel* Caption;
    QLabel* Figure;
    QLabel* Other;
  };
  std::vector<Line> lines_;
};
