#include "shell/views/history_row.h"

#include "shell/views/icons.h"
#include "shell/views/job_cell.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kActionColumn = 128;
constexpr int kCostColumn = 84;
constexpr int kStartedColumn = 84;
constexpr int kModelColumn = 146;
constexpr int kButtonHeight = 26;
constexpr int kLine = 18;
constexpr int kMostDetailLines = 2;
constexpr int kLeastWords = 220;  // room for what happened to the money, in three lines

QFont buttonFont() { return fontFor(Type::small, Weight::medium); }

QColor detailColor(const JobDisplay& job, bool selected) {
  const Colors& c = colors();
  if (job.state == JobState::failed) return c.dangerText;
  if (job.state == JobState::running || job.state == JobState::salvaging) return c.accentText;
  return selected ? c.textTertiaryOnSelected : c.textTertiary;
}

QString actionIcon(JobAction action) {
  if (action == JobAction::saveResult) return u"download"_s;
  return action == JobAction::retry || action == JobAction::submitAgain ? u"refresh-cw"_s : QString();
}

void paintThumbnail(QPainter& painter, const QRect& place, const ThumbnailStore::Answer& thumbnail) {
  if (thumbnail.state == ThumbnailStore::State::ready)
    return paintCover(painter, place, metrics().radiusPicture, thumbnail.picture);
  paintPanel(painter, place, metrics().radiusPicture, colors().surfacePlaceholder);
  paintIcon(painter, u"image"_s, place, 14, {colors().textTertiary});
}

void paintButton(QPainter& painter, const QRect& row, const JobDisplay& job, bool hovered) {
  const Colors& c = colors();
  const QRect button = historyButton(row, job);
  if (button.isNull()) return;
  const bool quiet = job.state != JobState::failed;
  if (!quiet)
    paintPanel(painter, button, metrics().radiusControl, hovered ? c.controlFillHover : c.controlFill, c.controlBorder);
  else if (hovered)
    paintPanel(painter, button, metrics().radiusControl, c.stateHover);
  const QString icon = actionIcon(job.action);
  const QColor ink = quiet && !hovered ? c.textSecondary : c.textPrimary;
  if (!icon.isEmpty()) paintIcon(painter, icon, QRect(button.left() + 8, button.top(), 14, button.height()), 14, {ink});
  paintText(painter, button.adjusted(icon.isEmpty() ? 8 : 27, 0, -6, 0), {job.actionTitle, buttonFont(), ink});
}

// The prompt and how the job stands, as one block in the middle of the row.
void paintWords(QPainter& painter, const QRect& area, const JobDisplay& job, const HistoryRowLook& look) {
  const HistoryColumns columns(area.width());
  const int width = columns.wordsEnd - columns.words;
  const QString detail = job.detail.isEmpty() ? job.message : job.detail;
  TextLine words{detail, fontFor(Type::body), detailColor(job, look.selected || look.hovered)};
  int most = kMostDetailLines;
  int line = kLine;
  if (paragraphLines(words, width, most + 1) > most) {  // smaller, so that what happened to the money is read whole
    words.font = fontFor(Type::small);
    line = lineHeight(Type::small);
    ++most;
  }
  const int lines = paragraphLines(words, width, most);
  const int top = area.center().y() + 1 - (kLine + 1 + line * lines) / 2;
  paintText(painter, QRect(columns.words, top, width, kLine),
            {job.prompt, fontFor(Type::body, Weight::medium), colors().textPrimary});
  paintParagraph(painter, QRect(columns.words, top + kLine + 1, width, line * lines), words, line);
}

void paintRight(QPainter& painter, int right, int top, const QString& text, const QFont& font, const QColor& color) {
  paintText(painter, QRect(right - 96, top, 96, kLine), {text, font, color, Qt::AlignRight | Qt::AlignVCenter});
}

}  // namespace

HistoryColumns::HistoryColumns(int width)
    : icon(16),
      thumbnail(48),
      words(118),
      wordsEnd(0),
      model(0),
      modelEnd(0),
      startedEnd(0),
      costEnd(0),
      action(width - 16) {
  costEnd = action - kActionColumn + 12;
  startedEnd = costEnd - kCostColumn;
  modelEnd = startedEnd - kStartedColumn;
  model = modelEnd - kModelColumn;
  wordsEnd = model - 14;
  if (wordsEnd - words < kLeastWords) {  // a narrow list gives up the cost, then the model
    costEnd = startedEnd = action - kActionColumn + 12;
    modelEnd = startedEnd - 70;
    model = modelEnd - 110;
    wordsEnd = model - 10;
  }
  if (wordsEnd - words < kLeastWords) {
    model = modelEnd;
    wordsEnd = model - 10;
  }
}

QRect historyButton(const QRect& row, const JobDisplay& job) {
  if (job.action == JobAction::none || job.actionTitle.isEmpty()) return {};
  const int width = textWidth(job.actionTitle, buttonFont()) + (actionIcon(job.action).isEmpty() ? 16 : 36);
  return {row.right() - 16 - width, row.center().y() - kButtonHeight / 2 + 1, width, kButtonHeight};
}

void paintHistoryRow(QPainter& painter, const QRect& area, const JobDisplay& job, const HistoryRowLook& look) {
  const Colors& c = colors();
  const HistoryColumns columns(area.width());
  if (look.selected)
    painter.fillRect(area, c.stateSelected);
  else if (look.hovered)
    painter.fillRect(area, c.stateHover);
  painter.fillRect(QRect(area.left(), area.bottom(), area.width(), 1), c.lineSubtle);
  paintJobIcon(painter, QRect(columns.icon, area.top(), 16, area.height()), job.state);
  paintThumbnail(painter, QRect(columns.thumbnail, area.center().y() - 18, 56, 37), look.thumbnail);
  paintWords(painter, area, job, look);
  const int middle = area.center().y();
  const QColor dim = look.selected || look.hovered ? c.textTertiaryOnSelected : c.textTertiary;
  const int model = columns.modelEnd - columns.model;
  paintText(painter, QRect(columns.model, middle - kLine, model, kLine), {job.modelName, fontFor(Type::body), c.textSecondary});
  paintText(painter, QRect(columns.model, middle, model, kLine), {job.destination, fontFor(Type::body), dim});
  const int started = middle - (job.elapsedText.isEmpty() ? kLine / 2 : kLine);
  paintRight(painter, columns.startedEnd, started, job.startedText, fontFor(Type::body), c.textSecondary);
  paintRight(painter, columns.startedEnd, middle, job.elapsedText, fontFor(Type::mono), dim);
  if (columns.costEnd != columns.startedEnd)
    paintRight(painter, columns.costEnd, middle - kLine / 2, job.costText, fontFor(Type::body), c.textSecondary);
  paintButton(painter, area, job, look.buttonHovered);
  if (look.keyboardCurrent)
    paintRing(painter, QRectF(area).adjusted(3, 3, -3, -4), metrics().radiusControl, metrics().borderFocus, c.accentRing);
}

}  // namespace sorvan::views
