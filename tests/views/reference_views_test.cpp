// The strip, the panel, the editor and the page of references, over a library.
#include <QComboBox>
#include <QDropEvent>
#include <QMimeData>
#include <QSignalSpy>

#include "shell/desk.h"
#include "shell/item_transfer.h"
#include "shell/library_saved_references.h"
#include "shell/views/attach_panel.h"
#include "shell/views/composer_dock.h"
#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/labels.h"
#include "shell/views/prompt_edit.h"
#include "shell/views/reference_chip.h"
#include "shell/views/reference_editor.h"
#include "shell/views/reference_strip.h"
#include "shell/views/saved_references_view.h"
#include "shell/views/thumbnail_store.h"
#include "support/made_pictures.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class ReferenceViewsTest : public Dressed {
 protected:
  ReferenceViewsTest() {
    catalogue::FalModel model;
    model.id = u"fal-ai/nano-banana-2/edit"_s;
    model.name = u"Nano Banana 2 Edit"_s;
    model.category = u"image-to-image"_s;
    model.maxCount = 4;
    model.imageInput = catalogue::ListInput{u"image_urls"_s, true};
    desk.catalog->add(model);
    desk.composing.setModels(composer::pictureModels(*desk.catalog));
    EXPECT_TRUE(desk.composing.useModel(core::MediaType::image));
    show(window, {1200, 800});
    dock.setGeometry(100, 400, 900, dock.heightForWidth(900));
    QObject::connect(&dock, &ComposerDock::heightChanged, &dock,
                     [this] { dock.resize(900, dock.heightForWidth(900)); });
    dock.show();
    dock.focusPrompt();
    test::runPosted();
  }
  QString file(const QString& name, int width) {
    desk.folder.write(u"outside/"_s + name, test::encoded(test::cornerMarked({width, 16}), "PNG"));
    return desk.folder / (u"outside/"_s + name);
  }
  void bring(int count) {
    QStringList files;
    for (int number = 0; number < count; ++number) files << file(u"p%1.png"_s.arg(number), 20 + number);
    desk.references.importFiles(files);
    settle();
  }
  void settle() {
    test::runUntil([this] { return !desk.references.isImporting(); });
    test::runPosted();
  }
  bool drop(const QMimeData& data) {
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&dock, &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent event(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&dock, &event);
    settle();
    return event.isAccepted();
  }
  std::size_t attached() const { return desk.composing.request().referenceIDs.size(); }
  QStringList chips() const {
    QStringList names;
    for (const ReferenceChip* chip : dock.findChildren<ReferenceChip*>())
      if (chip->isVisible()) names << chip->accessibleName();
    names.sort();
    return names;
  }

  test::Desk desk;
  LibrarySavedReferences saved{{desk.store, desk.composing, desk.state, desk.alerts, desk.references,
                                [this](const QString& search, std::size_t most) {
                                  return shell::newestPictures(desk.store, desk.gallery.index(), search, most);
                                }}};
  QWidget window;
  ThumbnailStore thumbnails;
  ComposerDock dock{desk.composer, thumbnails, &window};
};

TEST_F(ReferenceViewsTest, DroppedFilesBecomeChips) {
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(file(u"a.png"_s, 30)), QUrl::fromLocalFile(file(u"b.png"_s, 31))});
  EXPECT_TRUE(drop(data));
  EXPECT_EQ(chips(), (QStringList{u"@Reference1"_s, u"@Reference2"_s}));
  EXPECT_EQ(named<ReferenceButton>(dock, u"Reference"_s)->accessibleDescription().toStdString(), "2 of 8 attached");
}

TEST_F(ReferenceViewsTest, DroppedItemsOfTheLibraryAreAttachedWithoutACopy) {
  bring(1);
  const QUuid item = desk.composing.request().referenceIDs.front();
  desk.references.detach(item);
  const auto data = shell::transferOf({{item, desk.store.fileOf(*desk.store.asset(item)), true}});
  EXPECT_TRUE(drop(*data));
  EXPECT_EQ(attached(), 1u);
  EXPECT_EQ(desk.store.assets().size(), 1u);
}

TEST_F(ReferenceViewsTest, ADropOfWordsIsNotTaken) {
  QMimeData data;
  data.setText(u"a harbour"_s);
  EXPECT_FALSE(drop(data));
}

TEST_F(ReferenceViewsTest, AChipIsRemovedByItsCrossAndByDelete) {
  bring(2);
  QTest::mouseClick(named<IconButton>(dock, u"Remove @Reference1"_s), Qt::LeftButton);
  test::runPosted();
  EXPECT_EQ(chips(), (QStringList{u"@Reference2"_s}));
  QTest::keyClick(named<ReferenceChip>(dock, u"@Reference2"_s), Qt::Key_Delete);
  test::runPosted();
  EXPECT_EQ(attached(), 0u);
}

TEST_F(ReferenceViewsTest, ControlWithAnArrowMovesAChipAndItKeepsTheKeyboard) {
  bring(2);
  const QUuid second = desk.composing.request().referenceIDs[1];
  auto* chip = named<ReferenceChip>(dock, u"@Reference2"_s);
  chip->setFocus();
  QTest::keyClick(chip, Qt::Key_Left, Qt::ControlModifier);
  test::runPosted();
  EXPECT_EQ(desk.composing.request().referenceIDs.front(), second);
  EXPECT_EQ(QApplication::focusWidget()->accessibleName().toStdString(), "@Reference2");
}

TEST_F(ReferenceViewsTest, ThePanelAttachesAndTakesOffWithOnePressEach) {
  bring(1);
  dock.openAttachPanel();
  auto* panel = window.findChild<AttachPanelView*>();
  ASSERT_TRUE(panel);
  auto* grid = panel->findChild<AttachGrid*>();
  ASSERT_EQ(grid->rowCount(), 1);
  EXPECT_TRUE(grid->rowDescription(0).contains(u"attached"_s));
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->cellRect(0).center());
  test::runPosted();
  EXPECT_EQ(attached(), 0u);
  grid->setFocus();
  QTest::keyClick(grid, Qt::Key_Return);
  EXPECT_EQ(attached(), 1u);
}

TEST_F(ReferenceViewsTest, TheEditorSaysWhatIsWrongUnderItsFieldAndStaysOpenUntilItIsSaved) {
  bring(1);
  auto* editor = new ReferenceEditor(saved, saved.newDraft(ReferenceScope::global, desk.composing.request().referenceIDs),
                                     thumbnails, &window);
  editor->open();
  QSignalSpy accepted(editor, &QDialog::accepted);
  auto* save = named<Button>(*editor, u"Save"_s);
  named<TextField>(*editor, u"Name"_s)->setText(u"Rose Bottle"_s);
  editor->findChild<QComboBox*>()->setCurrentText(u"Product"_s);
  const auto says = [editor](const QString& words) {
    for (const Paragraph* paragraph : editor->findChildren<Paragraph*>())
      if (paragraph->isVisible() && paragraph->paragraph() == words) return true;
    return false;
  };
  EXPECT_TRUE(says(u"Type @RoseBottle in a prompt to use it."_s));
  QTest::mouseClick(save, Qt::LeftButton);
  EXPECT_TRUE(says(
      u"Say what the reference shows, in a few words, such as “a round coffee tin”. The model is told this."_s));
  EXPECT_EQ(accepted.count(), 0);
  named<TextField>(*editor, u"What it shows"_s)->setText(u"a rose perfume bottle"_s);
  QTest::mouseClick(save, Qt::LeftButton);
  EXPECT_EQ(accepted.count(), 1);
  ASSERT_EQ(desk.store.savedReferences().size(), 1u);
  EXPECT_EQ(desk.store.savedReferences().front()->name.toStdString(), "Rose Bottle");
}

TEST_F(ReferenceViewsTest, ThePageAttachesWithEnterEditsWithEAndDeletesWithDelete) {
  bring(1);
  SavedReferenceDraft draft = saved.newDraft(ReferenceScope::global, desk.composing.request().referenceIDs);
  draft.name = u"Look"_s;
  ASSERT_FALSE(saved.save(draft));
  desk.composing.reset();
  SavedReferencesView page(saved, ReferenceScope::global, thumbnails);
  show(page, {900, 500});
  ASSERT_EQ(page.grid()->rowCount(), 1);
  EXPECT_EQ(page.grid()->rowName(0).toStdString(), "@Look, 1 image");
  std::optional<SavedReferenceDraft> edited;
  QObject::connect(&saved, &SavedReferencesPresenter::editorRequested, &page,
                   [&](const SavedReferenceDraft& asked) { edited = asked; });
  QTest::keyClick(page.grid(), Qt::Key_E);
  ASSERT_TRUE(edited);
  EXPECT_EQ(edited->name.toStdString(), "Look");
  QTest::keyClick(page.grid(), Qt::Key_Return);
  EXPECT_EQ(attached(), 1u);
  QTest::keyClick(page.grid(), Qt::Key_Delete);
  EXPECT_EQ(page.grid()->rowCount(), 0);
  EXPECT_EQ(page.countText().toStdString(), "0 references");
}

}  // namespace
}  // namespace sorvan::views
