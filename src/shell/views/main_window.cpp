#include "shell/views/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QTextEdit>
#include <QWindow>

#include "shell/account_presenter.h"
#include "shell/actions_presenter.h"
#include "shell/costs_presenter.h"
#include "shell/curation_presenter.h"
#include "shell/inspector_presenter.h"
#include "shell/sheet_texts.h"
#include "shell/sidebar_presenter.h"
#include "shell/views/alert_dialog.h"
#include "shell/views/desktop_folder_chooser.h"
#include "shell/views/fields.h"
#include "shell/views/focus_ring.h"
#include "shell/views/gallery_source.h"
#include "shell/views/health_dialog.h"
#include "shell/views/icons.h"
#include "shell/views/immersion.h"
#include "shell/views/jobs_source.h"
#include "shell/views/library_view.h"
#include "shell/views/lineage_tree.h"
#include "shell/views/menu_strip.h"
#include "shell/views/menus.h"
#include "shell/views/selection_bar.h"
#include "shell/views/pages.h"
#include "shell/views/popover.h"
#include "shell/views/sequence_source.h"
#include "shell/views/settings_dialog.h"
#include "shell/views/shortcuts_dialog.h"
#include "shell/views/text_dialog.h"
#include "shell/views/texts.h"
#include "shell/views/update_pill.h"
#include "shell/views/transport_bar.h"
#include "shell/views/viewer_desk.h"
#include "shell/views/viewer_tools.h"
#include "shell/views/wall_texts.h"
#include "shell/views/wall_binding.h"
#include "shell/views/wall_menus.h"
#include "shell/views/welcome_view.h"
#include "shell/welcome_presenter.h"
#include "shell/window_presenter.h"
#include "shell/workspace_state.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr QSize kFirstSize(1440, 900);
constexpr QSize kSmallestSize(1024, 680);  // with its frame
constexpr int kFrame = 28;                 // the title that most desktops put over a window

// The pages, in the order in which they are added.
constexpr int kWelcomePage = 0;
constexpr int kLibraryPage = 1;
constexpr int kOpeningPage = 2;

// Many keyboards have no menu key; elsewhere on the desktop this chord stands for it.
void pressMenuKey() {
  QWidget* focused = QApplication::focusWidget();
  if (!focused) return;
  QKeyEvent key(QEvent::KeyPress, Qt::Key_Menu, Qt::NoModifier);
  QApplication::sendEvent(focused, &key);
  if (key.isAccepted()) return;
  const QPoint at = focused->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
  QContextMenuEvent menu(QContextMenuEvent::Keyboard, at, focused->mapToGlobal(at));
  QApplication::sendEvent(focused, &menu);
}
}  // namespace

MainWindow::MainWindow(Presenters presenters, QWidget* parent)
    : QMainWindow(parent),
      on_(presenters),
      wallSource_(std::make_unique<GallerySource>(*on_.gallery)),
      sequenceSource_(std::make_unique<SequenceSource>(*on_.state, *on_.gallery)),
      historySource_(std::make_unique<JobsSource>(*on_.jobs)),
      folders_(std::make_unique<DesktopFolderChooser>(this)) {
  setWindowIcon(windowIcon());
  build();
  bindWindow();
  bindAccount();
  bindSidebar();
  bindGallery();
  bindFilters();
  bindInspector();
  bindHistory();
  bindAsset();
  bindMarking();
  bindActions();
  refreshLayout();
  refreshPage();
  new AlertHost(*on_.alerts, this);
  new FocusRing(this);
}

// The views go before what they show, and the keyboard that moves while they go is nobody's business any more.
MainWindow::~MainWindow() {
  on_.welcome->setFolderChooser(nullptr);
  disconnect(qApp, nullptr, this, nullptr);
  delete takeCentralWidget();
}

void MainWindow::build() {
  placeWindow();
  strip_ = new MenuStrip;
  setMenuWidget(strip_);
  pages_ = new QStackedWidget;
  welcome_ = new WelcomeView(on_.welcome->display());
  library_ = new LibraryView({*wallSource_, *historySource_, *on_.composer, *on_.alerts, on_.marking, on_.filters,
                              sequenceSource_.get()});
  library_->addZone(strip_);
  addPages({*library_, on_});
  if (const auto place = on_.window->rememberedPlace())
    library_->setPaneWidths(place->sidebarWidth, place->inspectorWidth);
  on_.state->setAvailable(library_->pageKinds());
  pages_->addWidget(welcome_);
  pages_->addWidget(library_);
  pages_->addWidget(new QWidget);  // until the library that was open last is there
  setCentralWidget(pages_);
  pages_->installEventFilter(this);
}

void MainWindow::bindWindow() {
  const auto retitle = [this] {
    setWindowTitle(on_.window->title());
    setAccessibleName(on_.window->accessibleName());
    library_->banner().show(on_.window->banner());
    refreshLayout();
  };
  connect(on_.window, &WindowPresenter::changed, this, retitle);
  connect(on_.window, &WindowPresenter::quitAgreed, this, [this] {
    mayClose_ = true;
    close();
  });
  connect(on_.window, &WindowPresenter::healthRequested, this, &MainWindow::openHealth);
  connect(qApp, &QGuiApplication::applicationStateChanged, on_.window,
          [this](Qt::ApplicationState state) { on_.window->setInFront(state == Qt::ApplicationActive); });
  connect(library_, &LibraryView::paneWidthsChanged, this, &MainWindow::rememberPlace);
  connect(on_.window, &WindowPresenter::raiseRequested, this, [this](const QString& token) {
    // Where windows may not come forward by themselves, the desktop's leave is read from here.
    if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
  });
  connect(&library_->banner(), &BannerBar::actionRequested, on_.window, &WindowPresenter::performBannerAction);
  on_.welcome->setFolderChooser(folders_.get());
  connect(on_.welcome, &WelcomePresenter::shownChanged, this, &MainWindow::refreshPage);
  connect(welcome_, &WelcomeView::defaultChosen, on_.welcome, &WelcomePresenter::useDefaultWorkspace);
  connect(welcome_, &WelcomeView::anotherFolderChosen, on_.welcome, &WelcomePresenter::chooseWorkspace);
  connect(welcome_, &WelcomeView::folderDropped, on_.welcome, &WelcomePresenter::openFolder);
  connect(on_.jobs, &JobsPresenter::activeChanged, this, [this] { strip_->setActivity(on_.jobs->activeText()); });
  connect(strip_, &MenuStrip::activityPressed, this, [this] { on_.actions->trigger(ActionId::showHistory); });
  strip_->setActivity(on_.jobs->activeText());
  if (on_.updates) addUpdatePill(*strip_, *on_.updates);
  retitle();
}

// The balance is brought up to date when the person comes back to the window.
void MainWindow::bindAccount() {
  connect(strip_, &MenuStrip::accountPressed, this, &MainWindow::openAccount);
  if (!on_.account) return;
  const auto refresh = [this] { strip_->setBalance(on_.account->badge()); };
  connect(on_.account, &AccountPresenter::changed, this, refresh);
  connect(on_.account, &AccountPresenter::accountRequested, this, &MainWindow::openAccount);
  connect(qApp, &QGuiApplication::applicationStateChanged, on_.account, [this](Qt::ApplicationState state) {
    if (state == Qt::ApplicationActive && isVisible()) on_.account->refresh();
  });
  refresh();
}

void MainWindow::bindSidebar() {
  SidebarView& sidebar = library_->sidebar();
  connect(on_.sidebar, &SidebarPresenter::changed, &sidebar,
          [this, &sidebar] { sidebar.show(on_.sidebar->display()); });
  connect(&sidebar, &SidebarView::chosen, on_.sidebar, &SidebarPresenter::choose);
  connect(&sidebar, &SidebarView::workspacePressed, this,
          [this] { on_.actions->trigger(ActionId::openAnotherWorkspace); });
  connect(&sidebar, &SidebarView::newProjectPressed, this, [this] { on_.actions->trigger(ActionId::newProject); });
  connect(&sidebar, &SidebarView::renamed, on_.sidebar, &SidebarPresenter::renameProject);
  connect(&sidebar, &SidebarView::renameAsked, this, &MainWindow::askProjectName);
  connect(&sidebar, &SidebarView::archiveChosen, on_.sidebar, &SidebarPresenter::setArchived);
  connect(&sidebar, &SidebarView::dropped, on_.curation, &CurationPresenter::drop);
  connect(on_.sidebar, &SidebarPresenter::healthRequested, this, &MainWindow::openHealth);
  sidebar.show(on_.sidebar->display());
}

// Asks for the name of a project: of a new one for an empty key.
void MainWindow::focusSearch() {
  if (library_->page() != ModeKind::activity) return library_->toolbar().focusSearch();
  library_->history().search().setFocus(Qt::ShortcutFocusReason);
  library_->history().search().selectAll();
}

void MainWindow::askProjectName(const QString& key, const QString& name) {
  const QString title = key.isEmpty() ? texts::newProjectTitle() : texts::renameProjectTitle();
  const QString verb = key.isEmpty() ? texts::create() : texts::rename();
  auto* dialog = new TextDialog(title, texts::projectName(), verb, this);
  dialog->setText(name);
  connect(dialog, &TextDialog::written, on_.sidebar, [this, key](const QString& written) {
    key.isEmpty() ? on_.sidebar->createProject(written) : on_.sidebar->renameProject(key, written);
  });
  dialog->open();
}

void MainWindow::bindGallery() {
  MediaWall& wall = library_->wall();
  new WallBinding(wall, on_, this);
  connect(&wall, &MediaWall::opened, this, &MainWindow::openCell);
  connect(on_.state, &WorkspaceState::layoutChanged, this, &MainWindow::refreshLayout);
  connect(on_.state, &WorkspaceState::modeChanged, this, &MainWindow::refreshPage);
  connect(on_.state, &WorkspaceState::locationChanged, this, &MainWindow::refreshPage);
  connect(on_.gallery, &GalleryPresenter::layoutChanged, this, &MainWindow::refreshToolbar);
  ToolbarView& toolbar = library_->toolbar();
  connect(&toolbar, &ToolbarView::rowHeightChosen, on_.state, &WorkspaceState::setRowHeight);
  connect(&toolbar, &ToolbarView::inspectorToggled, this,
          [this] { on_.state->setInspectorVisible(!on_.state->inspectorVisible()); });
  connect(library_, &LibraryView::inspectorCrowded, this, [this] { on_.state->setInspectorVisible(false); });
  connect(&toolbar, &ToolbarView::backPressed, this, [this] { on_.actions->trigger(ActionId::goBack); });
  connect(&toolbar, &ToolbarView::tabChosen, this, [this](ModeKind tab) { on_.state->setMode({tab}); });
  connect(library_, &LibraryView::backRequested, this, &MainWindow::goBack);
  connect(library_, &LibraryView::titleChanged, this, &MainWindow::refreshToolbar);
}

void MainWindow::bindFilters() {
  ToolbarView& toolbar = library_->toolbar();
  connect(on_.filters, &FilterPresenter::changed, this, &MainWindow::refreshFilters);
  connect(&toolbar, &ToolbarView::searchChosen, on_.filters, &FilterPresenter::setSearch);
  connect(&toolbar, &ToolbarView::searchLeft, library_, &LibraryView::focusContent);
  connect(&toolbar, &ToolbarView::sortPressed, this, &MainWindow::offerSorts);
  connect(&toolbar, &ToolbarView::filtersToggled, this, [this] { on_.actions->trigger(ActionId::toggleFilters); });
  connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
    if (state == Qt::ApplicationActive) on_.gallery->refreshDates();
  });
  refreshFilters();
}

void MainWindow::refreshFilters() {
  library_->toolbar().setSearch(on_.filters->search());
  library_->toolbar().setSort(on_.filters->sorts()[static_cast<size_t>(on_.filters->sort())]);
}

void MainWindow::offerSorts(QPoint globalPosition) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(texts::sortMenu());
  const std::vector<QString> sorts = on_.filters->sorts();
  for (int index = 0; index < static_cast<int>(sorts.size()); ++index) {
    QAction* choice = menu->addAction(sorts[static_cast<size_t>(index)]);
    choice->setCheckable(true);
    choice->setChecked(index == on_.filters->sort());
    connect(choice, &QAction::triggered, on_.filters, [this, index] { on_.filters->setSort(index); });
  }
  menu->popup(globalPosition);
}

void MainWindow::bindInspector() {
  InspectorView& pane = library_->inspector();
  connect(on_.inspector, &InspectorPresenter::changed, &pane, [this, &pane] { pane.show(on_.inspector->display()); });
  connect(&pane, &InspectorView::actionRequested, on_.actions, &ActionsPresenter::trigger);
  connect(&pane, &InspectorView::ratingChosen, on_.inspector, &InspectorPresenter::setRating);
  connect(&pane, &InspectorView::favoriteToggled, on_.inspector, &InspectorPresenter::toggleFavorite);
  connect(&pane, &InspectorView::previewOpened, this, [this](QUuid item) { openAsset(item, Autoplay::no); });
  pane.show(on_.inspector->display());
  ViewerTools& tools = library_->viewerTools();
  connect(&tools, &ViewerTools::favoriteToggled, on_.inspector, &InspectorPresenter::toggleFavorite);
  const auto refresh = [this, &tools] { tools.setFavorite(on_.inspector->display().favorite); };
  connect(on_.inspector, &InspectorPresenter::changed, &tools, refresh);
  refresh();
}

void MainWindow::bindHistory() {
  HistoryView& history = library_->history();
  connect(&history, &HistoryView::segmentChosen, on_.jobs, &JobsPresenter::setSegment);
  connect(&history.list(), &HistoryList::selectionRequested, on_.state, &WorkspaceState::select);
  connect(&history, &HistoryView::searchChosen, on_.jobs, &JobsPresenter::setSearch);
  connect(&history, &HistoryView::cancelSelectedPressed, this,
          [this] { on_.jobs->cancelJobs(on_.state->selection()); });
  connect(&history, &HistoryView::cancelAllPressed, on_.jobs, &JobsPresenter::cancelAll);
  const auto refreshActive = [this, &history] {
    history.setActive(on_.jobs->activeCount(), on_.jobs->activeAmong(on_.state->selection()));
  };
  connect(on_.jobs, &JobsPresenter::activeChanged, &history, refreshActive);
  connect(on_.state, &WorkspaceState::selectionChanged, &history, refreshActive);
  connect(&history.list(), &HistoryList::actionRequested, on_.jobs, &JobsPresenter::perform);
  connect(&history.list(), &HistoryList::opened, this, &MainWindow::openCell);
  connect(&history.list(), &HistoryList::escapePressed, this, [this] { on_.actions->trigger(ActionId::showGallery); });
  connect(on_.state, &WorkspaceState::selectionChanged, &history,
          [this, &history] { history.list().setSelection(on_.state->selection()); });
  history.setSegment(on_.jobs->segment());
}

void MainWindow::bindAsset() {
  AssetView& asset = library_->asset();
  connect(&asset, &AssetView::stepRequested, this, &MainWindow::stepAsset);
  connect(&asset, &AssetView::itemChosen, this, &MainWindow::openInSequence);
  connect(&asset, &AssetView::closeRequested, this, &MainWindow::goBack);
  immersion_ = new Immersion(*this, *strip_, *library_, this);
  connect(&asset.playerView().transport(), &TransportBar::fullScreenPressed, this, &MainWindow::toggleFullScreen);
  connect(on_.state, &WorkspaceState::modeChanged, immersion_, [this] {
    if (on_.state->mode().kind != ModeKind::asset) immersion_->leave();
  });
  connect(&library_->toolbar(), &ToolbarView::stepped, this, &MainWindow::stepAsset);
  viewer_ = new ViewerDesk(on_, *wallSource_, *library_, this);
  connect(viewer_, &ViewerDesk::openRequested, this, &MainWindow::openCell);
}

void MainWindow::bindMarking() {
  if (!on_.marking) return;
  connect(on_.composer, &ComposerPresenter::marksRequested, this, [this](QUuid item) {
    // The large view shows what the gallery holds.
    if (wallSource_->indexOf(item) < 0) on_.state->setLocation(allMediaLocation);
    on_.marking->begin(item);
  });
}

void MainWindow::bindActions() {
  std::vector<QWidget*> mediaViews{&library_->asset()};
  for (MediaWall* wall : library_->findChildren<MediaWall*>()) mediaViews.push_back(wall);
  for (LineageTree* tree : library_->findChildren<LineageTree*>()) mediaViews.push_back(tree);
  menus_ = new Menus(*on_.actions, this, mediaViews, this);
  menus_->setRecents(*on_.welcome);
  menus_->fill(strip_->bar());
  auto* wallMenus = new WallMenus(*menus_, on_, this);
  connect(&library_->wall(), &MediaWall::menuRequested, wallMenus, &WallMenus::open);
  connect(&library_->inspector(), &InspectorView::moreRequested, wallMenus, &WallMenus::open);
  connect(&library_->viewerTools(), &ViewerTools::moreRequested, wallMenus, &WallMenus::open);
  connect(&library_->asset(), &AssetView::menuRequested, wallMenus, &WallMenus::open);
  connect(&library_->inspector(), &InspectorView::statusMenuRequested, this, [this](QPoint at) {
    auto* statuses = new QMenu(this);
    statuses->setAttribute(Qt::WA_DeleteOnClose);
    statuses->setAccessibleName(texts::statusMenu());
    for (const ActionRow& row : actionTable())
      if (row.id >= ActionId::statusDraft && row.id <= ActionId::statusRejected) statuses->addAction(menus_->action(row.id));
    statuses->popup(at);
  });
  auto* bar = new SelectionBar(*menus_, on_);
  library_->setSelectionBar(bar);
  connect(bar, &SelectionBar::neededChanged, library_, [this, bar] { library_->setSelecting(bar->isNeeded()); });
  connect(on_.actions, &ActionsPresenter::viewActionRequested, this, &MainWindow::performForWindow);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    on_.actions->setTextFocused(qobject_cast<QLineEdit*>(now) || qobject_cast<QTextEdit*>(now));
  });
  connect(new QShortcut(QKeySequence(Qt::Key_F6), this), &QShortcut::activated, this,
          [this] { library_->cycleZones(+1); });
  connect(new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F6), this), &QShortcut::activated, this,
          [this] { library_->cycleZones(-1); });
  connect(new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F10), this), &QShortcut::activated, this, pressMenuKey);
}

void MainWindow::refreshLayout() {
  library_->setSidebarShown(on_.state->sidebarVisible());
  library_->setInspectorShown(on_.state->inspectorVisible());
  library_->setFiltersShown(on_.state->filtersVisible());
  library_->wall().setRowHeight(on_.state->rowHeight());
  library_->toolbar().setRowHeight(on_.state->rowHeight());
}

void MainWindow::refreshPage() {
  if (on_.welcome->isOpening()) return pages_->setCurrentIndex(kOpeningPage);
  const bool welcome = on_.welcome->isShown();
  const bool opened = !welcome && pages_->currentIndex() != kLibraryPage;
  pages_->setCurrentIndex(welcome ? kWelcomePage : kLibraryPage);
  library_->showMode(on_.state->mode());
  if (opened) library_->focusContent();
  refreshToolbar();
}

void MainWindow::refreshToolbar() {
  ToolbarView& toolbar = library_->toolbar();
  const bool asset = library_->page() == ModeKind::asset;
  if (asset && sequenceSource_->indexOf(library_->asset().item()) < 0) return on_.state->goBack();
  const PageTitle title = library_->pageTitle().value_or(ownTitle());
  toolbar.setTitle(title.title, title.countText);
  const bool lineage = library_->page() == ModeKind::lineage;
  toolbar.setBack(on_.state->canGoBack() ? titleOfMode(on_.state->returnMode()) : QString(),
                  lineage ? shell::texts::lineageKeys : QString());
  toolbar.setTabs(tabs(), library_->page());
  toolbar.setSteps(asset, asset && !library_->asset().neighbour(-1).isNull(),
                   asset && !library_->asset().neighbour(+1).isNull());
}

// The title of a page that leaves it to the window.
PageTitle MainWindow::ownTitle() const {
  switch (library_->page()) {
    case ModeKind::asset:
      return {on_.gallery->cellOf(library_->asset().item()).fileName, {}};
    case ModeKind::gallery:
    case ModeKind::searchResults:
      return {on_.gallery->title(), on_.gallery->countText()};
    case ModeKind::activity:
      return {titleOfMode(on_.state->mode()), on_.costs ? on_.costs->workspaceName() : QString()};
    default:
      return {titleOfMode(on_.state->mode()), {}};
  }
}

// A view of a location is known by the location's name, the others by their own.
QString MainWindow::titleOfMode(const WorkspaceMode& mode) const {
  const bool ofLocation = mode.kind == ModeKind::gallery || mode.kind == ModeKind::contactSheets ||
                          mode.kind == ModeKind::sequences || mode.kind == ModeKind::projectReferences;
  return ofLocation ? on_.gallery->title() : mode.title();
}

// The views of the location that the window has, while one of them is in front.
std::vector<ModeKind> MainWindow::tabs() const {
  const std::vector<ModeKind> all = on_.window->modesHere();
  const bool inFront = std::find(all.begin(), all.end(), library_->page()) != all.end();
  return inFront ? all : std::vector<ModeKind>();
}

void MainWindow::openCell(QUuid cell) {
  if (!on_.jobs->job(cell).id.isNull()) return on_.state->openGeneration(cell, 0);
  // On the page of a generation, stepping walks through its results.
  const WorkspaceMode& mode = on_.state->mode();
  if (mode.kind == ModeKind::generation && on_.gallery->canShow(cell))
    return on_.state->openAsset(cell, on_.inspector->resultsOf(mode.subject), Autoplay::yes);
  if (wallSource_->indexOf(cell) >= 0) openAsset(cell, Autoplay::yes);
}

void MainWindow::openAsset(QUuid item, Autoplay autoplay) {
  if (!on_.gallery->canShow(item)) return;
  std::vector<QUuid> order;
  if (wallSource_->indexOf(item) < 0) return on_.state->openAsset(item, {item}, autoplay);
  for (int index = 0; index < wallSource_->count(); ++index)
    if (!wallSource_->isJobAt(index)) order.push_back(wallSource_->idAt(index));
  on_.state->openAsset(item, std::move(order), autoplay);
}

void MainWindow::stepAsset(int direction) {
  const QUuid next = library_->asset().neighbour(direction);
  if (!next.isNull()) openInSequence(next);
}

// Who listens and watches goes on doing so with the next one.
void MainWindow::openInSequence(QUuid item) {
  const bool plays = library_->asset().showsPlayer() && library_->asset().playerView().player().isPlaying();
  on_.state->openAsset(item, on_.state->assetSequence(), plays ? Autoplay::yes : Autoplay::no);
}

void MainWindow::performForWindow(ActionId id) {
  switch (id) {
    case ActionId::undo:
    case ActionId::redo:
    case ActionId::cut:
    case ActionId::copy:
    case ActionId::paste:
    case ActionId::selectAll:
      return editFocused(id);
    case ActionId::renameItem:
    case ActionId::editNotes:
      return writeAboutItem(id);
    case ActionId::newProject:
      return askProjectName({}, {});
    case ActionId::moveToProject:
      return chooseDestination();
    case ActionId::searchMedia:
      return focusSearch();
    case ActionId::fullScreen:
      return toggleFullScreen();
    case ActionId::chooseModels:
      return library_->dock().openModelPicker();
    case ActionId::promptHistory:
      library_->summonDock();
      return library_->dock().openPromptHistory();
    case ActionId::openSettings:
      return openSettings();
    case ActionId::workspaceHealth:
      return openHealth();
    case ActionId::keyboardShortcuts:
      return (new ShortcutsDialog(on_.actions->shortcuts(), this))->open();
    case ActionId::quit:
      close();
      return;
    default:
      if (!viewer_->perform(id)) Q_EMIT actionUnhandled(id);
      return;
  }
}

// The methods have the same names on both kinds of field, but no type in common.
void MainWindow::editFocused(ActionId id) {
  const auto edit = [id](auto* field) {
    if (id == ActionId::cut)
      field->cut();
    else if (id == ActionId::copy)
      field->copy();
    else if (id == ActionId::paste)
      field->paste();
    else if (id == ActionId::undo)
      field->undo();
    else if (id == ActionId::redo)
      field->redo();
    else
      field->selectAll();
  };
  QWidget* focused = QApplication::focusWidget();
  if (auto* line = qobject_cast<QLineEdit*>(focused))
    edit(line);
  else if (auto* text = qobject_cast<QTextEdit*>(focused))
    edit(text);
}

void MainWindow::writeAboutItem(ActionId id) {
  const core::AssetRef item = on_.curation->soleItem();
  if (!item) return;
  const bool renaming = id == ActionId::renameItem;
  auto* dialog = renaming ? new TextDialog(texts::renameTitle(), texts::newName(), texts::rename(), this)
                          : new TextDialog(texts::notesTitle(), texts::notes(), texts::save(), this, TextSize::lines);
  dialog->setText(renaming ? QFileInfo(item->filename()).completeBaseName() : item->notes.value_or(QString()));
  connect(dialog, &TextDialog::written, this, [this, renaming, asset = item->id](const QString& text) {
    renaming ? on_.curation->rename(asset, text) : on_.curation->setNotes(asset, text);
  });
  dialog->open();
}

void MainWindow::chooseDestination() {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(actionRow(ActionId::moveToProject).title);
  for (const Destination& place : on_.curation->destinations())
    connect(menu->addAction(QString(place.name).replace(u'&', u"&&"_s)), &QAction::triggered, on_.curation,
            [this, project = place.project] { on_.curation->moveTo(project); });
  if (menu->isEmpty()) menu->addAction(texts::noOtherProject())->setEnabled(false);
  QWidget* over = library_->focusWidget() ? library_->focusWidget() : library_;
  const bool pressed = qobject_cast<QAbstractButton*>(over) != nullptr;
  menu->popup(over->mapToGlobal(pressed ? QPoint(0, over->height() + 4) : over->rect().center()));
}

void MainWindow::openSettings() {
  if (!settings_) settings_ = new SettingsDialog(on_, this);
  settings_->show();
  settings_->raise();
  settings_->activateWindow();
}

void MainWindow::openAccount() {
  openSettings();
  settings_->showPage(SettingsPage::account);
}

void MainWindow::openHealth() {
  if (!on_.health) return;
  if (!health_) health_ = new HealthDialog(*on_.health, this);
  health_->open();
}

// A clip gets the screen for itself, anything else with the window around it.
void MainWindow::toggleFullScreen() {
  if (immersion_->isOn()) return immersion_->leave();
  immersion_->enter();
  if (!immersion_->isOn()) setWindowState(windowState() ^ Qt::WindowFullScreen);
}

// Escape takes one step: a clip leaves the screen first.
void MainWindow::goBack() {
  if (immersion_->isOn()) return immersion_->leave();
  on_.actions->trigger(ActionId::goBack);
}

// The mouse's button for it works wherever the pointer is, one step at a press.
void MainWindow::stepBack() {
  for (Popover* popover : findChildren<Popover*>())
    if (popover->isVisible()) return popover->dismiss();
  if (viewer_->quickLook().isOpen()) return viewer_->quickLook().close();
  goBack();
}

bool MainWindow::event(QEvent* event) {
  // What lies under the pointer may take the press for its own, so it is met before.
  if (event->type() == QEvent::WinIdChange && windowHandle()) windowHandle()->installEventFilter(this);
  return QMainWindow::event(event);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == windowHandle() && event->type() == QEvent::MouseButtonPress &&
      static_cast<QMouseEvent*>(event)->button() == Qt::BackButton) {
    stepBack();
    return true;
  }
  if (!painted_ && event->type() == QEvent::Paint && watched == pages_) {
    painted_ = true;
    QTimer::singleShot(0, this, &MainWindow::firstPainted);
  }
  return QMainWindow::eventFilter(watched, event);
}

// As it was left, on a screen that is there; the first time in the middle of the screen, where the desktop puts it.
void MainWindow::placeWindow() {
  const QSize smallest = smallestContents(kSmallestSize, kFrame);
  setMinimumSize(smallest);
  const std::optional<WindowPlace> place = on_.window->rememberedPlace();
  if (!place || place->width <= 0 || place->height <= 0) {
    const QSize room = screen()->availableSize() - QSize(0, kFrame);
    resize(kFirstSize.boundedTo(room).expandedTo(smallest));
    return;
  }
  std::vector<QRect> screens;
  for (const QScreen* each : QGuiApplication::screens()) screens.push_back(each->availableGeometry());
  setGeometry(placeOnScreens({place->x, place->y, place->width, place->height}, screens, smallest, kFrame));
  if (place->maximized) setWindowState(windowState() | Qt::WindowMaximized);
}

void MainWindow::rememberPlace() {
  const QRect normal = isMaximized() || isFullScreen() ? normalGeometry() : geometry();
  on_.window->rememberPlace({normal.x(), normal.y(), normal.width(), normal.height(), isMaximized(),
                             library_->sidebarWidth(), library_->inspectorWidth()});
}

void MainWindow::hideEvent(QHideEvent* event) {
  rememberPlace();
  QMainWindow::hideEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (mayClose_ || on_.window->requestQuit()) return QMainWindow::closeEvent(event);
  event->ignore();
}

}  // namespace sorvan::views
