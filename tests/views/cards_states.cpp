// The cards of references and the rows that name them, in every state.
#include <QGridLayout>

#include "shell/views/mention_popup.h"
#include "shell/views/saved_references_view.h"
#include "shell/views/thumbnail_store.h"
#include "views/item_sheets.h"
#include "views/sheet_parts.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kCard(564, 256);
constexpr QSize kMentions(290, 250);

std::vector<std::pair<QString, QString>> picturesOf(const QString& folder, int count) {
  const QString names[] = {u"tin_1"_s, u"tin_4"_s, u"boat_gold_0"_s, u"vase_1"_s};
  std::vector<std::pair<QString, QString>> all;
  for (int number = 0; number < count; ++number) all.emplace_back(folder + u'/' + names[number] + u".jpg"_s, QString());
  return all;
}

ReferenceCard card(const QString& folder, int pictures) {
  ReferenceCard shown;
  shown.id = QUuid::createUuid();
  shown.handle = u"@Tin"_s;
  shown.kind = u"Product"_s;
  shown.line = u"a round coffee tin · "_s + (pictures == 1 ? u"1 image"_s : u"%1 images"_s.arg(pictures));
  shown.pictures = picturesOf(folder, pictures);
  return shown;
}

ReferenceCard longCard(const QString& folder) {
  ReferenceCard shown = card(folder, 1);
  shown.handle = u"@TheTinFromTheHarbourWarehouseWithItsLabel"_s;
  shown.line = u"a round coffee tin with a dented lid, a teal label and a drawing of a lighthouse on it · 1 image"_s;
  return shown;
}

ReferenceCard emptyCard() {
  ReferenceCard shown = card({}, 0);
  shown.problem =
      u"This reference's images are missing or in Trash. Restore one, or edit the reference and choose others."_s;
  return shown;
}

ReferenceGrid& gridIn(QWidget& widget) { return static_cast<ReferenceGrid&>(widget); }

// The state is the second card's: the first one is where the keyboard would begin.
void fill(QWidget& grid, const ReferenceCard& shown) {
  ReferenceCard first = emptyCard();
  first.handle = u"@Atelier"_s;
  gridIn(grid).show({first, shown});
}

ComponentState holding(const QString& name, const ReferenceCard& shown, const Bring& then = {}) {
  return {name, [shown, then](QWidget& grid) {
            fill(grid, shown);
            if (then) then(grid);
          }};
}

std::vector<ComponentState> cardStates(const QString& folder) {
  const ReferenceCard three = card(folder, 3);
  const auto choose = [three](QWidget& grid) { gridIn(grid).setCurrent(three.id); };
  return {holding(u"One picture"_s, card(folder, 1)),
          holding(u"Two pictures"_s, card(folder, 2)),
          holding(u"Three pictures"_s, three),
          holding(u"Four pictures"_s, card(folder, 4)),
          holding(u"None that can be used"_s, emptyCard()),
          holding(u"Long names"_s, longCard(folder)),
          holding(u"Hover"_s, three, [](QWidget& grid) { hover(grid, gridIn(grid).cellRect(1).center()); }),
          holding(u"Selected"_s, three, choose),
          holding(u"Keyboard"_s, three, [choose](QWidget& grid) {
            choose(grid);
            focusByKey(grid);
          })};
}

MentionOffer offer(const QString& folder) {
  const QString tin = folder + u"/tin_1.jpg"_s;
  const QString boat = folder + u"/boat_gold_0.jpg"_s;
  return {{},
          {{{}, {{u"Tin"_s, u"Product"_s, tin, {}, {}}, {u"Boat"_s, {}, boat, {}, {}}}},
           {u"Project References"_s, {{u"Quay"_s, u"Location · 3 images"_s, boat, {}, {}}}},
           {u"Global references"_s, {{u"TheTinFromTheHarbourWarehouse"_s, u"Product · 4 images"_s, u"/gone.png"_s, {}, {}}}}},
          {}};
}

MentionOffer noOffer() {
  return {{}, {}, u"No references yet. Attach an image with the Reference button, or save one to reuse it here."_s};
}

std::vector<ComponentState> mentionStates(const QString& folder) {
  const auto open = [folder](QWidget& list, int current) {
    static_cast<MentionList&>(list).setOffer(offer(folder));
    static_cast<MentionList&>(list).setCurrent(current);
  };
  return {{u"The first one chosen"_s, [open](QWidget& list) { open(list, 0); }},
          {u"One of the project's chosen"_s, [open](QWidget& list) { open(list, 2); }},
          {u"Hover on another one"_s,
           [open](QWidget& list) {
             open(list, 0);
             hover(list, static_cast<MentionList&>(list).cellRect(3).center());
           }},
          {u"None"_s, [](QWidget& list) { static_cast<MentionList&>(list).setOffer(noOffer()); }}};
}

}  // namespace

std::unique_ptr<QWidget> cardsSheet(const QString& folder) {
  auto sheet = emptySheet(u"reference-cards"_s, u"Cards of references"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  const StateStage stage(thumbnails);
  auto* box = new QGridLayout;
  box->addWidget(stage.states(u"Reference card"_s, [&] { return new ReferenceGrid(thumbnails); }, kCard, cardStates(folder), 3), 0, 0);
  box->addWidget(column({caption(u"Names that are offered after @"_s),
                         stage.states(u"Mention list"_s, [&] { return new MentionList(thumbnails); }, kMentions,
                                      mentionStates(folder), 4)}),
                 1, 0);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
