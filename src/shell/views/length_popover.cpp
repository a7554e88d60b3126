// The lengths of several models at once.
#include <QGridLayout>
#include <QMenu>

#include "shell/views/choice_popovers.h"
#include "shell/views/composer_words.h"
#include "shell/views/controls.h"
#include "shell/views/labels.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kNameWidth = 190;
constexpr int kNoteWidth = 320;

using Choose = std::function<void(const QString& value)>;

QString chosenLabel(const std::vector<LengthChoice>& lengths) {
  for (const LengthChoice& length : lengths)
    if (length.chosen) return length.label;
  return {};
}

void openLengthMenu(Chip* chip, const std::vector<LengthChoice>& lengths, const Choose& choose) {
  auto* menu = new QMenu(chip);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(chip->accessibleName());
  for (const LengthChoice& length : lengths) {
    QAction* action = menu->addAction(length.label);
    action->setCheckable(true);
    action->setChecked(length.chosen);
    QObject::connect(action, &QAction::triggered, chip, [choose, value = length.value] { choose(value); });
  }
  menu->popup(chip->mapToGlobal(QPoint(0, chip->height() + 4)));
}

// One chip a row, which tells the length in force and opens the others.
struct Rows {
  ComposerPresenter& composer;
  QGridLayout* grid;
  std::vector<Chip*> chips = {};

  Chip* add(const QString& name) {
    const int row = grid->rowCount();
    auto* label = new ElidedLabel(Type::body, &Colors::textPrimary, Qt::ElideRight);
    label->setText(name);
    label->setFixedWidth(kNameWidth);
    auto* chip = new Chip(u"timer"_s);
    chip->setAccessibleName(texts::length() + u", "_s + name);
    grid->addWidget(label, row, 0);
    grid->addWidget(chip, row, 1, Qt::AlignRight);
    chips.push_back(chip);
    return chip;
  }
};

void label(Chip* chip, const QString& text) {
  chip->setLabel(text);
  chip->setAccessibleDescription(text);
}

}  // namespace

// The rows are there as long as the popover; what they tell follows the choices.
void fillLengthRows(ComposerPresenter& composer, Popover* popover, QVBoxLayout* column) {
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(16);
  grid->setVerticalSpacing(6);
  column->addLayout(grid);
  Rows rows{composer, grid};
  const ComposerDisplay display = composer.display();
  const bool hasShared = !display.lengths.empty();
  if (hasShared) {
    Chip* chip = rows.add(texts::allModels());
    QObject::connect(chip, &Chip::clicked, popover, [&composer, chip] {
      openLengthMenu(chip, composer.display().lengths, [&composer](const QString& value) { composer.chooseLength(value); });
    });
  }
  for (const LengthRow& row : display.lengthRows) {
    Chip* chip = rows.add(row.modelName);
    QObject::connect(chip, &Chip::clicked, popover, [&composer, chip, id = row.modelId] {
      for (const LengthRow& now : composer.display().lengthRows)
        if (now.modelId == id)
          openLengthMenu(chip, now.lengths, [&composer, id](const QString& value) { composer.chooseLengthOf(id, value); });
    });
  }
  if (!display.lengthNote.isEmpty()) {
    auto* note = new Paragraph(display.lengthNote, Type::small, &Colors::textSecondary);
    note->setMaximumWidth(kNoteWidth);
    column->addWidget(note);
  }
  const auto refresh = [&composer, hasShared, chips = rows.chips] {
    const ComposerDisplay now = composer.display();
    std::size_t at = 0;
    if (hasShared) label(chips[at++], now.sharedLength);
    for (const LengthRow& row : now.lengthRows)
      if (at < chips.size()) label(chips[at++], chosenLabel(row.lengths));
  };
  QObject::connect(&composer, &ComposerPresenter::changed, popover, refresh);
  refresh();
}

}  // namespace sorvan::views
