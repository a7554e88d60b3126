#include "shell/views/model_row.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "shell/views/icons.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kBoxColumn = 40;  // the part at the left that adds instead of choosing

BadgeTone toneOfBadge(const QString& badge) {
  if (badge == u"Top rated"_s) return BadgeTone::accent;
  return badge == u"New"_s ? BadgeTone::info : BadgeTone::neutral;
}

QString nameFor(const ModelChoice& model) {
  QStringList parts{model.name};
  for (const QString& part : {model.badge, model.summary}) {
    if (!part.isEmpty()) parts.append(part);
  }
  return parts.join(u", "_s);
}

}  // namespace

ModelRow::ModelRow(const ModelChoice& model, bool severalAllowed, QWidget* parent)
    : QAbstractButton(parent), model_(model), severalAllowed_(severalAllowed) {
  setCheckable(true);
  setChecked(model.chosen);
  setAccessibleName(nameFor(model));
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setFixedHeight(48);
}

void ModelRow::setChosen(bool chosen) {
  model_.chosen = chosen;
  setChecked(chosen);
}

bool ModelRow::matches(const QString& text) const {
  for (const QString& word : text.split(u' ', Qt::SkipEmptyParts)) {
    const QString all = model_.name + u' ' + model_.summary + u' ' + model_.kindText;
    if (!all.contains(word, Qt::CaseInsensitive)) return false;
  }
  return true;
}

void ModelRow::mouseReleaseEvent(QMouseEvent* event) {
  const bool inside = rect().contains(event->position().toPoint());
  setDown(false);
  if (!inside || event->button() != Qt::LeftButton) return;
  const bool adds =
      severalAllowed_ && (event->position().x() < kBoxColumn || event->modifiers().testFlag(Qt::ControlModifier));
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
  } else {
    event->ignore();  // arrows belong to the list
  }
}

void ModelRow::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  if (underMouse() || hasFocus()) paintPanel(painter, rect(), 7, c.stateHover);
  const QRectF box(12, (height() - 16) / 2.0, 16, 16);
  const double radius = severalAllowed_ ? metrics().radiusSmall : 8;
  if (model_.chosen)
    paintPanel(painter, box, radius, c.accentFill);
  else
    paintRing(painter, box, radius, 1.5, c.controlBorderStrong);
  if (model_.chosen) paintIcon(painter, u"check"_s, box, 12, {c.textOnAccent});
  const QRect words(kBoxColumn, 7, width() - kBoxColumn - 12, 18);
  const int kind =
      paintText(painter, QRect(words.left(), 0, words.width(), height()),
                {model_.kindText, fontFor(Type::small), c.textSecondary, Qt::AlignRight | Qt::AlignVCenter}) +
      12;
  const int badge = model_.badge.isEmpty() ? 0 : badgeWidth(model_.badge) + 6;
  const int name = paintText(painter, words.adjusted(0, 0, -kind - badge, 0),
                             {model_.name, fontFor(Type::body, Weight::medium), c.textPrimary});
  if (badge > 0)
    paintBadge(painter, QRect(words.left() + name + 6, words.top(), badge - 6, 18), model_.badge,
               toneOfBadge(model_.badge));
  paintText(painter, QRect(words.left(), 25, words.width() - kind, 16),
            {model_.summary, fontFor(Type::small), c.textTertiary});
}

}  // namespace sorvan::views
