#include "shell/views/choice_popovers.h"

#include <QGridLayout>
#include <QPainter>

#include "shell/views/choice_buttons.h"
#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/icons.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "shell/views/segmented_control.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

class LengthButton final : public ChoiceButton {
 public:
  explicit LengthButton(const LengthChoice& length) : ChoiceButton(length.label, length.chosen), label_(length.label) {}
  QSize sizeHint() const override { return {168, metrics().menuRow}; }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    paintGround(painter);
    paintText(painter, rect().adjusted(10, 0, -30, 0), {label_, fontFor(Type::body), colors().textPrimary});
    if (isChecked()) paintIcon(painter, u"check"_s, QRect(width() - 26, 0, 16, height()), 14, {colors().accentText});
  }

 private:
  QString label_;
};

Label* headingOf(const QString& text) {
  auto* heading = new Label(text, Type::caption, &Colors::textTertiary);
  heading->setContentsMargins(4, 0, 4, 2);
  return heading;
}

Popover* columnPopover(const QString& name, QVBoxLayout*& column) {
  auto* popover = new Popover(name);
  column = new QVBoxLayout(popover->panel());
  column->setContentsMargins(10, 10, 10, 10);
  column->setSpacing(6);
  column->addWidget(headingOf(name));
  return popover;
}

}  // namespace

Popover* openRatioPopover(ComposerPresenter& composer, QWidget* chip) {
  QVBoxLayout* column = nullptr;
  Popover* popover = columnPopover(texts::ratio(), column);
  auto* grid = new QGridLayout;
  grid->setSpacing(4);
  int place = 0;
  for (const RatioChoice& ratio : composer.display().ratios) {
    auto* button = new RatioButton(ratio, {58, 54});
    QObject::connect(button, &QAbstractButton::clicked, popover, [&composer, popover, size = ratio.size] {
      composer.chooseSize(size);
      popover->dismiss();
    });
    grid->addWidget(button, place / 4, place % 4);
    ++place;
  }
  column->addLayout(grid);
  popover->openAt(chip, chip->parentWidget());  // over the dock, whose prompt and notices stay in view
  return popover;
}

Popover* openCountPopover(ComposerPresenter& composer, QWidget* chip) {
  QVBoxLayout* column = nullptr;
  Popover* popover = columnPopover(texts::count(), column);
  const ComposerDisplay display = composer.display();
  std::vector<Segment> numbers;
  for (int number = 1; number <= display.countMaximum; ++number) numbers.push_back({QString::number(number), {}, {}});
  auto* segments = new SegmentedControl(texts::count(), numbers);
  segments->setCurrent(display.count - 1);
  column->addWidget(segments);
  if (!display.countTooltip.isEmpty()) {
    auto* note = new Paragraph(display.countTooltip, Type::small, &Colors::textTertiary);
    note->setMaximumWidth(220);
    column->addWidget(note);
  }
  QObject::connect(segments, &SegmentedControl::chosen, popover,
                   [&composer](int index) { composer.chooseCount(index + 1); });
  popover->openAt(chip, chip->parentWidget());  // over the dock, whose prompt and notices stay in view
  return popover;
}

Popover* openLengthPopover(ComposerPresenter& composer, QWidget* chip) {
  const ComposerDisplay display = composer.display();
  QVBoxLayout* column = nullptr;
  Popover* popover = columnPopover(display.lengthTitle.isEmpty() ? texts::length() : display.lengthTitle, column);
  if (!display.lengthRows.empty()) fillLengthRows(composer, popover, column);
  auto* grid = new QGridLayout;
  grid->setSpacing(2);
  const int rows = display.lengths.size() > 10 ? static_cast<int>(display.lengths.size() + 1) / 2 : 10;
  int place = 0;
  for (const LengthChoice& length : display.lengthRows.empty() ? display.lengths : std::vector<LengthChoice>()) {
    auto* button = new LengthButton(length);
    QObject::connect(button, &QAbstractButton::clicked, popover, [&composer, popover, value = length.value] {
      composer.chooseLength(value);
      popover->dismiss();
    });
    grid->addWidget(button, place % rows, place / rows);
    ++place;
  }
  column->addLayout(grid);
  if (!display.lengthFoot.isEmpty()) {
    auto* note = new Paragraph(display.lengthFoot, Type::small, &Colors::textTertiary);
    note->setMaximumWidth(240);
    column->addWidget(note);
  }
  popover->openAt(chip, chip->parentWidget());  // over the dock, whose prompt and notices stay in view
  return popover;
}

Popover* openSeedPopover(ComposerPresenter& composer, QWidget* chip) {
  const ComposerDisplay display = composer.display();
  QVBoxLayout* column = nullptr;
  Popover* popover = columnPopover(texts::seed(), column);
  auto* row = new QHBoxLayout;
  auto* field = new TextField(texts::seed());
  field->setFont(fontFor(Type::mono));
  field->setText(display.seedText);
  auto* roll = new IconButton(u"dices"_s, texts::rollSeed());
  row->addWidget(field, 1);
  row->addWidget(roll);
  column->addLayout(row);
  const QString words = display.seedDetail.isEmpty() ? display.seedTooltip : display.seedDetail;
  auto* note = new Paragraph(words, Type::small, &Colors::textTertiary);
  note->setFixedWidth(240);
  column->addWidget(note);
  QObject::connect(field, &QLineEdit::textEdited, popover,
                   [&composer](const QString& text) { composer.editSeed(text); });
  QObject::connect(field, &QLineEdit::returnPressed, popover, &Popover::dismiss);
  QObject::connect(roll, &IconButton::clicked, popover, [&composer, field] {
    composer.rollSeed();
    field->setText(composer.display().seedText);
  });
  field->setFocus();
  popover->openAt(chip, chip->parentWidget());  // over the dock, whose prompt and notices stay in view
  return popover;
}

}  // namespace sorvan::views
