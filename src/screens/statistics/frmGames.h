// The Games Log: the finished games as a population, in a histogram or in a table.
#pragma once

#include <QElapsedTimer>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "figures/games_view.h"
#include "screens/frame/screen.h"
#include "screens/statistics/games_read.h"
#include "screens/statistics/games_table.h"
#include "screens/statistics/histogram_box.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QScrollArea;
struct Report;

class frmGames : public Screen {
  Q_OBJECT

 public:
  explicit frmGames(QWidget* table);

 protected:
  void ShowRecord() override;

 private:
  void MakeMenus();
  void MakeHead(QBoxLayout* column);
  void MakeViews(QBoxLayout* column);
  void MakeFigures(QBoxLayout* column);
  QWidget* MakeClasses();
  QWidget* MakeLines(const QString& caption, const char* name, std::size_t count);

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

  bool ReadLogs();
  void Figure();
  void ShowHead();
  void ShowClasses();
  void ShowLines();
  void ShowPicture();
  void ShowShares();
  void ShowPointed();
  void TakeDeviation(bool ofValue);

  int Column() const;

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

  QComboBox* cmbView_ = nullptr;
  QLabel* lblStatus_ = nullptr;
  QLabel* lblLegend_ = nullptr;
  picHistogramBox* picHistogram_ = nullptr;
  QLabel* lblPointer_ = nullptr;
  QLabel* lblEmpty_ = nullptr;
  GamesTable* table_ = nullptr;
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
