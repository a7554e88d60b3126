// Plays one clip or sound.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>
#include <QTimer>

#include "media/room.h"
#include "platform/sound_output.h"

namespace sorvan::platform {
struct ClipFrame;
class PictureFeed;
class SoundFeed;
}  // namespace sorvan::platform

namespace sorvan::media {

class SoundTimeline;

enum class PlayerState { empty, opening, ready, failed };

struct PlayerFacts {
  QSize size{0, 0};            ///< pixels of the picture as shown; 0 × 0 for a sound
  double seconds = 0;          ///< 0 when the file does not tell; then it is known once the end was reached
  double framesPerSecond = 0;  ///< 0 when unknown
  bool hasPicture = false;
  bool hasSound = false;
};

/// What a player stands on; the defaults are the machine's own.
struct PlayerPorts {
  /// Seconds of a clock that never goes back.
  std::function<double()> now;
  /// Called when there is sound to be heard for the first time.
  std::function<std::unique_ptr<platform::SoundOutput>()> makeOutput;
};

/// Picture and sound of one local file, in step: while sound is heard the picture follows it, otherwise a steady clock.
/// Decodes on other threads and never waits for them, so a slow or broken file costs the main thread nothing. Without a
/// sound device it plays silently. Main thread.
class Player final : public QObject {
  Q_OBJECT

 public:
  explicit Player(QObject* parent = nullptr);
  explicit Player(PlayerPorts ports, QObject* parent = nullptr);
  ~Player() override;

  /// Drops what was open; `stateChanged` tells when it is ready, with the first picture, or failed. Volume, mute,
  /// looping and frame size stay. Playing asked for meanwhile begins as soon as it can.
  void open(const QString& path);
  void close();
  const QString& path() const { return path_; }
  PlayerState state() const { return state_; }
  /// One sentence for the user when it failed.
  const QString& problem() const { return problem_; }
  const PlayerFacts& facts() const { return facts_; }
  /// The file ended long before the moment its header names.
  bool endsEarly() const { return endsEarly_; }

  void play();
  void pause();
  void togglePlaying() { wantsPlaying_ ? pause() : play(); }
  bool isPlaying() const { return wantsPlaying_; }

  /// Seconds from the start, of what is shown and heard now.
  double position() const;
  double duration() const { return facts_.seconds; }
  /// Kept inside the file. Playing goes on from there.
  void seek(double seconds);
  /// Pauses and shows a frame before or after this one.
  void stepFrames(int frames);

  bool isLooping() const { return looping_; }
  void setLooping(bool looping) { looping_ = looping; }
  bool isMuted() const { return muted_; }
  void setMuted(bool muted);
  double volume() const { return volume_; }
  /// 0 to 1.
  void setVolume(double volume);
  /// Frames are decoded no larger than this many device pixels; an empty size asks for all there is.
  void setFrameSize(QSize pixels);

  /// The picture of this moment; null before the first one and for sounds.
  const QImage& frame() const { return frame_; }
  double frameSeconds() const { return frameSeconds_; }

  /// Shows what is due now. Its own timer calls it; a test calls it after it moved the clock.
  void advance();
  /// Everything that is to be decoded for now was decoded.
  bool isReady() const;

 Q_SIGNALS:
  void stateChanged();
  void playingChanged();
  void positionChanged();
  void frameChanged();
  void volumeChanged();
  /// The end was reached, once for each time; a looping player goes on.
  void ended();

 private:
  enum class Run { halted, waiting, steady, sounding };
  struct Opened;

  void finishOpening(int opening, const Opened& opened);
  void becomeReady();
  void fail(const QString& problem);
  void halt();
  void wait();
  void begin();
  void startOutput();
  void goOnSilently();
  void goTo(double seconds);
  bool wantsSound() const;
  float loudness() const;
  bool showPlace();
  void showDue(double seconds);
  void show(platform::ClipFrame frame);
  bool reachedEnd(double seconds) const;
  void finish(double now);

  PlayerPorts ports_;
  QTimer ticks_;
  QString path_;
  PlayerState state_ = PlayerState::empty;
  QString problem_;
  PlayerFacts facts_;
  bool endsEarly_ = false;
  bool wantsPlaying_ = false;
  bool looping_ = false;
  bool muted_ = false;
  double volume_ = 1;
  QSize frameSize_;
  QImage frame_;
  double frameSeconds_ = 0;
  int opening_ = 0;  ///< counts openings: what an older one finds is dropped
  Run run_ = Run::halted;
  double from_ = 0;        ///< where this run began, in seconds of the file
  double startedAt_ = 0;   ///< when, on the clock
  bool stepping_ = false;  ///< the frame of the place that was gone to is not shown yet
  bool snaps_ = false;     ///< the place is where that frame begins
  std::unique_ptr<platform::SoundOutput> output_;
  std::shared_ptr<std::atomic<float>> gain_ = std::make_shared<std::atomic<float>>(1.0f);
  std::shared_ptr<SoundTimeline> timeline_;
  std::unique_ptr<platform::PictureFeed> pictures_;
  std::shared_ptr<platform::SoundFeed> sounds_;
};

}  // namespace sorvan::media
