// What opens over the window: menus and popovers with their rows.
#include <QAbstractButton>
#include <QActionGroup>
#include <QMenu>

#include <algorithm>

#include "shell/views/model_picker.h"
#include "shell/views/pay_with_popover.h"
#include "shell/views/prompt_history.h"
#include "views/component_sheets.h"
#include "views/component_states.h"
#include "views/samples.h"
#include "views/sheet_parts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

QMenu* menuOf(QWidget& whole) { return whole.findChild<QMenu*>(); }

// A menu with a row of each kind.
QWidget* actions() {
  auto* menu = new QMenu;
  menu->addAction(u"Edit…"_s)->setShortcut(Qt::Key_E);
  menu->addAction(u"Animate…"_s)->setShortcut(Qt::Key_A);
  menu->addMenu(u"Add to Sequence"_s)->addAction(u"New Sequence"_s);
  menu->addSeparator();
  menu->addAction(u"Relink Original…"_s)->setEnabled(false);
  QAction* trash = menu->addAction(u"Move to Trash"_s);
  trash->setShortcut(Qt::Key_Delete);
  trash->setProperty("tone", u"danger"_s);
  menu->setFixedWidth(std::max(210, menu->sizeHint().width()));
  return pinned(menu);
}

// A menu whose rows are choices of which one is on.
QWidget* choices() {
  auto* menu = new QMenu;
  auto* group = new QActionGroup(menu);
  for (const QString& name : {u"Newest"_s, u"Oldest"_s, u"Rating"_s, u"Model"_s}) {
    QAction* row = group->addAction(menu->addAction(name));
    row->setCheckable(true);
    row->setChecked(name == u"Oldest"_s);
  }
  menu->actions().last()->setEnabled(false);
  menu->setFixedWidth(std::max(210, menu->sizeHint().width()));
  return pinned(menu);
}

// The row that the keys or the pointer have come to.
State current(const QString& name, int row) {
  return {name, [row](QWidget& whole, QWidget&) { menuOf(whole)->setActiveAction(menuOf(whole)->actions().at(row)); }};
}

QWidget* menus() {
  return column({stateFlow({u"Actions"_s, actions}, {normalState(), current(u"Current row"_s, 1),
                                                     current(u"Current row that removes"_s, 5)},
                           3),
                 stateFlow({u"Choices"_s, choices}, {normalState(), current(u"Current row, chosen"_s, 1),
                                                     current(u"Current row"_s, 0)},
                           3)});
}

QWidget* history(SampleComposer& composer) { return pinned(new PromptHistory(composer, 300)); }

QWidget* histories(SampleComposer& composer, SampleComposer& empty) {
  const auto row = [](int place) {
    return [place](QWidget& whole) -> QWidget* {
      QList<QAbstractButton*> rows;
      for (QAbstractButton* button : whole.findChildren<QAbstractButton*>())
        if (className(*button) == u"PastPromptRow"_s) rows << button;
      return rows.at(place);
    };
  };
  QWidget* saved = stateFlow({u"Past prompts"_s, [&composer] { return history(composer); }, row(0)},
                             {normalState(), hoverState(), pressedState(), focusState()}, 2);
  return column({saved, stateFlow({u"No past prompts"_s, [&empty] { return history(empty); }}, {{u"Empty"_s}}, 1)});
}

QWidget* picker(SampleComposer& composer) {
  return stateFlow({u"Model picker"_s, [&composer] { return pinned(new ModelPicker(composer, 380)); }}, {normalState()}, 1);
}

QWidget* payer(SampleComposer& composer) {
  const Component popover{u"Who pays"_s, [&composer] { return pinned(new PayWithPopover(composer)); }};
  return stateFlow(popover, {normalState()}, 1);
}

void offerPayment(PayWithDisplay& pay) {
  pay.offered = true;
  pay.credits = u"Sorvan credits"_s;
  pay.creditsBalance = u"1,240 credits"_s;
  pay.creditsHelp = u"Every model, one balance."_s;
  pay.key = u"Your own key"_s;
  pay.keyHelp = u"The model provider bills you directly."_s;
  pay.line = u"This month: 212 credits"_s;
  pay.account = u"Open Account"_s;
}

// The sample goes after the widgets that show it.
void keepWith(QWidget& sheet, QObject* sample) {
  QObject::connect(&sheet, &QObject::destroyed, sample, &QObject::deleteLater);
}

std::vector<PastPrompt> pastPrompts() {
  return {{QUuid::createUuid(), u"Tin on slate, rain behind the window"_s, u"Tin on slate, rain behind the window"_s},
          {{}, u"Harbour wall at dusk, long exposure, gulls above the water, the last light on the sails of the boats"_s, {}}};
}

}  // namespace

std::unique_ptr<QWidget> menusSheet() {
  auto* composer = new SampleComposer;
  composer->past = pastPrompts();
  auto* empty = new SampleComposer;
  std::unique_ptr<QWidget> sheet =
      sheetOf(u"menus"_s, u"Menus and popovers"_s,
              {{u"Menus"_s, menus()}, {u"Prompt history"_s, histories(*composer, *empty)}});
  keepWith(*sheet, composer);
  keepWith(*sheet, empty);
  return sheet;
}

std::unique_ptr<QWidget> pickersSheet() {
  auto* composer = new SampleComposer;
  offerPayment(composer->shown.payWith);
  std::unique_ptr<QWidget> sheet =
      sheetOf(u"pickers"_s, u"Models and payment"_s,
              {{u"Model picker, who pays"_s, row({picker(*composer), payer(*composer)})}});
  keepWith(*sheet, composer);
  return sheet;
}

}  // namespace sorvan::views
