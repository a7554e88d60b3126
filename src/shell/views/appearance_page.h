// The page of the settings with the look of the program.
#pragma once

#include <QWidget>

#include "shell/settings_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

// System, light or dark, each as a small picture of a window.
class AppearancePage final : public QWidget {
  Q_OBJECT

 public:
  explicit AppearancePage(SettingsPresenter& settings, QWidget* parent = nullptr);
};

}  // namespace sorvan::views
