// A run that writes down what its provider reports, in order.
#pragma once

#include <QStringList>

#include <optional>
#include <vector>

#include "generation/provider.h"
#include "support/temporary_folder.h"

namespace sorvan::test {

class RecordedRun final : public generation::ProviderRun {
 public:
  base::Task<> update(generation::ProviderUpdate update) override;
  base::Task<> aboutToSubmit() override;
  base::Task<> notSubmitted() override;
  std::optional<generation::GatewayTrace> sentThrough() const override { return trace; }
  base::Task<> aboutToSubmitThrough(generation::GatewayTrace way) override;
  base::Task<> notSubmittedThrough() override;
  std::stop_token submissionStop() const override { return submission.get_token(); }
  QString partFile(int index) override;

  /// Every message and announcement, in order.
  QStringList events;
  std::vector<generation::ProviderUpdate> updates;
  std::optional<core::RemoteHandle> handle() const;
  /// How often an event was reported.
  int count(const QString& event) const { return static_cast<int>(events.count(event)); }

  /// The way that an earlier run's submission went out, or this one's.
  std::optional<generation::GatewayTrace> trace;

  /// The update with this message throws Cancelled after it was written down.
  QString cancelAt;
  /// `aboutToSubmit` throws Cancelled.
  bool cancelledBeforeSubmission = false;
  std::stop_source submission;
  TemporaryFolder folder;
};

}  // namespace sorvan::test
