// Auto-Play: what the table does by itself with bets, odds and dice.
#pragma once

#include <span>
#include <string_view>

#include "core/currency.h"
#include "screens/frame/record_model.h"
#include "screens/frame/screen.h"

class QGroupBox;
class QListView;

class frmAutoPlay : public Screen {
  Q_OBJECT

 public:
  explicit frmAutoPlay(QWidget* table);

 protected:
  void ShowRecord() override;

 private:
  QGroupBox* MakeHandling(const QString& title, const char* name,
                          std::span<const std::string_view> captions, int& field, int firstSlot);
  QWidget* MakeModifyRow(int slot);
  QGroupBox* MakeAmounts();
  QGroupBox* MakeOdds();
  QGroupBox* MakeComeOut();
  QGroupBox* MakeRolling();
  QListView* MakeStopList();
  void SetSelectedWorking(bool works);

  RecordModel* comeOut_ = nullptr;
  RecordModel* stops_ = nullptr;
  QListView* lstWorkOnComeOut_ = nullptr;
};
