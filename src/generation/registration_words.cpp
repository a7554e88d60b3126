#include "generation/registration_words.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace sorvan::generation {
namespace {

QString firstSixWords(const QString& text) {
  static const QRegularExpression space(QStringLiteral("\\s+"), QRegularExpression::UseUnicodePropertiesOption);
  return text.split(space, Qt::SkipEmptyParts).mid(0, 6).join(u' ');
}

QString withoutExtension(const QString& fileName) { return QFileInfo(fileName).completeBaseName(); }

QString typeWord(MediaType type) {
  if (type == MediaType::video) return QStringLiteral("video");
  if (type == MediaType::audio) return QStringLiteral("sound");
  return QStringLiteral("image");
}

}  // namespace

QString outputStem(const StemFacts& facts) {
  if (facts.modelTakesSound && facts.firstReferenceFile) {
    const QString part =
        facts.extendsSound ? QStringLiteral("Extended") : partName(facts.outputLabel, facts.prompt, facts.modelLabel);
    return withoutExtension(*facts.firstReferenceFile) + u'-' + part;
  }
  QString words = firstSixWords(facts.prompt);
  if (words.isEmpty() && facts.firstReferenceFile) words = firstSixWords(withoutExtension(*facts.firstReferenceFile));
  return words + u'-' + facts.modelLabel;
}

QString savedDetail(const SavedSummary& summary) {
  QString detail = QStringLiteral("Saved %1 %2").arg(QString::number(summary.count), typeWord(summary.firstType));
  if (summary.count != 1) detail += u's';
  detail += QStringLiteral(" locally");
  if (!summary.leftOut.isEmpty()) detail += QStringLiteral("; left out ") + summary.leftOut.join(QStringLiteral(", "));
  if (summary.silentThroughout) detail += QStringLiteral(", silent throughout");
  return detail;
}

QString leftOutNotice(const QString& modelLabel, const QString& sourceFile, const QStringList& leftOut) {
  QStringList lowered;
  for (const QString& name : leftOut) lowered.append(name.toLower());
  const QString verb = leftOut.size() > 1 ? QStringLiteral("those parts were") : QStringLiteral("that part was");
  return QStringLiteral("%1: “%2” has no %3, so %4 left out.")
      .arg(modelLabel, sourceFile, joinedInWords(lowered), verb);
}

}  // namespace sorvan::generation
