// The handbook in a window of its own.
#pragma once

#include "screens/frame/handbook.h"
#include "screens/frame/screen.h"

class QLineEdit;
class QListWidget;
class QTextBrowser;

/// Pages or places found at the left, the page at the right.
class frmHandbook : public Screen {
  Q_OBJECT

 public:
  frmHandbook(QWidget* owner, const Handbook& handbook);

  /// Shows a place; the way back leads to the one before it.
  void GoTo(const HandbookPlace& place);

 private:
  void MakeMenus();
  void ShowList();
  void ShowPlace();
  void Step(int by);
  void FollowLink(const QString& link);

  const Handbook& handbook_;
  QLineEdit* txtSearch_;
  QListWidget* lstPlaces_;
  QTextBrowser* txtPage_;
  std::vector<HandbookPlace> shown_;  // listed at the left
  std::vector<HandbookPlace> way_;    // the places gone through
  std::size_t at_ = 0;
};
