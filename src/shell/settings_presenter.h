#pragma once

#include "shell/room.h"

#include <QObject>
#include <QString>

namespace sorvan::account {
class ProviderSettings;
}
namespace sorvan::base {
class Settings;
}

namespace sorvan::shell {

enum class Appearance { system, light, dark };

// The page with the key: what it says now. The saved key is never shown.
struct KeyPageDisplay {
  QString title;  // “fal.ai Key”
  QString explanation;
  QString status;  // “fal.ai key saved in Keychain”, “No key saved”
  bool saved = false;
  QString prompt;   // placeholder of the field
  QString message;  // what the last Save or Remove came to; empty at first
  bool messageIsError = false;
  bool busy = false;  // the key store has not answered yet
};

// The settings window. Main thread.
class SettingsPresenter : public QObject {
  Q_OBJECT

 public:
  // Both outlive the presenter.
  SettingsPresenter(account::ProviderSettings& keys, base::Settings& settings, QObject* parent = nullptr);

  KeyPageDisplay keyPage() const;
  // An empty text removes the key. The view empties its field right away.
  void saveKey(const QString& text);
  void removeKey();

  Appearance appearance() const;
  // Applies at once and is remembered.
  void setAppearance(Appearance appearance);

  // How loud players are, 0 to 1.
  double playerVolume() const;
  bool playerMuted() const;
  // Remembered for the next start.
  void setPlayerVolume(double volume, bool muted);

 Q_SIGNALS:
  void keyPageChanged();
  void appearanceChanged();
  // The choice could not be written down; it holds until the program ends.
  void failed(const QString& text);

 private:
  account::ProviderSettings& keys_;
  base::Settings& settings_;
};

}  // namespace sorvan::shell
