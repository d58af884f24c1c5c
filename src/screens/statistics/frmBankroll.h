// The bankroll graph, and the controls of Hyper-Drive.
#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <array>
#include <functional>

#include "screens/frame/screen.h"
#include "screens/statistics/graph_painter.h"

class QBoxLayout;
class QGridLayout;

/// The panel of the graph.
class picGraphBox : public QWidget {
  Q_OBJECT

 public:
  explicit picGraphBox(QWidget* parent);

  GraphFrame Frame() const { return GraphFrame(rect()); }
  const GraphView& View() const { return view_; }

  /// Puts a reference line at a point of the page.
  void SetReferenceLine(bool second, int point);

  /// Points at a point of the page; 0 for none.
  void PointAt(int point);

 signals:
  void Changed();
  void Resized();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  enum class Dragged { Nothing, First, Second };

  Dragged LineNear(double x) const;

  GraphView view_;
  Dragged dragged_ = Dragged::Nothing;
};

class frmBankroll : public Screen {
  Q_OBJECT

 public:
  explicit frmBankroll(QWidget* table);

 protected:
  void ShowRecord() override;
  void Opened() override;
  bool TakeKey(QKeyEvent& event) override;
  bool MayClose() override;

 private:
  static constexpr int kScaleLabels = 6;
  static constexpr int kFigures = 6;

  void MakeMenus();
  void MakeGraph(QBoxLayout* column);
  void MakeFigures(QBoxLayout* column);
  void MakeHyperDrive(QBoxLayout* column);
  QWidget* MakeScaleButtons();
  void AskAverageSpan();
  void PrintNow();
  void StepScale(bool larger);
  void StepPointed(int by);
  void Refit(bool recentre);
  void PlaceScaleLabels();
  void ShowScale();
  void ShowFigures();
  void ShowPointed();
  void ShowRun();

  picGraphBox* picGraph_ = nullptr;
  QWidget* picScale_ = nullptr;
  std::array<QLabel*, kScaleLabels> lblScale_{};
  QLabel* lblMovingAverage_ = nullptr;
  QWidget* picLegend_ = nullptr;
  QLabel* lblAutoPrint_ = nullptr;
  QLabel* lblRollsLeft_ = nullptr;
  QLabel* lblRollsRight_ = nullptr;
  QLabel* lblPointer_ = nullptr;
  std::array<QLabel*, kFigures> lblFigure_{};
  QPushButton* cmdHyperDrive_ = nullptr;
  QPushButton* cmdHyperDriveActive_ = nullptr;
  QSlider* hscrThrottle_ = nullptr;
  QLabel* lblThrottle_ = nullptr;
  QProgressBar* prgRun_ = nullptr;
  QLabel* lblRun_ = nullptr;
};
