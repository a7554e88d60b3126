// How a page of the settings is laid out.
#pragma once

#include <QString>

#include "shell/views/room.h"

class QVBoxLayout;
class QWidget;

namespace sorvan::views {

// Gives the page its column with its title at the top. The page owns it.
QVBoxLayout* settingsColumn(QWidget& page, const QString& title);

}  // namespace sorvan::views
