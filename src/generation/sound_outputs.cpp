#include "generation/sound_outputs.h"

#include <algorithm>
#include <cmath>

namespace sorvan::generation {
namespace {

QStringList blankSeparatedWords(const QString& text) { return text.split(u' ', Qt::SkipEmptyParts); }

QString capitalized(const QString& text) {
  QString result = text.toLower();
  bool atStart = true;
  for (QChar& letter : result) {
    if (atStart) letter = letter.toUpper();
    atStart = letter.isSpace();
  }
  return result;
}

std::optional<double> positiveOption(const GenerationRequest& request, const QString& key) {
  if (!request.options) return std::nullopt;
  bool isNumber = false;
  const double seconds = request.options->value(key).toDouble(&isNumber);
  if (!isNumber || !std::isfinite(seconds) || seconds <= 0) return std::nullopt;
  return seconds;
}

}  // namespace

QString partName(const std::optional<QString>& label, const QString& prompt, const QString& tool) {
  if (!label) return tool;
  if (*label == u"target") return blankSeparatedWords(prompt).mid(0, 4).join(u' ');
  if (*label == u"residual") return QStringLiteral("Everything Else");
  if (*label == u"other") return QStringLiteral("Other Parts");
  return capitalized(*label);
}

double decibelsOfPeak(double peak) { return 20 * std::log10(std::max(peak, 1e-9)); }

SilenceVerdict judgeSilence(const std::vector<std::optional<double>>& peaks) {
  SilenceVerdict verdict;
  for (const auto& peak : peaks) verdict.leftOut.push_back(peak && *peak < silenceDecibels);
  const bool allSilent =
      !peaks.empty() && std::all_of(verdict.leftOut.begin(), verdict.leftOut.end(), [](bool silent) { return silent; });
  if (allSilent) {
    verdict.throughout = true;
    verdict.leftOut.assign(peaks.size(), false);
  }
  return verdict;
}

std::optional<ExtensionStep> extensionStep(const GenerationRequest& request) {
  if (const auto after = positiveOption(request, QStringLiteral("extend_seconds_after")))
    return ExtensionStep{*after, false};
  if (const auto before = positiveOption(request, QStringLiteral("extend_seconds_before")))
    return ExtensionStep{*before, true};
  if (const auto appended = positiveOption(request, QStringLiteral("append_duration")))
    return ExtensionStep{*appended, false};
  return std::nullopt;
}

QString joinedInWords(const QStringList& names) {
  if (names.size() < 2) return names.join(QString());
  if (names.size() == 2) return names[0] + QStringLiteral(" and ") + names[1];
  return names.mid(0, names.size() - 1).join(QStringLiteral(", ")) + QStringLiteral(", and ") + names.last();
}

}  // namespace sorvan::generation
