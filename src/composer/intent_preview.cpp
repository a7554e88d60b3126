#include "composer/intent_preview.h"

#include "catalogue/video_length.h"
#include "composer/local_intent_parser.h"

namespace sorvan::composer {

ComposerIntentPreview::ComposerIntentPreview(std::shared_ptr<const Clock> clock, QObject* parent)
    : QObject(parent), clock_(std::move(clock)) {}

ComposerIntentPreview::~ComposerIntentPreview() { pending_.request_stop(); }

void ComposerIntentPreview::schedule(const QString& text, ComposerMode mode) {
  pending_.request_stop();
  pending_ = std::stop_source();
  tasks_.spawn(readLater(text, mode, pending_.get_token()));
}

Task<> ComposerIntentPreview::readLater(QString text, ComposerMode mode, std::stop_token stop) {
  const QPointer<ComposerIntentPreview> self = this;
  const auto clock = clock_;
  co_await clock->sleep(delay, stop);
  throwIfStopped(stop);
  if (self) read(text, mode);
}

void ComposerIntentPreview::read(const QString& text, ComposerMode mode) {
  const bool isEmpty = text.trimmed().isEmpty();
  const std::optional<int> seconds = video_length::mentioned(text);
  SorvanIntent intent = isEmpty ? SorvanIntent(GenerationInstruction{}) : LocalIntentParser::parse(text, mode);
  const bool looksDifferent =
      isEmpty != isEmpty_ || seconds != mentionedSeconds_ || presentationKey(intent) != presentationKey(intent_);
  isEmpty_ = isEmpty;
  mentionedSeconds_ = seconds;
  if (presentationKey(intent) != presentationKey(intent_)) intent_ = std::move(intent);
  if (looksDifferent) Q_EMIT changed();
  Q_EMIT textRead();
}

}  // namespace sorvan::composer
