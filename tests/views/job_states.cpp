#include "views/job_states.h"

#include "views/samples.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

JobDisplay working(JobState state, const QString& detail, const QString& elapsed) {
  JobDisplay job = sampleJob(state, u"Wan 3.0"_s, u"Slow push-in over the water toward the lantern, gulls drifting past"_s);
  job.detail = detail;
  job.elapsedText = elapsed;
  job.action = JobAction::cancel;
  job.actionTitle = u"Cancel"_s;
  return job;
}

JobDisplay ended(JobState state, const QString& message, const QString& detail, JobAction action) {
  JobDisplay job = sampleJob(state, u"Seedream V5 Pro Edit"_s, u"Turn the sky into a passing storm."_s);
  job.message = message;
  job.detail = detail;
  job.elapsedText = u"0:51"_s;
  job.action = action;
  job.actionTitle = action == JobAction::retry ? u"Retry"_s : u"Save Result"_s;
  return job;
}

JobDisplay salvaging() {
  JobDisplay job = ended(JobState::salvaging, {}, u"The model had finished: fetching the result…"_s, JobAction::none);
  job.actionTitle.clear();
  return job;
}

JobDisplay complete() {
  JobDisplay job = sampleJob(JobState::complete, u"Nano Banana 2"_s, u"A small sailing boat on a calm bay, golden hour"_s);
  job.detail = u"Saved 2 images locally"_s;
  job.costText = u"≈ $0.060"_s;
  job.elapsedText = u"0:14"_s;
  job.action = JobAction::show;
  job.actionTitle = u"Show"_s;
  job.thumbnailPath = u":/sorvan/samples/boat_gold_0.jpg"_s;
  return job;
}

}  // namespace

std::vector<std::pair<QString, JobDisplay>> sampleJobStates() {
  return {{u"queued"_s, working(JobState::queued, u"Waiting to start"_s, {})},
          {u"running"_s, working(JobState::running, u"Generating…"_s, u"1:42"_s)},
          {u"saving"_s, working(JobState::running, u"Result downloaded; saving to library"_s, u"2:06"_s)},
          {u"cancelled while it ran"_s, salvaging()},
          {u"failed, Retry"_s,
           ended(JobState::failed, u"The request is taking longer than expected. Retry will reconnect to the existing fal.ai job."_s,
                 {}, JobAction::retry)},
          {u"failed, Save Result"_s,
           ended(JobState::failed, u"The disk is full."_s, u"Result retained locally · Save Result or Save Raw Result"_s,
                 JobAction::saveResult)},
          {u"cancelled"_s, ended(JobState::cancelled, {}, u"Cancelled. No credits were charged."_s, JobAction::retry)},
          {u"interrupted"_s, ended(JobState::failed, {}, u"Interrupted"_s, JobAction::retry)}};
}

std::vector<std::pair<QString, JobDisplay>> sampleHistoryStates() {
  auto all = sampleJobStates();
  all.push_back({u"complete"_s, complete()});
  return all;
}

}  // namespace sorvan::views
