// sorvan-components FOLDER: paints every window with sample data into FOLDER, dark and light.
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMenuBar>

#include "account_samples.h"
#include "comparison_samples.h"
#include "cost_samples.h"
#include "shell/views/alert_dialog.h"
#include "shell/views/choice_popovers.h"
#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/fields.h"
#include "shell/views/labels.h"
#include "shell/views/library_view.h"
#include "shell/views/menu_strip.h"
#include "shell/views/model_picker.h"
#include "shell/views/prompt_edit.h"
#include "shell/views/segmented_control.h"
#include "shell/views/theme.h"
#include "shell/views/welcome_view.h"
#include "views/component_sheets.h"
#include "views/samples.h"

using namespace sorvan::views;
using namespace sorvan::shell;
using namespace Qt::Literals::StringLiterals;

namespace {

WelcomeDisplay welcomeSample() {
  return {
      u"Sorvan Studio"_s,
      u"A local workspace for your AI-generated images and videos."_s,
      u"Use Pictures/Sorvan"_s,
      u"Creates a Sorvan folder in Pictures, or opens the one already there"_s,
      u"Choose Another Folder…"_s,
      u"Your library stays in this folder. Generating and AI analysis send the selected prompt and references to the model provider.\nOrganising existing files needs no account or API key."_s};
}

void settle() {
  QElapsedTimer timer;
  timer.start();
  while (timer.elapsed() < 400)
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
}

void save(QWidget& widget, const QString& folder, const QString& name) {
  widget.show();
  settle();
  widget.grab().save(folder + u'/' + name + (Theme::instance().isDark() ? u"-dark.png"_s : u"-light.png"_s));
}

void saveSheets(const QString& folder) {
  for (const ComponentSheet& sheet : componentSheets()) {
    const std::unique_ptr<QWidget> made = sheet.make();
    save(*made, folder, made->objectName());
  }
}

// The main window without presenters: a menu strip over the library.
struct SampleWindow {
  SampleWall wall;
  SampleHistory history;
  SampleBrowser browser;
  SampleComposer composer;
  AlertsPresenter alerts;
  QWidget window;
  MenuStrip* strip = new MenuStrip(&window);
  LibraryView* library = nullptr;

  explicit SampleWindow(QSize size) {
    wall.set(sampleCells(u":/sorvan/samples"_s));
    fillHistory(history);
    composer.models = &browser;
    composer.shown.estimate = u"≈ $0.078"_s;
    library = new LibraryView({wall, history, composer, alerts}, &window);
    for (const char* menu : {"&File", "&Edit", "&View", "&Item", "&Generate", "&Help"})
      strip->bar().addMenu(QLatin1StringView(menu));
    strip->setActivity(u"1 generating"_s);
    library->sidebar().show(sampleSidebar());
    library->toolbar().setTitle(u"All Media"_s, u"48 items"_s);
    library->setInspectorShown(true);
    library->inspector().show(sampleItemInspector(u":/sorvan/samples"_s));
    library->toolbar().setRowHeight(176);
    window.resize(size);
    strip->setGeometry(0, 0, size.width(), 34);
    library->setGeometry(0, 34, size.width(), size.height() - 34);
  }
  void writePrompt() {
    composer.setExpanded(true);
    composer.text =
        u"Hero shot of the coffee tin on a slate counter by a rain-streaked window, steam from a cup just out of frame, cool morning light"_s;
    Q_EMIT composer.draftReplaced(composer.text);
    composer.editDraft(composer.text);
  }
};

// The picker's last tab: recommendations with one model being added, one there and one refused; then no answer.
void saveBrowser(SampleWindow& main, const QString& folder, const QString& tag) {
  for (QAbstractButton* button : main.window.findChildren<QAbstractButton*>())
    if (button->accessibleName() == u"Browse"_s && button->isVisible()) button->click();
  main.browser.setRow(u"edit"_s, BrowserRowState::added, u"Added"_s);
  main.browser.setRow(u"grok"_s, BrowserRowState::adding, u"Reading this model's settings…"_s);
  main.browser.setRow(u"mask"_s, BrowserRowState::offered, {},
                      u"Inpaint needs inputs Sorvan cannot supply yet: mask_url."_s);
  save(main.window, folder, u"browser-"_s + tag);
  main.browser.shown.rows.clear();
  main.browser.shown.heading.clear();
  main.browser.shown.allTitle.clear();
  main.browser.shown.state = BrowserState::failed;
  main.browser.shown.title = u"The catalog could not be read"_s;
  main.browser.shown.text = u"Host api.fal.ai not found"_s;
  Q_EMIT main.browser.changed();
  save(main.window, folder, u"browser-failed-"_s + tag);
}

// The composer with its settings open: a few values side by side, many of them in a menu.
void saveSettings(SampleWindow& main, const QString& folder, const QString& tag) {
  ComposerDisplay& shown = main.composer.shown;
  shown.settingsOffered = shown.settingsShown = true;
  shown.settings = {sampleSetting(u"resolution"_s, u"Resolution"_s, {u"0.5K"_s, u"1K"_s, u"2K"_s, u"4K"_s}),
                    sampleSetting(u"style"_s, u"Style"_s, {u"Model default"_s, u"Photographic and natural"_s, u"Sketch"_s})};
  Q_EMIT main.composer.changed();
  save(main.window, folder, u"settings-"_s + tag);
  shown.settingsShown = false;
  Q_EMIT main.composer.changed();
}

void saveWindows(const QString& folder, QSize size) {
  const QString tag = QString::number(size.width());
  {
    SampleWindow main(size);
    std::vector<GalleryCell> cells = main.wall.cells();
    cells.insert(cells.begin() + 4, sampleJobCells().front());
    main.wall.set(cells);
    main.library->wall().setSelection({main.wall.idAt(0)});
    main.writePrompt();
    save(main.window, folder, u"main-"_s + tag);
    saveSettings(main, folder, tag);
    main.composer.shown.notices = {ComposerNotice(
        u"Social Portrait · 4:5 isn’t supported by every selected model. Choose a compatible ratio below."_s)};
    main.composer.shown.lengthShown = true;
    main.composer.shown.countSuffix = u"per model"_s;
    main.composer.line = {u"Queued · outputs will be saved in Inbox."_s, false};
    Q_EMIT main.composer.messageChanged();
    Q_EMIT main.composer.changed();
    main.library->dock().openModelPicker();
    save(main.window, folder, u"picker-"_s + tag);
    saveBrowser(main, folder, tag);
    for (const char* chip : {"Ratio", "Count", "Length", "Seed"}) {
      for (Popover* open : main.window.findChildren<Popover*>()) open->dismiss();
      for (Chip* candidate : main.window.findChildren<Chip*>()) {
        if (candidate->accessibleName() == QLatin1StringView(chip)) candidate->click();
      }
      save(main.window, folder, QLatin1StringView(chip) + QString(u'-') + tag);
    }
  }
  {
    SampleWindow jobs(size);
    std::vector<GalleryCell> cells = sampleJobCells();
    for (const GalleryCell& cell : sampleCells(u":/sorvan/samples"_s)) cells.push_back(cell);
    jobs.wall.set(cells);
    jobs.library->wall().setSelection({jobs.wall.idAt(2)});
    jobs.library->inspector().show(sampleJobInspector());
    Toast toast{
        0, AlertTone::success, u"Saved 2 images locally"_s, u"The quay at dawn, wide · Nano Banana 2 Edit"_s, {}, true};
    jobs.alerts.showToast(toast);
    Toast notice{
        0,
        AlertTone::information,
        u"A job you cancelled had already finished, so its credits were spent. The result is in Trash: restore it from there if you want it."_s,
        {},
        u"Show Trash"_s,
        true};
    jobs.alerts.showToast(notice);
    save(jobs.window, folder, u"jobs-"_s + tag);
    jobs.library->setPage(ModeKind::activity);
    jobs.library->toolbar().setTitle(u"History"_s, {});
    save(jobs.window, folder, u"history-"_s + tag);
  }
  {
    SampleWindow detail(size);
    detail.library->asset().show(detail.wall.idAt(6));
    detail.library->setPage(ModeKind::asset);
    detail.library->toolbar().setTitle(u"roof_dusk_3.png"_s, {});
    detail.library->toolbar().setBack(u"All Media"_s);
    detail.library->toolbar().setSteps(true, true, true);
    detail.library->banner().show({u"Some changes haven’t been saved."_s, u"Try Saving Again"_s});
    detail.library->resize(detail.library->size() - QSize(0, 1));
    save(detail.window, folder, u"asset-"_s + tag);
  }
  {
    SampleWindow empty(size);
    empty.wall.set({});
    empty.library->inspector().show({});
    new AlertHost(empty.alerts, &empty.window);
    save(empty.window, folder, u"empty-"_s + tag);
    empty.alerts.ask(
        {0,
         AlertTone::warning,
         u"Work is still in progress"_s,
         u"Quitting stops files that are being imported, exported or downloaded. AI generations may continue online and still cost credits or money. You can find saved generation requests in History."_s,
         {{u"Keep Working"_s, AlertButtonRole::primary, true}, {u"Quit"_s, AlertButtonRole::plain, false}}},
        {});
    settle();
    if (auto* dialog = empty.window.findChild<AlertDialog*>()) save(*dialog, folder, u"alert"_s);
  }
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  Theme::instance().dress(application);
  holdMotion(500);  // the same pictures each time
  const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : u"."_s;
  QDir().mkpath(folder);
  for (const Appearance appearance : {Appearance::dark, Appearance::light}) {
    Theme::instance().setAppearance(appearance);
    saveSheets(folder);
    saveComparison([&folder](QWidget& widget, const QString& name) { save(widget, folder, name); });
    saveCosts([&folder](QWidget& widget, const QString& name) { save(widget, folder, name); });
    saveAccount([&folder](QWidget& widget, const QString& name) { save(widget, folder, name); });
    for (const QSize size : {QSize(1440, 900), QSize(1024, 680)}) {
      WelcomeView welcome(welcomeSample());
      welcome.resize(size - QSize(0, 34));
      save(welcome, folder, u"welcome-%1"_s.arg(size.width()));
      saveWindows(folder, size);
    }
  }
  return 0;
}
