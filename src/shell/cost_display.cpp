#include "shell/cost_display.h"

#include "account/account_texts.h"
#include "shell/cost_texts.h"
#include "shell/wording.h"

#include <QLocale>

#include <algorithm>

namespace sorvan::shell {
using namespace Qt::Literals::StringLiterals;

namespace {

QString joined(const QStringList& parts) { return parts.join(u" · "_s); }

// “Today 10:21”, “Yesterday 10:21”, “19 Nov”, “19 Nov 2025”.
QString dateText(Instant moment, Instant now) {
  const QDate day = moment.toDateTime().toLocalTime().date();
  const QDate today = now.toDateTime().toLocalTime().date();
  const qint64 days = day.daysTo(today);
  if (days == 0 || days == 1) return dayAndTimeText(moment, now);
  return QLocale().toString(day, day.year() == today.year() ? u"d MMM"_s : u"d MMM yyyy"_s);
}

// “160 images · 25 videos”; assistant's work only where there is nothing else.
QString workText(const account::WorkCounts& work) {
  QStringList parts;
  if (work.images > 0) parts << texts::costImages(work.images);
  if (work.videos > 0) parts << texts::costVideos(work.videos);
  if (work.sounds > 0) parts << texts::costSounds(work.sounds);
  if (parts.isEmpty() && work.requests > 0) parts << texts::costRequests(work.requests);
  return joined(parts);
}

// “41 rewrites · 9 reviews”
QString assistanceText(const std::vector<account::Charge>& charges) {
  int rewrites = 0;
  int reviews = 0;
  int commands = 0;
  int others = 0;
  for (const account::Charge& charge : charges) {
    if (charge.mediaType) continue;
    if (charge.title.startsWith(u"Improve Prompt"_s))
      ++rewrites;
    else if (charge.title.startsWith(u"Analyze"_s))
      ++reviews;
    else if (charge.title == u"Interpret Command"_s)
      ++commands;
    else
      ++others;
  }
  QStringList parts;
  if (rewrites > 0) parts << texts::costRewrites(rewrites);
  if (reviews > 0) parts << texts::costReviews(reviews);
  if (commands > 0) parts << texts::costCommands(commands);
  if (others > 0) parts << texts::costRequests(others);
  return parts.isEmpty() ? texts::costNoOutputs : joined(parts);
}

std::array<CostTile, 4> tilesOf(const CostPage& page, const account::CostBreakdown& breakdown,
                                const CostQuestion& question) {
  account::WorkCounts work;
  double total = 0;
  int unpriced = 0;
  for (const account::Charge& charge : page.charges) {
    work.add(charge);
    total += charge.cost.value_or(0);
    if (charge.mediaType && !charge.cost) ++unpriced;
  }
  account::WorkCounts outputs = work;
  outputs.requests = 0;
  const QString made = workText(outputs);
  return {{{texts::costTotal, question.spend.text(total), costPeriodText(page.charges, question)},
           {texts::costOutputs, countText(work.outputs()), made.isEmpty() ? texts::costNoOutputs : made},
           {texts::costAssistance, question.spend.text(breakdown.report.assistant), assistanceText(page.charges)},
           {texts::costUnpriced, countText(unpriced), texts::costUnpricedDetail}}};
}

std::vector<CostBar> barsOf(const std::vector<account::CostSlice>& slices, const account::Spend& spend) {
  const double longest = slices.empty() ? 0 : slices.front().total;
  std::vector<CostBar> bars;
  for (const account::CostSlice& slice : slices)
    bars.push_back({slice.name, workText(slice.work), spend.text(slice.total),
                    longest > 0 ? std::clamp(slice.total / longest, 0.0, 1.0) : 0});
  return bars;
}

// What was paid with a key of one's own is an estimate, and says so.
void markEstimates(std::vector<CostBar>& bars, const std::vector<account::CostSlice>& slices,
                   const account::Spend& spend) {
  if (!spend.ownKeyAllowed) return;
  for (std::size_t at = 0; at < bars.size(); ++at)
    if (slices[at].name != u"Sorvan Credits"_s) bars[at].totalText = account::Spend::estimate(slices[at].total);
}

}  // namespace

CostPage costPage(const account::ChargeBook& book, const CostQuestion& question) {
  const account::ChargeScope scope = question.about.chargeScope(question.now);
  CostPage page;
  page.charges = account::chargesWithin(book.charges, scope);
  page.names = book.names;
  const account::CostBreakdown breakdown = account::costBreakdown(page.charges, scope.interval, page.names);
  page.tiles = tilesOf(page, breakdown, question);
  page.chart = costChart(page.charges, breakdown, question);
  page.bars = {barsOf(breakdown.models, question.spend), barsOf(breakdown.projects, question.spend),
               barsOf(breakdown.payment, question.spend)};
  markEstimates(page.bars[static_cast<std::size_t>(CostBreakdownKind::payment)], breakdown.payment, question.spend);
  return page;
}

CostRow costRow(const CostPage& page, std::size_t row, const account::Spend& spend, Instant now) {
  const account::Charge& charge = page.charges.at(row);
  CostRow shown;
  shown.date = dateText(charge.date, now);
  const QString& what = charge.mediaType && !charge.prompt.isEmpty() ? charge.prompt : charge.title;
  shown.charge = what.simplified();
  shown.model = charge.mediaType ? page.names.model(charge.model) : texts::costAssistant;
  shown.paidWith = charge.paidWith();
  shown.cost = charge.costDisplay(spend);
  shown.opens = charge.asset != nullptr;
  QStringList detail;
  if (!charge.filename.isEmpty()) detail << charge.filename;
  if (charge.note && !charge.note->isEmpty()) detail << *charge.note;
  shown.detail = detail.join(u'\n');
  return shown;
}

}  // namespace sorvan::shell
