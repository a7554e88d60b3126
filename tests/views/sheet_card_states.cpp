// The cards of contact sheets, in every state.
#include <QDir>
#include <QGridLayout>
#include <QTemporaryDir>

#include "base/clock.h"
#include "base/settings.h"
#include "core/library_store.h"
#include "core/workspace_opening.h"
#include "generation/generation_request.h"
#include "generation/job_queue.h"
#include "shell/alerts_presenter.h"
#include "shell/job_displays.h"
#include "shell/locations.h"
#include "shell/views/sheet_cards.h"
#include "shell/workspace_state.h"
#include "views/item_sheets.h"
#include "views/sheet_parts.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kCards(440, 220);

// A library in a folder of its own, with one contact sheet at a time, shown as a card.
class SheetLibrary final : public QWidget {
 public:
  SheetLibrary(ThumbnailStore& thumbnails, const QString& pictures) : pictures_(pictures) {
    core::openWorkspace(store_, folder_.filePath(u"Northlight"_s), core::Remember::no);
    state_.setLocation(shell::allMediaLocation);
    cards = new SheetCards(presenter_, thumbnails, this);
  }
  ~SheetLibrary() override { delete cards; }

  void add(const QString& title, int count, const std::optional<QUuid>& comparison = {}) {
    std::vector<QUuid> items;
    for (int number = 0; number < count; ++number) items.push_back(item(number));
    store_.context().insert(core::ContactSheet(std::nullopt, title, comparison, items, clock_->now()));
    save();
  }
  void addRunning() {
    core::GenerationRequest request;
    request.prompt = u"a boat at dusk"_s;
    request.comparisonID = QUuid::createUuid();
    store_.context().insert(core::GenerationJob(std::nullopt, request, clock_->now()));
    add(u"A boat at dusk"_s, 2, request.comparisonID);
  }

  SheetCards* cards;

 protected:
  void resizeEvent(QResizeEvent*) override { cards->setGeometry(rect()); }

 private:
  QUuid item(int number) {
    static const QString names[] = {u"tin_1.jpg"_s, u"tin_4.jpg"_s, u"boat_gold_0.jpg"_s, u"vase_1.jpg"_s};
    const core::MediaMetadata metadata{core::MediaType::image, 600, 400, std::nullopt, 1000, u"image/jpeg"_s};
    const QString& name = names[number % 4];
    const core::AssetRef asset =
        store_.context().insert(core::Asset({}, core::MediaType::image, u"Inbox/"_s + name, name, metadata, clock_->now()));
    const QString path = store_.fileOf(*asset);
    QDir().mkpath(QFileInfo(path).path());
    QFile::copy(pictures_ + u'/' + name, path);
    store_.save(core::LibraryTables::none);
    store_.registerRecords({{asset}, {}, {}, {}});
    return asset->id;
  }
  void save() {
    store_.save(core::LibraryTables::all);
    awaitThat([this] { return presenter_.count() > 0; });
  }

  QString pictures_;
  QTemporaryDir folder_;
  std::shared_ptr<base::Settings> settings_ = std::make_shared<base::Settings>();
  std::shared_ptr<const base::Clock> clock_ = std::make_shared<base::SystemClock>();
  core::LibraryStore store_{{settings_, clock_, std::nullopt, folder_.filePath(u"Default"_s)}};
  generation::JobQueue queue_{store_, {}};
  shell::WorkspaceState state_;
  shell::AlertsPresenter alerts_;
  shell::JobDisplays displays_{store_, queue_};
  shell::SheetBrowserPresenter presenter_{{store_, state_, displays_, alerts_}};
};

ComponentState with(const QString& name, const std::function<void(SheetLibrary&)>& fill) {
  return {name, [fill](QWidget& widget) { fill(static_cast<SheetLibrary&>(widget)); }};
}

ComponentState holding(const QString& name, int count, const std::function<void(SheetCards&)>& then = {}) {
  return with(name, [count, then](SheetLibrary& library) {
    library.add(u"Studio still of the Tin"_s, count);
    if (then) then(*library.cards);
  });
}

std::vector<ComponentState> cardStates() {
  return {holding(u"One picture"_s, 1),
          holding(u"Two pictures"_s, 2),
          holding(u"Three pictures"_s, 3),
          holding(u"Four pictures and more"_s, 6),
          holding(u"No picture"_s, 0),
          with(u"Its comparison runs"_s, [](SheetLibrary& library) { library.addRunning(); }),
          with(u"Long title"_s,
               [](SheetLibrary& library) {
                 library.add(u"Studio still of the Tin on a slate counter by a rain-streaked window with steam"_s, 3);
               }),
          holding(u"Hover"_s, 3, [](SheetCards& cards) { hover(cards, cards.cellRect(0).center()); }),
          holding(u"Keyboard"_s, 3, [](SheetCards& cards) { focusByKey(cards); }),
          holding(u"Something is dragged over it"_s, 3,
                  [](SheetCards& cards) { dragFilesOver(cards, cards.cellRect(0).center()); }),
          with(u"No contact sheets"_s, [](SheetLibrary&) {})};
}

}  // namespace

std::unique_ptr<QWidget> sheetCardsSheet(const QString& pictures) {
  auto sheet = emptySheet(u"sheet-cards"_s, u"Cards of contact sheets"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  const StateStage stage(thumbnails);
  auto* box = new QGridLayout;
  box->addWidget(stage.states(u"Contact sheet card"_s, [&] { return new SheetLibrary(thumbnails, pictures); }, kCards,
                              cardStates(), 3),
                 0, 0);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
