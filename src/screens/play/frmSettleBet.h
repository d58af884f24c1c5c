// The settle screen: what a decided bet paid, and what shall happen to its stake.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPolygonF>
#include <QPushButton>
#include <array>
#include <functional>

/// Shows `Game.Settle`. It closes by a choice only, which goes to `PressSettleButton` once the
/// amount boxes, operators and units have been stored in their slots.
class frmSettleBet : public QDialog {
  Q_OBJECT

 public:
  explicit frmSettleBet(QWidget* parent);

  /// Becomes a plate without a frame beside `pile`, with a tail that points to it: on the side
  /// where it covers least by `cost`. Choices are numbered then. All places are the screen's, and
  /// the plate keeps `within`.
  void SitBeside(const QRect& pile, const QRect& within,
                 const std::function<double(const QRect&)>& cost);

  /// The choice was made for all bets of its kind that this roll still decides.
  bool ForTheRest() const { return chkForTheRest_ && chkForTheRest_->isChecked(); }
  int Choice() const { return choice_; }

  /// A choice has to be made: neither Esc nor the window's X closes the screen.
  void reject() override {}

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  static constexpr int kChoices = 7;
  static constexpr int kModifyRows = 2;

  void MakeLines();
  void MakeChoices();
  void MakeModifyRow(int row);
  void Arrange();
  void ArrangeModifyRow(int row, int left, int top);
  int Units(double count) const;
  unsigned Slot(int row) const;
  void StepOperator();
  void StepUnit(int row);
  void ShowCaptions();
  void Store();
  void Press(int button);
  void MakePlate();
  void MakeRoomForDigits();
  void ShiftControls(QPoint by);
  void CutOut(const QPoint& tip);

  double scale_ = 1;
  bool plate_ = false;
  QCheckBox* chkForTheRest_ = nullptr;
  QPolygonF outline_;
  int choice_ = 0;
  std::vector<QLabel*> lblWonBetType_;
  std::vector<QLabel*> lblWonBet_;
  std::array<QPushButton*, kChoices> cmdHandle_{};
  std::array<QLineEdit*, kModifyRows> txtModifyAmount_{};
  QPushButton* cmdMathOperator_ = nullptr;
  std::array<QPushButton*, kModifyRows> cmdUnits_{};
  std::array<int, kModifyRows> unit_{};
  int operator_ = 0;
};
