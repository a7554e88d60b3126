#include "shell/views/comparison_pages.h"

#include <QHBoxLayout>
#include <QMenu>

#include <algorithm>

#include "generation/enqueue.h"
#include "shell/actions_presenter.h"
#include "shell/comparison_presenter.h"
#include "shell/sheet_texts.h"
#include "shell/texts.h"
#include "shell/transfer_presenter.h"
#include "shell/views/add_media_dialog.h"
#include "shell/views/fields.h"
#include "shell/views/gallery_source.h"
#include "shell/views/item_drag.h"
#include "shell/views/labels.h"
#include "shell/views/library_view.h"
#include "shell/views/lineage_view.h"
#include "shell/views/sheet_cards.h"
#include "shell/views/sheet_tools.h"
#include "shell/views/sheet_view.h"
#include "shell/views/text_dialog.h"
#include "shell/views/texts.h"
#include "shell/workspace_state.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kSearchWidth = 220;

// Lives as long as the library view. Each part binds one page.
class ComparisonPages final : public QObject {
 public:
  explicit ComparisonPages(const PageDesk& desk)
      : QObject(&desk.library), library_(desk.library), on_(desk.on), comparison_(*desk.on.comparison) {}

  void add() {
    addSheetList();
    addSheet();
    addLineage();
  }

 private:
  void addSheetList() {
    SheetBrowserPresenter& sheets = comparison_.sheets();
    auto* cards = new SheetCards(sheets, library_.thumbnails());
    auto* search = new TextField(shell::texts::searchSheets, shell::texts::searchSheets);
    search->setIconName(u"search"_s);
    search->setFixedWidth(kSearchWidth);
    PageTraits traits;
    traits.title = [this, &sheets] { return PageTitle{on_.gallery->title(), sheets.countText()}; };
    traits.tools = search;
    connect(search, &QLineEdit::textChanged, &sheets, &SheetBrowserPresenter::setQuery);
    connect(search, &TextField::escapePressed, cards, [cards] { cards->setFocus(Qt::OtherFocusReason); });
    connect(&sheets, &SheetBrowserPresenter::changed, &library_, &LibraryView::titleChanged);
    connect(cards, &SheetCards::opened, &comparison_, &ComparisonPresenter::openSheet);
    connect(cards, &SheetCards::renameRequested, this, [this](QUuid sheet) { renameSheet(sheet); });
    connect(cards, &SheetCards::trashRequested, &sheets, &SheetBrowserPresenter::moveToTrash);
    connect(cards, &SheetCards::mediaDropped, this, [this, &sheets](QUuid sheet, const QMimeData& data) {
      const std::vector<QUuid> items = itemsOf(data);
      if (!items.empty()) sheets.addDropped(sheet, items);
    });
    connect(cards, &SheetCards::menuRequested, this, [this](QUuid sheet, QPoint at) { openCardMenu(sheet, at); });
    library_.addPage(ModeKind::contactSheets, cards, traits);
  }

  void addSheet() {
    ContactSheetWorkspace& sheet = comparison_.sheet();
    auto* view = new SheetView({sheet, library_.thumbnails()});
    PageTraits traits;
    traits.show = [view, &sheet](const WorkspaceMode& mode) {
      if (!mode.sheet) return;
      const bool comparing = sheet.takeCompareRequest();
      const bool another = *mode.sheet != sheet.source();
      if (another) view->leaveQuietly();
      sheet.open(*mode.sheet);
      if (comparing) view->compareOnly();
    };
    traits.title = [&sheet] { return PageTitle{titleOf(sheet.display()), sheet.display().countText}; };
    traits.tools = &view->tools();
    traits.look = [this, &sheet] { return LookedAt{on_.state->selection(), sheet.ids()}; };
    library_.addPage(ModeKind::contactSheet, view, traits);
    bindSheet(*view);
    bindTools(*view);
  }

  // A comparison is known by its prompt, which stands below the toolbar, unless it was given a title.
  static QString titleOf(const SheetDisplay& sheet) {
    const bool byPrompt = !sheet.prompt.isEmpty() && sheet.title == generation::contactSheetTitle(sheet.prompt);
    return byPrompt ? shell::texts::contactSheetMode : sheet.title;
  }

  void bindSheet(SheetView& view) {
    ContactSheetWorkspace& sheet = comparison_.sheet();
    connect(&sheet, &ContactSheetWorkspace::changed, &library_, &LibraryView::titleChanged);
    connect(&view, &SheetView::selectionRequested, on_.state, &WorkspaceState::select);
    connect(on_.state, &WorkspaceState::selectionChanged, &view, [this, &view] { view.setSelection(on_.state->selection()); });
    connect(&view, &SheetView::opened, this,
            [this, &sheet](QUuid item) { on_.state->openAsset(item, sheet.ids()); });
    connect(&view, &SheetView::lookRequested, this, [this] { on_.actions->trigger(ActionId::quickLook); });
    connect(&view, &SheetView::actionRequested, on_.actions, &ActionsPresenter::trigger);
    connect(&view, &SheetView::backRequested, this, [this] { on_.actions->trigger(ActionId::goBack); });
    connect(&view, &SheetView::mediaDropped, this, [this, &sheet](const QMimeData& data) {
      const std::vector<QUuid> items = itemsOf(data);
      if (!items.empty()) sheet.addDropped(items);
    });
    // The press that began the drag is still being handled: the drag begins after it.
    connect(
        &view.places(), &SheetPlaces::draggedOut, this,
        [this, &view](const QPixmap& picture) {
          dragSelectedItems(view, *on_.transfer,
                            dragPicture(picture, on_.state->selection().size(), view.devicePixelRatioF()));
        },
        Qt::QueuedConnection);
    connect(&view, &SheetView::menuRequested, this,
            [this, &view](QUuid item, QPoint at) { openPlaceMenu(view, item, at); });
  }

  // Files that are no items are told that they cannot come in.
  std::vector<QUuid> itemsOf(const QMimeData& data) {
    BroughtItems brought = on_.transfer->brought(data);
    if (brought.otherFiles > 0) on_.transfer->refuseFiles(brought.otherFiles);
    return std::move(brought.items);
  }

  void bindTools(SheetView& view) {
    ContactSheetWorkspace& sheet = comparison_.sheet();
    connect(&view.tools(), &SheetTools::addRequested, this, [this] { addMedia(); });
    connect(&view.tools(), &SheetTools::saveRequested, this, [this, &sheet] {
      if (const core::ContactSheetRef made = sheet.save()) comparison_.openSheet(made->id);
    });
    connect(&view.tools(), &SheetTools::moreRequested, this, [this](QPoint at) { openSheetMenu(at); });
  }

  void addLineage() {
    LineagePresenter& lineage = comparison_.lineage();
    auto* view = new LineageView(lineage, library_.thumbnails());
    auto* hint = new Label(shell::texts::lineageGoesBack, Type::small, &Colors::textTertiary);
    PageTraits traits;
    traits.show = [this, &lineage](const WorkspaceMode& mode) {
      if (!mode.subject.isNull() && (mode.subject != lineage.asset() || library_.page() != ModeKind::lineage))
        lineage.open(mode.subject);
    };
    traits.title = [&lineage] { return PageTitle{shell::texts::lineageTitle, lineage.countText()}; };
    traits.keyboard = &view->tree();
    traits.tools = hint;
    traits.look = [this, &lineage] { return LookedAt{on_.state->selection(), familyOf(lineage)}; };
    library_.addPage(ModeKind::lineage, view, traits);
    connect(&lineage, &LineagePresenter::changed, &library_, &LibraryView::titleChanged);
    connect(view, &LineageView::openRequested, this, [this, &lineage](QUuid item) {
      if (lineage.canOpen(item)) on_.state->openAsset(item, familyOf(lineage));
    });
    connect(view, &LineageView::lookRequested, this, [this] { on_.actions->trigger(ActionId::quickLook); });
    connect(view, &LineageView::backRequested, this, [this] { on_.actions->trigger(ActionId::goBack); });
    connect(view, &LineageView::menuRequested, this,
            [this](QPoint at) { Q_EMIT library_.wall().menuRequested(at); });
  }

  // Stepping walks through the family from its root on.
  static std::vector<QUuid> familyOf(const LineagePresenter& lineage) {
    std::vector<QUuid> order;
    for (const LineageRowDisplay& row : lineage.rows())
      if (!row.deleted) order.push_back(row.id);
    return order;
  }

  QMenu* menu() {
    auto* made = new QMenu(&library_);
    made->setAttribute(Qt::WA_DeleteOnClose);
    return made;
  }

  void openCardMenu(QUuid sheet, QPoint at) {
    SheetBrowserPresenter& sheets = comparison_.sheets();
    QMenu* choices = menu();
    connect(choices->addAction(shell::texts::openSheet), &QAction::triggered, this,
            [this, sheet] { comparison_.openSheet(sheet); });
    connect(choices->addAction(shell::texts::renameSheet), &QAction::triggered, this,
            [this, sheet] { renameSheet(sheet); });
    choices->addSeparator();
    const bool inTrash = sheets.showsTrash();
    connect(choices->addAction(inTrash ? shell::texts::sheetFromTrash : shell::texts::sheetToTrash),
            &QAction::triggered, &sheets,
            [&sheets, sheet, inTrash] { inTrash ? sheets.restore(sheet) : sheets.moveToTrash(sheet); });
    choices->popup(at);
  }

  void openSheetMenu(QPoint at) {
    ContactSheetWorkspace& sheet = comparison_.sheet();
    const core::ContactSheetRef record = sheet.sheet();
    if (!record) return;
    QMenu* choices = menu();
    connect(choices->addAction(shell::texts::renameSheet), &QAction::triggered, this,
            [this, id = record->id] { renameSheet(id); });
    choices->addSeparator();
    if (sheet.display().trashed)
      connect(choices->addAction(shell::texts::sheetFromTrash), &QAction::triggered, &sheet,
              &ContactSheetWorkspace::restore);
    else
      connect(choices->addAction(shell::texts::sheetToTrash), &QAction::triggered, this, [this, &sheet] {
        sheet.moveToTrash();
        on_.actions->trigger(ActionId::goBack);
      });
    choices->popup(at);
  }

  // What can be done with the item anywhere, and with its place here.
  void openPlaceMenu(SheetView& view, QUuid item, QPoint at) {
    ContactSheetWorkspace& sheet = comparison_.sheet();
    QMenu* choices = menu();
    connect(choices->addAction(shell::texts::openSheet), &QAction::triggered, this,
            [this, item, &sheet] { on_.state->openAsset(item, sheet.ids()); });
    for (const ActionId id : {ActionId::statusDraft, ActionId::statusShortlist, ActionId::statusApproved,
                              ActionId::statusFinal, ActionId::statusRejected, ActionId::reusePrompt,
                              ActionId::useAsReference, ActionId::showLineage, ActionId::showInFiles}) {
      if (id == ActionId::statusDraft || id == ActionId::reusePrompt) choices->addSeparator();
      if (on_.actions->isEnabled(id)) addAction(*choices, id);
    }
    choices->addSeparator();
    const std::vector<PlaceDisplay>& places = sheet.display().places;
    const auto place = std::ranges::find(places, item, &PlaceDisplay::asset);
    if (place != places.end() && place->movable) {
      connect(choices->addAction(shell::texts::moveEarlier), &QAction::triggered, &sheet,
              [&sheet, item] { sheet.moveBy(item, -1); });
      connect(choices->addAction(shell::texts::moveLater), &QAction::triggered, &sheet,
              [&sheet, item] { sheet.moveBy(item, +1); });
    }
    connect(choices->addAction(shell::texts::removeFromSheet), &QAction::triggered, &sheet,
            [&sheet, &view, item] { sheet.removeAll(view.leaving(item)); });
    choices->popup(at);
  }

  void addAction(QMenu& choices, ActionId id) {
    connect(choices.addAction(on_.actions->title(id)), &QAction::triggered, on_.actions,
            [this, id] { on_.actions->trigger(id); });
  }

  void renameSheet(QUuid sheet) {
    const core::ContactSheetRef record = comparison_.sheets().recordOf(sheet);
    if (!record) return;
    auto* dialog = new TextDialog(shell::texts::renameContactSheet, shell::texts::sheetTitleField, views::texts::rename(),
                                  &library_);
    dialog->setText(record->title);
    connect(dialog, &TextDialog::written, this,
            [this, sheet](const QString& title) { comparison_.sheets().rename(sheet, title); });
    dialog->open();
  }

  void addMedia() {
    auto* source = new GallerySource(*on_.gallery);
    auto* dialog = new AddMediaDialog(*source, library_.thumbnails(), comparison_.sheet().ids(), &library_);
    source->setParent(dialog);
    connect(dialog, &AddMediaDialog::chosen, &comparison_.sheet(), &ContactSheetWorkspace::add);
    dialog->open();
  }

  LibraryView& library_;
  Presenters on_;
  ComparisonPresenter& comparison_;
};

}  // namespace

void addComparisonPages(const PageDesk& desk) {
  if (desk.on.comparison) (new ComparisonPages(desk))->add();
}

}  // namespace sorvan::views
