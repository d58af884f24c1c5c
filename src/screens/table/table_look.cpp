#include "screens/table/table_look.h"

#include "core/game_state.h"
#include "screens/frame/chrome.h"
#include "screens/frame/sound_player.h"
#include "screens/table/table_settings.h"

namespace {

Chrome ChosenChrome() {
  switch (TheTable.Chrome) {
    case ChromeOfSystem: return Chrome::OfSystem;
    case ChromeHighContrast: return Chrome::HighContrast;
    default: return Chrome::OfTable;
  }
}

}  // namespace

void UseTableLook() {
  constexpr double kLoudest = 100;
  std::array<double, 4> volumes;
  for (std::size_t kind = 0; kind < volumes.size(); ++kind)
    volumes[kind] = TheTable.Volume[kind] / kLoudest;
  SetSoundVolumes(volumes);
  UseChrome(ChosenChrome(), QColor::fromRgb(Game.TableColor[ColorFelt]),
            QColor::fromRgb(Game.TableColor[ColorLines]));
}
