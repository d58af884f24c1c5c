// The Events Log: looking at the journal of play, and choosing what it records.
#pragma once

#include <QLabel>
#include <QScrollBar>
#include <string>
#include <vector>

#include "screens/frame/screen.h"

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

class frmEventsLog : public Screen {
  Q_OBJECT

 public:
  explicit frmEventsLog(QWidget* table);

 protected:
  void ShowRecord() override;
  bool TakeKey(QKeyEvent& event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeView(QVBoxLayout* column);
  void MakeStatusRow(QVBoxLayout* column);
  void MakeMenus();

  void NewLog();
  void PrintLog();
  void AskAndFind();
  void FindAgain(bool forward);

  void GoTo(int line);
  void GoBy(int lines);
  void BarActed(int action);
  void Turn(const QWheelEvent& event);
  void ShowBars();

  picEventsLogBox* picEventsLog_ = nullptr;
  QScrollBar* vscrEventsLog_ = nullptr;
  QScrollBar* hscrEventsLog_ = nullptr;
  QLabel* lblPosition_ = nullptr;
  QLabel* lblEmpty_ = nullptr;
  QString findText_;
  int turned_ = 0;  // of the wheel, not yet worth a line
};
