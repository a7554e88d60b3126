// What one chooses with: segments, switches, ticks, sliders, ratios and lengths, in every state.
#include <QCheckBox>
#include <QRadioButton>
#include <QSlider>

#include "account/key_storage.h"
#include "account/provider_settings.h"
#include "base/settings.h"
#include "platform/key_store.h"
#include "shell/settings_presenter.h"
#include "shell/views/appearance_page.h"
#include "shell/views/choice_buttons.h"
#include "shell/views/choice_popovers.h"
#include "shell/views/popover.h"
#include "shell/views/segmented_control.h"
#include "views/component_sheets.h"
#include "views/component_states.h"
#include "views/samples.h"
#include "views/sheet_parts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

Component segments(const QString& name, ControlSize size, const std::vector<Segment>& all, int part) {
  return {name, [=] { return new SegmentedControl(name, all, size); },
          [part](QWidget& whole) -> QWidget* { return whole.findChildren<QAbstractButton*>().at(part); }};
}

const std::vector<Segment> kTypes{{u"All"_s, {}, {}}, {u"Images"_s, {}, {}}, {u"Video"_s, {}, {}}};
const std::vector<Segment> kCounts{{u"1"_s, {}, {}}, {u"2"_s, {}, {}}, {u"3"_s, {}, {}}, {u"4"_s, {}, {}}};
const std::vector<Segment> kKinds{{u"Image"_s, u"image"_s, {}}, {u"Audio"_s, u"audio-lines"_s, {}}};
const std::vector<Segment> kIcons{{{}, u"layout-grid"_s, u"Grid"_s}, {{}, u"git-fork"_s, u"Lineage"_s}};

QWidget* otherSegments() {
  return stateGrid({segments(u"Regular"_s, ControlSize::regular, kTypes, 1),
                    segments(u"Compact"_s, ControlSize::compact, kCounts, 1),
                    segments(u"With icons"_s, ControlSize::regular, kKinds, 1),
                    segments(u"Icons alone"_s, ControlSize::regular, kIcons, 1)},
                   {normalState(), hoverState(), pressedState(), disabledState()});
}

QWidget* chosenSegments() {
  return stateGrid({segments(u"Regular, chosen"_s, ControlSize::regular, kTypes, 0),
                    segments(u"Compact, chosen"_s, ControlSize::compact, kCounts, 0)},
                   {normalState(), focusState(), disabledState()});
}

template <class Kind>
Component toggle(const QString& name, const QString& text, bool on) {
  return {name, [=] {
            auto* made = new Kind(text);
            made->setChecked(on);
            return made;
          }};
}

QWidget* toggles() {
  return stateGrid({toggle<Switch>(u"Switch, off"_s, u"Sharing"_s, false),
                    toggle<Switch>(u"Switch, on"_s, u"Sharing"_s, true),
                    toggle<QCheckBox>(u"Check box, off"_s, u"Include"_s, false),
                    toggle<QCheckBox>(u"Check box, on"_s, u"Include"_s, true),
                    toggle<QRadioButton>(u"Radio, off"_s, u"Credits"_s, false),
                    toggle<QRadioButton>(u"Radio, on"_s, u"Credits"_s, true)},
                   buttonStates());
}

QWidget* sliders() {
  const Component slider{u"Slider"_s, [] {
                           auto* made = new QSlider(Qt::Horizontal);
                           made->setFixedWidth(96);
                           made->setRange(0, 100);
                           made->setValue(60);
                           return made;
                         }};
  const QPoint knob(56, 9);
  return stateGrid({slider}, {normalState(), hoverState(u"Hover"_s, knob), pressedState(u"Dragged"_s, knob), focusState(),
                              disabledState()});
}

Component ratio(const QString& name, bool offered, bool chosen) {
  return {name, [=] {
            return new RatioButton({u"169"_s, u"16:9"_s, u"Wide"_s, 16, 9, offered, chosen}, {58, 54});
          }};
}

QWidget* ratios() {
  const std::vector<State> states{normalState(), hoverState(), pressedState(), focusState()};
  return stateGrid({ratio(u"Offered"_s, true, false), ratio(u"Chosen"_s, true, true), ratio(u"Not offered"_s, false, false)},
                   states);
}

// The popover that opens over a chip, in a window of its own.
QWidget* lengths(ComposerPresenter& composer) {
  auto* window = new QWidget;
  window->setFixedSize(232, 186);
  auto* chip = new QWidget(window);
  chip->setGeometry(8, 184, 60, 2);
  openLengthPopover(composer, chip);
  return window;
}

QWidget* lengthRows(ComposerPresenter& composer) {
  const Component length{u"Length"_s, [&composer] { return lengths(composer); },
                         [](QWidget& whole) -> QWidget* { return whole.findChildren<ChoiceButton*>().at(1); }};
  return stateFlow(length, {normalState(), hoverState(), pressedState(), focusState()}, 4);
}

struct LookSample {
  std::shared_ptr<base::Settings> settings = std::make_shared<base::Settings>();
  account::ProviderSettings provider{std::make_shared<account::KeyCache>(
      std::make_shared<account::KeychainStore>(std::make_shared<platform::MemoryKeyBackend>()))};
  SettingsPresenter presenter{provider, *settings};
};

QWidget* looks(SettingsPresenter& settings) {
  const auto card = [](QWidget& whole) -> QWidget* { return whole.findChildren<QAbstractButton*>().at(1); };
  const Component look{u"Look"_s, [&settings] {
                         auto* page = new AppearancePage(settings);
                         page->setFixedWidth(500);
                         return page;
                       },
                       card};
  return stateFlow(look, {normalState(), hoverState(), pressedState(), focusState()}, 2);
}

}  // namespace

std::unique_ptr<QWidget> looksSheet() {
  const auto sample = std::make_shared<LookSample>();
  std::unique_ptr<QWidget> sheet = sheetOf(u"looks"_s, u"Looks"_s, {{u"Cards of the looks"_s, looks(sample->presenter)}});
  QObject::connect(sheet.get(), &QObject::destroyed, [sample] {});  // lives as long as the sheet
  return sheet;
}

std::unique_ptr<QWidget> choicesSheet() {
  auto* composer = new SampleComposer;
  std::unique_ptr<QWidget> sheet = sheetOf(u"choices"_s, u"Choices"_s,
                                           {{u"Segmented control, a segment that is not chosen"_s, otherSegments()},
                                            {u"Segmented control, the chosen segment"_s, chosenSegments()},
                                            {u"Switch, check box, radio"_s, toggles()},
                                            {u"Slider"_s, sliders()},
                                            {u"Ratios"_s, ratios()},
                                            {u"Lengths in their popover"_s, lengthRows(*composer)}});
  QObject::connect(sheet.get(), &QObject::destroyed, composer, &QObject::deleteLater);
  return sheet;
}

}  // namespace sorvan::views
