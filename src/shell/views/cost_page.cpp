#include <QStandardPaths>

#include "account/account_texts.h"
#include "shell/cost_texts.h"
#include "shell/views/cost_chart.h"
#include "shell/views/cost_report_page.h"
#include "shell/views/cost_table.h"
#include "shell/views/desktop_folder_chooser.h"
#include "shell/views/library_view.h"
#include "shell/views/segmented_control.h"

namespace sorvan::views {

namespace {

// Asks where the file for a spreadsheet is to stand; lives as long as the library's view.
class CostFile final : public QObject {
 public:
  CostFile(LibraryView& library, CostsPresenter& costs) : QObject(&library), costs_(costs), chooser_(&library) {}

  void ask() {
    FolderQuestion question;
    question.acceptLabel = shell::texts::costSave;
    question.message = account::texts::exportHelp();
    question.startFolder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    chooser_.chooseFileToWrite(question, costs_.exportName(), [this](const std::optional<QString>& file) {
      if (file) costs_.exportTo(*file);
    });
  }

 private:
  CostsPresenter& costs_;
  DesktopFolderChooser chooser_;
};

}  // namespace

void addCostPage(const PageDesk& desk) {
  CostsPresenter* costs = desk.on.costs;
  if (!costs) return;
  auto* page = new CostReportPage(*costs);
  auto* file = new CostFile(desk.library, *costs);
  PageTraits traits;
  traits.title = [costs] { return PageTitle{titleOf(ModeKind::costs), costs->workspaceName()}; };
  traits.keyboard = page->chart();
  traits.tools = page->tools();
  traits.hasInspector = false;
  QObject::connect(page, &CostReportPage::exportRequested, file, [file] { file->ask(); });
  QObject::connect(costs, &CostsPresenter::changed, &desk.library, &LibraryView::titleChanged);
  desk.library.addPage(ModeKind::costs, page, traits);
}

}  // namespace sorvan::views
