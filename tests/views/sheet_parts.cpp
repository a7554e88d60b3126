#include "views/sheet_parts.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "shell/views/labels.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kSheet(720, 300);

template <class Box>
QWidget* boxOf(const std::vector<QWidget*>& parts, int spacing) {
  auto* holder = new QWidget;
  auto* box = new Box(holder);
  box->setContentsMargins(0, 0, 0, 0);
  box->setSpacing(spacing);
  for (QWidget* part : parts) box->addWidget(part);
  return holder;
}

// Whatever tries to move its child elsewhere.
class Pin final : public QWidget {
 public:
  explicit Pin(QWidget* popup) {
    popup->setParent(this, Qt::Widget);
    popup->setAttribute(Qt::WA_DeleteOnClose, false);
    popup->ensurePolished();
    QSize size = popup->sizeHint().expandedTo(popup->minimumSize()).boundedTo(popup->maximumSize());
    if (popup->layout() && popup->layout()->hasHeightForWidth())
      size.setHeight(popup->layout()->totalHeightForWidth(size.width()));
    popup->resize(size);
    popup->move(0, 0);
    popup->installEventFilter(this);
    setFixedSize(popup->size());
    popup->show();
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* popup = static_cast<QWidget*>(watched);
    if (event->type() == QEvent::Move && !popup->pos().isNull()) popup->move(0, 0);
    return false;
  }
};

}  // namespace

QWidget* pinned(QWidget* popup) { return new Pin(popup); }

std::unique_ptr<QWidget> sheetOf(const QString& name, const QString& title, const std::vector<Section>& sections) {
  std::unique_ptr<QWidget> sheet = emptySheet(name, title);
  auto* column = new QVBoxLayout;
  column->setSpacing(4);
  for (const Section& section : sections) {
    auto* heading = new Label(section.title, Type::body);
    heading->setWeight(Weight::semibold);
    heading->setContentsMargins(0, 10, 0, 2);
    column->addWidget(heading);
    column->addWidget(section.content);
  }
  fillSheet(*sheet, column);
  return sheet;
}

QWidget* caption(const QString& text) { return new Label(text, Type::caption, &Colors::textSecondary); }

QWidget* indented(QWidget* part, int pixels) {
  part->setContentsMargins(pixels, 0, 0, 0);
  return part;
}

QWidget* row(const std::vector<QWidget*>& parts) {
  QWidget* holder = boxOf<QHBoxLayout>(parts, 8);
  static_cast<QHBoxLayout*>(holder->layout())->addStretch(1);
  return holder;
}

QWidget* column(const std::vector<QWidget*>& parts) { return boxOf<QVBoxLayout>(parts, 6); }

std::unique_ptr<QWidget> emptySheet(const QString& name, const QString& title) {
  auto sheet = std::make_unique<Surface>(&Colors::surfaceChrome);
  sheet->setObjectName(name);
  auto* box = new QVBoxLayout(sheet.get());
  box->setContentsMargins(26, 22, 26, 22);
  box->setSpacing(12);
  const QString look = Theme::instance().isDark() ? u" · dark"_s : u" · light"_s;
  box->addWidget(new Label(title + look, Type::title));
  return sheet;
}

void fillSheet(QWidget& sheet, QLayout* content) {
  auto* box = static_cast<QVBoxLayout*>(sheet.layout());
  box->addLayout(content);
  box->addStretch(1);
  sheet.resize(sheet.sizeHint().expandedTo(kSheet));
  // Else the first field on it would have the keyboard once it is shown.
  sheet.setFocusPolicy(Qt::StrongFocus);
  sheet.setFocus();
}

}  // namespace sorvan::views
