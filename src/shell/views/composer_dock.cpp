#include "shell/views/composer_dock.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QPainter>

#include "shell/views/choice_popovers.h"
#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/labels.h"
#include "shell/views/model_picker.h"
#include "shell/views/painting.h"
#include "shell/views/prompt_edit.h"
#include "shell/views/reference_strip.h"
#include "shell/views/segmented_control.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

ComposerDock::ComposerDock(ComposerPresenter& composer, ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent), composer_(composer), thumbnails_(thumbnails) {
  setAccessibleName(texts::composerZone());
  build(thumbnails);
  connectControls();
  connectReferences();
  messageLeaves_.setSingleShot(true);
  messageLeaves_.setInterval(metrics().motionMessageHold);
  connect(&messageLeaves_, &QTimer::timeout, this, [this] {
    message_->setText({});
    Q_EMIT heightChanged();
    arrange();
  });
  connect(&composer_, &ComposerPresenter::changed, this, &ComposerDock::refresh);
  connect(&composer_, &ComposerPresenter::messageChanged, this, &ComposerDock::refreshMessage);
  connect(&composer_, &ComposerPresenter::draftReplaced, prompt_, &PromptEdit::setDraft);
  connect(&composer_, &ComposerPresenter::focusRequested, this, &ComposerDock::focusPrompt);
  prompt_->setDraft(composer_.draft());
  refresh();
  refreshMessage();
}

// Children are made in the order in which the keyboard visits them.
void ComposerDock::build(ThumbnailStore& thumbnails) {
  prompt_ = new PromptEdit(texts::prompt(), this);
  references_ = new ReferenceStrip(composer_, thumbnails, this);
  model_ = new Chip(u"box"_s, this);
  ratio_ = new Chip(u"ratio"_s, this);
  length_ = new Chip(u"timer"_s, this);
  count_ = new Chip(u"layers"_s, this);
  seed_ = new Chip(u"dices"_s, this);
  seed_->setChevron(false);
  estimate_ = new ElidedLabel(Type::small, &Colors::textSecondary, Qt::ElideRight, this);
  estimate_->setWeight(Weight::medium);
  submit_ = new Button({}, ButtonVariant::primary, this);
  submit_->setTrailingIconName(u"corner-down-left"_s);
  kind_ = new SegmentedControl(texts::kind(),
                               {{texts::imagesAndVideo(), u"image"_s, {}}, {texts::audio(), u"audio-lines"_s, {}}},
                               ControlSize::compact, this);
  kindIcons_ = new SegmentedControl(texts::kind(),
                                    {{{}, u"image"_s, texts::imagesAndVideo()}, {{}, u"audio-lines"_s, texts::audio()}},
                                    ControlSize::regular, this);
  destination_ = new QWidget(this);
  auto* row = new QHBoxLayout(destination_);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(6);
  row->addWidget(new IconView(u"folder"_s, metrics().iconSmall, &Colors::textSecondary));
  row->addWidget(new Label(texts::saveTo(), Type::small, &Colors::textSecondary));
  destinationName_ = new ElidedLabel(Type::small, &Colors::textPrimary, Qt::ElideRight);
  destinationName_->setWeight(Weight::semibold);
  row->addWidget(destinationName_);
  clear_ = new IconButton(u"eraser"_s, texts::clearComposer(), {}, this);
  collapse_ = new IconButton(u"chevron-down"_s, texts::collapse(), u"Esc"_s, this);
  for (IconButton* button : {clear_, collapse_}) button->setControlSize(ControlSize::compact);
  messageIcon_ = new IconView(u"info"_s, metrics().iconSmall, &Colors::textSecondary, this);
  message_ = new ElidedLabel(Type::small, &Colors::textSecondary, Qt::ElideRight, this);
}

void ComposerDock::connectControls() {
  connect(prompt_, &PromptEdit::edited, this, [this](const QString& text) {
    composer_.setExpanded(true);
    composer_.editDraft(text);
    Q_EMIT heightChanged();
    arrange();
  });
  connect(prompt_, &PromptEdit::submitted, this, [this] { composer_.submit(); });
  connect(prompt_, &PromptEdit::focused, this, [this] { composer_.setExpanded(true); });
  const auto leave = [this] {
    composer_.setExpanded(false);
    Q_EMIT left();
  };
  connect(prompt_, &PromptEdit::escapePressed, this, leave);
  connect(collapse_, &IconButton::clicked, this, leave);
  connect(clear_, &IconButton::clicked, this, [this] { composer_.clear(); });
  connect(submit_, &Button::clicked, this, [this] { composer_.submit(); });
  connect(model_, &Chip::clicked, this, &ComposerDock::openModelPicker);
  connect(ratio_, &Chip::clicked, this, [this] {
    if (!display_.ratioFixed) open(openRatioPopover(composer_, ratio_));
  });
  connect(length_, &Chip::clicked, this, [this] { open(openLengthPopover(composer_, length_)); });
  connect(count_, &Chip::clicked, this, [this] { open(openCountPopover(composer_, count_)); });
  connect(seed_, &Chip::clicked, this, [this] { open(openSeedPopover(composer_, seed_)); });
  connect(kind_, &SegmentedControl::chosen, this, &ComposerDock::chooseKind);
  connect(kindIcons_, &SegmentedControl::chosen, this, &ComposerDock::chooseKind);
}

void ComposerDock::open(Popover* popover) { popover_ = popover; }

void ComposerDock::openModelPicker() {
  auto* picker = new ModelPicker(composer_, Popover::roomAbove(this));
  open(picker);
  picker->openAt(model_, this);
}

void ComposerDock::focusPrompt() {
  composer_.setExpanded(true);
  prompt_->setFocus(Qt::ShortcutFocusReason);
}

void ComposerDock::chooseKind(int index) {
  if (index == 1)
    composer_.startAudio();
  else
    composer_.startImages();
}

void ComposerDock::refresh() {
  display_ = composer_.display();
  destinationName_->setText(display_.destination);
  submit_->setText(display_.submitTitle);
  refreshEstimate(display_);
  submit_->setVariant(display_.submitEmphasised ? ButtonVariant::primary : ButtonVariant::secondary);
  submit_->setEnabled(!display_.submitBusy);
  const int kind = display_.audio ? 1 : 0;
  kind_->setCurrent(kind);
  kindIcons_->setCurrent(kind);
  refreshChips(display_);
  references_->show(display_.references);
  refreshNotices(display_);
  Q_EMIT heightChanged();
  arrange();
  update();
}

// The figure stands beside the button that spends it, and a screen reader hears it there.
void ComposerDock::refreshEstimate(const ComposerDisplay& display) {
  estimate_->setText(display.estimate);
  estimate_->setToolTip(display.estimateTooltip);
  estimate_->setAccessibleName(display.estimate);
  estimate_->setAccessibleDescription(display.estimateTooltip);
  QStringList about;
  for (const QString& part : {display.estimate, display.estimateTooltip, display.submitTooltip}) {
    if (!part.isEmpty()) about << part;
  }
  submit_->setToolTip(display.submitTooltip.isEmpty() ? display.estimateTooltip : display.submitTooltip);
  submit_->setAccessibleDescription(about.join(u". "_s));
}

void ComposerDock::refreshChips(const ComposerDisplay& display) {
  const auto name = [](Chip* chip, const QString& what, const QString& value, const QString& tooltip) {
    chip->setAccessibleName(what);
    chip->setAccessibleDescription(tooltip.isEmpty() ? value : value + u". "_s + tooltip);
    chip->setToolTip(tooltip);
  };
  model_->setLabel(display.modelLabel);
  name(model_, texts::model(), display.modelLabel, {});
  ratio_->setLabel(display.ratioLabel);
  ratio_->setChevron(!display.ratioFixed);
  name(ratio_, texts::ratio(), display.ratioLabel, display.ratioTooltip);
  length_->setLabel(display.lengthLabel);
  name(length_, texts::length(), display.lengthLabel, display.lengthTooltip);
  count_->setLabel(display.countLabel, display.countSuffix);
  name(count_, texts::count(), display.countLabel, display.countTooltip);
  seed_->setLabel(display.seedText.isEmpty() ? texts::seed() : display.seedText);
  seed_->setTone(display.seedText.isEmpty() ? ChipTone::quiet : ChipTone::set);
  name(seed_, texts::seed(), display.seedText, display.seedTooltip);
}

// Bars are made anew only when the notices differ, so that a screen reader does not hear them again at each key.
void ComposerDock::refreshNotices(const ComposerDisplay& display) {
  if (noticeTexts_ == display.notices) return;
  noticeTexts_ = display.notices;
  for (NoticeBar* notice : notices_) notice->deleteLater();
  notices_.clear();
  for (const QString& text : display.notices) {
    notices_.push_back(new NoticeBar(AlertTone::warning, text, this));
    notices_.back()->show();
  }
}

void ComposerDock::refreshMessage() {
  const MessageLine line = composer_.message();
  message_->setText(line.text);
  static_cast<IconView*>(messageIcon_)
      ->setIcon(line.isError ? u"circle-alert"_s : u"circle-check"_s,
                line.isError ? &Colors::dangerText : &Colors::successText);
  messageLeaves_.stop();
  if (!line.text.isEmpty() && !line.isError) messageLeaves_.start();
  if (!line.text.isEmpty()) {
    QAccessibleEvent announcement(message_, QAccessible::Alert);
    QAccessible::updateAccessibility(&announcement);
  }
  Q_EMIT heightChanged();
  arrange();
}

}  // namespace sorvan::views
