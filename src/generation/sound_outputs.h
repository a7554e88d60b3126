// Rules for the sounds that tools make from a sound: names of parts, silence, and how much a continuation adds.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <stop_token>
#include <vector>

#include "core/request_values.h"
#include "generation/room.h"

namespace sorvan::generation {

/// The name of one part that a tool made: `label` is the service's word for it, `prompt` what was asked for, `tool` the
/// tool's name, which stands when there is no label.
QString partName(const std::optional<QString>& label, const QString& prompt, const QString& tool);

/// A peak sample (1.0 is full scale) in decibels; silence gives about -180.
double decibelsOfPeak(double peak);

/// Below this peak a sound counts as silent.
inline constexpr double silenceDecibels = -60;

/// The peak of a sound file in decibels over all channels; nothing when it cannot be opened. After a read error the
/// peak so far stands. Reads the whole file: for the pool. Throws Cancelled on stop.
std::optional<double> peakDecibels(const QString& file, const std::stop_token& stop = {});

/// What silence means for the outputs of one job.
struct SilenceVerdict {
  std::vector<bool> leftOut;  ///< by output: a silent part beside others that sound
  bool throughout = false;    ///< everything is silent, and stays
  bool operator==(const SilenceVerdict&) const = default;
};

/// Judges the peaks of a sound tool's outputs; an absent peak was not measured and counts as sounding.
SilenceVerdict judgeSilence(const std::vector<std::optional<double>>& peaks);

/// How much a request adds to its original, and on which side.
struct ExtensionStep {
  double seconds = 0;
  bool atStart = false;
  bool operator==(const ExtensionStep&) const = default;
};

/// The step that a request's options ask for; nothing when they ask for none.
std::optional<ExtensionStep> extensionStep(const GenerationRequest& request);

/// "A", "A and B", "A, B, and C".
QString joinedInWords(const QStringList& names);

}  // namespace sorvan::generation
