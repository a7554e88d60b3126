// The pages of the settings with an account that is made up.
#pragma once

#include <QString>
#include <QWidget>

#include <functional>

namespace sorvan::views {

// Saves the settings as they are for somebody who is signed out, waits for a link, and is signed in.
void saveAccount(const std::function<void(QWidget&, const QString&)>& save);

}  // namespace sorvan::views
