// A sound device that takes samples and lets them be heard when a test says so.
#pragma once

#include <vector>

#include "platform/sound_output.h"

namespace sorvan::test {

class ScriptedSound final : public platform::SoundOutput {
 public:
  struct Tape {
    State state = State::ready;
    bool running = false;
    int starts = 0;
    std::vector<float> samples;  // of the left channel, since the last start
    double heard = 0;            // seconds since the last start
    Fill fill;
    // Takes so many samples of each channel.
    void take(int count) {
      std::vector<float> piece(size_t(count) * channels, 0.0f);
      fill(piece, qint64(samples.size()));
      for (int index = 0; index < count; ++index) samples.push_back(piece[size_t(index) * channels]);
    }
  };

  explicit ScriptedSound(std::shared_ptr<Tape> tape) : tape_(std::move(tape)) {}
  State state() const override { return tape_->state; }
  void start(Fill fill) override {
    tape_->fill = std::move(fill);
    tape_->running = true;
    tape_->samples.clear();
    tape_->heard = 0;
    ++tape_->starts;
  }
  void stop() override { tape_->running = false; }
  std::optional<double> heardSeconds() const override {
    return tape_->heard > 0 ? std::optional(tape_->heard) : std::nullopt;
  }

 private:
  std::shared_ptr<Tape> tape_;
};

}  // namespace sorvan::test
