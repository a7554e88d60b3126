#include "shell/views/model_row.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

#include "shell/views/icons.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"
#include "shell/views/touch.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kRightPad = 12;
constexpr int kRadius = 7;
constexpr int kFirstLine = 7;
constexpr int kSecondLine = 25;
constexpr int kGap = 6;

BadgeTone toneOfBadge(const QString& badge) {
  if (badge == u"Top rated"_s) return BadgeTone::accent;
  return badge == u"New"_s ? BadgeTone::info : BadgeTone::neutral;
}

int abilityWidth(const ModelAbility& ability) {
  const int number = ability.number.isEmpty() ? 0 : textWidth(ability.number, fontFor(Type::caption)) + 2;
  return metrics().iconSmall + number;
}

// The abilities from left to right; those without room are left to the tooltip.
void paintAbilities(QPainter& painter, QRect area, const std::vector<ModelAbility>& abilities, const QColor& ink) {
  for (const ModelAbility& ability : abilities) {
    const int width = abilityWidth(ability);
    if (area.width() < width) return;
    const int side = metrics().iconSmall;
    paintIcon(painter, ability.iconName, QRectF(area.left(), area.top(), side, area.height()), side - 1, {ink});
    paintText(painter, area.adjusted(side + 2, 0, 0, 0), {ability.number, fontFor(Type::caption), ink});
    area.setLeft(area.left() + width + kGap);
  }
}

}  // namespace

QString accessibleModelName(const ModelRowLook& look) {
  QStringList parts{look.name};
  for (const QString& part : {look.badge, look.licence, look.summary, look.price}) {
    if (!part.isEmpty()) parts.append(part);
  }
  return parts.join(u", "_s);
}

void paintModelBox(QPainter& painter, const QRect& row, bool several, bool chosen) {
  const Colors& c = colors();
  const QRectF box(12, row.top() + (modelRowHeight - 16) / 2.0, 16, 16);
  const double radius = several ? metrics().radiusSmall : 8;
  if (!chosen) return paintRing(painter, box, radius, 1.5, c.controlBorderStrong);
  paintPanel(painter, box, radius, c.accentFill);
  paintCheck(painter, box, 11, c.textOnAccent);
}

void paintModelRow(QPainter& painter, const QRect& row, const ModelRowLook& look, bool dimmed) {
  const Colors& c = colors();
  const int right = row.right() - kRightPad - look.actionWidth;
  const int top = row.top();
  // What does not suit is dimmed, yet read to the end.
  const QColor quiet = dimmed || look.shaded ? c.textTertiaryOnSelected : c.textTertiary;
  // 1. The price, above the day that it is of.
  const QRect whole(modelBoxColumn, top, right - modelBoxColumn, modelRowHeight);
  const bool dated = !look.priceDate.isEmpty();
  const QRect priceLine = dated ? QRect(whole.left(), top + kFirstLine, whole.width(), 18) : whole;
  int taken = paintText(painter, priceLine,
                        {look.price, fontFor(Type::small), dimmed ? quiet : c.textSecondary,
                         Qt::AlignRight | Qt::AlignVCenter});
  if (dated)
    taken = std::max(taken, paintText(painter, QRect(whole.left(), top + kSecondLine, whole.width(), 16),
                                      {look.priceDate, fontFor(Type::caption, Weight::regular), quiet,
                                       Qt::AlignRight | Qt::AlignVCenter}));
  // 2. The name, its badges and what the model takes.
  const QRect words = whole.adjusted(0, 0, -(taken > 0 ? taken + 12 : 0), 0);
  QRect line(words.left(), top + kFirstLine, words.width(), 18);
  int badges = 0;
  for (const QString& badge : {look.badge, look.licence}) badges += badge.isEmpty() ? 0 : badgeWidth(badge) + kGap;
  const int name = paintText(painter, line.adjusted(0, 0, -badges, 0),
                             {look.name, fontFor(Type::body, Weight::medium), dimmed ? quiet : c.textPrimary});
  line.setLeft(line.left() + name + kGap);
  for (const auto& [badge, tone] : {std::pair(look.badge, toneOfBadge(look.badge)),
                                    std::pair(look.licence, BadgeTone::warning)}) {
    if (badge.isEmpty()) continue;
    const QRect place(line.left(), line.top(), badgeWidth(badge), 18);
    paintPanel(painter, place, metrics().radiusSmall, c.surfaceOverlay);
    paintBadge(painter, place, badge, tone);
    line.setLeft(line.left() + badgeWidth(badge) + kGap);
  }
  paintAbilities(painter, line.adjusted(2, 0, 0, 0), look.abilities, quiet);
  // 3. The line about it.
  paintText(painter, QRect(words.left(), top + kSecondLine, words.width(), 16),
            {look.summary, fontFor(Type::small), look.warns ? c.warningText : quiet});
}

ModelRow::ModelRow(const ModelChoice& model, bool severalAllowed, QWidget* parent)
    : QAbstractButton(parent), severalAllowed_(severalAllowed) {
  setCheckable(true);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setFixedHeight(modelRowHeight);
  setModel(model);
}

void ModelRow::setModel(const ModelChoice& model) {
  model_ = model;
  setChecked(model.chosen);
  setAccessibleName(accessibleModelName(look()));
  QStringList about;
  for (const ModelAbility& ability : model.abilities) about << ability.text;
  if (!model.priceDate.isEmpty()) about << texts::listPrice(model.priceDate);
  setAccessibleDescription(about.join(u". "_s));
  setToolTip(about.join(u'\n'));
  update();
}

ModelRowLook ModelRow::look() const {
  const bool warns = !model_.unsuitable.isEmpty();
  return {model_.name,      model_.badge, {},           warns ? model_.unsuitable : model_.summary, warns,
          model_.abilities, model_.price, model_.priceDate, 0};
}

bool ModelRow::matches(const QString& text) const {
  const QString all = model_.name + u' ' + model_.summary + u' ' + model_.kindText;
  for (const QString& word : text.split(u' ', Qt::SkipEmptyParts)) {
    if (!all.contains(word, Qt::CaseInsensitive)) return false;
  }
  return true;
}

void ModelRow::mouseReleaseEvent(QMouseEvent* event) {
  const bool inside = rect().contains(event->position().toPoint());
  setDown(false);
  if (!inside || event->button() != Qt::LeftButton) return;
  const bool adds = severalAllowed_ && (event->position().x() < modelBoxColumn ||
                                        event->modifiers().testFlag(Qt::ControlModifier));
  if (adds)
    Q_EMIT toggleRequested(key(), !model_.chosen);
  else
    Q_EMIT onlyRequested(key());
}

void ModelRow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    Q_EMIT onlyRequested(key());
  } else if (event->key() == Qt::Key_Space) {
    if (severalAllowed_)
      Q_EMIT toggleRequested(key(), !model_.chosen);
    else
      Q_EMIT onlyRequested(key());
  } else if (event->key() == Qt::Key_Delete && model_.removable) {
    Q_EMIT removeRequested(model_.id);
  } else {
    event->ignore();  // arrows belong to the list
  }
}

void ModelRow::contextMenuEvent(QContextMenuEvent* event) {
  if (!model_.removable) return;
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addAction(texts::removeModel(), this, [this] { Q_EMIT removeRequested(model_.id); });
  menu->popup(event->globalPos());
}

void ModelRow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (hasFocus()) paintPanel(painter, rect(), kRadius, colors().stateHover);
  paintTouch(painter, rect(), kRadius, *this);
  paintModelBox(painter, rect(), severalAllowed_, model_.chosen);
  ModelRowLook shown = look();
  shown.shaded = underMouse() || hasFocus();
  paintModelRow(painter, rect(), shown, !model_.unsuitable.isEmpty() && !model_.chosen);
}

}  // namespace sorvan::views
