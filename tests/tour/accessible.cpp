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

// Every question is a journey to the program and back, so no more is asked of a control than who it is until it is wanted.
struct Met {
  AtspiAccessible* accessible;
  AtspiStateSet* states;
  QString role;
  QString name;
};

Control read(const Met& met) {
  Control control;
  control.role = met.role;
  control.name = met.name;
  control.text = textOf(met.accessible);
  control.place = placeOf(met.accessible);
  control.showing = has(met.states, ATSPI_STATE_SHOWING);
  control.enabled = has(met.states, ATSPI_STATE_ENABLED) || has(met.states, ATSPI_STATE_SENSITIVE);
  control.focused = has(met.states, ATSPI_STATE_FOCUSED);
  control.focusable = has(met.states, ATSPI_STATE_FOCUSABLE);
  if (AtspiAction* action = atspi_accessible_get_action_iface(met.accessible)) {
    control.actions = atspi_action_get_n_actions(action, nullptr);
    g_object_unref(action);
  }
  return control;
}

// What is done at each control; false ends the walk.
using Visit = std::function<bool(const Met&)>;

bool walk(AtspiAccessible* accessible, const Visit& visit, int depth);

bool walkChildren(AtspiAccessible* accessible, const Visit& visit, int depth) {
  bool goesOn = true;
  const gint children = atspi_accessible_get_child_count(accessible, nullptr);
  for (gint i = 0; goesOn && i < children && i < 2000; ++i) {
    AtspiAccessible* child = atspi_accessible_get_child_at_index(accessible, i, nullptr);
    goesOn = walk(child, visit, depth);
    if (child) g_object_unref(child);
  }
  return goesOn;
}

bool walk(AtspiAccessible* accessible, const Visit& visit, int depth) {
  if (!accessible || depth > 40) return true;
  AtspiStateSet* states = atspi_accessible_get_state_set(accessible);
  const bool showing = states && (depth < 2 || has(states, ATSPI_STATE_SHOWING));
  bool goesOn = true;
  if (showing) {
    goesOn = visit({accessible, states, taken(atspi_accessible_get_role_name(accessible, nullptr)),
                    taken(atspi_accessible_get_name(accessible, nullptr))}) &&
             walkChildren(accessible, visit, depth + 1);
  }
  if (states) g_object_unref(states);
  return goesOn;
}

bool matches(const Met& met, const Wanted& wanted) {
  if (!wanted.role.isEmpty() && met.role != wanted.role) return false;
  return wanted.prefix ? met.name.startsWith(wanted.name) : met.name == wanted.name;
}

}  // namespace

Accessibility::Accessibility() { atspi_init(); }
Accessibility::~Accessibility() = default;

namespace {

void walkProgram(const Visit& visit) {
  AtspiAccessible* desktop = atspi_get_desktop(0);
  if (!desktop) return;
  atspi_accessible_clear_cache(desktop);
  const gint programs = atspi_accessible_get_child_count(desktop, nullptr);
  bool goesOn = true;
  for (gint i = 0; goesOn && i < programs; ++i) {
    AtspiAccessible* program = atspi_accessible_get_child_at_index(desktop, i, nullptr);
    if (!program) continue;
    atspi_accessible_clear_cache(program);
    if (taken(atspi_accessible_get_name(program, nullptr)).contains(u"orvan"_qs)) goesOn = walk(program, visit, 0);
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
  walkProgram([&found](const Met& met) {
    found.push_back(read(met));
    return true;
  });
  return found;
}

bool Accessibility::visit(const Wanted& wanted, const std::function<bool(AtspiAccessible*)>& deed) const {
  bool done = false;
  walkProgram([&](const Met& met) {
    if (matches(met, wanted)) done = deed(met.accessible);
    return !done;
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
  std::optional<Control> found;
  walkProgram([&](const Met& met) {
    if (!matches(met, wanted)) return true;
    Control control = read(met);
    if (control.place.isValid()) found = std::move(control);
    return !found;
  });
  return found;
}

int Accessibility::count(const Wanted& wanted) const {
  int number = 0;
  walkProgram([&](const Met& met) {
    number += matches(met, wanted) ? 1 : 0;
    return true;
  });
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
