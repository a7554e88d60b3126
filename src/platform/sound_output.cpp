#include "platform/sound_output.h"

#include <atomic>
#include <chrono>
#include <mutex>

#include <QAudioDevice>
#include <QAudioSink>
#include <QBasicTimer>
#include <QCoreApplication>
#include <QIODevice>
#include <QMediaDevices>
#include <QThread>

namespace sorvan::platform {
namespace {

constexpr int kBytesPerSample = int(sizeof(float)) * SoundOutput::channels;  // of all channels
constexpr int kBufferMilliseconds = 80;

double steadySeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// The one thread on which devices are looked for and fed. It ends with the application.
QThread& soundThread() {
  static QThread* const thread = [] {
    auto* made = new QThread;
    made->setObjectName(QStringLiteral("sound"));
    made->start(QThread::HighPriority);
    qAddPostRoutine([] {
      soundThread().quit();
      soundThread().wait(2000);
    });
    return made;
  }();
  return *thread;
}

// What the owner's thread and the sound thread share.
struct SinkState {
  std::mutex mutex;
  SoundOutput::Fill fill;  // null while nothing is played
  int run = 0;             // counts starts
  qint64 asked = 0;        // samples of each channel since the start
  double heard = 0;        // seconds, as measured last
  double heardAt = 0;      // when that was
  std::atomic<SoundOutput::State> state = SoundOutput::State::opening;
};

// What the sink pulls from.
class SampleSource final : public QIODevice {
 public:
  SampleSource(std::shared_ptr<SinkState> shared, QObject* parent) : QIODevice(parent), shared_(std::move(shared)) {
    open(ReadOnly);
  }
  bool isSequential() const override { return true; }
  qint64 bytesAvailable() const override { return 1 << 20; }

 protected:
  qint64 readData(char* data, qint64 bytes) override {
    const qint64 whole = bytes / kBytesPerSample;
    std::span<float> samples(reinterpret_cast<float*>(data), size_t(whole) * SoundOutput::channels);
    std::fill(samples.begin(), samples.end(), 0.0f);
    const std::lock_guard lock(shared_->mutex);
    if (shared_->fill) shared_->fill(samples, shared_->asked);
    shared_->asked += whole;
    return whole * kBytesPerSample;
  }
  qint64 writeData(const char*, qint64) override { return -1; }

 private:
  std::shared_ptr<SinkState> shared_;
};

// Lives on the sound thread.
class Sink final : public QObject {
 public:
  explicit Sink(std::shared_ptr<SinkState> shared) : shared_(std::move(shared)), source_(shared_, this) {}

  void look() {
    format_.setSampleRate(SoundOutput::samplesPerSecond);
    format_.setChannelCount(SoundOutput::channels);
    format_.setSampleFormat(QAudioFormat::Float);
    device_ = QMediaDevices::defaultAudioOutput();
    shared_->state = device_.isNull() ? SoundOutput::State::absent : SoundOutput::State::ready;
  }

  void begin(int run) {
    if (shared_->state != SoundOutput::State::ready || !isCurrent(run)) return;
    sink_ = std::make_unique<QAudioSink>(device_, format_);
    sink_->setBufferSize(qsizetype(kBytesPerSample) * SoundOutput::samplesPerSecond * kBufferMilliseconds / 1000);
    sink_->start(&source_);
    if (sink_->error() != QAudio::NoError) return lose();
    measuring_.start(10, Qt::PreciseTimer, this);
  }

  void end() {
    measuring_.stop();
    if (sink_) sink_->stop();
    sink_.reset();
  }

 protected:
  void timerEvent(QTimerEvent*) override {
    if (!sink_) return;
    if (sink_->error() != QAudio::NoError && sink_->error() != QAudio::UnderrunError) return lose();
    const double waiting =
        double(std::max<qsizetype>(0, sink_->bufferSize() - sink_->bytesFree())) / kBytesPerSample;
    const std::lock_guard lock(shared_->mutex);
    shared_->heard = std::max(0.0, (double(shared_->asked) - waiting) / SoundOutput::samplesPerSecond);
    shared_->heardAt = steadySeconds();
  }

 private:
  bool isCurrent(int run) {
    const std::lock_guard lock(shared_->mutex);
    return shared_->run == run && shared_->fill;
  }
  void lose() {
    shared_->state = SoundOutput::State::absent;
    end();
  }

  std::shared_ptr<SinkState> shared_;
  SampleSource source_;
  QAudioFormat format_;
  QAudioDevice device_;
  std::unique_ptr<QAudioSink> sink_;
  QBasicTimer measuring_;
};

class DeviceSoundOutput final : public SoundOutput {
 public:
  DeviceSoundOutput() : sink_(new Sink(shared_)) {
    sink_->moveToThread(&soundThread());
    post([sink = sink_] { sink->look(); });
  }
  ~DeviceSoundOutput() override {
    stop();
    sink_->deleteLater();
  }

  State state() const override { return shared_->state; }

  void start(Fill fill) override {
    int run = 0;
    {
      const std::lock_guard lock(shared_->mutex);
      shared_->fill = std::move(fill);
      run = ++shared_->run;
      shared_->asked = 0;
      shared_->heard = 0;
      shared_->heardAt = 0;
    }
    post([sink = sink_, run] {
      sink->end();
      sink->begin(run);
    });
  }

  void stop() override {
    {
      const std::lock_guard lock(shared_->mutex);
      shared_->fill = nullptr;
      ++shared_->run;
    }
    post([sink = sink_] { sink->end(); });
  }

  // Between two measurements the device is taken to go on steadily, but never past what it was given.
  std::optional<double> heardSeconds() const override {
    const std::lock_guard lock(shared_->mutex);
    if (shared_->heard <= 0) return std::nullopt;
    const double now = shared_->heard + std::max(0.0, steadySeconds() - shared_->heardAt);
    return std::min(now, double(shared_->asked) / samplesPerSecond);
  }

 private:
  void post(std::function<void()> work) { QMetaObject::invokeMethod(sink_, std::move(work), Qt::QueuedConnection); }

  std::shared_ptr<SinkState> shared_ = std::make_shared<SinkState>();
  Sink* sink_;
};

}  // namespace

std::unique_ptr<SoundOutput> openSoundDevice() { return std::make_unique<DeviceSoundOutput>(); }

}  // namespace sorvan::platform
