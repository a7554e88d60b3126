// What the JSON files beside the library database hold.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <boost/describe.hpp>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/instant.h"
#include "core/request_values.h"

namespace sorvan::core {

/// A saved prompt.
struct PromptEntry {
  QUuid id;
  QString title;  ///< the first words of the text
  QString text;
  Instant savedAt;

  bool operator==(const PromptEntry&) const = default;
};
BOOST_DESCRIBE_STRUCT(PromptEntry, (), (id, title, text, savedAt))

/// A cost that is in no `Generation`: a call of an assistant, or a result that was paid for and has not landed yet.
struct ExtraCharge {
  QUuid id;  ///< for a paid result, the job's
  Instant date;
  QString title;
  QString detail;
  QString model;
  QString provider;  ///< display name
  std::optional<QUuid> projectID;
  std::optional<QUuid> assetID;
  std::optional<QString> mediaType;
  std::optional<double> usd;
  std::optional<double> credits;
  QString basis;
  QString note;

  bool operator==(const ExtraCharge&) const = default;
};
BOOST_DESCRIBE_STRUCT(ExtraCharge, (),
                      (id, date, title, detail, model, provider, projectID, assetID, mediaType, usd, credits, basis,
                       note))

/// What an assistant said of a picture.
struct Critique {
  QString verdict;
  std::vector<QString> issues;
  QString editInstruction;
  QString improvedPrompt;
  std::optional<double> cost;
  std::optional<QString> costText;
  std::optional<int> credits;

  bool operator==(const Critique&) const = default;
};
BOOST_DESCRIBE_STRUCT(Critique, (), (verdict, issues, editInstruction, improvedPrompt, cost, costText, credits))

struct SavedAnalysis {
  Instant date;
  Critique critique;

  bool operator==(const SavedAnalysis&) const = default;
};
BOOST_DESCRIBE_STRUCT(SavedAnalysis, (), (date, critique))

/// The composer's unfinished prompt as it is kept over closing the program.
struct ComposerDraft {
  QString text;
  QByteArray request;  ///< JSON of a GenerationRequest
  std::vector<QString> selectedModels;
  std::optional<QUuid> projectID;
  QString seedText;
  std::vector<PromptImprovement> improvements;
  std::optional<QUuid> markupAssetID;

  bool operator==(const ComposerDraft&) const = default;
};
BOOST_DESCRIBE_STRUCT(ComposerDraft, (),
                      (text, request, selectedModels, projectID, seedText, improvements, markupAssetID))

}  // namespace sorvan::core
