#include "account/provider_settings.h"

#include "account/texts.h"
#include "base/sorvan_error.h"

namespace sorvan::account {

ProviderSettings::ProviderSettings(std::shared_ptr<KeyCache> cache, QObject* parent)
    : QObject(parent), keys(std::move(cache)), currentTab(QStringLiteral("account")) {}

void ProviderSettings::load() {
  begin();
  tasks.spawn(loaded(this, keys, tasks.token()));
}

void ProviderSettings::save(const QString& text) {
  begin();
  // What the user asked to be saved is saved, also when the page closes meanwhile.
  tasks.spawn(stored(this, keys, text));
}

Task<> ProviderSettings::loaded(QPointer<ProviderSettings> self, std::shared_ptr<KeyCache> cache,
                                std::stop_token stop) {
  co_await cache->refresh(ProviderID::fal, stop);
  if (!self) co_return;
  self->takeKey();
  self->end();
}

Task<> ProviderSettings::stored(QPointer<ProviderSettings> self, std::shared_ptr<KeyCache> cache, QString text) {
  QString failure;
  try {
    co_await cache->save(text, ProviderID::fal, {});
  } catch (const SorvanError& error) {
    failure = error.message();
  }
  if (!self) co_return;
  if (failure.isEmpty()) {
    self->say(text.trimmed().isEmpty() ? texts::removedMessage() : texts::savedMessage(), false);
    self->takeKey();
  } else {
    self->say(failure, true);
  }
  self->end();
}

void ProviderSettings::begin() {
  ++running;
  Q_EMIT changed();
}

void ProviderSettings::end() {
  --running;
  Q_EMIT changed();
}

/// A store that cannot be read says so, also after a save that seemed to work.
void ProviderSettings::takeKey() {
  try {
    keySaved = keys->key(ProviderID::fal).has_value();
  } catch (const SorvanError& error) {
    keySaved = false;
    say(error.message(), true);
  }
}

void ProviderSettings::say(const QString& text, bool failed) {
  lastMessage = text;
  lastFailed = failed;
}

void ProviderSettings::setTab(const QString& tab) {
  if (tab == currentTab) return;
  currentTab = tab;
  Q_EMIT changed();
}

QString ProviderSettings::statusLine() const { return keySaved ? texts::savedStatus() : texts::noKeyStatus(); }
QString ProviderSettings::fieldPrompt() const { return keySaved ? texts::replacementPrompt() : texts::keyPrompt(); }
QString ProviderSettings::explanation() { return texts::explanation(); }

}  // namespace sorvan::account
