#include "app/sandbox_models.h"

#include <gtest/gtest.h>

#include <QFile>

#include "catalogue/schema_reader.h"
#include "core/image_format.h"

namespace sorvan::app {
namespace {

catalogue::FalModel published(const QString& document, const catalogue::FalModel& model) {
  QFile file(QStringLiteral(SORVAN_TEST_DATA) + QStringLiteral("/openapi/") + document + QStringLiteral(".json"));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("no document");
  return catalogue::modelFromSchema({model.id, model.name, model.category, model.summary, {}}, file.readAll());
}

TEST(SandboxModels, TheEditModelIsWhatItsPublishedDocumentSays) {
  const catalogue::FalModel own = sandboxEditModel();
  const catalogue::FalModel read = published(QStringLiteral("fal-ai__nano-banana-2__edit.TRANSCRIBED"), own);
  EXPECT_EQ(own.option(), read.option());
  EXPECT_TRUE(own.sizing == read.sizing);
  EXPECT_TRUE(own.imageInput == read.imageInput);
  EXPECT_TRUE(own.settings == read.settings);
  EXPECT_TRUE(own == read);
}

TEST(SandboxModels, TheEditModelTakesMarkedPicturesInEveryShape) {
  const catalogue::FalModel model = sandboxEditModel();
  EXPECT_TRUE(model.option().supportsReferences);
  EXPECT_TRUE(model.option().requiresReference);
  EXPECT_TRUE(model.option().needsPrompt);
  EXPECT_EQ(model.editableSizes().size(), static_cast<qsizetype>(core::ImageFormat::all().size()));
}

}  // namespace
}  // namespace sorvan::app
