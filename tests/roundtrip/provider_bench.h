// A provider that speaks to a sandbox of the test's own, through the real HTTP client.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "base/clock.h"
#include "catalogue/fal_provider.h"
#include "support/temporary_folder.h"
#include "support_sandbox/sandbox_process.h"

namespace sorvan::test {

/// Writes down what is reported; media go to a folder of its own.
class LiveRun final : public generation::ProviderRun {
 public:
  base::Task<> update(generation::ProviderUpdate update) override;
  base::Task<> aboutToSubmit() override;
  base::Task<> notSubmitted() override;
  std::optional<generation::GatewayTrace> sentThrough() const override { return std::nullopt; }
  base::Task<> aboutToSubmitThrough(generation::GatewayTrace) override { return aboutToSubmit(); }
  base::Task<> notSubmittedThrough() override { return notSubmitted(); }
  std::stop_token submissionStop() const override { return {}; }
  QString partFile(int index) override { return folder / QStringLiteral("%1.part").arg(index); }

  bool marked = false;  ///< announced, and not taken back
  std::optional<core::RemoteHandle> handle;
  QStringList messages;
  TemporaryFolder folder;
};

/// Lets polling go a hundred times faster than it would: the service is a real process that needs its moments.
class HastyClock final : public base::Clock {
 public:
  base::Instant now() const override { return clock.now(); }
  base::Task<> sleep(std::chrono::milliseconds duration, std::stop_token stop) const override {
    return clock.sleep(duration / 100, stop);
  }

 private:
  base::SystemClock clock;
};

class RoundTrip : public testing::Test {
 protected:
  RoundTrip();

  generation::ProviderCall callFor(const QString& model, const QString& prompt);
  /// The same call, with a file as its one reference.
  generation::ProviderCall withReference(generation::ProviderCall call, const QString& file) const;
  std::vector<generation::GeneratedOutput> generate(const generation::ProviderCall& call);
  /// The sentence that the call ends with; fails the test when it does not throw a `Failure`.
  template <class Failure>
  QString failureOf(const generation::ProviderCall& call) {
    try {
      generate(call);
    } catch (const Failure& failure) {
      return failure.message();
    } catch (const std::exception& other) {
      ADD_FAILURE() << "another failure: " << other.what();
      return {};
    }
    ADD_FAILURE() << "no failure";
    return {};
  }

  SandboxProcess sandbox;
  std::shared_ptr<catalogue::FalCatalog> catalog;
  std::shared_ptr<base::Clock> clock = std::make_shared<HastyClock>();
  std::shared_ptr<platform::HttpTransport> transport;
  std::shared_ptr<LiveRun> run = std::make_shared<LiveRun>();
};

}  // namespace sorvan::test
