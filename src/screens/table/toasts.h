// Notices that need no answer, shown on the table for a while.
#pragma once

#include <QTimer>
#include <QWidget>
#include <vector>

class frmCrapTable;

/// True for a message that may be shown so: a notice with nothing but an OK button.
bool MayBeToast(int flags);

/// The bet that a message speaks of by its title; 0 for none.
int BetOfTitle(const std::string& title);

/// A notice on the table. No click ends on it; the mouse beside it keeps it up.
class Toast : public QWidget {
 public:
  Toast(frmCrapTable* table, const QString& title, const QString& text, int betId);

  /// Its place below its bet, or above the money; `below` other toasts of the same place.
  void Place(int below);
  int BetId() const { return betId_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool MouseIsNear() const;

  frmCrapTable* table_;
  QString title_;
  QString text_;
  int betId_;
  int left_;  // milliseconds
  QTimer clock_;
};

/// Shows the message of the slots as a toast and answers it with OK.
void ShowToast(frmCrapTable* table);

/// The first box whose notice could be a toast offers them; the box as it is stays the default.
void OfferToasts();

/// Puts all toasts away; false when there were none.
bool PutToastsAway(frmCrapTable* table);
