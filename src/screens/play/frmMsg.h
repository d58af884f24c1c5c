// The message screen: every message and question of the program.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <array>
#include <deque>
#include <functional>
#include <string>
#include <vector>

/// What the table offers once, in a box whose notice needs no answer: to show such notices without
/// a box. Nothing is offered while the members are empty.
struct NoticeOffer {
  std::function<bool()> IsDue{};               // for the message of the slots
  std::function<void(bool taken)> Answered{};  // the box is left
};
extern NoticeOffer OfferOfNotices;

/// The screen of one message. It reads the message slots when it is made, and hands what was
/// pressed to `PressMessageButton`.
class frmMsg : public QDialog {
  Q_OBJECT

 public:
  explicit frmMsg(QWidget* parent);

  /// Esc and the window's X: Cancel if there is one, else No, else OK.
  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  static constexpr int kButtons = 5;

  void MakeText();
  void ScrollTallText();
  void MakeInputs();
  void MakeHideBox();
  void MakeOfferBox();
  void MakeButtons();
  void Arrange();
  void ArrangeButtons(int top);
  int Units(double count) const;
  void Press(int button);

  double scale_ = 1;
  QWidget* picture_ = nullptr;
  QLabel* lblMsg_ = nullptr;
  QScrollArea* scrMsg_ = nullptr;  // holds a text that is too tall for the screen
  QCheckBox* chkHide_ = nullptr;
  QCheckBox* chkOnTable_ = nullptr;
  std::array<QLineEdit*, 2> txtInput_{};
  std::array<QPushButton*, kButtons> cmdButton_{};
};

/// Shows the message of the slots over the window that asks, or over `parent` where none does;
/// modal ones wait for their answer. With answers planned the next of them is given instead, and no
/// screen is shown.
void ShowMessageScreen(QWidget* parent, bool modal);

/// A planned answer: a button of the message (`AnswerOk` and so on) and what the input boxes hold.
struct PlannedAnswer {
  int Answer = 0;
  std::string FirstInput{};
  std::string SecondInput{};
};

/// A message as it was shown while answers were planned.
struct ShownMessage {
  std::string Text;
  std::string Title;
  int Flags = 0;
};

/// Answers laid out beforehand, for driving the screens without a person. While it is active each
/// message takes the next answer; with none left, the one that Esc would give.
struct MessagePlan {
  bool Active = false;
  std::deque<PlannedAnswer> Answers{};
  std::vector<ShownMessage> Shown{};
};
extern MessagePlan PlannedMessages;
