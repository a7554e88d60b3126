#include "account/cost_report.h"

#include <algorithm>
#include <map>

#include <QDate>
#include <QHash>

#include "account/account_texts.h"
#include "base/ids.h"
#include "core/library_store.h"
#include "core/workspace_files.h"

namespace sorvan::account {

using namespace Qt::StringLiterals;

namespace {

constexpr double hundredDays = 8640000;
constexpr double ninetyDays = 7776000;

QString typeCell(const Charge& charge) { return charge.mediaType ? rawValue(*charge.mediaType) : u"assistant"_s; }

struct LineKey {
  QString provider;
  QString model;
  MediaType mediaType = MediaType::image;
  bool operator==(const LineKey&) const = default;
};
std::size_t qHash(const LineKey& key, std::size_t seed) {
  return qHashMulti(seed, key.provider, key.model, static_cast<int>(key.mediaType));
}

/// Sums by name, in the order in which the names turn up.
class Slices {
 public:
  void add(const QString& name, const Charge& charge) {
    const auto place = places.find(name);
    if (place == places.end()) {
      places.insert(name, slices.size());
      slices.push_back({name});
    }
    CostSlice& slice = slices[place == places.end() ? slices.size() - 1 : *place];
    slice.total += charge.cost.value_or(0);
    if (charge.mediaType) ++slice.outputs;
    slice.work.add(charge);
  }
  std::vector<CostSlice> dearestFirst() {
    std::stable_sort(slices.begin(), slices.end(),
                     [](const CostSlice& a, const CostSlice& b) { return a.total > b.total; });
    return std::move(slices);
  }

 private:
  QHash<QString, std::size_t> places;
  std::vector<CostSlice> slices;
};

/// The beginning of the day or month of a moment. Neighbouring charges mostly share one.
class Buckets {
 public:
  explicit Buckets(bool byMonth) : months(byMonth) {}
  Instant of(Instant moment) {
    if (moment >= start && moment < end) return start;
    const QDate day = moment.toDateTime().toLocalTime().date();
    const QDate first = months ? QDate(day.year(), day.month(), 1) : day;
    start = Instant::fromDateTime(first.startOfDay());
    end = Instant::fromDateTime((months ? first.addMonths(1) : first.addDays(1)).startOfDay());
    return start;
  }

 private:
  bool months;
  Instant start{0};
  Instant end{0};
};

bool spansLong(const std::vector<Charge>& charges, const std::optional<DateInterval>& interval) {
  if (interval) return interval->end - interval->start > hundredDays;
  return !charges.empty() && charges.front().date - charges.back().date > hundredDays;
}

std::vector<CostPoint> seriesOf(const std::vector<Charge>& charges, bool byMonth) {
  Buckets buckets(byMonth);
  std::map<std::pair<double, QString>, double> sums;
  for (const Charge& charge : charges)
    sums[{buckets.of(charge.date).seconds, kindOf(charge)}] += charge.cost.value_or(0);
  std::vector<CostPoint> series;
  for (const auto& [key, total] : sums) series.push_back({{key.first}, key.second, total});
  return series;
}

QString cost(const Charge& charge) { return charge.cost ? QString::number(*charge.cost, 'f', 4) : QString(); }

QString csvLine(const ChargeNames& names, const Charge& charge) {
  const QStringList cells{isoText(charge.date),
                          names.project(charge.projectID),
                          charge.mediaType ? charge.filename : charge.title,
                          typeCell(charge),
                          charge.provider,
                          charge.model,
                          cost(charge),
                          charge.basis,
                          charge.prompt};
  QStringList written;
  for (const QString& cell : cells) written << csvCell(cell);
  return written.join(u',');
}

}  // namespace

CostReport costReport(const std::vector<Charge>& charges) {
  CostReport report;
  QHash<LineKey, std::size_t> places;
  for (const Charge& charge : charges) {
    if (!charge.mediaType) {
      report.assistant += charge.cost.value_or(0);
      ++report.assistantCount;
      continue;
    }
    const LineKey key{charge.provider, charge.model, *charge.mediaType};
    auto place = places.find(key);
    if (place == places.end()) {
      place = places.insert(key, report.lines.size());
      report.lines.push_back({charge.provider, charge.model, *charge.mediaType});
    }
    CostLine& line = report.lines[*place];
    ++line.outputs;
    line.total += charge.cost.value_or(0);
    if (!charge.cost) ++line.unpriced;
  }
  std::stable_sort(report.lines.begin(), report.lines.end(), [](const CostLine& a, const CostLine& b) {
    return a.total != b.total ? a.total > b.total : a.model < b.model;
  });
  return report;
}

CostReport costReport(const LibraryStore& store, const ChargeScope& scope) { return costReport(charges(store, scope)); }

void WorkCounts::add(const Charge& charge) {
  if (!charge.mediaType) {
    ++requests;
    return;
  }
  const MediaType type = *charge.mediaType;
  ++(type == MediaType::video ? videos : type == MediaType::audio ? sounds : images);
}

QString kindOf(const Charge& charge) {
  if (!charge.mediaType) return texts::seriesAssistant();
  if (*charge.mediaType == MediaType::video) return texts::seriesVideo();
  return *charge.mediaType == MediaType::audio ? texts::seriesAudio() : texts::seriesImages();
}

QString ChargeNames::project(const std::optional<QUuid>& id) const {
  return id ? projects.value(*id, texts::inbox()) : texts::inbox();
}

ChargeNames projectNames(const LibraryStore& store) {
  ChargeNames names;
  for (const ProjectRef& project : store.projects()) names.projects.insert(project->id, project->name);
  return names;
}

CostBreakdown costBreakdown(const LibraryStore& store, const ChargeScope& scope, const NameOfModel& nameOfModel) {
  const std::vector<Charge> rows = charges(store, scope);
  ChargeNames names = projectNames(store);
  for (const Charge& row : rows)
    if (!names.models.contains(row.model)) names.models.insert(row.model, nameOfModel(row.model));
  return costBreakdown(rows, scope.interval, names);
}

CostBreakdown costBreakdown(const std::vector<Charge>& charges, const std::optional<DateInterval>& interval,
                            const ChargeNames& names) {
  CostBreakdown breakdown;
  breakdown.report = costReport(charges);
  breakdown.byMonth = spansLong(charges, interval);
  breakdown.series = seriesOf(charges, breakdown.byMonth);
  Slices models;
  Slices projects;
  Slices payment;
  for (const Charge& charge : charges) {
    models.add(names.model(charge.model), charge);
    projects.add(names.project(charge.projectID), charge);
    payment.add(charge.paidWith(), charge);
  }
  breakdown.models = models.dearestFirst();
  breakdown.projects = projects.dearestFirst();
  breakdown.payment = payment.dearestFirst();
  return breakdown;
}

QString csvCell(const QString& value) {
  static const QString formulas = u"=+-@\t\r"_s;
  QString cell = value;
  if (!cell.isEmpty() && formulas.contains(cell.front())) cell.prepend(u'\'');
  const bool needsQuotes = std::any_of(cell.begin(), cell.end(),
                                       [](QChar c) { return c == u',' || c == u'"' || c == u'\n' || c == u'\r'; });
  if (!needsQuotes) return cell;
  return u'"' + cell.replace(u"\""_s, u"\"\""_s) + u'"';
}

QString costCSV(const LibraryStore& store, const ChargeScope& scope) {
  return costCSV(charges(store, scope), projectNames(store));
}

QString costCSV(const std::vector<Charge>& charges, const ChargeNames& names) {
  QStringList lines{u"Date,Project,File,Type,Provider,Model,Estimated cost (USD),Basis,Prompt"_s};
  for (const Charge& charge : charges) lines << csvLine(names, charge);
  return lines.join(u'\n');
}

QString projectName(const LibraryStore& store, const std::optional<QUuid>& project) {
  const ProjectRef found = project ? store.project(*project) : nullptr;
  return found ? found->name : texts::inbox();
}

std::optional<DateInterval> CostDashboard::interval(Instant now) const {
  const DateInterval month = calendarMonth(now);
  if (period == u"month"_s) return month;
  if (period == u"last"_s) return calendarMonth(month.start - 1);
  if (period == u"quarter"_s) return DateInterval{now - ninetyDays, now + 60};
  return std::nullopt;
}

ChargeScope CostDashboard::chargeScope(Instant now) const {
  ChargeScope about;
  about.interval = interval(now);
  const QUuid project = uuidFromText(scope);
  if (scope == u"all"_s || (project.isNull() && scope != u"inbox"_s)) return about;
  about.projects = ChargedProjects::one;
  if (!project.isNull()) about.projectID = project;
  return about;
}

QString CostDashboard::scopeName(const LibraryStore& store) const {
  const ChargeScope about = chargeScope(store.now());
  return about.projects == ChargedProjects::all ? texts::allProjects() : projectName(store, about.projectID);
}

QString CostDashboard::fileName(const LibraryStore& store) const {
  return WorkspaceFiles::safeName(scopeName(store)) + u"-costs.csv"_s;
}

}  // namespace sorvan::account
