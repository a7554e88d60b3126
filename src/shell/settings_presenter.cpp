#include "shell/settings_presenter.h"

#include "account/provider_settings.h"
#include "base/settings.h"
#include "shell/texts.h"

namespace sorvan::shell {

namespace {

const QString appearanceKey = QStringLiteral("appearance");
const QString playerVolumeKey = QStringLiteral("playerVolume");
const QString playerMutedKey = QStringLiteral("playerMuted");

QString rawValue(Appearance appearance) {
  switch (appearance) {
    case Appearance::light:
      return QStringLiteral("light");
    case Appearance::dark:
      return QStringLiteral("dark");
    case Appearance::system:
      break;
  }
  return QStringLiteral("system");
}

}  // namespace

SettingsPresenter::SettingsPresenter(account::ProviderSettings& keys, base::Settings& settings, QObject* parent)
    : QObject(parent), keys_(keys), settings_(settings) {
  connect(&keys_, &account::ProviderSettings::changed, this, &SettingsPresenter::keyPageChanged);
  connect(&settings_, &base::Settings::changed, this, [this](const QString& key) {
    if (key == appearanceKey) Q_EMIT appearanceChanged();
  });
}

KeyPageDisplay SettingsPresenter::keyPage() const {
  KeyPageDisplay page;
  page.title = texts::keyPage;
  page.explanation = account::ProviderSettings::explanation();
  page.status = keys_.statusLine();
  page.saved = keys_.saved();
  page.prompt = keys_.fieldPrompt();
  page.message = keys_.message();
  page.messageIsError = keys_.messageIsError();
  page.busy = keys_.busy();
  return page;
}

void SettingsPresenter::saveKey(const QString& text) { keys_.save(text); }
void SettingsPresenter::removeKey() { keys_.save({}); }

Appearance SettingsPresenter::appearance() const {
  const QString stored = settings_.get(appearanceKey, QString());
  if (stored == rawValue(Appearance::light)) return Appearance::light;
  return stored == rawValue(Appearance::dark) ? Appearance::dark : Appearance::system;
}

void SettingsPresenter::setAppearance(Appearance appearance) {
  if (appearance == this->appearance()) return;
  try {
    settings_.set(appearanceKey, rawValue(appearance));
  } catch (const std::exception& failure) {
    Q_EMIT failed(describe(failure));
  }
}

double SettingsPresenter::playerVolume() const {
  return std::clamp(settings_.get(playerVolumeKey, 1.0), 0.0, 1.0);
}

bool SettingsPresenter::playerMuted() const { return settings_.get(playerMutedKey, false); }

void SettingsPresenter::setPlayerVolume(double volume, bool muted) {
  if (volume == playerVolume() && muted == playerMuted()) return;
  try {
    settings_.set(playerVolumeKey, volume);
    settings_.set(playerMutedKey, muted);
  } catch (const std::exception& failure) {
    Q_EMIT failed(describe(failure));
  }
}

}  // namespace sorvan::shell
