#include "media/sound_timeline.h"

#include <cmath>

namespace sorvan::media {

void SoundTimeline::runFrom(double output, double media) {
  constexpr double rounding = 1e-4;
  const std::lock_guard lock(mutex_);
  if (!stretches_.empty() && stretches_.back().runs && std::abs(stretches_.back().at(output) - media) < rounding)
    return;
  stretches_.push_back({output, media, true});
}

void SoundTimeline::holdFrom(double output) {
  const std::lock_guard lock(mutex_);
  if (!stretches_.empty() && !stretches_.back().runs) return;
  stretches_.push_back({output, stretches_.empty() ? from_ : stretches_.back().at(output), false});
}

void SoundTimeline::noteEnd(double media) {
  const std::lock_guard lock(mutex_);
  if (!fileEnd_) fileEnd_ = media;
}

double SoundTimeline::mediaAt(double output) {
  const std::lock_guard lock(mutex_);
  while (stretches_.size() > 1 && stretches_[1].output <= output) stretches_.pop_front();
  return stretches_.empty() ? from_ : stretches_.front().at(output);
}

std::optional<double> SoundTimeline::end() const {
  const std::lock_guard lock(mutex_);
  return fileEnd_;
}

}  // namespace sorvan::media
