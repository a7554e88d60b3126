#include "shell/views/sheet_tools.h"

#include <QHBoxLayout>

#include "shell/compared_picture.h"
#include "shell/sheet_texts.h"
#include "shell/views/controls.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

SheetTools::SheetTools(QWidget* parent)
    : QWidget(parent),
      compare_(new Button(shell::texts::compare, ButtonVariant::quiet)),
      play_(new Button(shell::texts::playAll, ButtonVariant::quiet)),
      save_(new Button(shell::texts::saveAsSheet, ButtonVariant::secondary)),
      add_(new Button(shell::texts::addMedia, ButtonVariant::secondary)),
      more_(new IconButton(u"ellipsis"_s, shell::texts::moreActions)) {
  compare_->setIconName(u"eye"_s);
  compare_->setCheckable(true);
  add_->setIconName(u"plus"_s);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(8);
  for (QWidget* control : std::initializer_list<QWidget*>{compare_, play_, save_, add_, more_}) row->addWidget(control);
  connect(compare_, &QAbstractButton::clicked, this, &SheetTools::compareToggled);
  connect(play_, &QAbstractButton::clicked, this, &SheetTools::playToggled);
  connect(save_, &QAbstractButton::clicked, this, &SheetTools::saveRequested);
  connect(add_, &QAbstractButton::clicked, this, &SheetTools::addRequested);
  connect(more_, &QAbstractButton::clicked, this,
          [this] { Q_EMIT moreRequested(more_->mapToGlobal(more_->rect().bottomLeft())); });
  setClips(false, false);
}

void SheetTools::setCompare(int pictures, bool comparing) {
  compare_->setVisible(pictures >= shell::fewestCompared);
  compare_->setText(shell::texts::compareCount(pictures));
  compare_->setChecked(comparing);
  compare_->setToolTip(shell::texts::compare + u"  C"_s);
}

void SheetTools::setClips(bool any, bool playing) {
  play_->setVisible(any);
  play_->setIconName(playing ? u"pause"_s : u"play"_s);
  play_->setText(playing ? shell::texts::pauseAll : shell::texts::playAll);
  play_->setToolTip(playing ? shell::texts::pauseAllHint : shell::texts::playAllHint);
  play_->setAccessibleDescription(play_->toolTip());
}

void SheetTools::setAdding(bool possible, const QString& hint) {
  add_->setEnabled(possible);
  add_->setToolTip(hint);
  add_->setAccessibleDescription(hint);
}

void SheetTools::setSaving(bool possible) { save_->setVisible(possible); }

void SheetTools::setMore(bool possible) { more_->setVisible(possible); }

}  // namespace sorvan::views
