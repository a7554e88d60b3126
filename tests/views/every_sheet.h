// A test that is run once for each component sheet in each look.
#pragma once

#include "shell/views/feedback.h"
#include "views/component_sheets.h"
#include "views/dressed.h"

namespace sorvan::views {

class EverySheet : public Dressed, public testing::WithParamInterface<std::tuple<Appearance, ComponentSheet>> {
 public:
  static auto all() {
    return testing::Combine(testing::Values(Appearance::dark, Appearance::light), testing::ValuesIn(componentSheets()));
  }
  static std::string name(const testing::TestParamInfo<ParamType>& info) {
    const auto& [look, sheet] = info.param;
    return std::string(sheet.name) + (look == Appearance::dark ? "InDark" : "InLight");
  }

 protected:
  EverySheet() {
    Theme::instance().setAppearance(std::get<0>(GetParam()));
    holdMotion(500);  // what turns would differ from picture to picture
  }
  ~EverySheet() override { holdMotion({}); }
  static const ComponentSheet& sheet() { return std::get<1>(GetParam()); }
};

}  // namespace sorvan::views
