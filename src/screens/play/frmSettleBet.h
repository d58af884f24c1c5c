// The settle screen: what a decided bet paid, and what shall happen to its stake.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <array>

/// Shows `Game.Settle`. It closes by a choice only, which goes to `PressSettleButton` once the
/// amount boxes, operators and units have been stored in their slots.
class frmSettleBet : public QDialog {
  Q_OBJECT

 public:
  explicit frmSettleBet(QWidget* parent);

  /// A choice has to be made: neither Esc nor the window's X closes the screen.
  void reject() override {}

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

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

  double scale_ = 1;
  std::vector<QLabel*> lblWonBetType_;
  std::vector<QLabel*> lblWonBet_;
  std::array<QPushButton*, kChoices> cmdHandle_{};
  std::array<QLineEdit*, kModifyRows> txtModifyAmount_{};
  QPushButton* cmdMathOperator_ = nullptr;
  std::array<QPushButton*, kModifyRows> cmdUnits_{};
  std::array<int, kModifyRows> unit_{};
  int operator_ = 0;
};
