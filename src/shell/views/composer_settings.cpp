#include "shell/views/composer_settings.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QVBoxLayout>

#include "shell/views/choice_buttons.h"
#include "shell/views/composer_words.h"
#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/labels.h"
#include "shell/views/segmented_control.h"
#include "shell/views/texts.h"
#include "shell/views/theme.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kTop = 12;
constexpr int kSides = 15;  // the line above reaches the edges of the dock, the groups stand under the prompt
constexpr int kGroupGap = 26;
constexpr int kRowGap = 12;
constexpr int kSeedWidth = 154;
constexpr QSize kRatio{44, 46};
// More, or longer ones, are a menu.
constexpr std::size_t kMostSegments = 5;
constexpr qsizetype kMostLetters = 26;

QStringList offeredBy(const ComposerDisplay& display) {
  QStringList offered;
  if (display.ratioShown && !display.ratioFixed)
    for (const RatioChoice& ratio : display.ratios) offered << ratio.size + (ratio.offered ? u"+"_s : u"-"_s);
  offered << u"count"_s << QString::number(display.countShown ? display.countMaximum : 0);
  for (const SettingChoices& setting : display.settings) {
    offered << u"setting"_s << setting.field << setting.label;
    for (const LengthChoice& value : setting.values) offered << value.value << value.label;
  }
  if (display.seedShown) offered << u"seed"_s;
  return offered;
}

int chosenOf(const std::vector<LengthChoice>& values) {
  const auto found = std::find_if(values.begin(), values.end(), [](const auto& value) { return value.chosen; });
  return found == values.end() ? -1 : static_cast<int>(found - values.begin());
}

bool fitsInSegments(const SettingChoices& setting) {
  qsizetype letters = 0;
  for (const LengthChoice& value : setting.values) letters += value.label.size();
  return setting.values.size() <= kMostSegments && letters <= kMostLetters && chosenOf(setting.values) >= 0;
}

const SettingChoices* settingOf(const ComposerDisplay& display, const QString& field) {
  for (const SettingChoices& setting : display.settings)
    if (setting.field == field) return &setting;
  return nullptr;
}

}  // namespace

ComposerSettings::ComposerSettings(ComposerPresenter& composer, QWidget* parent)
    : QWidget(parent), composer_(composer) {
  setAccessibleName(texts::settingsStrip());
}

void ComposerSettings::refresh(const ComposerDisplay& display) {
  if (const QStringList offered = offeredBy(display); offered != offered_) {
    offered_ = offered;
    rebuild(display);
  }
  for (const auto& update : updates_) update(display);
  arrange(width(), true);
}

void ComposerSettings::rebuild(const ComposerDisplay& display) {
  for (QWidget* group : groups_) group->hide(), group->deleteLater();
  groups_.clear();
  updates_.clear();
  if (display.ratioShown && !display.ratioFixed) addRatios(display);
  if (display.countShown && display.countMaximum > 1) addCount(display);
  for (const SettingChoices& setting : display.settings)
    fitsInSegments(setting) ? addSetting(setting) : addMenu(setting);
  if (display.seedShown) addSeed(display);
}

void ComposerSettings::addGroup(const QString& title, QWidget* control, const QString& note) {
  auto* group = new QWidget(this);
  auto* column = new QVBoxLayout(group);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(6);
  column->addWidget(new Label(title, Type::caption, &Colors::textTertiary));
  column->addWidget(control, 0, Qt::AlignLeft);
  if (!note.isEmpty()) {
    auto* words = new Paragraph(note, Type::caption, &Colors::textTertiary);
    words->setWeight(Weight::regular);
    words->setFixedWidth(std::max(control->sizeHint().width(), 60));
    column->addWidget(words);
  }
  column->addStretch(1);
  group->show();
  groups_.push_back(group);
}

void ComposerSettings::addRatios(const ComposerDisplay& display) {
  auto* row = new QWidget;
  row->setAccessibleName(texts::ratio());
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  for (const RatioChoice& ratio : display.ratios) {
    auto* button = new RatioButton(ratio, kRatio, row);
    connect(button, &QAbstractButton::clicked, this, [this, size = ratio.size] { composer_.chooseSize(size); });
    layout->addWidget(button);
    updates_.push_back([button, size = ratio.size](const ComposerDisplay& now) {
      const auto same = [&size](const RatioChoice& choice) { return choice.size == size && choice.chosen; };
      button->setChosen(std::any_of(now.ratios.begin(), now.ratios.end(), same));
    });
  }
  addGroup(texts::ratio(), row);
}

void ComposerSettings::addCount(const ComposerDisplay& display) {
  std::vector<Segment> numbers;
  for (int number = 1; number <= display.countMaximum; ++number) numbers.push_back({QString::number(number), {}, {}});
  auto* segments = new SegmentedControl(texts::count(), numbers);
  connect(segments, &SegmentedControl::chosen, this, [this](int index) { composer_.chooseCount(index + 1); });
  updates_.push_back([segments](const ComposerDisplay& now) { segments->setCurrent(now.count - 1); });
  addGroup(texts::outputs(), segments, texts::mostOutputs(display.countMaximum));
}

void ComposerSettings::addSetting(const SettingChoices& setting) {
  std::vector<Segment> values;
  for (const LengthChoice& value : setting.values) values.push_back({value.label, {}, {}});
  auto* segments = new SegmentedControl(setting.label, values);
  connect(segments, &SegmentedControl::chosen, this, [this, setting](int index) {
    composer_.chooseSetting(setting.field, setting.values[static_cast<std::size_t>(index)].value);
  });
  updates_.push_back([segments, field = setting.field](const ComposerDisplay& now) {
    const SettingChoices* present = settingOf(now, field);
    const int chosen = present ? chosenOf(present->values) : -1;
    if (chosen >= 0) segments->setCurrent(chosen);
  });
  addGroup(setting.label, segments);
}

void ComposerSettings::addMenu(const SettingChoices& setting) {
  auto* chip = new Chip({}, this);
  const auto open = [this, chip, field = setting.field] {
    const ComposerDisplay now = composer_.display();
    const SettingChoices* present = settingOf(now, field);
    if (!present) return;
    auto* menu = new QMenu(chip);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setAccessibleName(present->label);
    for (const LengthChoice& value : present->values) {
      QAction* choice = menu->addAction(value.label);
      choice->setCheckable(true);
      choice->setChecked(value.chosen);
      connect(choice, &QAction::triggered, this,
              [this, field, chosen = value.value] { composer_.chooseSetting(field, chosen); });
    }
    menu->popup(chip->mapToGlobal(QPoint(0, chip->height())));
  };
  connect(chip, &Chip::clicked, this, open);
  updates_.push_back([chip, field = setting.field](const ComposerDisplay& now) {
    const SettingChoices* present = settingOf(now, field);
    const int chosen = present ? chosenOf(present->values) : -1;
    const QString label = chosen < 0 ? QString() : present->values[static_cast<std::size_t>(chosen)].label;
    chip->setLabel(label.isEmpty() ? texts::noValue() : label);
    chip->setAccessibleName(present ? present->label : QString());
    chip->setAccessibleDescription(label);
    chip->setFixedSize(chip->sizeHint());
  });
  chip->setLabel(chosenOf(setting.values) < 0
                     ? texts::noValue()
                     : setting.values[static_cast<std::size_t>(chosenOf(setting.values))].label);
  addGroup(setting.label, chip);
}

void ComposerSettings::addSeed(const ComposerDisplay&) {
  auto* field = new TextField(texts::seed());
  field->setFont(fontFor(Type::mono));
  field->setFixedWidth(kSeedWidth);
  auto* roll = new IconButton(u"dices"_s, texts::rollSeed());
  roll->setControlSize(ControlSize::compact);
  roll->setIconSide(metrics().iconSmall);
  field->setInnerControl(roll);
  connect(field, &QLineEdit::textEdited, this, [this](const QString& text) { composer_.editSeed(text); });
  connect(roll, &IconButton::clicked, this, [this] { composer_.rollSeed(); });
  updates_.push_back([field](const ComposerDisplay& now) {
    if (field->text() != now.seedText) field->setText(now.seedText);
  });
  addGroup(texts::seed(), field, texts::emptySeed());
}

int ComposerSettings::heightForWidth(int width) const { return arrange(width, false); }

void ComposerSettings::resizeEvent(QResizeEvent*) { arrange(width(), true); }

int ComposerSettings::arrange(int width, bool place) const {
  int x = kSides;
  int y = kTop;
  int row = 0;
  for (QWidget* group : groups_) {
    QSize size = group->sizeHint();
    size.setHeight(std::max(size.height(), group->layout()->totalHeightForWidth(size.width())));
    if (x > kSides && x + size.width() > width - kSides) {
      x = kSides;
      y += row + kRowGap;
      row = 0;
    }
    if (place) group->setGeometry(x, y, std::min(size.width(), width - 2 * kSides), size.height());
    x += size.width() + kGroupGap;
    row = std::max(row, size.height());
  }
  return y + row;
}

void ComposerSettings::paintEvent(QPaintEvent*) {
  QPainter(this).fillRect(QRect(0, 0, width(), 1), colors().lineDefault);
}

}  // namespace sorvan::views
