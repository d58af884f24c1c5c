// The bankroll graph, and the controls of Hyper-Drive.
#pragma once

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QTimer>
#include <array>
#include <functional>
#include <vector>

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

class frmBankroll : public QMainWindow {
  Q_OBJECT

 public:
  explicit frmBankroll(QWidget* parent);

  /// Shows the graph and the figures as they stand now. Nothing happens while the screen is closed.
  void RefreshBankrollView();

 signals:
  /// The player starts or stops Hyper-Drive.
  void HyperDriveToggled();

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  static constexpr int kScaleLabels = 6;
  static constexpr int kFigures = 6;

  void MakeMenus();
  void MakeScaleMenu();
  QAction* Command(QMenu* menu, const QString& name, const QString& caption,
                   const QKeySequence& key, std::function<void()> act);
  void Toggle(QMenu* menu, const char* name, const char* caption, bool& field);
  void Choices(QMenu* menu, const char* name, const QStringList& captions, int& field);
  void MakeGraph(QBoxLayout* column);
  void MakeFigures(QBoxLayout* column);
  void MakeHyperDrive(QBoxLayout* column);
  QWidget* MakeScaleButtons();
  void AskAverageSpan();
  void PrintNow();
  void StepScale(bool larger);
  void StepPointed(int by);
  void Redraw(bool recentre);
  void PlaceScaleLabels();
  void ShowScale();
  void ShowFigures();
  void ShowPointed();
  void ShowRun();
  void ShowChecks();
  void Pace();

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
  QTimer* timerRun_ = nullptr;
  double yieldTime_ = 0;
  std::vector<std::function<void()>> checks_;
};
