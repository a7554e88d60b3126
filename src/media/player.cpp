#include "media/player.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>

#include <chrono>

#include "base/sorvan_error.h"
#include "base/task.h"
#include "media/sound_timeline.h"
#include "media/texts.h"
#include "platform/clips.h"
#include "platform/playback_feeds.h"
#include "platform/sounds.h"

namespace sorvan::media {
namespace {

constexpr int kTickMilliseconds = 8;
constexpr double kSoundStep = 1.0 / 25;     // seconds; what a frame step means in a sound
constexpr double kLongestWait = 1.0;        // seconds for the sound device, before playing goes on without it
constexpr double kBeforeFrame = 1e-3;       // seconds; the frame shown that much earlier is the one before
constexpr double kMuchTooShort = 1.0;       // seconds

double steadySeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

PlayerFacts readFacts(const QString& path) {
  if (!QFileInfo::exists(path)) throw SorvanError(texts::originalMissing());
  const ClipFacts clip = probeClip(path);
  PlayerFacts facts{clip.size, clip.duration.value_or(0), clip.framesPerSecond, clip.hasPicture, clip.hasSound};
  if (!clip.hasPicture) facts.seconds = probeSound(path).duration.value_or(facts.seconds);
  return facts;
}

}  // namespace

struct Player::Opened {
  PlayerFacts facts;
  QString problem;
};

Player::Player(QObject* parent) : Player(PlayerPorts{}, parent) {}

Player::Player(PlayerPorts ports, QObject* parent) : QObject(parent), ports_(std::move(ports)) {
  if (!ports_.now) ports_.now = steadySeconds;
  if (!ports_.makeOutput) ports_.makeOutput = openSoundDevice;
  ticks_.setTimerType(Qt::PreciseTimer);
  ticks_.setInterval(kTickMilliseconds);
  connect(&ticks_, &QTimer::timeout, this, &Player::advance);
}

Player::~Player() {
  if (output_) output_->stop();
}

void Player::open(const QString& path) {
  close();
  path_ = path;
  state_ = PlayerState::opening;
  const QPointer<Player> self(this);
  runOnPool([path, self, opening = opening_] {
    Opened opened;
    try {
      opened.facts = readFacts(path);
    } catch (const std::exception& failure) {
      opened.problem = describe(failure);
    }
    if (!qApp) return;
    QMetaObject::invokeMethod(
        qApp, [self, opening, opened] { self ? self->finishOpening(opening, opened) : void(); }, Qt::QueuedConnection);
  });
  Q_EMIT stateChanged();
}

void Player::close() {
  ++opening_;
  const bool wasOpen = state_ != PlayerState::empty;
  halt();
  pictures_.reset();
  sounds_.reset();
  timeline_.reset();
  path_.clear();
  problem_.clear();
  facts_ = {};
  frame_ = {};
  frameSeconds_ = from_ = 0;
  endsEarly_ = stepping_ = snaps_ = false;
  state_ = PlayerState::empty;
  if (std::exchange(wantsPlaying_, false)) Q_EMIT playingChanged();
  if (wasOpen) Q_EMIT stateChanged();
}

void Player::finishOpening(int opening, const Opened& opened) {
  if (opening != opening_) return;
  if (!opened.problem.isEmpty()) return fail(opened.problem);
  facts_ = opened.facts;
  const auto arrived = [this] { QMetaObject::invokeMethod(this, &Player::advance, Qt::QueuedConnection); };
  if (facts_.hasPicture) pictures_ = std::make_unique<PictureFeed>(path_, frameSize_, arrived);
  if (facts_.hasSound) sounds_ = std::make_shared<SoundFeed>(path_, arrived);
  if (wantsSound() && !output_) output_ = ports_.makeOutput();
  stepping_ = facts_.hasPicture;
  if (!facts_.hasPicture) becomeReady();
}

void Player::becomeReady() {
  state_ = PlayerState::ready;
  Q_EMIT stateChanged();
  if (wantsPlaying_) wait();
}

void Player::fail(const QString& problem) {
  halt();
  pictures_.reset();
  sounds_.reset();
  problem_ = problem;
  state_ = PlayerState::failed;
  if (std::exchange(wantsPlaying_, false)) Q_EMIT playingChanged();
  Q_EMIT stateChanged();
}

bool Player::wantsSound() const { return sounds_ && !muted_; }

void Player::play() {
  if (wantsPlaying_ || state_ == PlayerState::empty || state_ == PlayerState::failed) return;
  wantsPlaying_ = true;
  if (state_ == PlayerState::ready) {
    if (facts_.seconds > 0 && from_ >= facts_.seconds - kBeforeFrame) goTo(0);
    wait();
  }
  Q_EMIT playingChanged();
}

void Player::pause() {
  if (!wantsPlaying_) return;
  from_ = position();
  halt();
  wantsPlaying_ = false;
  Q_EMIT playingChanged();
  Q_EMIT positionChanged();
}

// Stops the clock and the sound, and nothing else.
void Player::halt() {
  run_ = Run::halted;
  ticks_.stop();
  if (output_) output_->stop();
}

// Playing begins as soon as picture, samples and device are there.
void Player::wait() {
  if (wantsSound()) {
    sounds_->seek(from_);
    if (!output_) output_ = ports_.makeOutput();
  }
  run_ = Run::waiting;
  startedAt_ = ports_.now();
  ticks_.start();
}

void Player::begin() {
  if (stepping_) return;
  const bool sound = wantsSound() && output_->state() != SoundOutput::State::absent;
  const bool late = ports_.now() - startedAt_ > kLongestWait;
  if (sound && sounds_->state() == FeedState::filling) return;
  if (sound && output_->state() == SoundOutput::State::opening && !late) return;
  startedAt_ = ports_.now();
  run_ = Run::steady;
  if (sound && output_->state() == SoundOutput::State::ready) startOutput();
}

void Player::startOutput() {
  run_ = Run::sounding;
  timeline_ = std::make_shared<SoundTimeline>(from_);
  output_->start([feed = sounds_, timeline = timeline_, gain = gain_](std::span<float> samples, qint64 first) {
    const SoundFeed::Piece piece = feed->read(samples);
    const float loudness = *gain;
    for (float& sample : samples) sample *= loudness;
    const double output = double(first) / SoundOutput::samplesPerSecond;
    const double length = double(piece.samples) / SoundOutput::samplesPerSecond;
    if (piece.samples > 0 || piece.ended) timeline->runFrom(output, piece.seconds);
    if (piece.ended) return timeline->noteEnd(piece.seconds + length);
    if (piece.samples * SoundOutput::channels < samples.size()) timeline->holdFrom(output + length);
  });
}

double Player::position() const {
  double now = from_;
  if (run_ == Run::steady) now = from_ + std::max(0.0, ports_.now() - startedAt_);
  if (run_ == Run::sounding) {
    const std::optional<double> heard = output_->heardSeconds();
    if (heard) now = timeline_->mediaAt(*heard);
  }
  return facts_.seconds > 0 ? std::min(now, facts_.seconds) : now;
}

void Player::goTo(double seconds) {
  halt();
  from_ = std::max(0.0, facts_.seconds > 0 ? std::min(seconds, facts_.seconds) : seconds);
  snaps_ = false;
  if (!pictures_) return;
  pictures_->seek(from_);
  stepping_ = true;
}

void Player::seek(double seconds) {
  if (state_ != PlayerState::ready) return;
  goTo(seconds);
  if (wantsPlaying_) wait();
  Q_EMIT positionChanged();
}

void Player::stepFrames(int frames) {
  if (state_ != PlayerState::ready || frames == 0) return;
  pause();
  if (!pictures_) return seek(from_ + frames * kSoundStep);
  const double rate = facts_.framesPerSecond > 0 ? facts_.framesPerSecond : 25;
  if (stepping_) {
    goTo(from_ + frames / rate);  // the frame to count from is not shown yet
  } else if (frames == 1) {
    stepping_ = true;  // the next one waits already, or will
  } else if (frames > 0) {
    goTo(frameSeconds_ + frames / rate + kBeforeFrame);
  } else {
    goTo(frameSeconds_ - (-frames - 1) / rate - kBeforeFrame);
  }
  snaps_ = true;
  ticks_.start();
  advance();
}

void Player::setMuted(bool muted) {
  if (muted_ == muted) return;
  muted_ = muted;
  *gain_ = loudness();
  // Sound that was not played until now has to be fetched first.
  const bool deaf = output_ && output_->state() == SoundOutput::State::absent;
  if (!muted && run_ == Run::steady && sounds_ && !deaf) seek(position());
  Q_EMIT volumeChanged();
}

void Player::setVolume(double volume) {
  if (volume_ == volume) return;
  volume_ = std::clamp(volume, 0.0, 1.0);
  *gain_ = loudness();
  Q_EMIT volumeChanged();
}

// What people hear as half as loud is a good deal less than half of the samples' size.
float Player::loudness() const { return muted_ ? 0.0f : float(volume_ * volume_); }

void Player::setFrameSize(QSize pixels) {
  // A little more or less is no reason to decode again.
  const bool enough = !frameSize_.isEmpty() && !pixels.isEmpty() && pixels.width() <= frameSize_.width() &&
                      pixels.height() <= frameSize_.height() && pixels.width() * 2 > frameSize_.width();
  if (enough || pixels == frameSize_) return;
  frameSize_ = pixels;
  if (!pictures_) return;
  pictures_->resize(pixels, position());
  stepping_ = run_ == Run::halted || run_ == Run::waiting;
}

void Player::advance() {
  if (!pictures_ && !sounds_) return;
  if (pictures_ && pictures_->state() == FeedState::failed && frame_.isNull()) return fail(texts::noPictureDecodes());
  if (stepping_ && !showPlace()) return;
  if (run_ == Run::waiting) begin();
  if (run_ == Run::halted && !stepping_) ticks_.stop();
  if (run_ != Run::steady && run_ != Run::sounding) return;
  if (run_ == Run::sounding && output_->state() == SoundOutput::State::absent) goOnSilently();
  const double now = position();
  showDue(now);
  if (reachedEnd(now)) return finish(now);
  Q_EMIT positionChanged();
}

// The device went away: the picture goes on by the clock.
void Player::goOnSilently() {
  from_ = position();
  startedAt_ = ports_.now();
  run_ = Run::steady;
}

// Shows the frame of the place that was gone to. False while it is not decoded.
bool Player::showPlace() {
  const FeedState state = pictures_->state();
  if (state == FeedState::filling) return false;
  std::optional<ClipFrame> frame = pictures_->takeNext();
  if (!frame && state == FeedState::ready) return false;
  if (!frame && frame_.isNull()) return fail(texts::noPictureDecodes()), false;
  stepping_ = false;
  if (frame) show(std::move(*frame));
  if (std::exchange(snaps_, false)) {
    from_ = frameSeconds_;
    Q_EMIT positionChanged();
  }
  if (state_ == PlayerState::opening) becomeReady();
  return true;
}

void Player::showDue(double seconds) {
  if (!pictures_) return;
  if (std::optional<ClipFrame> frame = pictures_->takeDue(seconds)) show(std::move(*frame));
}

void Player::show(ClipFrame frame) {
  frame_ = std::move(frame.image);
  frameSeconds_ = frame.seconds;
  Q_EMIT frameChanged();
}

bool Player::reachedEnd(double seconds) const {
  if (facts_.seconds > 0 && seconds >= facts_.seconds) return true;
  const bool pictureOver = !pictures_ || (pictures_->state() >= FeedState::ended &&
                                          (!pictures_->reach() || *pictures_->reach() <= frameSeconds_));
  // Nothing comes any more, though the header names a later end, or none.
  const std::optional<double> soundEnd = run_ == Run::sounding ? timeline_->end() : std::optional<double>();
  if (run_ == Run::sounding && !soundEnd) return false;
  if (!pictures_) return soundEnd && seconds >= *soundEnd;
  const double frameLength = facts_.framesPerSecond > 0 ? 1 / facts_.framesPerSecond : 0;
  return pictureOver && seconds >= std::max(frameSeconds_ + frameLength, soundEnd.value_or(0));
}

void Player::finish(double now) {
  endsEarly_ = facts_.seconds > 0 && now < facts_.seconds - kMuchTooShort;
  if (facts_.seconds <= 0) facts_.seconds = now;
  if (looping_) {
    goTo(0);
    wait();
  } else {
    halt();
    const bool lastShown = !pictures_ || (pictures_->state() >= FeedState::ended && pictures_->reach() <= frameSeconds_);
    if (!lastShown) goTo(now), ticks_.start();
    from_ = now;
    wantsPlaying_ = false;
    Q_EMIT playingChanged();
  }
  Q_EMIT positionChanged();
  Q_EMIT ended();
}

bool Player::isReady() const {
  if (state_ == PlayerState::opening || run_ == Run::waiting || stepping_) return false;
  return (!pictures_ || pictures_->isFull()) && (!wantsSound() || sounds_->isFull());
}

}  // namespace sorvan::media
