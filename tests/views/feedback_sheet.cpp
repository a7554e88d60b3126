// What the program tells: badges, notices, toasts, alerts, progress, banners, empty places and tooltips.
#include <QApplication>
#include <QPainter>
#include <QToolTip>

#include "shell/views/alert_dialog.h"
#include "shell/views/banner_bar.h"
#include "shell/views/controls.h"
#include "shell/views/empty_note.h"
#include "shell/views/feedback.h"
#include "shell/views/painting.h"
#include "views/component_sheets.h"
#include "views/component_states.h"
#include "views/sheet_parts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kColumn = 372;

QWidget* badges() {
  return row({new Badge(u"Top rated"_s, BadgeTone::accent), new Badge(u"New"_s, BadgeTone::info),
              new Badge(u"Low cost"_s, BadgeTone::neutral), new Badge(u"2 missing"_s, BadgeTone::warning),
              new Badge(u"Failed"_s, BadgeTone::danger), new Badge(u"Saved"_s, BadgeTone::success)});
}

QWidget* wide(QWidget* part, int width) {
  part->setFixedWidth(width);
  if (part->hasHeightForWidth()) part->setFixedHeight(std::max(part->minimumHeight(), part->heightForWidth(width)));
  return part;
}

QWidget* notice(AlertTone tone, const QString& text, const QString& action = {}) {
  auto* bar = new NoticeBar(tone, text);
  if (!action.isEmpty()) bar->addAction(action);
  return wide(bar, kColumn);
}

QWidget* notices() {
  QWidget* left = column({notice(AlertTone::information, u"Every model will make a 5 s clip."_s),
                          notice(AlertTone::success, u"Sorvan saved everything that was waiting."_s),
                          notice(AlertTone::error, u"The seed must be a non-negative whole number."_s)});
  QWidget* right = column({notice(AlertTone::warning, u"This needs 69 credits and you have 42."_s, u"Buy Credits"_s),
                           notice(AlertTone::warning,
                                  u"Social Portrait · 4:5 isn’t supported by every selected model. Choose a compatible ratio below."_s)});
  return row({left, right});
}

QWidget* toast(AlertTone tone, const QString& text, const QString& second = {}, const QString& action = {}) {
  return pinned(new ToastCard({0, tone, text, second, action, true}));
}

QWidget* toasts() {
  QWidget* left = column({toast(AlertTone::information, u"12 items moved to Trash"_s, {}, u"Undo"_s),
                          toast(AlertTone::warning, u"Two files could not be read"_s, u"quay_3.png, quay_4.png"_s)});
  QWidget* right = column({toast(AlertTone::success, u"Saved 2 images locally"_s, u"The quay at dawn · Nano Banana 2"_s),
                           toast(AlertTone::error, u"The workspace is read-only"_s, {}, u"Show Details"_s)});
  return row({left, right});
}

QWidget* alert(AlertTone tone, const QString& title, const QString& text, AlertButton first) {
  auto* holder = new QWidget;
  auto* dialog = new AlertDialog({0, tone, title, text, {std::move(first), {u"Cancel"_s, AlertButtonRole::plain, true}}},
                                 holder);
  QWidget* kept = pinned(dialog);
  delete holder;
  return kept;
}

QWidget* alerts() {
  return row({alert(AlertTone::warning, u"Delete “Coffee Launch”?"_s,
                    u"Its items stay in the library. The project itself cannot be restored."_s,
                    {u"Delete Project"_s, AlertButtonRole::destructive, false}),
              alert(AlertTone::information, u"Stop generating?"_s,
                    u"The request has been sent and may still cost credits."_s,
                    {u"Keep Working"_s, AlertButtonRole::primary, false})});
}

class ProgressLine final : public QWidget {
 public:
  explicit ProgressLine(bool still) : still_(still) { setFixedSize(220, 3); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    if (still_)
      paintStillLine(painter, rect());
    else
      paintTravellingLine(painter, rect());
  }

 private:
  bool still_;
};

QWidget* progress() {
  return row({new Spinner(14), new Spinner(16), new Spinner(24), column({caption(u"Travelling"_s), new ProgressLine(false)}),
              column({caption(u"With reduced motion"_s), new ProgressLine(true)})});
}

QWidget* banner(bool warns, const QString& text, const QString& action) {
  auto* bar = new BannerBar;
  bar->show({text, action, warns});
  return wide(bar, 2 * kColumn + 8);
}

QWidget* banners() {
  return column({banner(true, u"Some changes haven’t been saved."_s, u"Try Saving Again"_s),
                 banner(false, u"This workspace is temporary: it goes when Sorvan quits."_s, {})});
}

QWidget* emptyPlace(const QString& button) {
  auto* note = new EmptyNote;
  note->setWords({u"grid-2x2"_s, u"No contact sheets here yet"_s, u"Select 2–8 items and press C to compare them."_s, button});
  note->setFixedSize(kColumn, 168);
  return note;
}

// The tip itself, which is a window of its own.
class TipPicture final : public QWidget {
 public:
  explicit TipPicture(const QString& text) {
    QToolTip::showText(QPoint(10, 10), text);
    for (QWidget* window : QApplication::topLevelWidgets())
      if (window->inherits("QTipLabel")) picture_ = window->grab();
    QToolTip::hideText();
    setFixedSize(picture_.size() / picture_.devicePixelRatio());
  }

 protected:
  void paintEvent(QPaintEvent*) override { QPainter(this).drawPixmap(0, 0, picture_); }

 private:
  QPixmap picture_;
};

QWidget* tips() {
  return row({new TipPicture(u"Inspector  F8"_s), new TipPicture(u"Click Generate to use 24 credits"_s)});
}

}  // namespace

std::unique_ptr<QWidget> feedbackSheet() {
  return sheetOf(u"feedback"_s, u"Feedback"_s,
                 {{u"Badges"_s, badges()},
                  {u"Notices"_s, notices()},
                  {u"Toasts"_s, toasts()},
                  {u"Alerts"_s, alerts()},
                  {u"Progress of unknown length"_s, progress()},
                  {u"Banners"_s, banners()},
                  {u"Empty places"_s, row({emptyPlace(u"Show the Gallery"_s), emptyPlace({})})},
                  {u"Tooltips"_s, tips()}});
}

}  // namespace sorvan::views
