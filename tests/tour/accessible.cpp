#include "tour/accessible.h"

#undef signals
#include <atspi/atspi.h>

namespace tour {
namespace {

QString taken(gchar* text) {
  const QString result = QString::fromUtf8(text);
  g_free(text);
  return result;
}

bool has(AtspiStateSet* states, AtspiStateType state) { return atspi_state_set_contains(states, state); }

QRect placeOf(AtspiAccessible* accessible) {
  AtspiComponent* component = atspi_accessible_get_component_iface(accessible);
  if (!component) return {};
  QRect place;
  if (AtspiRect* extents = atspi_component_get_extents(component, ATSPI_COORD_TYPE_SCREEN, nullptr)) {
    place = QRect(extents->x, extents->y, extents->width, extents->height);
    g_free(extents);
  }
  g_object_unref(component);
  return place;
}

QString textOf(AtspiAccessible* accessible) {
  AtspiText* text = atspi_accessible_get_text_iface(accessible);
  if (!text) return {};
  const QString result = taken(atspi_text_get_text(text, 0, -1, nullptr));
  g_object_unref(text);
  return result;
}

Control read(AtspiAccessible* accessible, AtspiStateSet* states) {
  Control control;
  control.role = taken(atspi_accessible_get_role_name(accessible, nullptr));
  control.name = taken(atspi_accessible_get_name(accessible, nullptr));
  control.text = textOf(accessible);
  control.place = placeOf(accessible);
  control.showing = has(states, ATSPI_STATE_SHOWING);
  control.enabled = has(states, ATSPI_STATE_ENABLED) || has(states, ATSPI_STATE_SENSITIVE);
  control.focused = has(states, ATSPI_STATE_FOCUSED);
  control.focusable = has(states, ATSPI_STATE_FOCUSABLE);
  if (AtspiAction* action = atspi_accessible_get_action_iface(accessible)) {
    control.actions = atspi_action_get_n_actions(action, nullptr);
    g_object_unref(action);
  }
  return control;
}

using Found = std::function<void(AtspiAccessible*, const Control&)>;

void walk(AtspiAccessible* accessible, const Found& found, int depth) {
  if (!accessible || depth > 40) return;
  AtspiStateSet* states = atspi_accessible_get_state_set(accessible);
  const bool showing = states && (depth < 2 || has(states, ATSPI_STATE_SHOWING));
  if (showing) {
    found(accessible, read(accessible, states));
    const gint children = atspi_accessible_get_child_count(accessible, nullptr);
    for (gint i = 0; i < children && i < 2000; ++i) {
      AtspiAccessible* child = atspi_accessible_get_child_at_index(accessible, i, nullptr);
      walk(child, found, depth + 1);
      if (child) g_object_unref(child);
    }
  }
  if (states) g_object_unref(states);
}

bool matches(const Control& control, const Wanted& wanted) {
  if (!wanted.role.isEmpty() && control.role != wanted.role) return false;
  return wanted.prefix ? control.name.startsWith(wanted.name) : control.name == wanted.name;
}

}  // namespace

Accessibility::Accessibility() { atspi_init(); }
Accessibility::~Accessibility() = default;

namespace {

void walkProgram(const Found& found) {
  AtspiAccessible* desktop = atspi_get_desktop(0);
  if (!desktop) return;
  atspi_accessible_clear_cache(desktop);
  const gint programs = atspi_accessible_get_child_count(desktop, nullptr);
  for (gint i = 0; i < programs; ++i) {
    AtspiAccessible* program = atspi_accessible_get_child_at_index(desktop, i, nullptr);
    if (!program) continue;
    atspi_accessible_clear_cache(program);
    if (taken(atspi_accessible_get_name(program, nullptr)).contains(u"orvan"_qs)) walk(program, found, 0);
    g_object_unref(program);
  }
  g_object_unref(desktop);
}

bool press(AtspiAccessible* accessible) {
  AtspiAction* action = atspi_accessible_get_action_iface(accessible);
  if (!action) return false;
  const bool done = atspi_action_get_n_actions(action, nullptr) > 0 && atspi_action_do_action(action, 0, nullptr);
  g_object_unref(action);
  return done;
}

}  // namespace

std::vector<Control> Accessibility::controls() const {
  std::vector<Control> found;
  walkProgram([&found](AtspiAccessible*, const Control& control) { found.push_back(control); });
  return found;
}

bool Accessibility::visit(const Wanted& wanted, const std::function<bool(AtspiAccessible*)>& deed) const {
  bool done = false;
  walkProgram([&](AtspiAccessible* accessible, const Control& control) {
    if (!done && matches(control, wanted)) done = deed(accessible);
  });
  return done;
}

bool Accessibility::act(const Wanted& wanted) const { return visit(wanted, press); }

bool Accessibility::write(const Wanted& wanted, const QString& text) const {
  return visit(wanted, [&text](AtspiAccessible* accessible) {
    AtspiEditableText* field = atspi_accessible_get_editable_text_iface(accessible);
    if (!field) return false;
    const bool done = atspi_editable_text_set_text_contents(field, text.toUtf8().constData(), nullptr);
    g_object_unref(field);
    return done;
  });
}

std::optional<Control> Accessibility::find(const Wanted& wanted) const {
  for (const Control& control : controls())
    if (matches(control, wanted) && control.place.isValid()) return control;
  return std::nullopt;
}

int Accessibility::count(const Wanted& wanted) const {
  int number = 0;
  for (const Control& control : controls()) number += matches(control, wanted) ? 1 : 0;
  return number;
}

QString describe(const std::vector<Control>& controls) {
  QString text;
  for (const Control& control : controls)
    text += control.role + u" “"_qs + control.name + u"” "_qs +
            (control.text.isEmpty() ? QString() : u"holds “"_qs + control.text.left(60) + u"” "_qs) +
            QString::number(control.place.x()) + u',' + QString::number(control.place.y()) + u' ' +
            QString::number(control.place.width()) + u'x' + QString::number(control.place.height()) + u'\n';
  return text;
}

}  // namespace tour
