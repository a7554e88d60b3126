// Buttons of every kind, in every state.
#include "shell/views/composer_head.h"
#include "shell/views/controls.h"
#include "views/component_sheets.h"
#include "views/component_states.h"
#include "views/sheet_parts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

Component button(const QString& name, const QString& text, ButtonVariant variant) {
  return {name, [text, variant] { return new Button(text, variant); }};
}

QWidget* variants() {
  return stateGrid({button(u"Primary"_s, u"Generate"_s, ButtonVariant::primary),
                    button(u"Secondary"_s, u"Export…"_s, ButtonVariant::secondary),
                    button(u"Quiet"_s, u"Improve"_s, ButtonVariant::quiet),
                    button(u"Destructive"_s, u"Delete"_s, ButtonVariant::destructive),
                    button(u"Link"_s, u"Open Health"_s, ButtonVariant::link)},
                   buttonStates());
}

Button* sized(const QString& text, ControlSize size, ButtonVariant variant = ButtonVariant::secondary) {
  auto* made = new Button(text, variant);
  made->setControlSize(size);
  return made;
}

QWidget* sizes() {
  auto* withIcon = sized(u"Move to Project"_s, ControlSize::regular);
  withIcon->setIconName(u"folder"_s);
  auto* opens = sized(u"Status"_s, ControlSize::regular, ButtonVariant::quiet);
  opens->setTrailingIconName(u"chevron-down"_s);
  auto* submits = sized(u"Generate"_s, ControlSize::large, ButtonVariant::primary);
  submits->setTrailingIconName(u"corner-down-left"_s);
  return indented(row({sized(u"Compact"_s, ControlSize::compact), sized(u"Regular"_s, ControlSize::regular),
                       sized(u"Large"_s, ControlSize::large), withIcon, opens, submits}),
                  5);
}

Component chip(const QString& name, ChipTone tone, const QString& text, const QString& value = {}) {
  return {name, [=] {
            auto* made = new Chip(tone == ChipTone::set ? u"box"_s : QString());
            made->setLabel(text, value);
            made->setTone(tone);
            made->setClearable(tone == ChipTone::active);
            return made;
          }};
}

QWidget* chips() {
  return stateGrid({chip(u"Set"_s, ChipTone::set, u"Nano Banana 2"_s), chip(u"Quiet"_s, ChipTone::quiet, u"Model"_s),
                    chip(u"Active"_s, ChipTone::active, u"Approved"_s),
                    chip(u"Attention"_s, ChipTone::attention, u"4:5"_s),
                    chip(u"With a value"_s, ChipTone::set, u"2"_s, u"per model"_s),
                    {u"Icon alone"_s,
                     [] {
                       auto* made = new Chip(u"dices"_s);
                       made->setLabel(u"Seed"_s);
                       made->setWordsShown(false);
                       return made;
                     }}},
                   buttonStates());
}

Component iconButton(const QString& name, const QString& icon, bool on, ControlSize size = ControlSize::regular) {
  return {name, [=] {
            auto* made = new IconButton(icon, name);
            made->setControlSize(size);
            made->setCheckable(on);
            made->setChecked(on);
            return made;
          }};
}

QWidget* iconButtons() {
  return stateGrid({iconButton(u"Off"_s, u"list-filter"_s, false), iconButton(u"On"_s, u"panel-right"_s, true),
                    iconButton(u"Compact"_s, u"x"_s, false, ControlSize::compact)},
                   buttonStates());
}

Component tile(const QString& name, const QString& icon, bool on) {
  return {name, [=] {
            auto* made = new TileButton(icon, on ? u"Animate"_s : u"Edit"_s);
            made->setCheckable(on);
            made->setChecked(on);
            return made;
          }};
}

QWidget* tiles() {
  return stateGrid({tile(u"Tile"_s, u"pencil"_s, false), tile(u"Tile, on"_s, u"video"_s, true)}, buttonStates());
}

QWidget* headChoice() {
  const Component choice{u"Choice in a head"_s, [] {
                           auto* made = new HeadChoice(u"folder"_s, u"Save to"_s);
                           made->setValue(u"Coffee Launch"_s);
                           return made;
                         }};
  return stateFlow(choice, {normalState(), hoverState(), pressedState(), focusState()}, 4);
}

}  // namespace

std::unique_ptr<QWidget> buttonsSheet() {
  return sheetOf(u"buttons"_s, u"Buttons"_s,
                 {{u"Buttons"_s, variants()},
                  {u"Sizes and icons"_s, sizes()},
                  {u"Chips"_s, chips()},
                  {u"Icon buttons"_s, iconButtons()},
                  {u"Action tiles"_s, tiles()},
                  {u"Choice in a head"_s, headChoice()}});
}

}  // namespace sorvan::views
