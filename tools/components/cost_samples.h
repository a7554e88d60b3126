// The page of costs with sample data.
#pragma once

#include <QString>
#include <QWidget>

#include <functional>

namespace sorvan::views {

// Calls `save` with each window and its name.
void saveCosts(const std::function<void(QWidget&, const QString&)>& save);

}  // namespace sorvan::views
