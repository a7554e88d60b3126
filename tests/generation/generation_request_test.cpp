#include "generation/generation_request.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include "base/ids.h"
#include "generation/request_builders.h"
#include "support/run_task.h"

namespace sorvan::generation {
namespace {

using namespace test;

/// The sentence that a request is refused with; "accepted" for a good one.
QString verdict(const GenerationRequest& request, const ModelOption& model = imageModel()) {
  try {
    validate(request, {model});
  } catch (const SorvanError& error) {
    return error.message();
  }
  return QStringLiteral("accepted");
}

ModelOption acceptingReferences() {
  ModelOption model = imageModel();
  model.supportsReferences = true;
  return model;
}

GenerationRequest withReferences(int count) {
  GenerationRequest request = promptRequest();
  for (int i = 0; i < count; ++i) request.referenceIDs.push_back(newUuid());
  return request;
}

TEST(Validation, AGoodRequestIsAccepted) { EXPECT_EQ(verdict(promptRequest()), QStringLiteral("accepted")); }

TEST(Validation, TheCountIsOneToFour) {
  for (const int count : {0, 5, -1, 100}) {
    GenerationRequest request = promptRequest();
    request.count = count;
    EXPECT_EQ(verdict(request), QStringLiteral("Choose between 1 and 4 outputs."));
  }
}

TEST(Validation, TheSizeMustBeKnown) {
  GenerationRequest request = promptRequest();
  request.size = QStringLiteral("333x777");
  EXPECT_EQ(verdict(request), QStringLiteral("Unsupported image size."));
}

TEST(Validation, ARetiredProviderIsRefusedAfterTheCount) {
  GenerationRequest request = promptRequest();
  request.provider = ProviderID::openAI;
  EXPECT_EQ(verdict(request),
            QStringLiteral("This request used an OpenAI key, which Sorvan no longer uses. Choose a model in "
                           "the composer and generate again."));
  request.count = 9;
  EXPECT_EQ(verdict(request), QStringLiteral("Choose between 1 and 4 outputs."));
}

TEST(Validation, AModelThatIsNotListedIsRefused) {
  GenerationRequest request = promptRequest();
  request.model = QStringLiteral("gone");
  EXPECT_EQ(verdict(request), QStringLiteral("Choose a supported model."));
}

TEST(Validation, ABlankPromptIsRefusedOnlyWhereOneIsNeeded) {
  EXPECT_EQ(verdict(promptRequest(QStringLiteral(" \u00a0\n"))), QStringLiteral("Enter a prompt first."));
  ModelOption upscaler = imageModel();
  upscaler.needsPrompt = false;
  EXPECT_EQ(verdict(promptRequest(QString()), upscaler), QStringLiteral("accepted"));
}

TEST(Validation, MarksNeedAReference) {
  GenerationRequest request = promptRequest();
  request.markup = {markedBox(QStringLiteral("a lamp"))};
  EXPECT_EQ(verdict(request),
            QStringLiteral("Marks need the image they were drawn on. Attach it as the first reference."));
  request.markup = std::vector<MarkupBox>();
  EXPECT_EQ(verdict(request), QStringLiteral("accepted"));
}

TEST(Validation, OneEndFrameAtMostAndOnlyWhereAccepted) {
  GenerationRequest request = withReferences(2);
  request.referenceBindings = {bindingOf(request.referenceIDs[0], QStringLiteral("A"), QStringLiteral("End frame")),
                               bindingOf(request.referenceIDs[1], QStringLiteral("B"), QStringLiteral("End frame"))};
  EXPECT_EQ(verdict(request, acceptingReferences()), QStringLiteral("Mark only one reference as the end frame."));
  request.referenceBindings->back().role.reset();
  EXPECT_EQ(verdict(request, acceptingReferences()),
            QStringLiteral("Flux does not accept an end frame. Change that reference's role or choose another model."));
  ModelOption model = acceptingReferences();
  model.supportsEndFrame = true;
  EXPECT_EQ(verdict(request, model), QStringLiteral("accepted"));
}

TEST(Validation, TheRatioMustBeAmongTheModels) {
  ModelOption model = imageModel();
  model.ratios = QStringList{QStringLiteral("16:9"), QStringLiteral("3:2")};
  EXPECT_EQ(verdict(promptRequest(), model),
            QStringLiteral("Flux supports these ratios: 16:9, 3:2. Choose one of these ratios."));
  model.ratios = QStringList{QStringLiteral("1:1")};
  EXPECT_EQ(verdict(promptRequest(), model), QStringLiteral("accepted"));
}

TEST(Validation, TheModelLimitsTheCount) {
  GenerationRequest request = promptRequest();
  request.count = 3;
  ModelOption model = imageModel();
  model.maxCount = 2;
  EXPECT_EQ(verdict(request, model),
            QStringLiteral("Flux returns up to 2 outputs per request. Lower the image count."));
  model.maxCount = 1;
  EXPECT_EQ(verdict(request, model), QStringLiteral("Flux returns one output per request. Lower the image count."));
}

TEST(Validation, ATextOnlyModelTakesNoReferences) {
  EXPECT_EQ(verdict(withReferences(1)),
            QStringLiteral("Flux is text-only. Choose a model that accepts images to use references."));
}

TEST(Validation, AModelThatNeedsAnImageAsksForOne) {
  ModelOption model = acceptingReferences();
  model.requiresReference = true;
  EXPECT_EQ(verdict(promptRequest(), model), QStringLiteral("Flux needs an input image. Attach a reference first."));
}

TEST(Validation, AMentionOfNothingAttachedIsRefused) {
  EXPECT_EQ(verdict(promptRequest(QStringLiteral("a @Tin"))),
            QStringLiteral("@Tin is not attached. Add that reference or remove its mention before generating."));
}

TEST(Validation, AReferenceTwiceIsRefused) {
  // Two references without names of their own get different names, so that only their identity gives them away.
  GenerationRequest request = withReferences(1);
  request.referenceIDs.push_back(request.referenceIDs[0]);
  EXPECT_EQ(verdict(request, acceptingReferences()), QStringLiteral("A reference image is attached more than once."));
}

TEST(Validation, TooManyReferencesAreRefusedWithTheSettledWording) {
  EXPECT_EQ(verdict(withReferences(9), acceptingReferences()), QStringLiteral("Use up to 8 reference images."));
  ModelOption three = acceptingReferences();
  three.maxReferences = 3;
  EXPECT_EQ(verdict(withReferences(4), three), QStringLiteral("Use up to 8 reference images."));
  ModelOption one = acceptingReferences();
  one.maxReferences = 1;
  EXPECT_EQ(verdict(withReferences(2), one), QStringLiteral("Flux accepts one input image."));
  ModelOption many = acceptingReferences();
  many.maxReferences = 20;
  EXPECT_EQ(verdict(withReferences(9), many), QStringLiteral("Use up to 8 reference images."));
  EXPECT_EQ(verdict(withReferences(8), many), QStringLiteral("accepted"));
}

TEST(Validation, AHundredThousandCharactersOfEmojiAndRightToLeftTextAreAccepted) {
  QString prompt;
  while (prompt.size() < 100000) prompt += QStringLiteral("👩‍🎨 صورة עם ");
  EXPECT_EQ(verdict(promptRequest(prompt)), QStringLiteral("accepted"));
  EXPECT_EQ(submittedPrompt(promptRequest(prompt)), prompt);
}

TEST(Request, ReferencesWithoutABindingAreNamedByTheirPlace) {
  GenerationRequest request = withReferences(2);
  request.referenceBindings = {bindingOf(request.referenceIDs[1], QStringLiteral("Tin")),
                               bindingOf(newUuid(), QStringLiteral("Detached"))};
  const auto ordered = orderedReferences(request);
  ASSERT_EQ(ordered.size(), 2U);
  EXPECT_EQ(ordered[0].label, QStringLiteral("Reference1"));
  EXPECT_EQ(ordered[0].assetID, request.referenceIDs[0]);
  EXPECT_EQ(ordered[1].label, QStringLiteral("Tin"));
}

TEST(Request, ThePlainPromptGoesAsItStands) {
  GenerationRequest request = withReferences(1);
  request.prompt = QStringLiteral("@nobody here");
  request.markup = {markedBox(QStringLiteral("x"))};
  request.plainPrompt = true;
  EXPECT_EQ(submittedPrompt(request), QStringLiteral("@nobody here"));
}

TEST(Request, MarksAddTheirInstructionToTheSubmittedPrompt) {
  GenerationRequest request = withReferences(1);
  request.markup = {markedBox(QStringLiteral("a lamp"))};
  const QString text = submittedPrompt(request);
  EXPECT_TRUE(text.contains(QStringLiteral("Image 1: Reference1")));
  EXPECT_TRUE(text.contains(QStringLiteral("Box 1: a lamp")));
  EXPECT_LT(text.indexOf(QStringLiteral("Image 1:")), text.indexOf(QStringLiteral("Box 1:")));
}

TEST(Request, AnEditSourceMakesAnEditedCopyUnlessItIsAVariation) {
  GenerationRequest request = withReferences(2);
  request.referenceBindings = {bindingOf(request.referenceIDs[0], QStringLiteral("A"), QStringLiteral("Edit source"))};
  EXPECT_EQ(relationshipFor(request, request.referenceIDs[0]), RelationshipType::editedFrom);
  EXPECT_EQ(relationshipFor(request, request.referenceIDs[1]), RelationshipType::referenceFor);
  request.relationship = RelationshipType::variationOf;
  EXPECT_EQ(relationshipFor(request, request.referenceIDs[0]), RelationshipType::variationOf);
}

QJsonObject parametersOf(const GenerationRequest& request, const ModelFacts& facts) {
  return QJsonDocument::fromJson(parametersJSON(request, facts)).object();
}

FactsByID factsOf(MediaType output) {
  FactsByID facts;
  ModelFact fact;
  fact.output = output;
  facts.facts.insert(promptRequest().model, fact);
  return facts;
}

TEST(Parameters, AnImageRequestHasSizeQualityAndFormat) {
  const QJsonObject object = parametersOf(promptRequest(), FactsByID());
  EXPECT_EQ(object.keys(), (QStringList{QStringLiteral("billingSource"), QStringLiteral("output_format"),
                                        QStringLiteral("outputs"), QStringLiteral("quality"), QStringLiteral("size")}));
  EXPECT_EQ(object[u"outputs"].toInt(), 1);
  EXPECT_EQ(object[u"billingSource"].toString(), QStringLiteral("byok"));
  EXPECT_EQ(object[u"output_format"].toString(), QStringLiteral("png"));
}

TEST(Parameters, ASoundHasNoSizeAndAClipNoQuality) {
  EXPECT_EQ(parametersOf(promptRequest(), factsOf(MediaType::audio)).keys(),
            (QStringList{QStringLiteral("billingSource"), QStringLiteral("outputs")}));
  EXPECT_EQ(parametersOf(promptRequest(), factsOf(MediaType::video)).keys(),
            (QStringList{QStringLiteral("billingSource"), QStringLiteral("outputs"), QStringLiteral("size")}));
}

TEST(Parameters, EverythingThatIsSetIsTold) {
  GenerationRequest request = withReferences(1);
  request.provider = ProviderID::credits;
  request.creditRequestID = newUuid();
  request.seed = (std::int64_t{1} << 62) + 1;
  request.options = TextByKey{{QStringLiteral("duration"), QStringLiteral("8")}};
  request.variance = QStringLiteral("Subtle");
  request.shot = QStringLiteral("Close-up");
  PromptImprovement improvement;
  improvement.from = QStringLiteral("kite");
  request.improvements = {improvement};
  request.markup = {markedBox(QStringLiteral("lamp"))};
  const QJsonObject object = parametersOf(request, FactsByID());
  EXPECT_EQ(object[u"seed"].toInteger(), (std::int64_t{1} << 62) + 1);
  EXPECT_EQ(object[u"options"].toObject()[u"duration"].toString(), QStringLiteral("8"));
  EXPECT_EQ(object[u"variation"].toString(), QStringLiteral("Subtle"));
  EXPECT_EQ(object[u"shot"].toString(), QStringLiteral("Close-up"));
  EXPECT_EQ(object[u"originalPrompt"].toString(), QStringLiteral("kite"));
  EXPECT_EQ(object[u"improvements"].toArray().size(), 1);
  EXPECT_EQ(object[u"markup"].toArray()[0].toObject()[u"note"].toString(), QStringLiteral("lamp"));
  EXPECT_EQ(object[u"references"].toArray()[0].toObject()[u"label"].toString(), QStringLiteral("Reference1"));
  EXPECT_TRUE(object[u"submittedPrompt"].toString().contains(QStringLiteral("Image 1: Reference1")));
  EXPECT_EQ(object[u"billingSource"].toString(), QStringLiteral("sorvanCredits"));
  EXPECT_EQ(object[u"creditRequestID"].toString(), uuidText(*request.creditRequestID));
}

TEST(Parameters, ANestedValueThatFailsOnlyLosesItsKey) {
  GenerationRequest request = withReferences(1);
  request.prompt = QStringLiteral("@nobody");
  const QJsonObject object = parametersOf(request, FactsByID());
  EXPECT_FALSE(object.contains(u"submittedPrompt"));
  EXPECT_TRUE(object.contains(u"references"));
  EXPECT_TRUE(object.contains(u"billingSource"));
}

TEST(Parameters, ARequestOfTheRetiredProviderWasPaidWithAKey) {
  GenerationRequest request = promptRequest();
  request.provider = ProviderID::openAI;
  EXPECT_EQ(parametersOf(request, FactsByID())[u"billingSource"].toString(), QStringLiteral("byok"));
}

TEST(RetiredProviders, ListNothingAndRefuseWithASentence) {
  RetiredProvider provider;
  EXPECT_TRUE(provider.listModels().empty());
  QString refusal;
  QString cancelRefusal;
  try {
    sorvan::test::runTask(provider.generateImage({}, {}));
  } catch (const SorvanError& error) {
    refusal = error.message();
  }
  try {
    sorvan::test::runTask(provider.cancelJob({}, {}, {}));
  } catch (const SorvanError& error) {
    cancelRefusal = error.message();
  }
  EXPECT_TRUE(refusal.startsWith(QStringLiteral("This request used an OpenAI key")));
  EXPECT_EQ(cancelRefusal, QStringLiteral("This provider does not support remote cancellation."));
}

}  // namespace
}  // namespace sorvan::generation
