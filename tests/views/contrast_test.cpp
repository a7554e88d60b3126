#include "views/text_contrast.h"

#include <QLabel>
#include <QMenu>
#include <QPainter>

#include "views/every_sheet.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;
using test::contrastOf;
using test::faintTexts;
using test::paintedTexts;

// Paints a word in one colour on another, which may shade from left to right.
class Word final : public QWidget {
 public:
  Word(QColor ink, QColor ground, QColor end = {}) : ink_(ink), ground_(ground), end_(end) { resize(120, 30); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    QLinearGradient shade(0, 0, width(), 0);
    shade.setColorAt(0, ground_);
    shade.setColorAt(1, end_.isValid() ? end_ : ground_);
    painter.fillRect(rect(), shade);
    painter.setPen(ink_);
    painter.drawText(rect(), Qt::AlignCenter, u"Lighthouse"_s);
  }

 private:
  QColor ink_, ground_, end_;
};

double contrastSeen(QWidget& widget) {
  const auto texts = paintedTexts(widget);
  EXPECT_EQ(texts.size(), 1U);
  return texts.empty() ? 0 : texts.front().contrast;
}

using TextContrast = Dressed;

TEST_F(TextContrast, IsMeasuredAsTheGuidelinesDefineIt) {
  EXPECT_NEAR(contrastOf(Qt::black, Qt::white), 21, 0.01);
  EXPECT_NEAR(contrastOf(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
  EXPECT_NEAR(contrastOf(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
}

TEST_F(TextContrast, IsReadOffTheGroundBeneathTheText) {
  Word plain(Qt::white, Qt::black);
  EXPECT_NEAR(contrastSeen(plain), 21, 0.1);
  Word glass(QColor(255, 255, 255, 128), Qt::black);
  EXPECT_LT(contrastSeen(glass), 6);
  Word shaded(Qt::white, Qt::black, Qt::white);
  EXPECT_LT(contrastSeen(shaded), 4) << "a gradient counts where it is worst";
}

TEST_F(TextContrast, FaintTextIsFound) {
  Word faint(QColor(0x77, 0x77, 0x77), Qt::white);
  EXPECT_TRUE(faintTexts(faint).contains(u"Lighthouse"_s));
  Word strong(QColor(0x76, 0x76, 0x76), Qt::white);
  EXPECT_EQ(faintTexts(strong), QString());
}

TEST_F(TextContrast, WhatIsDisabledNeedNotBeRead) {
  QWidget window;
  window.resize(200, 60);
  QPalette white = window.palette();
  white.setColor(QPalette::Window, Qt::white);
  white.setColor(QPalette::WindowText, QColor(0xcc, 0xcc, 0xcc));
  window.setPalette(white);
  window.setAutoFillBackground(true);
  auto* label = new QLabel(u"Lighthouse"_s, &window);
  show(window, window.size());
  EXPECT_NE(faintTexts(window), QString());
  label->setEnabled(false);
  EXPECT_EQ(faintTexts(window), QString());
}

using ComponentSheets = EverySheet;

TEST_P(ComponentSheets, EveryTextIsReadable) {
  const std::unique_ptr<QWidget> made = sheet().make();
  show(*made, made->size());
  EXPECT_GE(static_cast<int>(paintedTexts(*made).size()), sheet().texts);
  EXPECT_EQ(faintTexts(*made).toStdString(), "");
}

INSTANTIATE_TEST_SUITE_P(InBothLooks, ComponentSheets, EverySheet::all(), EverySheet::name);

class TokenColors : public Dressed, public testing::WithParamInterface<Appearance> {
 protected:
  TokenColors() { Theme::instance().setAppearance(GetParam()); }
};

// The pairs of the tokens that text is written in, whatever is painted today.
TEST_P(TokenColors, EveryInkOfTheTokensIsReadableOnEverySurfaceOfText) {
  const Colors& c = colors();
  const std::pair<const char*, QColor> grounds[] = {{"canvas", c.surfaceCanvas},   {"chrome", c.surfaceChrome},
                                                    {"raised", c.surfaceRaised},   {"overlay", c.surfaceOverlay},
                                                    {"dialog", c.surfaceDialog},   {"inset", c.surfaceInset}};
  const std::pair<const char*, QColor> inks[] = {
      {"primary", c.textPrimary}, {"secondary", c.textSecondary}, {"tertiary", c.textTertiary},
      {"accent", c.accentText},   {"success", c.successText},     {"warning", c.warningText},
      {"danger", c.dangerText},   {"info", c.infoText}};
  for (const auto& [groundName, ground] : grounds)
    for (const auto& [inkName, ink] : inks) EXPECT_GE(contrastOf(ink, ground), 4.5) << inkName << " on " << groundName;
}

TEST_P(TokenColors, TextOnFilledControlsIsReadable) {
  const Colors& c = colors();
  for (const QColor& fill : {c.accentFill, c.accentFillHover, c.accentFillPressed})
    EXPECT_GE(contrastOf(c.textOnAccent, fill), 4.5);
  for (const QColor& fill : {c.dangerFill, c.dangerFillHover}) EXPECT_GE(contrastOf(c.textOnDanger, fill), 4.5);
  EXPECT_GE(contrastOf(c.textTooltip, c.surfaceTooltip), 4.5);
}

INSTANTIATE_TEST_SUITE_P(BothLooks, TokenColors, testing::Values(Appearance::dark, Appearance::light),
                         [](const auto& look) { return look.param == Appearance::dark ? "Dark" : "Light"; });

}  // namespace
}  // namespace sorvan::views
