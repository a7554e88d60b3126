// Reports on what work has cost, and their table for a spreadsheet. Plain values; the store is only read.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QHash>
#include <QString>

#include "account/charges.h"

namespace sorvan::account {

/// The outputs of one model in one kind of media.
struct CostLine {
  QString provider;
  QString model;
  MediaType mediaType = MediaType::image;
  int outputs = 0;
  int unpriced = 0;  ///< of those, without a cost
  double total = 0;  ///< US dollars
  bool operator==(const CostLine&) const = default;
};

struct CostReport {
  std::vector<CostLine> lines;  ///< the dearest first
  double assistant = 0;         ///< US dollars for work that made no output
  int assistantCount = 0;
  bool operator==(const CostReport&) const = default;
};

/// What was spent in one day or month on one kind of work.
struct CostPoint {
  Instant bucket;  ///< its beginning, in local time
  QString kind;
  double total = 0;
  bool operator==(const CostPoint&) const = default;
};

/// How much of each kind of work.
struct WorkCounts {
  int images = 0;
  int videos = 0;
  int sounds = 0;
  int requests = 0;  ///< to an assistant, which make no output

  void add(const Charge& charge);
  int outputs() const { return images + videos + sounds; }
  bool operator==(const WorkCounts&) const = default;
};

struct CostSlice {
  QString name;
  double total = 0;
  int outputs = 0;
  WorkCounts work = {};
  bool operator==(const CostSlice&) const = default;
};

struct CostBreakdown {
  CostReport report;
  std::vector<CostPoint> series;  ///< by date
  bool byMonth = false;           ///< buckets are calendar months, not days
  std::vector<CostSlice> models;  ///< the dearest first, as the next two
  std::vector<CostSlice> projects;
  std::vector<CostSlice> payment;
};

using NameOfModel = std::function<QString(const QString& model)>;

/// What the ids in charges are called, so that a report needs no library: values for any thread.
struct ChargeNames {
  QHash<QUuid, QString> projects;
  QHash<QString, QString> models;

  /// "Inbox" for none and for one that is gone.
  QString project(const std::optional<QUuid>& id) const;
  /// The id itself when its name is not known.
  QString model(const QString& id) const { return models.value(id, id); }
};
/// The projects' names; those of models are the caller's.
ChargeNames projectNames(const LibraryStore& store);

CostReport costReport(const std::vector<Charge>& charges);
CostReport costReport(const LibraryStore& store, const ChargeScope& scope);

CostBreakdown costBreakdown(const LibraryStore& store, const ChargeScope& scope, const NameOfModel& nameOfModel);
/// The same of rows that lie within the interval already, newest first; any thread.
CostBreakdown costBreakdown(const std::vector<Charge>& charges, const std::optional<DateInterval>& interval,
                            const ChargeNames& names);
/// The kind of work under which a charge stands in the series: “Images”, “Video”, “Audio” or “Assistant”.
QString kindOf(const Charge& charge);

/// One line for each charge under one line of headings, joined by line feeds. A cell that a spreadsheet could take for a
/// formula begins with an apostrophe.
QString costCSV(const LibraryStore& store, const ChargeScope& scope);
/// The same of rows that were chosen already; any thread.
QString costCSV(const std::vector<Charge>& charges, const ChargeNames& names);
/// One cell, as it stands between two commas.
QString csvCell(const QString& value);

/// The name of a charge's project: "Inbox" for none and for one that is gone.
QString projectName(const LibraryStore& store, const std::optional<QUuid>& project);

/// The page of costs: what it is about, from the texts of its two choosers.
struct CostDashboard {
  QString scope = QStringLiteral("all");     ///< a project's UUID, "all" or "inbox"
  QString period = QStringLiteral("month");  ///< "month", "last", "quarter"; anything else is all time

  ChargeScope chargeScope(Instant now) const;
  std::optional<DateInterval> interval(Instant now) const;
  /// "All Projects", "Inbox" or the project's name.
  QString scopeName(const LibraryStore& store) const;
  /// The name that an export is offered under.
  QString fileName(const LibraryStore& store) const;
};

}  // namespace sorvan::account
