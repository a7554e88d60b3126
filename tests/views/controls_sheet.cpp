#include "views/component_sheets.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QMenu>
#include <QPainter>
#include <QRadioButton>
#include <QSlider>
#include <QVBoxLayout>

#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/fields.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "shell/views/prompt_edit.h"
#include "shell/views/segmented_control.h"
#include "views/component_states.h"
#include "views/sheet_parts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

QWidget* buttons() {
  const auto button = [](const QString& text, ButtonVariant variant) {
    return [text, variant] { return new Button(text, variant); };
  };
  return stateGrid({{u"Primary"_s, button(u"Generate"_s, ButtonVariant::primary)},
                    {u"Secondary"_s, button(u"Export…"_s, ButtonVariant::secondary)},
                    {u"Quiet"_s, button(u"Improve"_s, ButtonVariant::quiet)},
                    {u"Destructive"_s, button(u"Delete"_s, ButtonVariant::destructive)},
                    {u"Link"_s, button(u"Open Health"_s, ButtonVariant::link)}},
                   buttonStates());
}

QWidget* chips() {
  std::vector<QWidget*> all;
  const std::pair<QString, ChipTone> tones[] = {{u"Nano Banana 2"_s, ChipTone::set},
                                                {u"Model"_s, ChipTone::quiet},
                                                {u"Approved"_s, ChipTone::active},
                                                {u"4:5"_s, ChipTone::attention}};
  for (const auto& [text, tone] : tones) {
    for (const ControlState state : {ControlState::normal, ControlState::hover}) {
      auto* chip = new Chip(tone == ChipTone::set ? u"box"_s : QString());
      chip->setLabel(text, tone == ChipTone::set ? u"per model"_s : QString());
      chip->setTone(tone);
      all.push_back(inState(chip, state));
    }
  }
  auto* left = row({all[0], all[1], all[2], all[3]});
  auto* right = row({all[4], all[5], all[6], all[7]});
  return column({left, right});
}

QWidget* segments() {
  return row({new SegmentedControl(u"Type"_s, {{u"All"_s, {}, {}}, {u"Images"_s, {}, {}}, {u"Video"_s, {}, {}}}),
              new SegmentedControl(u"Count"_s, {{u"1"_s, {}, {}}, {u"2"_s, {}, {}}, {u"3"_s, {}, {}}, {u"4"_s, {}, {}}},
                                   ControlSize::compact)});
}

QWidget* fields() {
  auto* empty = new TextField(u"Name"_s, u"Name, e.g. Rose Bottle"_s);
  auto* filled = new TextField(u"Name"_s);
  filled->setText(u"Rose Bottle"_s);
  auto* invalid = new TextField(u"Name"_s);
  invalid->setText(u"9th Street"_s);
  invalid->setInvalid(true);
  auto* search = new TextField(u"Search"_s, u"Search media"_s);
  search->setIconName(u"search"_s);
  search->setKeyHint(u"Ctrl F"_s);
  search->setMinimumWidth(190);
  auto* disabled = new TextField(u"Name"_s);
  disabled->setText(u"Not now"_s);
  disabled->setEnabled(false);
  return column({row({empty, filled}), invalid,
                 new Paragraph(u"Give each reference a unique name starting with a letter (up to 48 letters or numbers)."_s,
                               Type::small, &Colors::dangerText),
                 row({search, disabled})});
}

QWidget* toggles() {
  auto* off = new Switch(u"Off"_s);
  auto* on = new Switch(u"On"_s);
  on->setChecked(true);
  auto* empty = new QCheckBox(u"Empty"_s);
  auto* ticked = new QCheckBox(u"Ticked"_s);
  ticked->setChecked(true);
  auto* grey = new QCheckBox(u"Disabled"_s);
  grey->setEnabled(false);
  auto* radio = new QRadioButton(u"One"_s);
  auto* chosen = new QRadioButton(u"Other"_s);
  chosen->setChecked(true);
  auto* slider = new QSlider(Qt::Horizontal);
  slider->setFixedWidth(96);
  slider->setValue(60);
  return column({row({off, on, inState(new Switch(u"Focus"_s), ControlState::focus), slider}),
                 row({empty, ticked, grey, radio, chosen})});
}

QWidget* badges() {
  return row({new Badge(u"Top rated"_s, BadgeTone::accent), new Badge(u"New"_s, BadgeTone::info),
              new Badge(u"Low cost"_s, BadgeTone::neutral), new Badge(u"2 missing"_s, BadgeTone::warning),
              new Badge(u"Failed"_s, BadgeTone::danger), new Badge(u"Saved"_s, BadgeTone::success)});
}

QWidget* icons() {
  auto* chosen = new IconButton(u"list-filter"_s, u"Filters"_s);
  chosen->setCheckable(true);
  chosen->setChecked(true);
  auto* disabled = new IconButton(u"ellipsis"_s, u"More"_s);
  disabled->setEnabled(false);
  return row({new IconButton(u"list-filter"_s, u"Filters"_s),
              inState(new IconButton(u"list-filter"_s, u"Filters"_s), ControlState::hover), chosen,
              inState(new IconButton(u"panel-right"_s, u"Inspector"_s), ControlState::focus), disabled});
}

QWidget* tiles() {
  auto* chosen = new TileButton(u"video"_s, u"Animate"_s);
  chosen->setCheckable(true);
  chosen->setChecked(true);
  auto* disabled = new TileButton(u"scaling"_s, u"Upscale"_s);
  disabled->setEnabled(false);
  return row({new TileButton(u"pencil"_s, u"Edit"_s), chosen,
              inState(new TileButton(u"shuffle"_s, u"Variation"_s), ControlState::hover), disabled});
}

// A menu that stays: it is drawn where it would open.
QWidget* menu() {
  auto* menu = new QMenu;
  menu->addAction(u"Edit…"_s)->setShortcut(Qt::Key_E);
  QAction* current = menu->addAction(u"Animate…"_s);
  current->setShortcut(Qt::Key_A);
  menu->addMenu(u"Add to Sequence"_s)->addAction(u"New Sequence"_s);
  menu->addSeparator();
  menu->addAction(u"Relink Original…"_s)->setEnabled(false);
  menu->addAction(u"Move to Trash"_s)->setShortcut(Qt::Key_Delete);
  auto* holder = new QWidget;
  menu->setParent(holder, Qt::Widget);
  menu->move(0, 0);
  menu->setFixedSize(menu->sizeHint().expandedTo(QSize(230, 0)));
  menu->setActiveAction(current);
  holder->setFixedSize(menu->size());
  menu->show();
  return holder;
}

QWidget* prompt() {
  auto* edit = new PromptEdit(u"Prompt"_s);
  edit->setDraft(u"The @Tin tin on the quay of @Quay"_s);
  edit->setFixedHeight(52);
  return edit;
}

class TravellingLine final : public QWidget {
 public:
  TravellingLine() { setFixedSize(260, 4); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    paintTravellingLine(painter, rect());
  }
};

QWidget* progress() { return row({new Spinner(16), new TravellingLine}); }

}  // namespace

std::unique_ptr<QWidget> controlsSheet() {
  auto sheet = emptySheet(u"controls"_s, u"Controls"_s);
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(28);
  grid->setVerticalSpacing(12);
  grid->addWidget(buttons(), 0, 0, 1, 2);
  const std::pair<QString, QWidget*> left[] = {{u"Chips"_s, chips()},
                                               {u"Text fields"_s, fields()},
                                               {u"Toggles and slider"_s, toggles()},
                                               {u"Icon buttons"_s, icons()},
                                               {u"Action tiles"_s, tiles()}};
  const std::pair<QString, QWidget*> right[] = {{u"Segmented control"_s, segments()},
                                                {u"Menu"_s, menu()},
                                                {u"Badges"_s, badges()},
                                                {u"Prompt editor"_s, prompt()},
                                                {u"Progress"_s, progress()}};
  int line = 1;
  for (const auto& [title, part] : left) grid->addWidget(column({caption(title), part}), line++, 0, Qt::AlignTop);
  line = 1;
  for (const auto& [title, part] : right) grid->addWidget(column({caption(title), part}), line++, 1, Qt::AlignTop);
  fillSheet(*sheet, grid);
  return sheet;
}

}  // namespace sorvan::views
