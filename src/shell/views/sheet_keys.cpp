#include "shell/views/sheet_keys.h"

#include <QKeyEvent>
#include <QKeySequence>

namespace sorvan::views {

namespace {

bool isDigit(int key) { return key >= Qt::Key_0 && key <= Qt::Key_9; }

int combined(const QKeyEvent& event) {
  const Qt::KeyboardModifiers pressed = event.modifiers() & ~Qt::KeypadModifier;
  return static_cast<int>(pressed.toInt()) | event.key();
}

}  // namespace

std::optional<ActionId> itemActionFor(const QKeyEvent& event) {
  for (const ActionRow& row : actionTable()) {
    if (row.scope != KeyScope::mediaView || row.shortcut.isEmpty()) continue;
    const QKeySequence keys(row.shortcut, QKeySequence::PortableText);
    int wanted = keys[0].toCombined();
    if (isDigit(wanted)) wanted |= static_cast<int>(Qt::ALT);
    if (wanted == combined(event)) return row.id;
  }
  return std::nullopt;
}

int placeFor(const QKeyEvent& event) {
  const Qt::KeyboardModifiers pressed = event.modifiers() & ~Qt::KeypadModifier;
  const bool plain = pressed == Qt::NoModifier;
  return plain && event.key() >= Qt::Key_1 && event.key() <= Qt::Key_9 ? event.key() - Qt::Key_1 : -1;
}

}  // namespace sorvan::views
