#include "shell/views/inspector_parts.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include "shell/views/accessible_value.h"
#include "shell/views/controls.h"
#include "shell/views/icons.h"
#include "shell/views/inspector_links.h"
#include "shell/views/marks_painting.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"
#include "shell/views/wall_texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kStarStep = 18;
constexpr int kMostStars = 5;
constexpr float kPreview = 0.6F;  // how strong stars are that are only pointed at
constexpr int kMosaicCell = 96;
constexpr int kMosaicGap = 4;
constexpr int kLabelColumn = 92;
constexpr int kTextLine = 18;

// The heading of a section: its title and a chevron; a press folds the section.
class SectionHead final : public QAbstractButton {
 public:
  explicit SectionHead(const QString& title) {
    setText(title);
    setCheckable(true);
    setChecked(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setFixedHeight(20);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  }
  QSize sizeHint() const override { return {80, 20}; }

 protected:
  void paintEvent(QPaintEvent*) override {
    const Colors& c = colors();
    QPainter painter(this);
    const int used = paintText(painter, rect(), {text(), fontFor(Type::small, Weight::semibold), c.textSecondary});
    if (!underMouse() && isChecked()) return;
    paintIcon(painter, isChecked() ? u"chevron-down"_s : u"chevron-right"_s, QRect(used + 6, 0, 14, height()), 14,
              {c.textTertiary});
  }
};

}  // namespace

namespace {
QColor statusIn(const Colors& c, const QString& token) {
  if (token == u"shortlist"_s) return c.statusShortlist;
  if (token == u"approved"_s) return c.statusApproved;
  if (token == u"final"_s) return c.statusFinal;
  return token == u"rejected"_s ? c.statusRejected : c.statusDraft;
}
}  // namespace

QColor statusColor(const QString& token) { return statusIn(colors(), token); }

QColor statusColorOnPicture(const QString& token) { return statusIn(Theme::instance().colorsOf(Look::dark), token); }

// PreviewPicture

PreviewPicture::PreviewPicture(ThumbnailStore& thumbnails, QWidget* parent)
    : QAbstractButton(parent), thumbnails_(thumbnails) {
  setAccessibleName(texts::openPreview());
  setToolTip(texts::openPreview());
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setFixedHeight(214);
  connect(&thumbnails_, &ThumbnailStore::loaded, this, qOverload<>(&QWidget::update));
}

void PreviewPicture::setPath(const QString& path) {
  path_ = path;
  update();
}

void PreviewPicture::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  paintPanel(painter, rect(), metrics().radiusControl, c.surfaceSurround);
  const auto answer = thumbnails_.picture(path_, {}, qRound(640 * devicePixelRatioF()));
  if (answer.state == ThumbnailStore::State::missing)
    paintIcon(painter, u"triangle-alert"_s, rect(), 20, {c.textTertiary});
  if (answer.state != ThumbnailStore::State::ready) return;
  const QSizeF size = QSizeF(answer.picture.size()).scaled(QSizeF(width(), height()), Qt::KeepAspectRatio);
  const QRectF place((width() - size.width()) / 2, (height() - size.height()) / 2, size.width(), size.height());
  paintCover(painter, place, size.height() >= height() - 1 && size.width() >= width() - 1 ? metrics().radiusControl : 0,
             answer.picture);
  const QRect corner(width() - 30, 6, 24, 24);
  paintPanel(painter, corner, metrics().radiusSmall, c.pictureBadge,
             underMouse() || isDown() ? c.pictureBadgeText : QColor());
  paintIcon(painter, u"maximize"_s, corner, 14, {c.pictureBadgeText});
}

// PreviewMosaic

PreviewMosaic::PreviewMosaic(ThumbnailStore& thumbnails, std::vector<QString> paths, QWidget* parent)
    : QWidget(parent), thumbnails_(thumbnails), paths_(std::move(paths)) {
  setFixedHeight(sizeHint().height());
  connect(&thumbnails_, &ThumbnailStore::loaded, this, qOverload<>(&QWidget::update));
}

QSize PreviewMosaic::sizeHint() const {
  const int rows = static_cast<int>(paths_.size() + 1) / 2;
  return {288, rows * (kMosaicCell + kMosaicGap) - kMosaicGap};
}

void PreviewMosaic::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const int cell = (width() - kMosaicGap) / 2;
  for (size_t index = 0; index < paths_.size(); ++index) {
    const bool alone = index + 1 == paths_.size() && index % 2 == 0;  // takes the whole row
    const QRectF place(static_cast<double>(index % 2) * (cell + kMosaicGap),
                       static_cast<double>(index / 2) * (kMosaicCell + kMosaicGap), alone ? width() : cell, kMosaicCell);
    const auto answer = thumbnails_.picture(paths_[index], {}, qRound(288 * devicePixelRatioF()));
    if (answer.state == ThumbnailStore::State::ready)
      paintCover(painter, place, metrics().radiusPicture, answer.picture);
    else
      paintPanel(painter, place, metrics().radiusPicture, colors().surfaceSurround);
  }
}

// MarkedPicture

MarkedPicture::MarkedPicture(ThumbnailStore& thumbnails, const InspectorMarks& marks, QWidget* parent)
    : QWidget(parent), thumbnails_(thumbnails), marks_(marks) {
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  setAccessibleName(marks.title);
  setAccessibleDescription(marks.countText);
  connect(&thumbnails_, &ThumbnailStore::loaded, this, [this] {
    updateGeometry();
    update();
  });
}

void MarkedPicture::setMarks(const InspectorMarks& marks) {
  if (marks_ == marks) return;
  marks_ = marks;
  updateGeometry();
  update();
}

QPixmap MarkedPicture::picture() const {
  return thumbnails_.picture(marks_.picturePath, {}, qRound(640 * devicePixelRatioF())).picture;
}

int MarkedPicture::heightForWidth(int width) const {
  const QPixmap shown = picture();
  const double ratio = shown.isNull() ? 1.5 : double(shown.width()) / shown.height();
  return std::clamp(qRound(width / ratio), 60, 320);
}

void MarkedPicture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const QPixmap shown = picture();
  if (shown.isNull()) return paintPanel(painter, rect(), metrics().radiusControl, colors().surfacePlaceholder);
  const QSizeF size = QSizeF(shown.size()).scaled(QSizeF(this->size()), Qt::KeepAspectRatio);
  const QRectF place((width() - size.width()) / 2, (height() - size.height()) / 2, size.width(), size.height());
  paintCover(painter, place, metrics().radiusControl, shown);
  painter.setClipRect(rect());
  int number = 0;
  for (const QRectF& area : marks_.areas) {
    const QRectF box(place.x() + area.x() * place.width(), place.y() + area.y() * place.height(),
                     area.width() * place.width(), area.height() * place.height());
    paintMarkBox(painter, box);
    paintMarkNumber(painter, box, ++number);
  }
}

// StarRow

StarRow::StarRow(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setAccessibleName(texts::rating());
  giveValue(*this, {[this] { return stars_; }, [this](int stars) { Q_EMIT chosen(stars); },
                    [] { return std::pair(0, kMostStars); }, 1});
  setStars(0);
}

void StarRow::setStars(int stars) {
  const bool another = std::exchange(stars_, stars) != stars;
  if (another) announceValue(*this);
  setAccessibleDescription(texts::stars(stars));
  update();
}

int StarRow::starAt(double x) const { return std::clamp(static_cast<int>(x / kStarStep) + 1, 1, 5); }

void StarRow::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  const int shown = hovered_ > 0 ? hovered_ : stars_;
  // What a press would choose is not the rating yet.
  QColor gold = c.rating;
  if (hovered_ > 0) gold.setAlphaF(kPreview);
  for (int star = 0; star < 5; ++star) {
    const QRect place(star * kStarStep, 0, 16, height());
    const bool full = star < shown;
    paintIcon(painter, u"star"_s, place, 15,
              {full ? gold : c.textTertiary, full ? IconFill::filled : IconFill::outline});
  }
}

void StarRow::mousePressEvent(QMouseEvent* event) {
  const int star = starAt(event->position().x());
  Q_EMIT chosen(star == stars_ ? 0 : star);
}

void StarRow::mouseMoveEvent(QMouseEvent* event) {
  hovered_ = starAt(event->position().x());
  update();
}

void StarRow::leaveEvent(QEvent*) {
  hovered_ = 0;
  update();
}

void StarRow::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Right || key == Qt::Key_Up)
    Q_EMIT chosen(std::min(5, stars_ + 1));
  else if (key == Qt::Key_Left || key == Qt::Key_Down)
    Q_EMIT chosen(std::max(0, stars_ - 1));
  else if (key >= Qt::Key_0 && key <= Qt::Key_5)
    Q_EMIT chosen(key - Qt::Key_0);
  else
    QWidget::keyPressEvent(event);
}

// HeartButton

HeartButton::HeartButton(QWidget* parent) : QAbstractButton(parent) {
  setCheckable(true);
  setAccessibleName(texts::favorite());
  setToolTip(texts::favorite() + u"  F"_s);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void HeartButton::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  if (underMouse()) paintPanel(painter, rect(), metrics().radiusControl, c.stateHover);
  paintIcon(painter, u"heart"_s, rect(), 16,
            {isChecked() ? c.favorite : c.textSecondary, isChecked() ? IconFill::filled : IconFill::outline});
}

// StatusButton

StatusButton::StatusButton(const QString& text, const QString& token, QWidget* parent)
    : QAbstractButton(parent), token_(token) {
  setText(text);
  setAccessibleName(texts::statusMenu());
  setAccessibleDescription(text);
  setToolTip(texts::statusMenu());
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize StatusButton::sizeHint() const {
  const int dot = token_.isEmpty() ? 0 : 14;
  return {textWidth(text(), fontFor(Type::small, Weight::medium)) + dot + 38, 26};
}

void StatusButton::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  const bool hovered = isEnabled() && (underMouse() || isDown());
  paintPanel(painter, rect(), metrics().radiusControl, hovered ? c.controlFillHover : c.controlFill, c.controlBorder);
  const int dot = token_.isEmpty() ? 0 : 14;
  if (dot > 0) paintPanel(painter, QRectF(10, height() / 2.0 - 4, 8, 8), 4, statusColor(token_));
  paintText(painter, rect().adjusted(10 + dot, 0, -22, 0),
            {text(), fontFor(Type::small, Weight::medium), isEnabled() ? c.textPrimary : c.textDisabled});
  paintIcon(painter, u"chevron-down"_s, QRectF(width() - 22, 0, 14, height()), 12, {c.textSecondary});
}

// InspectorSectionView

InspectorSectionView::InspectorSectionView(const InspectorSection& section, ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent), head_(new QWidget), body_(new QWidget) {
  auto* head = new SectionHead(section.title);
  auto* headRow = new QHBoxLayout(head_);
  headRow->setContentsMargins(0, 0, 0, 0);
  headRow->setSpacing(4);
  headRow->addWidget(head, 1);
  connect(head, &QAbstractButton::toggled, body_, &QWidget::setVisible);
  auto* body = new QVBoxLayout(body_);
  body->setContentsMargins(0, 0, 0, 0);
  body->setSpacing(8);
  if (!section.text.isEmpty()) {
    text_ = new Paragraph({}, Type::small);
    text_->setLineDistance(kTextLine);
    showText(section);
    text_->setSelectable(true);
    body->addWidget(text_);
  }
  if (!section.rows.empty()) body->addWidget(buildRows(section));
  if (!section.links.empty()) {
    auto* links = new InspectorLinks(thumbnails, section.links);
    connect(links, &InspectorLinks::opened, this, &InspectorSectionView::itemOpened);
    body->addWidget(links);
    headRow->addWidget(new Label(QString::number(section.links.size()), Type::small, &Colors::textTertiary));
  }
  for (const InspectorButton& spec : section.headActions) buildHeadAction(spec);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(16, 10, 16, 12);
  column->setSpacing(6);
  column->addWidget(head_);
  column->addWidget(body_);
  setAccessibleName(section.title);
}

void InspectorSectionView::buildHeadAction(const InspectorButton& spec) {
  QAbstractButton* button = nullptr;
  if (spec.action == ActionId::copyPrompt) {
    auto* icon = new IconButton(u"copy"_s, spec.title);
    icon->setControlSize(ControlSize::compact);
    icon->setIconSide(metrics().iconSmall);
    button = icon;
  } else {
    auto* link = new Button(spec.title, ButtonVariant::link);
    link->setControlSize(ControlSize::compact);
    button = link;
  }
  connect(button, &QAbstractButton::clicked, this, [this, action = spec.action] { Q_EMIT actionRequested(action); });
  addHeadAction(button);
}

void InspectorSectionView::showText(const InspectorSection& section) {
  std::vector<std::pair<int, int>> names;
  for (const InspectorSpan& span : section.mentions) names.emplace_back(span.start, span.length);
  text_->setParagraph(section.text, names);
}

QWidget* InspectorSectionView::buildRows(const InspectorSection& section) {
  auto* rows = new QWidget;
  auto* grid = new QGridLayout(rows);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(10);
  grid->setVerticalSpacing(5);
  grid->setColumnMinimumWidth(0, kLabelColumn);
  grid->setColumnStretch(1, 1);
  int number = 0;
  for (const InspectorRow& row : section.rows) {
    auto* label = new Label(row.label, Type::small, &Colors::textTertiary);
    grid->addWidget(label, number, 0, Qt::AlignTop);
    Paragraph* value = row.monospaced ? nullptr : new Paragraph(row.value, Type::small);
    ElidedLabel* shortened =
        row.monospaced ? new ElidedLabel(Type::mono, &Colors::textPrimary, Qt::ElideMiddle) : nullptr;
    if (value) value->setSelectable(true), value->setMinimumWidth(40), grid->addWidget(value, number, 1);
    if (shortened) shortened->setText(row.value), grid->addWidget(shortened, number, 1, Qt::AlignTop);
    for (QWidget* told : {static_cast<QWidget*>(value), static_cast<QWidget*>(shortened), static_cast<QWidget*>(label)}) {
      if (!told || row.note.isEmpty()) continue;
      told->setToolTip(row.note);
      told->setAccessibleDescription(row.note);
    }
    values_.push_back(value);
    monospaced_.push_back(shortened);
    ++number;
  }
  return rows;
}

void InspectorSectionView::setWords(const InspectorSection& section) {
  if (text_ && text_->paragraph() != section.text) showText(section);
  for (size_t index = 0; index < values_.size() && index < section.rows.size(); ++index) {
    const QString& words = section.rows[index].value;
    if (values_[index] && values_[index]->paragraph() != words) values_[index]->setParagraph(words);
    if (monospaced_[index]) monospaced_[index]->setText(words);
  }
}

void InspectorSectionView::addHeadAction(QWidget* action) { head_->layout()->addWidget(action); }

}  // namespace sorvan::views
