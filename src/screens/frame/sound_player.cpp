#include "screens/frame/sound_player.h"

#include <QAudioDevice>
#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QHash>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QTimer>
#include <QUrl>

namespace {

// No call or sound of the game is longer; a player that hangs must not hold the game.
constexpr int kLongestSound = 8000;

QHash<QString, QSoundEffect*> LoadedSounds;
QSoundEffect* Playing = nullptr;
std::string PlayingPath;
double Volume = 1;
std::array<double, 4> KindVolumes = {1, 1, 1, 1};

QSoundEffect* SoundOf(const QString& path) {
  QSoundEffect*& sound = LoadedSounds[path];
  if (!sound) {
    sound = new QSoundEffect(QCoreApplication::instance());
    sound->setSource(QUrl::fromLocalFile(path));
  }
  return sound;
}

void WaitForEnd(QSoundEffect* sound) {
  QEventLoop loop;
  QObject::connect(sound, &QSoundEffect::playingChanged, &loop, [&] {
    if (!sound->isPlaying()) loop.quit();
  });
  QObject::connect(sound, &QSoundEffect::statusChanged, &loop, [&] {
    if (sound->status() == QSoundEffect::Error) loop.quit();
  });
  QTimer::singleShot(kLongestSound, &loop, &QEventLoop::quit);
  if (sound->isPlaying() && sound->status() != QSoundEffect::Error) loop.exec();
}

/// What plays takes the volume in force.
void FollowVolume() {
  if (Playing) Playing->setVolume(static_cast<float>(VolumeOfSound(PlayingPath)));
}

}  // namespace

// Sound systems that aren't there complain at length, which nobody needs to read.
bool SoundDeviceFound() {
  static const bool found = [] {
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const bool any = !QMediaDevices::defaultAudioOutput().isNull();
    qInstallMessageHandler(before);
    return any;
  }();
  return found;
}

void PlayWave(const std::string& path, SoundMode mode) {
  StopWave();
  const QString file = QString::fromStdString(path);
  if (file.isEmpty() || !QFileInfo::exists(file) || !SoundDeviceFound()) return;
  Playing = SoundOf(file);
  Playing->setLoopCount(mode == SoundMode::Loop ? QSoundEffect::Infinite : 1);
  PlayingPath = path;
  Playing->setVolume(static_cast<float>(VolumeOfSound(path)));
  Playing->play();
  if (mode == SoundMode::PlayToEnd) WaitForEnd(Playing);
}

void StopWave() {
  if (Playing) Playing->stop();
  Playing = nullptr;
}

double SoundVolume() { return Volume; }

void SetSoundVolume(double volume) {
  Volume = volume;
  FollowVolume();
}

SoundKind KindOfSound(const std::string& path) {
  const QFileInfo file(QString::fromStdString(path));
  static const std::pair<const char*, SoundKind> kKinds[] = {{"stk", SoundKind::Stick},
                                                             {"dce", SoundKind::Dice},
                                                             {"chp", SoundKind::Chips},
                                                             {"win", SoundKind::Win}};
  for (const auto& [suffix, kind] : kKinds)
    if (file.suffix().compare(QLatin1String(suffix), Qt::CaseInsensitive) == 0) return kind;
  const bool rain = file.fileName().compare(QLatin1String("Chips.wav"), Qt::CaseInsensitive) == 0;
  return rain ? SoundKind::Win : SoundKind::Other;
}

void SetSoundVolumes(const std::array<double, 4>& volumes) {
  KindVolumes = volumes;
  FollowVolume();
}

double VolumeOfSound(const std::string& path) {
  const auto kind = static_cast<std::size_t>(KindOfSound(path));
  return kind < KindVolumes.size() ? Volume * KindVolumes[kind] : Volume;
}
