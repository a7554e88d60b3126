#include "catalogue/dialogue.h"

#include <QJsonObject>
#include <QRegularExpression>

#include <optional>
#include <vector>

#include "base/sorvan_error.h"
#include "catalogue/audio_voice.h"
#include "catalogue/texts.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

struct Speech {
  QString voice;
  QStringList lines;
};

/// The voice's own spelling of a name typed in any case.
std::optional<QString> knownVoice(const QString& name) {
  for (const QString& voice : voiceIds(VoiceTable::elevenLabs)) {
    if (voice.compare(name, Qt::CaseInsensitive) == 0) return voice;
  }
  return std::nullopt;
}

/// The name before a colon: one word, so that a colon inside a sentence starts no speech.
const QRegularExpression& nameAtStart() {
  static const QRegularExpression pattern(u"\\A\\s*([\\p{L}\\p{M}\\p{N}_'’-]{1,40})\\s*:\\s*(.*)\\z"_s,
                                          QRegularExpression::UseUnicodePropertiesOption);
  return pattern;
}

void addLine(std::vector<Speech>& speeches, const QString& line) {
  const auto match = nameAtStart().match(line);
  if (!match.hasMatch()) {
    if (speeches.empty()) throw SorvanError(texts::dialogueNeedsNames());
    speeches.back().lines << line.trimmed();
    return;
  }
  const auto voice = knownVoice(match.captured(1));
  if (!voice) throw SorvanError(texts::unknownDialogueVoice(match.captured(1)));
  speeches.push_back({*voice, {match.captured(2).trimmed()}});
}

}  // namespace

QJsonArray dialogueInputs(const QString& script) {
  std::vector<Speech> speeches;
  static const QRegularExpression lineEnds(u"\\R"_s);
  for (const QString& line : script.split(lineEnds)) {
    if (!line.trimmed().isEmpty()) addLine(speeches, line);
  }
  QJsonArray inputs;
  for (const Speech& speech : speeches) {
    const QString text = speech.lines.join(u'\n').trimmed();
    if (!text.isEmpty()) inputs.append(QJsonObject{{u"text"_s, text}, {u"voice"_s, speech.voice}});
  }
  if (inputs.isEmpty()) throw SorvanError(texts::dialogueNeedsNames());
  return inputs;
}

}  // namespace sorvan::catalogue
