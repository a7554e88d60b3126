// Sample data for the widgets: a wall, a history and a composer without a library behind them.
#pragma once

#include <QStringList>

#include "shell/composer_presenter.h"
#include "shell/inspector_presenter.h"
#include "shell/model_browser.h"
#include "shell/sidebar_presenter.h"
#include "shell/views/history_view.h"
#include "shell/views/wall_source.h"

namespace sorvan::views {

// Cells held in a vector.
class SampleWall final : public WallSource {
 public:
  void set(std::vector<GalleryCell> cells);
  std::vector<GalleryCell>& cells() { return cells_; }

  int count() const override { return static_cast<int>(cells_.size()); }
  QUuid idAt(int index) const override { return cells_.at(static_cast<size_t>(index)).id; }
  double aspectRatioAt(int index) const override { return cells_.at(static_cast<size_t>(index)).aspectRatio; }
  bool isJobAt(int index) const override { return cells_.at(static_cast<size_t>(index)).kind == CellKind::job; }
  GalleryCell cellAt(int index) const override;
  int indexOf(QUuid id) const override;
  QString emptyTitle() const override { return QStringLiteral("Nothing here yet"); }
  QString emptyText() const override { return QStringLiteral("Describe a picture below and press Generate."); }

  mutable int asked = 0;  // how often a cell was made

 private:
  std::vector<GalleryCell> cells_;
  QHash<QUuid, int> indices_;
};

class SampleHistory final : public HistorySource {
 public:
  void set(std::vector<JobDisplay> jobs, std::vector<JobGroup> groups);

  int count() const override { return static_cast<int>(jobs_.size()); }
  JobDisplay rowAt(int index) const override { return jobs_.at(static_cast<size_t>(index)); }
  QUuid idAt(int index) const override { return jobs_.at(static_cast<size_t>(index)).id; }
  int indexOf(QUuid id) const override;
  std::vector<JobGroup> groups() const override { return groups_; }
  QString emptyTitle() const override { return QStringLiteral("No generations yet"); }

 private:
  std::vector<JobDisplay> jobs_;
  std::vector<JobGroup> groups_;
};

// Keeps what it is told and notes each call.
// A setting of these values, of which the second is chosen.
SettingChoices sampleSetting(const QString& field, const QString& label, const QStringList& values);

class SampleComposer final : public ComposerPresenter {
 public:
  SampleComposer();

  ComposerDisplay display() const override { return shown; }
  std::vector<ModelSection> modelSections() const override { return shown.audio ? sounds : sections; }
  ModelBrowserPresenter* browser() override { return models; }
  MessageLine message() const override { return line; }
  QString draft() const override { return text; }
  std::vector<PastPrompt> pastPrompts() const override { return past; }
  void editDraft(const QString& draft) override;
  void chooseOnlyModel(const QString& key) override;
  void setModelChosen(const QString& key, bool chosen) override;
  void chooseSize(const QString& size) override;
  void chooseCount(int count) override;
  void chooseLength(const QString& value) override;
  void editSeed(const QString& seed) override;
  void rollSeed() override;
  void setExpanded(bool expanded) override;
  void focus() override { Q_EMIT focusRequested(); }
  void startAudio() override;
  void startImages() override;
  void showModels() override { calls.append(QStringLiteral("prices")); }
  void payWithOwnKey(bool ownKey) override { calls.append(ownKey ? QStringLiteral("own key") : QStringLiteral("credits")); }
  void showAccount() override { calls.append(QStringLiteral("account")); }
  void submit() override { calls.append(QStringLiteral("submit")); }
  void clear() override;
  void reusePrompt(QUuid) override { calls.append(QStringLiteral("reuse")); }
  void useAsReference(QUuid) override { calls.append(QStringLiteral("reference")); }
  void detachReference(QUuid item) override { calls.append(QStringLiteral("detach ") + item.toString()); }
  void removeMarks() override { calls.append(QStringLiteral("remove marks")); }
  void openMarks(QUuid item) override { calls.append(QStringLiteral("open marks ") + item.toString()); }

  ComposerDisplay shown;
  std::vector<ModelSection> sections;
  std::vector<ModelSection> sounds;
  ModelBrowserPresenter* models = nullptr;
  MessageLine line;
  QString text;
  std::vector<PastPrompt> past;
  QStringList calls;
};

// Shows what it was given and notes each call.
class SampleBrowser final : public ModelBrowserPresenter {
 public:
  SampleBrowser();

  BrowserDisplay display() const override { return shown; }
  void appear() override { calls.append(QStringLiteral("appear")); }
  void chooseCategory(int category) override;
  void editWords(const QString& words) override;
  void showAll() override { calls.append(QStringLiteral("all")); }
  void loadMore() override;
  void searchAgain() override { calls.append(QStringLiteral("again")); }
  void add(const QString& id) override { calls.append(QStringLiteral("add ") + id); }
  void cancelAdding(const QString& id) override { calls.append(QStringLiteral("cancel ") + id); }
  void remove(const QString& id) override { calls.append(QStringLiteral("remove ") + id); }
  // Another state of the row with that id.
  void setRow(const QString& id, BrowserRowState state, const QString& stateText, const QString& problem = {});

  BrowserDisplay shown;
  QStringList calls;
};
BrowserRow sampleBrowserRow(const QString& id, const QString& name, const QString& summary);

GalleryCell pictureCell(const QString& name, double aspectRatio);
JobDisplay sampleJob(JobState state, const QString& model, const QString& prompt);
GalleryCell jobCell(const JobDisplay& job);

// The gallery, jobs and history of the design's pictures. `pictures` is a folder with the sample pictures.
std::vector<GalleryCell> sampleCells(const QString& pictures);
std::vector<GalleryCell> sampleJobCells();
SidebarDisplay sampleSidebar();
InspectorDisplay sampleItemInspector(const QString& pictures);
InspectorDisplay sampleJobInspector();
void fillHistory(SampleHistory& history);

}  // namespace sorvan::views
