// What the component sheets are put together from.
#pragma once

#include <QLayout>
#include <QWidget>

#include <memory>
#include <vector>

namespace sorvan::views {

// A small title above a group.
QWidget* caption(const QString& text);
// Moved to the right by so many pixels.
QWidget* indented(QWidget* part, int pixels);
QWidget* row(const std::vector<QWidget*>& parts);
QWidget* column(const std::vector<QWidget*>& parts);

struct Section {
  QString title;
  QWidget* content;
};
// A whole sheet: its sections under one another.
std::unique_ptr<QWidget> sheetOf(const QString& name, const QString& title, const std::vector<Section>& sections);
// Keeps a popup or a dialog at its corner, as large as it wishes to be, so that it can be looked at on a sheet.
QWidget* pinned(QWidget* popup);

// A sheet with its title and the look that is on; `name` is what its picture is called.
std::unique_ptr<QWidget> emptySheet(const QString& name, const QString& title);
// Puts the content under the title and gives the sheet its size.
void fillSheet(QWidget& sheet, QLayout* content);

}  // namespace sorvan::views
