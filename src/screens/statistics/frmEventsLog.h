// The Events Log: looking at the journal of play, and choosing what it records.
#pragma once

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QScrollBar>
#include <QTimer>
#include <functional>
#include <string>
#include <vector>

class QVBoxLayout;
class QWheelEvent;

/// The stretch of the log that is in view, read from disk whenever it is painted.
class picEventsLogBox : public QWidget {
  Q_OBJECT

 public:
  explicit picEventsLogBox(QWidget* parent);

  /// How many lines fit whole, and how far a page goes.
  int WholeLines() const;
  int PageStep() const;

  /// How many blanks the text is shifted to the left, how many fit side by side, and how many lie
  /// beyond the right edge of the view, as far as the log has been seen.
  void ShiftBy(int blanks);
  int BlanksInView() const;
  int BlanksBeyond() const;

  /// The lines in view as they were read last.
  const std::vector<std::string>& InView() const { return inView_; }

 signals:
  void WasRead();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Read();
  void Measure();

  std::vector<std::string> inView_;
  QString measured_;  // the letters and the log that `widest_` belongs to
  double widest_ = 0;
  int shift_ = 0;
};

class frmEventsLog : public QMainWindow {
  Q_OBJECT

 public:
  explicit frmEventsLog(QWidget* parent);

  /// Shows the log as it stands on disk, from `LogTopLine`. Nothing happens while the screen is
  /// closed.
  void RefreshEventsLogView();

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QAction* Command(QMenu* menu, const QString& name, const QString& caption,
                   const QKeySequence& key, std::function<void()> act);
  void Check(QMenu* menu, const char* name, const char* caption, std::function<bool()> checked,
             std::function<void()> act);
  void Toggle(QMenu* menu, const char* name, const char* caption, bool& field);
  void MakeView(QVBoxLayout* column);
  void MakeStatusRow(QVBoxLayout* column);
  void MakeFileMenu();
  void MakeEditMenu();
  void MakeRecordMenu();
  void MakeFontMenu();

  void NewLog();
  void PrintLog();
  void AskAndFind();
  void FindAgain(bool forward);

  void GoTo(int line);
  void GoBy(int lines);
  void BarActed(int action);
  void Turn(const QWheelEvent& event);
  void ShowBars();
  void ShowChecks();
  void ShowCaption();

  picEventsLogBox* picEventsLog_ = nullptr;
  QScrollBar* vscrEventsLog_ = nullptr;
  QScrollBar* hscrEventsLog_ = nullptr;
  QLabel* lblPosition_ = nullptr;
  QLabel* lblRecording_ = nullptr;
  QAction* mnuFindNext_ = nullptr;
  QAction* mnuFindPrevious_ = nullptr;
  QTimer* timerRun_ = nullptr;
  QString findText_;
  int turned_ = 0;  // of the wheel, not yet worth a line
  std::vector<std::function<void()>> checks_;
};
