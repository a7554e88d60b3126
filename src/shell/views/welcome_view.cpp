#include "shell/views/welcome_view.h"

#include <QDragEnterEvent>
#include <QLabel>
#include <QMimeData>
#include <QPainter>
#include <QVBoxLayout>

#include "shell/views/controls.h"
#include "shell/views/icons.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kColumnWidth = 520;
constexpr int kMosaicWidth = 560;
constexpr int kMosaicHeight = 640;
constexpr int kBothFrom = 1180;  // narrower windows show the column alone
constexpr int kNoteWidth = 430;
constexpr int kMarkSide = 64;

struct Tile {
  const char* name;
  double x, y, width, height;
};

// The places of the sample pictures, as the design lays them out.
constexpr std::array<Tile, 16> kTiles = {{
    {"light_dawn_0", 0.0, 0.0, 222.0, 124.9},
    {"tin_1", 230.0, 0.0, 99.9, 124.9},
    {"boat_gold_0", 338.0, 0.0, 222.0, 124.9},
    {"arch_0", 0.0, 132.9, 158.3, 105.6},
    {"orb_1", 166.3, 132.9, 105.6, 105.6},
    {"bottle_0", 279.9, 132.9, 84.4, 105.6},
    {"roof_dusk_3", 372.3, 132.9, 187.7, 105.6},
    {"vase_1", 0.0, 246.4, 106.7, 133.4},
    {"forest_gold_0", 114.7, 246.4, 200.1, 133.4},
    {"city_night_0", 322.8, 246.4, 237.2, 133.4},
    {"room_1", 0.0, 387.8, 206.8, 137.9},
    {"light_gold_3", 214.8, 387.8, 92.0, 137.9},
    {"dune_gold_0", 314.8, 387.8, 245.2, 137.9},
    {"lake_dusk_2", 0.0, 533.7, 256.0, 144.0},
    {"vase_2", 264.0, 533.7, 144.0, 144.0},
    {"tin_4", 416.0, 533.7, 144.0, 144.0},
}};

// Decoration: the pictures say nothing that a person would need read out.
class Mosaic final : public QWidget {
 public:
  explicit Mosaic(QWidget* parent) : QWidget(parent) {
    setFixedSize(kMosaicWidth, kMosaicHeight);
    for (const Tile& tile : kTiles)
      pictures_.emplace_back(u":/sorvan/samples/"_s + QLatin1StringView(tile.name) + u".jpg"_s);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    for (size_t index = 0; index < kTiles.size(); ++index) {
      const Tile& tile = kTiles[index];
      paintCover(painter, QRectF(tile.x, tile.y, tile.width, tile.height), 5, pictures_[index]);
    }
  }

 private:
  std::vector<QPixmap> pictures_;
};

class Mark final : public QWidget {
 public:
  explicit Mark(QWidget* parent) : QWidget(parent) { setFixedSize(kMarkSide, kMarkSide); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter(this).drawPixmap(0, 0, markPixmap(kMarkSide, devicePixelRatioF()));
  }
};

QString droppedFolder(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  if (urls.size() != 1 || !urls.front().isLocalFile()) return {};
  const QString path = urls.front().toLocalFile();
  return QFileInfo(path).isDir() ? path : QString();
}

QFont sized(QFont font, int pixels) {
  font.setPixelSize(pixels);
  return font;
}

}  // namespace

WelcomeView::WelcomeView(const WelcomeDisplay& display, QWidget* parent)
    : QWidget(parent),
      column_(new QWidget(this)),
      mosaic_(new Mosaic(this)),
      useDefault_(new Button(display.defaultButton, ButtonVariant::primary)) {
  setAcceptDrops(true);
  setAccessibleName(display.name);
  auto* column = new QVBoxLayout(column_);
  column->setContentsMargins(4, 4, 4, 4);
  column->setSpacing(0);
  column->addWidget(new Mark(column_));
  auto* name = new Label(display.name, Type::display);
  name->setFont(sized(name->font(), 34));
  auto* line = new Label(display.line, Type::prompt, &Colors::textSecondary);
  line->setFont(sized(line->font(), 16));
  auto* choose = new Button(display.chooseButton);
  for (Button* button : {useDefault_, choose}) button->setControlSize(ControlSize::large);
  choose->setIconName(u"folder"_s);
  useDefault_->setAccessibleDescription(display.defaultHelp);
  useDefault_->setMinimumHeight(42);
  choose->setMinimumHeight(38);
  column->addSpacing(22);
  column->addWidget(name);
  column->addSpacing(8);
  column->addWidget(line);
  column->addSpacing(34);
  column->addWidget(useDefault_, 0, Qt::AlignLeft);
  column->addSpacing(10);
  column->addWidget(new Label(display.defaultHelp, Type::small, &Colors::textTertiary));
  column->addSpacing(14);
  column->addWidget(choose, 0, Qt::AlignLeft);
  column->addSpacing(44);
  auto* rule = new Hairline(&Colors::lineDefault);
  rule->setFixedWidth(kNoteWidth);
  column->addWidget(rule);
  column->addSpacing(18);
  auto* note = new Paragraph(display.note, Type::small, &Colors::textTertiary);
  note->setLineDistance(18);
  note->setFixedWidth(kNoteWidth);
  column->addWidget(note);
  connect(useDefault_, &Button::clicked, this, &WelcomeView::defaultChosen);
  connect(choose, &Button::clicked, this, &WelcomeView::anotherFolderChosen);
}

void WelcomeView::paintEvent(QPaintEvent*) { QPainter(this).fillRect(rect(), colors().surfaceCanvas); }

void WelcomeView::resizeEvent(QResizeEvent*) {
  const bool both = width() >= kBothFrom;
  const int spare = both ? std::max(48, (width() - kColumnWidth - kMosaicWidth) / 3) : (width() - kColumnWidth) / 2;
  const int height = column_->sizeHint().height();
  column_->setGeometry(both ? std::min(spare, 132) : spare, std::max(24, (this->height() - height) / 2), kColumnWidth,
                       height);
  mosaic_->setVisible(both);
  mosaic_->move(width() - kMosaicWidth - std::min(spare, 120), std::max(24, (this->height() - kMosaicHeight) / 2));
}

void WelcomeView::showEvent(QShowEvent*) { useDefault_->setFocus(); }

void WelcomeView::dragEnterEvent(QDragEnterEvent* event) {
  if (!droppedFolder(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void WelcomeView::dropEvent(QDropEvent* event) {
  const QString folder = droppedFolder(*event->mimeData());
  if (!folder.isEmpty()) Q_EMIT folderDropped(folder);
}

}  // namespace sorvan::views
