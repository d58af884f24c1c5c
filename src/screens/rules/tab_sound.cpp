// The sounds of the game.
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

#include "core/game_state.h"
#include "core/host.h"
#include "core/sounds.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/frame/sound_player.h"
#include "screens/rules/config_page.h"

namespace {

constexpr int kLoudest = 255;

/// A sound set as a list shows it: the file name up to its first point.
QStringList SoundNames(const std::vector<std::string>& files) {
  QStringList names;
  for (const std::string& file : files)
    names << (file.empty() ? QObject::tr("none") : Text(file).section('.', 0, 0));
  return names;
}

class SoundPage : public ConfigPage {
  Q_DECLARE_TR_FUNCTIONS(SoundPage)

 public:
  SoundPage() {
    QVBoxLayout* column = new QVBoxLayout(this);
    column->addWidget(
        CheckBox("chkDisableAllSound", tr(" Disable all game sounds"),
                 RecordField(Game.DisableAllSound).Then([] { TheHost.StopSound(); })));
    QCheckBox* script = New<QCheckBox>("chkAutoBetSounds", tr(" Disable Auto-Bet sounds"));
    Bind(script, Game.AutoBetSounds).EnabledWhen(SoundIsOn, WhyOff());
    column->addWidget(script);
    column->addWidget(MakeLists());
    column->addWidget(MakeVolume());
    column->addStretch(1);
  }

 private:
  static bool SoundIsOn() { return !Game.DisableAllSound; }
  static QString WhyOff() { return tr("All game sounds are disabled."); }

  QGroupBox* MakeLists() {
    QGroupBox* group = new QGroupBox(tr("Sounds"));
    QGridLayout* grid = new QGridLayout(group);
    AddSound(grid, tr("S&tick person:"), "StickPerson", Game.StickPersons,
             RecordField(Game.StickPerson).Then(LoadStickPerson),
             [] { PlayStickCall(StickPass, false); });
    AddSound(grid, tr("D&ice:"), "Dice", Game.DiceSounds, Game.DiceSound, PlayDiceSound);
    AddSound(grid, tr("C&hips:"), "Chips", Game.ChipSounds, Game.ChipSound, PlayChipSound);
    AddSound(grid, tr("&Wins:"), "Win", Game.WinSounds, Game.WinSound, [] { PlayWinSound(false); });
    grid->setColumnStretch(1, 1);
    return group;
  }

  void AddSound(QGridLayout* grid, const QString& caption, const QString& sound,
                const std::vector<std::string>& files, const RecordField<int>& field,
                std::function<void()> play) {
    const QString list = sound == "StickPerson" ? "cmbStickPerson"
                         : sound == "Chips"     ? "cmbChipSound"
                                                : "cmb" + sound + "Sound";
    auto* choices = New<QComboBox>(list);
    choices->addItems(SoundNames(files));
    // The files are found at the start of the program; a test may find others.
    new Binding(choices, [choices, &files] {
      const QStringList names = SoundNames(files);
      if (choices->count() == names.size()) return;
      choices->clear();
      choices->addItems(names);
    });
    Bind(choices, field).EnabledWhen(SoundIsOn, WhyOff());
    AddRow(grid, caption, choices);
    auto* test = New<QPushButton>("cmdTest" + sound, tr("Test"));
    test->setAccessibleName(tr("Test the sound chosen for: %1").arg(QString(caption).remove('&')));
    BindPossible(test, SoundIsOn, WhyOff());
    connect(test, &QPushButton::clicked, test, [play] {
      TheHost.StopSound();
      play();
    });
    grid->addWidget(test, grid->rowCount() - 1, 2);
  }

  /// How loud the program plays. It is no setting of the game, and gone without a device.
  static QGroupBox* MakeVolume() {
    QGroupBox* group = new QGroupBox(tr("Volume"));
    group->setObjectName("picVolume");
    QHBoxLayout* row = new QHBoxLayout(group);
    auto* bar = New<QSlider>("vsbVolume", Qt::Horizontal);
    bar->setAccessibleName(tr("Volume"));
    bar->setRange(0, kLoudest);
    bar->setPageStep(kLoudest / 8);
    bar->setValue(qRound(SoundVolume() * kLoudest));
    connect(bar, &QSlider::valueChanged, bar,
            [](int value) { SetSoundVolume(double(value) / kLoudest); });
    row->addWidget(bar);
    if (!SoundDeviceFound()) group->hide();
    return group;
  }
};

}  // namespace

ConfigPage* MakeSoundPage() { return new SoundPage; }
