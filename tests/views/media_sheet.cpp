#include <QGridLayout>
#include <QHBoxLayout>
#include <QImage>
#include <QPainter>

#include "shell/views/controls.h"
#include "shell/views/empty_note.h"
#include "shell/views/feedback.h"
#include "shell/views/job_cell.h"
#include "shell/views/labels.h"
#include "shell/views/media_cell.h"
#include "shell/views/painting.h"
#include "views/component_sheets.h"
#include "views/samples.h"
#include "views/sheet_parts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kCell(158, 96);
constexpr int kRing = 4;

// One cell as a wall paints it.
class CellPicture final : public QWidget {
 public:
  CellPicture(GalleryCell cell, CellLook look) : cell_(std::move(cell)), look_(std::move(look)) {
    setFixedSize(kCell + QSize(2 * kRing, 2 * kRing));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QRect area = rect().adjusted(kRing, kRing, -kRing, -kRing);
    if (cell_.kind == CellKind::job)
      paintJobCell(painter, area, cell_.job, look_);
    else
      paintMediaCell(painter, area, cell_, look_);
    paintCellRings(painter, area, look_);
  }

 private:
  GalleryCell cell_;
  CellLook look_;
};

CellLook lookOf(const QString& picture) {
  CellLook look;
  look.thumbnail.state = ThumbnailStore::State::ready;
  look.thumbnail.picture = QPixmap::fromImage(QImage(picture));
  return look;
}

GalleryCell cellOf(CellKind kind, const QString& duration = {}) {
  GalleryCell cell = pictureCell(u"room_1"_s, 1.6);
  cell.kind = kind;
  cell.durationText = duration;
  return cell;
}

struct CellSample {
  QString title;
  GalleryCell cell;
  CellLook look;
};

std::vector<CellSample> itemSamples(const QString& pictures) {
  const CellLook room = lookOf(pictures + u"/room_1.jpg"_s);
  const CellLook boat = lookOf(pictures + u"/boat_gold_0.jpg"_s);
  const CellLook tin = lookOf(pictures + u"/tin_4.jpg"_s);
  CellLook hovered = room, selected = room, several = room, current = room;
  hovered.hovered = true;
  selected.selected = true;
  several.selected = several.several = true;
  current.keyboardCurrent = true;
  GalleryCell sound = cellOf(CellKind::audio, u"0:32"_s);
  sound.soundText = u"Music"_s;
  sound.soundIcon = u"music"_s;
  sound.title = u"Warm acoustic guitar"_s;
  GalleryCell marked = cellOf(CellKind::image);
  marked.favorite = true;
  marked.rating = 4;
  marked.statusText = u"Approved"_s;
  marked.statusToken = u"approved"_s;
  CellLook missing, loading;
  missing.thumbnail.state = ThumbnailStore::State::missing;
  loading.thumbnail.state = ThumbnailStore::State::loading;
  return {{u"Normal"_s, cellOf(CellKind::image), room},
          {u"Hover"_s, cellOf(CellKind::image), hovered},
          {u"Selected"_s, cellOf(CellKind::image), selected},
          {u"One of several selected"_s, cellOf(CellKind::image), several},
          {u"Keyboard"_s, cellOf(CellKind::image), current},
          {u"Video"_s, cellOf(CellKind::video, u"0:06"_s), boat},
          {u"Audio"_s, sound, {}},
          {u"Favorite, status, rating"_s, marked, tin},
          {u"File missing"_s, cellOf(CellKind::image), missing},
          {u"Thumbnail loading"_s, cellOf(CellKind::image), loading}};
}

std::vector<CellSample> jobSamples() {
  JobDisplay running = sampleJob(JobState::running, u"Wan 3.0"_s, u"Slow push-in over the water"_s);
  running.detail = u"Generating…"_s;
  running.elapsedText = u"1:42"_s;
  JobDisplay queued = sampleJob(JobState::queued, u"FLUX 3"_s, u"Harbour wall at dusk"_s);
  queued.detail = u"Waiting to start"_s;
  JobDisplay failed = sampleJob(JobState::failed, u"Veo3.1"_s, u"The quay at dawn"_s);
  failed.message = u"The request is taking longer than expected."_s;
  failed.action = JobAction::retry;
  failed.actionTitle = u"Retry"_s;
  JobDisplay cancelled = sampleJob(JobState::cancelled, u"Veo3.1"_s, u"The quay at dawn"_s);
  cancelled.detail = u"Cancelled. No credits were charged."_s;
  cancelled.action = JobAction::retry;
  cancelled.actionTitle = u"Retry"_s;
  std::vector<CellSample> samples;
  const std::pair<QString, JobDisplay> jobs[] = {
      {u"Running"_s, running}, {u"Queued"_s, queued}, {u"Failed"_s, failed}, {u"Cancelled"_s, cancelled}};
  for (const auto& [title, job] : jobs) samples.push_back({title, jobCell(job), {}});
  return samples;
}

QWidget* toast(AlertTone tone, const QString& text, const QString& second, const QString& action) {
  auto* card = new ToastCard({0, tone, text, second, action, true});
  card->setFixedSize(card->sizeHint().expandedTo(QSize(330, 0)));
  return card;
}

QWidget* notices() {
  auto* shortfall = new NoticeBar(AlertTone::warning, u"This needs 69 credits and you have 42."_s);
  shortfall->addAction(u"Buy Credits"_s);
  return column({new NoticeBar(AlertTone::information, u"Every model will make a 5 s clip."_s), shortfall,
                 new NoticeBar(AlertTone::error, u"The seed must be a non-negative whole number."_s),
                 new NoticeBar(AlertTone::success, u"Sorvan saved everything that was waiting."_s)});
}

class TooltipPicture final : public QWidget {
 public:
  TooltipPicture() { setFixedSize(300, 26); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    paintPanel(painter, rect(), metrics().radiusSmall, colors().surfaceTooltip);
    paintText(painter, rect().adjusted(9, 0, -9, 0),
              {u"Click Generate to use 24 credits"_s, fontFor(Type::small), colors().textTooltip});
  }
};

QWidget* emptyNote() {
  auto* note = new EmptyNote;
  note->setWords({u"grid-2x2"_s, u"No contact sheets here yet"_s, u"Select 2–8 items and press C to compare them."_s,
                  u"Show the Gallery"_s});
  note->setFixedHeight(170);
  return note;
}

}  // namespace

std::unique_ptr<QWidget> mediaSheet(const QString& pictures) {
  auto sheet = emptySheet(u"media"_s, u"Media cells and feedback"_s);
  auto* grid = new QGridLayout;
  grid->setSpacing(8);
  std::vector<CellSample> samples = itemSamples(pictures);
  for (CellSample& job : jobSamples()) samples.push_back(std::move(job));
  int place = 0;
  for (CellSample& sample : samples) {
    grid->addWidget(column({new CellPicture(sample.cell, sample.look), caption(sample.title)}), place / 4, place % 4);
    ++place;
  }
  const int below = place / 4 + 1;
  grid->addWidget(column({toast(AlertTone::success, u"Saved 2 images locally"_s, u"The quay at dawn"_s, {}),
                          toast(AlertTone::information, u"12 items moved to Trash"_s, {}, u"Undo"_s)}),
                  below, 0, 1, 2, Qt::AlignTop);
  grid->addWidget(column({notices(), new TooltipPicture}), below, 2, 1, 2, Qt::AlignTop);
  grid->addWidget(emptyNote(), below + 1, 0, 1, 4);
  fillSheet(*sheet, grid);
  return sheet;
}

}  // namespace sorvan::views
