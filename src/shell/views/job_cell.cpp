#include "shell/views/job_cell.h"

#include <QPainterPath>

#include "shell/views/feedback.h"
#include "shell/views/icons.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPadX = 12;
constexpr int kPadY = 11;
constexpr int kHead = 18;
constexpr int kButton = 26;
constexpr int kLine = 3;
constexpr int kClose = 22;
constexpr double kNarrowestJob = 1.25;
constexpr double kWidestJob = 2.4;

bool canBeDismissed(const JobDisplay& job) { return job.state == JobState::failed || job.state == JobState::cancelled; }
bool canBeCancelled(const JobDisplay& job) { return job.action == JobAction::cancel; }
bool hasButton(const JobDisplay& job) {
  return job.action != JobAction::none && job.action != JobAction::cancel && job.action != JobAction::show &&
         !job.actionTitle.isEmpty();
}

QString actionIcon(JobAction action) {
  if (action == JobAction::saveResult) return u"download"_s;
  return u"refresh-cw"_s;
}

QFont buttonFont() { return fontFor(Type::small, Weight::medium); }

QRect closeRect(const QRect& area) { return {area.right() - kClose - 6, area.top() + 8, kClose, kClose}; }

QRect actionRect(const QRect& area, const JobDisplay& job) {
  const int width = textWidth(job.actionTitle, buttonFont()) + 14 + 5 + 20;
  return {area.left() + kPadX, area.bottom() - kPadY - kButton + 1, std::min(width, area.width() - 2 * kPadX), kButton};
}

QRect detailsRect(const QRect& area, const JobDisplay& job) {
  const QRect action = actionRect(area, job);
  const int width = textWidth(texts::showDetails(), buttonFont()) + 20;
  const QRect details(action.right() + 7, action.top(), width, kButton);
  return details.right() <= area.right() - kPadX ? details : QRect();
}

struct JobInk {
  QColor icon;
  QColor name;
  QColor words;
  QColor line;
};

JobInk inkOf(const JobDisplay& job) {
  const Colors& c = colors();
  if (job.state == JobState::failed) return {c.dangerText, c.textPrimary, c.textSecondary, c.dangerText};
  if (job.state == JobState::cancelled) return {c.textTertiary, c.textSecondary, c.textTertiary, c.lineDefault};
  return {c.textTertiary, c.textPrimary, c.textSecondary, c.lineDefault};
}

void paintHead(QPainter& painter, const QRect& area, const JobDisplay& job, const CellLook& look) {
  const JobInk ink = inkOf(job);
  QRect head(area.left() + kPadX, area.top() + kPadY, area.width() - 2 * kPadX, kHead);
  paintJobIcon(painter, QRectF(head.left(), head.top(), 14, head.height()), job.state);
  head.setLeft(head.left() + 20);
  const bool close = canBeCancelled(job) || (canBeDismissed(job) && look.hovered);
  int right = close ? kClose : 0;
  if (job.state == JobState::failed && !close) {
    right =
        paintText(painter, head,
                  {texts::failed(), fontFor(Type::caption), colors().dangerText, Qt::AlignRight | Qt::AlignVCenter}) +
        8;
  }
  paintText(painter, head.adjusted(0, 0, -right, 0), {job.modelName, fontFor(Type::small, Weight::medium), ink.name});
  if (!close) return;
  const bool hot = look.hoveredPart == CellPart::dismiss;
  if (hot) paintPanel(painter, closeRect(area), metrics().radiusControl, colors().stateHover);
  paintIcon(painter, u"x"_s, closeRect(area), 14, {hot ? colors().textPrimary : colors().textTertiary});
}

void paintActionButton(QPainter& painter, const QRect& area, const JobDisplay& job, const CellLook& look) {
  const Colors& c = colors();
  const QRect button = actionRect(area, job);
  const bool hot = look.hoveredPart == CellPart::action;
  const bool quiet = job.state == JobState::cancelled;
  if (!quiet)
    paintPanel(painter, button, metrics().radiusControl, hot ? c.controlFillHover : c.controlFill, c.controlBorder);
  else if (hot)
    paintPanel(painter, button, metrics().radiusControl, c.stateHover);
  const QColor ink = quiet && !hot ? c.textSecondary : c.textPrimary;
  paintIcon(painter, actionIcon(job.action), QRect(button.left() + 9, button.top(), 14, kButton), 14, {ink});
  paintText(painter, button.adjusted(28, 0, -8, 0), {job.actionTitle, buttonFont(), ink});
  const QRect details = detailsRect(area, job);
  if (quiet || details.isNull()) return;
  const bool hotDetails = look.hoveredPart == CellPart::details;
  if (hotDetails) paintPanel(painter, details, metrics().radiusControl, c.stateHover);
  paintText(painter, details,
            {texts::showDetails(), buttonFont(), hotDetails ? c.textPrimary : c.textSecondary, Qt::AlignCenter});
}

// What the cell says: while it works what was asked for, afterwards why it ended.
QString wordsOf(const JobDisplay& job) {
  if (job.state == JobState::failed) {
    const bool both = !job.detail.isEmpty() && !job.message.isEmpty();
    return job.message + (both ? u"\n"_s : QString()) + job.detail;
  }
  if (job.state == JobState::cancelled || job.state == JobState::salvaging)
    return job.detail.isEmpty() ? job.prompt : job.detail;
  return job.prompt;
}

int footHeight(const JobDisplay& job) {
  if (hasButton(job)) return kButton + 6;
  return canBeDismissed(job) ? 0 : 20;
}

void paintFoot(QPainter& painter, const QRect& area, const JobDisplay& job) {
  const Colors& c = colors();
  const QRect foot(area.left() + kPadX, area.bottom() - kPadY - 15, area.width() - 2 * kPadX, 16);
  const QColor ink = job.state == JobState::queued ? c.textTertiary : c.textSecondary;
  const int clock =
      job.elapsedText.isEmpty() || job.state == JobState::queued
          ? 0
          : paintText(painter, foot,
                      {job.elapsedText, fontFor(Type::mono), c.textSecondary, Qt::AlignRight | Qt::AlignVCenter}) +
                8;
  // What is fetched after all is told in the cell's words already.
  if (job.state == JobState::salvaging) return;
  paintText(painter, foot.adjusted(0, 0, -clock, 0), {job.detail, fontFor(Type::caption), ink});
}

}  // namespace

double jobCellAspect(double outputAspect) { return std::clamp(outputAspect, kNarrowestJob, kWidestJob); }

void paintJobIcon(QPainter& painter, const QRectF& area, JobState state, int side) {
  const Colors& c = colors();
  if (side <= 0) side = metrics().iconSmall;
  switch (state) {
    case JobState::running:
    case JobState::salvaging:
      return paintSpinner(painter, area, side, c.accentText, spinnerDegrees());
    case JobState::queued:
      return paintIcon(painter, u"clock"_s, area, side, {c.textTertiary});
    case JobState::failed:
      return paintIcon(painter, u"circle-alert"_s, area, side, {c.dangerText});
    case JobState::cancelled:
      return paintIcon(painter, u"circle-x"_s, area, side, {c.textTertiary});
    case JobState::complete:
      return paintIcon(painter, u"circle-check"_s, area, side, {c.successText});
  }
}

void paintJobCell(QPainter& painter, const QRect& area, const JobDisplay& job, const CellLook& look) {
  const JobInk ink = inkOf(job);
  const bool plain = !look.hovered || job.state == JobState::failed;
  paintPanel(painter, area, metrics().radiusControl, colors().surfaceRaised,
             plain ? ink.line : colors().controlBorderStrong);
  paintHead(painter, area, job, look);
  const int top = area.top() + kPadY + kHead + 7;
  const int bottom = area.bottom() - kPadY - footHeight(job);
  const QRect words(area.left() + kPadX, top, area.width() - 2 * kPadX, bottom - top);
  paintParagraph(painter, words, {wordsOf(job), fontFor(Type::small), ink.words}, lineHeight(Type::small));
  if (hasButton(job))
    paintActionButton(painter, area, job, look);
  else if (!canBeDismissed(job))
    paintFoot(painter, area, job);
  if (!isMoving(job)) return;
  const QRectF inside = QRectF(area).adjusted(1, 1, -1, -1);
  QPainterPath corners;
  corners.addRoundedRect(inside, metrics().radiusControl - 1, metrics().radiusControl - 1);
  painter.save();
  painter.setClipPath(corners, Qt::IntersectClip);
  paintTravellingLine(painter, QRectF(inside.left(), inside.bottom() - kLine, inside.width(), kLine));
  painter.restore();
}

CellPart jobPartAt(const QRect& area, const JobDisplay& job, QPoint point) {
  if (!area.contains(point)) return CellPart::none;
  if ((canBeCancelled(job) || canBeDismissed(job)) && closeRect(area).contains(point)) return CellPart::dismiss;
  if (!hasButton(job)) return CellPart::body;
  if (actionRect(area, job).contains(point)) return CellPart::action;
  if (job.state == JobState::failed && detailsRect(area, job).contains(point)) return CellPart::details;
  return CellPart::body;
}

}  // namespace sorvan::views
