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
double Volume = 1;

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
  Playing->setVolume(static_cast<float>(Volume));
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
  if (Playing) Playing->setVolume(static_cast<float>(volume));
}
