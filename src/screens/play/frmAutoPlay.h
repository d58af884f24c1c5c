// Auto-Play: the automatic aids of the table.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <array>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

class QBoxLayout;
class QGroupBox;

class frmAutoPlay : public QMainWindow {
  Q_OBJECT

 public:
  explicit frmAutoPlay(QWidget* parent);

  /// Shows the settings as they stand now. Nothing happens while the screen is closed.
  void RefreshAutoPlayView();

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// A numeric box, how it is shown and how it is taken.
  struct NumberBox {
    QLineEdit* Box;
    std::function<QString()> Shown;
    std::function<void(const QString&)> Take;
  };

  QGroupBox* MakeHandling(const QString& title, const char* name,
                          std::span<const std::string_view> captions, int& field, int firstSlot);
  QWidget* MakeModifyRow(QWidget* parent, int slot);
  QGroupBox* MakeAmounts();
  QGroupBox* MakeOdds();
  QGroupBox* MakeRolling();
  QWidget* MakeComeOut();
  void AddComeOutButtons(QBoxLayout* column, QWidget* parent);
  void AddStopList(QBoxLayout* column, QWidget* parent);
  QRadioButton* Option(QWidget* parent, const QString& name, std::string_view caption, int& field,
                       int value, std::function<void()> choose);
  QComboBox* BiasList(QWidget* parent, const char* name, std::span<const std::string_view> items,
                      int& field);
  QCheckBox* Box(QWidget* parent, const char* name, const QString& caption, bool& field,
                 std::function<void(bool)> set);
  QLineEdit* Number(QWidget* parent, const QString& name, int decimals, int length,
                    std::function<QString()> shown, std::function<void(const QString&)> take);
  void TakeNumber(const NumberBox& number);
  void SetSelectedWorking(bool works);
  void ToggleWorking(QListWidgetItem* item);

  /// Carries out a change of the player between two rolls and shows what came of it.
  void Change(std::function<void()> change);
  void ShowComeOut();
  void ShowStops();
  void ShowRemaining();

  QWidget* content_ = nullptr;
  QListWidget* lstWorkOnComeOut_ = nullptr;
  QListWidget* listAutoStop_ = nullptr;
  QLabel* lblAutoRollsRemaining_ = nullptr;
  QTimer* timerRemaining_ = nullptr;
  std::vector<NumberBox> numbers_;
  std::vector<std::function<void()>> shows_;
};
