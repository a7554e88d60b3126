// A job that the service itself gives up, or whose result it refuses: told in the service's words, bought once, and
// nothing stays behind that would look like a result.
#include <gtest/gtest.h>

#include "durability/driven.h"

namespace durability {
namespace {

struct Refusal {
  const char* name;
  const char* call;
  const char* kind;
  const char* body;      // of the kind "answer"
  const char* sentence;  // how the job's message ends
};

void PrintTo(const Refusal& refusal, std::ostream* out) { *out << refusal.name; }

class AJobThatTheServiceRefuses : public testing::TestWithParam<Refusal> {};

TEST_P(AJobThatTheServiceRefuses, SaysWhyInTheServicesWords) {
  const Refusal refusal = GetParam();
  Driven driven;
  QJsonObject more{{u"times"_qs, 50}};
  if (*refusal.body) {
    more.insert(u"status"_qs, 422);
    more.insert(u"body"_qs, QString::fromUtf8(refusal.body));
  }
  driven.sandbox().addFault(QString::fromLatin1(refusal.call), QString::fromLatin1(refusal.kind), more);
  const Ended ended = driven.run(QJsonArray{enqueuePicture(), command(u"run"_qs)});
  EXPECT_EQ(ended.items(), 0);
  EXPECT_EQ(ended.job()[u"status"_qs].toString(), u"failed"_qs);
  const QString told = ended.job()[u"error"_qs].toString();
  EXPECT_TRUE(told.contains(QString::fromUtf8(refusal.sentence))) << told.toStdString();
  EXPECT_FALSE(ended.job()[u"unknown"_qs].toBool());
  EXPECT_EQ(driven.sandbox().postsTo(u"fal-ai/flux/schnell"_qs), 1);
  EXPECT_EQ(driven.sandbox().ledger().size(), 1);
}

std::string nameOf(const testing::TestParamInfo<Refusal>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(
    Service, AJobThatTheServiceRefuses,
    testing::Values(
        Refusal{"WithAnErrorInACompletedStatus", "status", "job-error", "", "Request timed out"},
        Refusal{
            "WithOneDetail", "result", "invalid", "",
            "prompt: The content could not be processed because it contained material flagged by a content checker."},
        Refusal{"WithSeveralDetails", "result", "answer",
                R"({"detail":[{"loc":["body","prompt"],"msg":"Field required","type":"missing"},)"
                R"({"loc":["body","image_urls",0],"msg":"The picture is too small.","type":"image_too_small"}]})",
                "prompt: Field required. image_urls: The picture is too small."},
        Refusal{"WithAPlainDetail", "result", "answer", R"({"detail":"The model refuses this."})",
                "The model refuses this."}),
    nameOf);

}  // namespace
}  // namespace durability
