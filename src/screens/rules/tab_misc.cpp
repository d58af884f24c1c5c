// Notices, the mouse and the printer, and the random number generators.
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/help_topics.h"
#include "core/messages.h"
#include "dice/generators.h"
#include "rules/choices.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"
#include "screens/rules/config_page.h"

namespace {

void SeedNow() {
  if (!SeedRng(FindSeed)) return;
  ShowMessage("The random number generator has now been seeded.", "RNG Seeded", kTopicGenerators,
              OkTick);
}

class MiscPage : public ConfigPage {
  Q_DECLARE_TR_FUNCTIONS(MiscPage)

 public:
  MiscPage() {
    QVBoxLayout* column = new QVBoxLayout(this);
    column->addWidget(MakeNotices());
    column->addWidget(MakeGenerators());
    column->addWidget(CheckBox("chkSnapMouse", tr(" Snap mouse-pointer"), Game.SnapMouse));
    column->addWidget(CheckBox("chkColorPrint", tr(" Color printer"), Game.ColorPrint));
    column->addStretch(1);
  }

  void Gather(ConfigEntries& entries) const override { entries.Notices = Notices(); }

 private:
  /// What is ticked holds for the game when the screen closes. What the game changes meanwhile, as
  /// by the box on a notice that hides its kind, is followed at once.
  QGroupBox* MakeNotices() {
    const QStringList captions = {
        tr(" Actions not allowed"), tr(" Betting limits reached"), tr(" Charges and/or change"),
        tr(" Auto-Bet messages normal play"), tr(" Auto-Bet messages Hyper-Drive")};
    QGroupBox* group = new QGroupBox(tr("Notices"));
    QVBoxLayout* column = new QVBoxLayout(group);
    for (int i = 0; i < kNoticeBoxes; ++i) {
      auto* box = New<QCheckBox>(QString("chkNotify_%1").arg(i), captions[i]);
      chkNotify_[static_cast<unsigned>(i)] = box;
      column->addWidget(box);
    }
    new Binding(group, [this] { FollowNotices(); });
    return group;
  }

  void FollowNotices() {
    const std::array<bool, kNoticeBoxes> now = NoticeBoxes();
    for (unsigned i = 0; i < kNoticeBoxes; ++i) {
      if (!seen_ || now[i] != (*seen_)[i]) chkNotify_[i]->setChecked(now[i]);
    }
    seen_ = now;
  }

  std::array<bool, kNoticeBoxes> Notices() const {
    std::array<bool, kNoticeBoxes> boxes{};
    for (unsigned i = 0; i < kNoticeBoxes; ++i) boxes[i] = chkNotify_[i]->isChecked();
    return boxes;
  }

  static QGroupBox* MakeGenerators() {
    QGroupBox* group = new QGroupBox(tr("Random numbers"));
    QGridLayout* grid = new QGridLayout(group);
    QComboBox* generators = ChoiceList(
        "cmbRNG",
        {tr("RNG #1"), tr("RNG #2"), tr("RNG #3"), tr("RNG #4"), tr("RNG #5"),
         tr("RNG #6 (#1 and #5)"), tr("RNG #7 (#2 and #4)"), tr("RNG #8 (#1 single call)")},
        RecordField(Game.RngChoice).Then(CorrectRngChoice));
    generators->setToolTip(
        tr("Judge a betting system with #1, #2, #4, #7 or #8.\n"
           "#3 is too even, #5 is uneven by its formula, and #6 takes every other roll from #5."));
    AddRow(grid, tr("&Generator:"), generators);
    const RecordField<int> seed([] { return Game.UserSeed ? 1 : 0; },
                                [](int choice) { Game.UserSeed = choice == 1; });
    grid->addWidget(Option("optSeedRNG_0", tr(" Seed normally"), seed, 0), 2, 0, 1, 2);
    grid->addWidget(Option("optSeedRNG_1", tr(" User seed"), seed, 1), 3, 0, 1, 2);
    grid->addWidget(CheckBox("chkReSeed", tr(" Re-seed new games"), Game.ReSeed), 4, 0, 1, 2);
    auto* now = New<QPushButton>("cmdSeedRNG", tr("Seed RNG &now"));
    QObject::connect(now, &QPushButton::clicked, now, [] { ChangeByPlayer(SeedNow); });
    auto* last = New<QLabel>("lblLastSeed");
    BindText(last, [] { return QString::number(Game.LastSeed); });
    grid->addWidget(now, 1, 3);
    grid->addWidget(new QLabel(tr("Last entered seed:")), 2, 3);
    grid->addWidget(last, 3, 3);
    grid->setColumnMinimumWidth(2, 24);
    grid->setColumnStretch(4, 1);
    return group;
  }

  std::array<QCheckBox*, kNoticeBoxes> chkNotify_{};
  std::optional<std::array<bool, kNoticeBoxes>> seen_;
};

}  // namespace

ConfigPage* MakeMiscPage() { return new MiscPage; }
