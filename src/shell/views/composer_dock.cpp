#include "shell/views/composer_dock.h"

#include <QAccessible>
#include <QApplication>
#include <QPainter>

#include "shell/views/choice_popovers.h"
#include "shell/views/composer_head.h"
#include "shell/views/composer_settings.h"
#include "shell/views/composer_words.h"
#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/labels.h"
#include "shell/views/model_picker.h"
#include "shell/views/painting.h"
#include "shell/views/pay_with_popover.h"
#include "shell/views/prompt_edit.h"
#include "shell/views/prompt_history.h"
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
  connect(&composer_, &ComposerPresenter::lengthsRequested, this, &ComposerDock::openLengths);
  connect(qApp, &QApplication::focusChanged, this, [this](const QWidget* before, const QWidget*) {
    if (before == prompt_) composer_.keyboardLeft();
  });
  prompt_->setDraft(composer_.draft());
  refresh();
  refreshMessage();
}

// The keyboard that moves while the children go is nobody's business any more.
ComposerDock::~ComposerDock() { disconnect(qApp, nullptr, this, nullptr); }

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
  more_ = new IconButton(u"sliders-horizontal"_s, texts::moreSettings(), {}, this);
  more_->setControlSize(ControlSize::compact);
  more_->setCheckable(true);
  settings_ = new ComposerSettings(composer_, this);
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
  payer_ = new HeadChoice(u"coins"_s, {}, this);
  destination_ = new HeadChoice(u"folder"_s, texts::saveTo(), this);
  command_ = new IconButton(u"terminal"_s, texts::commandMode(), u"Ctrl+K"_s, this);
  command_->setCheckable(true);
  clear_ = new IconButton(u"eraser"_s, texts::clearComposer(), {}, this);
  collapse_ = new IconButton(u"chevron-down"_s, texts::collapse(), u"Esc"_s, this);
  clear_->setToolTip(texts::clearTooltip());
  history_ = new IconButton(u"history"_s, texts::promptHistory(), {}, this);
  history_->setToolTip(texts::promptHistoryTooltip());
  for (IconButton* button : {command_, clear_, collapse_, history_}) button->setControlSize(ControlSize::compact);
  commandIcon_ = new IconView(u"terminal"_s, metrics().iconRegular, &Colors::textSecondary, this);
  commandLabel_ = new ElidedLabel(Type::small, &Colors::accentText, Qt::ElideRight, this);
  commandLabel_->setWeight(Weight::medium);
  interpret_ = new Chip(u"wand-sparkles"_s, this);
  interpret_->setChevron(false);
  interpret_->setCheckable(true);
  interpret_->setLabel(texts::interpretWithAI());
  interpret_->setAccessibleName(texts::interpretWithAI());
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
  connect(prompt_, &PromptEdit::pasteRefused, this, [this](qsizetype characters) { composer_.refusePaste(characters); });
  connect(prompt_, &PromptEdit::submitted, this, [this] { composer_.submit(); });
  connect(prompt_, &PromptEdit::focused, this, [this] { composer_.setExpanded(true); });
  connect(prompt_, &PromptEdit::escapePressed, this, &ComposerDock::leave);
  connect(collapse_, &IconButton::clicked, this, &ComposerDock::leave);
  connect(command_, &IconButton::clicked, this, [this] { composer_.setCommandMode(!display_.command); });
  connect(interpret_, &Chip::clicked, this, [this] { composer_.setInterprets(!display_.interprets); });
  connect(history_, &IconButton::clicked, this, &ComposerDock::openPromptHistory);
  connect(destination_, &HeadChoice::clicked, this, [this] { openDestinationMenu(composer_, destination_); });
  connect(payer_, &HeadChoice::clicked, this, [this] {
    auto* choices = new PayWithPopover(composer_);
    open(choices);
    choices->openAt(payer_, this);
  });
  connect(clear_, &IconButton::clicked, this, [this] { composer_.clear(); });
  connect(submit_, &Button::clicked, this, [this] { composer_.submit(); });
  connect(model_, &Chip::clicked, this, &ComposerDock::openModelPicker);
  connect(ratio_, &Chip::clicked, this, [this] {
    if (!display_.ratioFixed) open(openRatioPopover(composer_, ratio_), ratio_);
  });
  connect(length_, &Chip::clicked, this, &ComposerDock::openLengths);
  connect(count_, &Chip::clicked, this, [this] { open(openCountPopover(composer_, count_), count_); });
  connect(seed_, &Chip::clearRequested, &composer_, [this] { composer_.editSeed({}); });
  connect(seed_, &Chip::clicked, this, [this] { open(openSeedPopover(composer_, seed_), seed_); });
  connect(more_, &IconButton::clicked, this, [this] { composer_.setSettingsShown(!display_.settingsShown); });
  connect(kind_, &SegmentedControl::chosen, this, &ComposerDock::chooseKind);
  connect(kindIcons_, &SegmentedControl::chosen, this, &ComposerDock::chooseKind);
}

// The chip shows to which of them the popover belongs.
void ComposerDock::open(Popover* popover, Chip* chip) {
  popover_ = popover;
  if (!chip) return;
  chip->setTone(ChipTone::active);
  connect(popover, &Popover::closed, chip, [this, chip] {
    chip->setTone(ChipTone::set);
    refreshChips(display_);
  });
}

void ComposerDock::openModelPicker() {
  auto* picker = new ModelPicker(composer_, Popover::roomAbove(this));
  open(picker, model_);
  picker->openAt(model_, this);
}

void ComposerDock::openPromptHistory() {
  composer_.setExpanded(true);
  auto* history = new PromptHistory(composer_, Popover::roomAbove(this));
  popover_ = history;
  history->openAt(history_, this);
}

void ComposerDock::openLengths() {
  if (length_->isVisibleTo(this)) open(openLengthPopover(composer_, length_), length_);
}

void ComposerDock::leave() {
  if (display_.command) composer_.setCommandMode(false);
  composer_.setExpanded(false);
  Q_EMIT left();
}

void ComposerDock::focusPrompt() {
  composer_.setExpanded(true);
  prompt_->setFocus(Qt::ShortcutFocusReason);
}

void ComposerDock::chooseKind(int index) {
  if (display_.command) composer_.setCommandMode(false);
  if (index == 1)
    composer_.startAudio();
  else
    composer_.startImages();
}

void ComposerDock::refresh() {
  display_ = composer_.display();
  destination_->setValue(display_.destination);
  payer_->setValue(display_.payer);
  payer_->setHelp(display_.payWith.help);
  refreshCommand(display_);
  submit_->setText(display_.submitTitle);
  submit_->setAccessibleName(display_.submitTitle);  // an ampersand is no mnemonic
  refreshEstimate(display_);
  submit_->setVariant(display_.submitEmphasised ? ButtonVariant::primary : ButtonVariant::secondary);
  submit_->setEnabled(!display_.submitBusy);
  const int kind = display_.audio ? 1 : 0;
  kind_->setCurrent(kind);
  kindIcons_->setCurrent(kind);
  refreshChips(display_);
  more_->setChecked(display_.settingsShown);
  if (display_.settingsShown) settings_->refresh(display_);
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
  estimate_->setAccessibleName(display.estimateSpoken.isEmpty() ? display.estimate : display.estimateSpoken);
  estimate_->setAccessibleDescription(display.estimateTooltip);
  QStringList about;
  for (const QString& part : {estimate_->accessibleName(), display.estimateTooltip, display.submitTooltip}) {
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
  ratio_->setTone(display.ratioRefused ? ChipTone::attention : ChipTone::set);
  name(ratio_, texts::ratio(), display.ratioLabel, display.ratioTooltip);
  length_->setLabel(display.lengthLabel, display.lengthValue);
  name(length_, texts::length(), display.lengthValue.isEmpty() ? display.lengthLabel : display.lengthValue,
       display.lengthTooltip);
  count_->setLabel(display.countLabel, display.countSuffix);
  name(count_, texts::count(), display.countLabel, display.countTooltip);
  seed_->setLabel(display.seedText.isEmpty() ? texts::seed() : display.seedText);
  seed_->setTone(display.seedText.isEmpty() ? ChipTone::quiet : ChipTone::set);
  seed_->setChevron(!display.seedText.isEmpty());
  seed_->setClearable(!display.seedText.isEmpty());
  name(seed_, texts::seed(), display.seedText, display.seedTooltip);
}

void ComposerDock::refreshCommand(const ComposerDisplay& display) {
  prompt_->setAccessibleName(display.command ? texts::command() : texts::prompt());
  command_->setChecked(display.command);
  command_->setName(display.command ? texts::leaveCommandMode() : texts::commandMode(), u"Ctrl+K"_s);
  commandLabel_->setText(display.commandLabel);
  commandLabel_->setAccessibleName(display.commandLabel);
  prompt_->setAccessibleDescription(display.commandLabel);
  interpret_->setChecked(display.interprets);
  interpret_->setTone(display.interprets ? ChipTone::active : ChipTone::quiet);
  if (review_ && review_->accessibleName() == display.review) return;
  if (review_) review_->deleteLater();
  review_ = display.review.isEmpty() ? nullptr : new NoticeBar(AlertTone::information, display.review, this);
  if (review_) review_->setAccessibleName(display.review), review_->setPlain(), review_->show();
}

// Bars are made anew only when the notices differ, so that a screen reader does not hear them again at each key.
void ComposerDock::refreshNotices(const ComposerDisplay& display) {
  if (noticesShown_ == display.notices) return;
  noticesShown_ = display.notices;
  for (NoticeBar* notice : notices_) notice->deleteLater();
  notices_.clear();
  for (const ComposerNotice& notice : display.notices) addNotice(notice);
}

void ComposerDock::addNotice(const ComposerNotice& notice) {
  auto* bar = new NoticeBar(notice.tone, notice.text, this);
  for (int button = 0; button < static_cast<int>(notice.buttons.size()); ++button)
    connect(bar->addAction(notice.buttons[static_cast<std::size_t>(button)]), &Button::clicked, this,
            [this, text = notice.text, button] { composer_.performNotice(text, button); });
  if (notice.tone == AlertTone::information) bar->setPlain();
  notices_.push_back(bar);
  bar->show();
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
