// The settings of the composer laid open: shape, count, seed, and whatever the chosen models have in common beyond.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "shell/composer_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

// Groups in a row, which goes on below where the width ends. Built anew only when other things can be chosen, so that
// the keyboard stays where it is.
class ComposerSettings final : public QWidget {
  Q_OBJECT

 public:
  // The presenter outlives it.
  ComposerSettings(ComposerPresenter& composer, QWidget* parent = nullptr);

  void refresh(const ComposerDisplay& display);
  int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void rebuild(const ComposerDisplay& display);
  void addGroup(const QString& title, QWidget* control, const QString& note = {});
  void addRatios(const ComposerDisplay& display);
  void addCount(const ComposerDisplay& display);
  void addSetting(const SettingChoices& setting);
  void addMenu(const SettingChoices& setting);
  void addSeed(const ComposerDisplay& display);
  int arrange(int width, bool place) const;

  ComposerPresenter& composer_;
  QStringList offered_;  // what can be chosen, as it was built
  std::vector<QWidget*> groups_;
  std::vector<std::function<void(const ComposerDisplay&)>> updates_;
};

}  // namespace sorvan::views
