#include "composer/shape_control.h"

#include "composer/notice_texts.h"
#include "composer/notices.h"
#include "core/image_format.h"

namespace sorvan::composer {

namespace {

bool startsFromPicture(const SelectableModel& model) {
  return !std::holds_alternative<NoInput>(model.record.imageInput);
}

bool hasNoSizing(const SelectableModel& model) { return std::holds_alternative<NoSizing>(model.record.sizing); }

/// Whether the model can be left to choose, which lets it keep the picture's shape.
bool canChooseItself(const SelectableModel& model) {
  if (const auto* aspect = std::get_if<SizeByAspect>(&model.record.sizing))
    return freeChoice(aspect->values).has_value();
  if (const auto* named = std::get_if<SizeByName>(&model.record.sizing)) return freeChoice(named->values).has_value();
  return false;
}

template <class Test>
bool all(const std::vector<SelectableModel>& models, Test test) {
  return !models.empty() && std::all_of(models.begin(), models.end(), test);
}

QStringList sizesOfAll(const std::vector<SelectableModel>& models) {
  QStringList sizes;
  for (const ImageFormat& format : ImageFormat::all()) {
    const bool everywhere = std::all_of(models.begin(), models.end(), [&](const SelectableModel& model) {
      const auto& ratios = model.comparison.model.ratios;
      return !ratios || ratios->contains(format.ratio);
    });
    if (everywhere) sizes << QString(format.size);
  }
  return sizes;
}

}  // namespace

bool followsImage(const GenerationRequest& request, const std::vector<SelectableModel>& models) {
  return !request.referenceIDs.empty() && all(models, [](const SelectableModel& model) {
    return model.record.output == MediaType::video && startsFromPicture(model) && canChooseItself(model);
  });
}

ShapeControl shapeControl(const GenerationRequest& request, const std::vector<SelectableModel>& models) {
  if (all(models, hasNoSizing)) {
    if (all(models, startsFromPicture)) return {true, texts::fromImage(), texts::modelKeepsShape(), {}};
    return {true, texts::setByModel(), texts::modelChoosesShape(), {}};
  }
  const QStringList sizes = sizesOfAll(models);
  if (followsImage(request, models) && !request.shapeChosen.value_or(false))
    return {false, texts::image(), texts::clipKeepsShape(), sizes};
  const ImageFormat* format = ImageFormat::find(request.size);
  const QString name = format ? QString(format->name) : request.size;
  return {false, format ? QString(format->ratio) : request.size, texts::ratioTooltip(name), sizes};
}

LengthPanel lengthPanel(const GenerationRequest& request, const std::vector<SelectableModel>& models) {
  LengthPanel panel;
  panel.rows = lengthPlan(request, models);
  panel.shared = video_length::shared(panel.rows);
  if (panel.shared.isEmpty()) return panel;
  const QString& first = panel.rows.front().value;
  const bool alike = std::all_of(panel.rows.begin(), panel.rows.end(),
                                 [&](const video_length::Choice& row) { return row.value == first; });
  panel.sharedValue = alike ? video_length::label(first) : texts::differentLengths();
  return panel;
}

}  // namespace sorvan::composer
