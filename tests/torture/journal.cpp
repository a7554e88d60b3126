#include "torture/journal.h"

#include <QFile>
#include <QRegularExpression>
#include <stdexcept>

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

constexpr int fieldsOfALine = 6;

Step stepOf(const QList<QByteArray>& fields) {
  Step step;
  step.number = fields[0].toULongLong();
  step.call = QString::fromLatin1(fields[1]);
  step.path = QFile::decodeName(fields[2]);
  step.other = QFile::decodeName(fields[3]);
  step.offset = fields[4].toLongLong();
  return step;
}

}  // namespace

std::vector<Step> readJournal(const QString& name) {
  QFile file(name);
  if (!file.open(QFile::ReadOnly)) throw std::runtime_error("The shim left no journal.");
  const QByteArray all = file.readAll();
  std::vector<Step> steps;
  qsizetype at = 0;
  while (at < all.size()) {
    const qsizetype end = all.indexOf('\n', at);
    const QList<QByteArray> fields = end < 0 ? QList<QByteArray>() : all.mid(at, end - at).split('\t');
    if (fields.size() != fieldsOfALine) break;
    const qsizetype length = fields[5].toLongLong();
    const bool carriesBytes = fields[1] == "write";
    if (carriesBytes && end + 1 + length > all.size()) break;
    Step step = stepOf(fields);
    if (carriesBytes) step.bytes = all.mid(end + 1, length);
    steps.push_back(step);
    at = end + 1 + (carriesBytes ? length : 0) + 1;
  }
  return steps;
}

std::optional<Step> struckIn(const std::vector<Step>& steps) {
  for (const Step& step : steps)
    if (step.call == u"died"_s || step.call == u"failed"_s) return step;
  return std::nullopt;
}

namespace {

// The path below the root, its names of chance replaced: ids, and the titles that items are named by.
QString withoutChance(const QString& path, const QString& root, const QString& item) {
  static const QRegularExpression chance(
      u"[0-9A-Fa-f]{8}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{12}"_s);
  static const QRegularExpression titled(u"/(generated|references)/[^./][^/]*$"_s);
  QString below = path.startsWith(root) ? path.mid(root.size()) : path;
  below.replace(chance, u"*"_s);
  below.replace(titled, u"/\\1/"_s + item);
  return below.isEmpty() && !path.isEmpty() ? u"/"_s : below;
}

}  // namespace

QString placeOf(const QString& call, const QString& path, const QString& root) {
  const QString below = withoutChance(path, root, u"item"_s);
  return below.isEmpty() ? call : call + u' ' + below;
}

QString globOf(const QString& call, const QString& path, const QString& root) {
  const QString below = withoutChance(path, root, u"*"_s).replace(u' ', u'?');
  return call + u' ' + (below.isEmpty() ? u"-"_s : below);
}

}  // namespace sorvan::torture
