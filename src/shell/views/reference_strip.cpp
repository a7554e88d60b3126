#include "shell/views/reference_strip.h"

#include <QHBoxLayout>
#include <QPainter>

#include "shell/views/controls.h"
#include "shell/views/icons.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"
#include "shell/views/thumbnail_store.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kChip = 44;
constexpr int kGap = 8;
constexpr int kRowGap = 6;

// The picture of a reference, cut to a square.
class Thumb final : public QWidget {
 public:
  Thumb(ThumbnailStore& thumbnails, const AttachedReference& reference)
      : thumbnails_(thumbnails), path_(reference.thumbnailPath), other_(reference.filePath) {
    setFixedSize(metrics().composerReferenceThumb, metrics().composerReferenceThumb);
    connect(&thumbnails_, &ThumbnailStore::loaded, this, qOverload<>(&QWidget::update));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const auto answer = thumbnails_.picture(path_, other_, 256);
    if (answer.state == ThumbnailStore::State::ready)
      return paintCover(painter, rect(), metrics().radiusControl - 1, answer.picture);
    paintPanel(painter, rect(), metrics().radiusControl - 1, colors().surfacePlaceholder);
    if (answer.state == ThumbnailStore::State::missing)
      paintIcon(painter, u"triangle-alert"_s, rect(), 16, {colors().textTertiary});
  }

 private:
  ThumbnailStore& thumbnails_;
  QString path_;
  QString other_;
};

class ChipGround : public QWidget {
 public:
  ChipGround() {
    row = new QHBoxLayout(this);
    row->setContentsMargins(3, 3, 6, 3);
    row->setSpacing(8);
    setFixedHeight(kChip);
  }
  QHBoxLayout* row;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    paintPanel(painter, rect(), metrics().radiusCard, colors().stateHover);
  }
};

IconButton* cross(const QString& name) {
  auto* button = new IconButton(u"x"_s, name);
  button->setControlSize(ControlSize::compact);
  button->setIconSide(13);
  return button;
}

QWidget* twoLines(const QString& name, const QString& role) {
  auto* words = new QWidget;
  auto* column = new QVBoxLayout(words);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* title = new Label(name, Type::small, &Colors::accentText);
  title->setWeight(Weight::medium);
  column->addStretch(1);
  column->addWidget(title);
  column->addWidget(new Label(role, Type::caption, &Colors::textTertiary));
  column->addStretch(1);
  return words;
}

}  // namespace

ReferenceStrip::ReferenceStrip(ComposerPresenter& composer, ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent), composer_(composer), thumbnails_(thumbnails) {
  setAccessibleName(texts::references());
}

void ReferenceStrip::show(const std::vector<AttachedReference>& references) {
  if (references == shown_) return;
  shown_ = references;
  for (QWidget* chip : chips_) chip->hide(), chip->deleteLater();
  chips_.clear();
  for (const AttachedReference& reference : references) {
    auto* chip = new ChipGround;
    chip->setAccessibleName(reference.name);
    chip->row->addWidget(new Thumb(thumbnails_, reference));
    chip->row->addWidget(twoLines(reference.name, reference.role));
    auto* detach = cross(texts::detachReference(reference.name));
    chip->row->addWidget(detach);
    connect(detach, &IconButton::clicked, &composer_,
            [this, id = reference.id] { composer_.detachReference(id); }, Qt::QueuedConnection);
    chips_.push_back(chip);
    if (reference.marks == 0) continue;
    auto* marks = new ChipGround;
    auto* open = new Button(reference.marksLabel, ButtonVariant::quiet);
    open->setIconName(u"square-dashed-mouse-pointer"_s);
    open->setControlSize(ControlSize::compact);
    open->setToolTip(texts::openMarks());
    auto* remove = cross(texts::removeMarks());
    marks->row->setSpacing(2);
    marks->row->addWidget(new Thumb(thumbnails_, reference));
    marks->row->addWidget(open);
    marks->row->addWidget(remove);
    connect(open, &Button::clicked, &composer_, [this, id = reference.id] { composer_.openMarks(id); },
            Qt::QueuedConnection);
    connect(remove, &IconButton::clicked, &composer_, [this] { composer_.removeMarks(); }, Qt::QueuedConnection);
    chips_.push_back(marks);
  }
  for (QWidget* chip : chips_) chip->setParent(this), chip->show();
  arrange(width(), true);
}

int ReferenceStrip::arrange(int width, bool place) const {
  int x = 0;
  int y = 0;
  for (QWidget* chip : chips_) {
    const int wished = std::min(chip->sizeHint().width(), width);
    if (x > 0 && x + wished > width) {
      x = 0;
      y += kChip + kRowGap;
    }
    if (place) chip->setGeometry(x, y, wished, kChip);
    x += wished + kGap;
  }
  return chips_.empty() ? 0 : y + kChip;
}

int ReferenceStrip::heightForWidth(int width) const { return arrange(width, false); }
void ReferenceStrip::resizeEvent(QResizeEvent*) { arrange(width(), true); }

}  // namespace sorvan::views
