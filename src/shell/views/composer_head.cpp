#include "shell/views/composer_head.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

#include "shell/views/composer_words.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "shell/views/theme.h"
#include "shell/views/touch.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

QMenu* menuBelow(QWidget* button) {
  auto* menu = new QMenu(button);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(button->accessibleName());
  return menu;
}

QAction* addChoice(QMenu& menu, const QString& name, bool chosen) {
  QAction* choice = menu.addAction(QString(name).replace(u'&', u"&&"_s));
  choice->setCheckable(true);
  choice->setChecked(chosen);
  return choice;
}

void popUp(QMenu* menu, QWidget* button) {
  menu->ensurePolished();
  menu->popup(button->mapToGlobal(QPoint(0, button->height() + 4)));
}

}  // namespace

HeadChoice::HeadChoice(const QString& iconName, const QString& words, QWidget* parent)
    : QAbstractButton(parent), words_(words) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 6, 4);
  row->setSpacing(6);
  row->addWidget(new IconView(iconName, metrics().iconSmall, &Colors::textSecondary));
  if (!words.isEmpty()) row->addWidget(new Label(words, Type::small, &Colors::textSecondary));
  value_ = new ElidedLabel(Type::small, words.isEmpty() ? &Colors::textSecondary : &Colors::textPrimary, Qt::ElideRight);
  value_->setWeight(words.isEmpty() ? Weight::medium : Weight::semibold);
  row->addWidget(value_);
  row->addWidget(new IconView(u"chevron-down"_s, metrics().iconSmall, &Colors::textSecondary));
  for (QWidget* part : findChildren<QWidget*>()) part->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void HeadChoice::setValue(const QString& name) {
  value_->setText(name);
  setAccessibleName(words_.isEmpty() ? name : words_ + u' ' + name);
  setHelp({});
  updateGeometry();
}

void HeadChoice::setHelp(const QString& help) {
  setToolTip(help.isEmpty() ? accessibleName() : help);
  setAccessibleDescription(help);
}

void HeadChoice::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintTouch(painter, rect(), metrics().radiusControl, *this);
}

void HeadChoice::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && !event->isAutoRepeat()) return click();
  QAbstractButton::keyPressEvent(event);
}

void openDestinationMenu(ComposerPresenter& composer, QWidget* button) {
  QMenu* menu = menuBelow(button);
  for (const ComposerDestination& place : composer.destinations()) {
    QAction* choice = addChoice(*menu, place.name, place.chosen);
    QObject::connect(choice, &QAction::triggered, &composer,
                     [&composer, project = place.project] { composer.chooseDestination(project); });
    if (!place.project) menu->addSeparator();
  }
  popUp(menu, button);
}

}  // namespace sorvan::views
