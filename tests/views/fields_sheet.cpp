// Where one writes: fields, the prompt with its names, and the list that opens for a name.
#include <QLabel>
#include <QMenu>
#include <QVBoxLayout>

#include "shell/views/choice_field.h"
#include "shell/views/fields.h"
#include "shell/views/labels.h"
#include "shell/views/mention_popup.h"
#include "shell/views/painting.h"
#include "shell/views/prompt_edit.h"
#include "shell/views/text_area.h"
#include "shell/views/thumbnail_store.h"
#include "views/component_sheets.h"
#include "views/component_states.h"
#include "views/sheet_parts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kField = 168;

TextField* field(const QString& text = {}) {
  auto* made = new TextField(u"Name"_s, u"Name, e.g. Rose"_s);
  made->setText(text);
  made->setFixedWidth(kField);
  return made;
}

TextField* search(const QString& text) {
  TextField* made = field(text);
  made->setPlaceholderText(u"Search media"_s);
  made->setIconName(u"search"_s);
  made->setKeyHint(u"Ctrl F"_s);
  return made;
}

QWidget* fields() {
  return stateGrid({{u"Empty"_s, [] { return field(); }},
                    {u"Filled"_s, [] { return field(u"Rose Bottle"_s); }},
                    {u"Search"_s, [] { return search({}); }},
                    {u"Search, filled"_s, [] { return search(u"quay at dawn"_s); }}},
                   {normalState(), hoverState(), focusState(), disabledState()});
}

QWidget* wrongField() {
  TextField* name = field(u"9th Street"_s);
  name->setFixedWidth(300);
  name->setInvalid(true);
  auto* why = new Paragraph(u"Give each reference a unique name starting with a letter (up to 48 letters or numbers)."_s,
                            Type::small, &Colors::dangerText);
  why->setFixedWidth(300);
  why->setFixedHeight(why->heightForWidth(300));
  return column({name, why});
}

QWidget* fieldsInError() {
  return stateFlow({u"In error"_s, wrongField, [](QWidget& whole) -> QWidget* { return whole.findChild<TextField*>(); }},
                   {normalState(), focusState()}, 2);
}

QWidget* fixedFields() {
  const auto fixed = [] {
    TextField* made = field(u"~/Pictures/Sorvan"_s);
    made->setReadOnly(true);
    return made;
  };
  return stateFlow({u"Read only"_s, fixed}, {normalState(), focusState()}, 2);
}

ChoiceField* kind() {
  auto* made = new ChoiceField(u"Kind"_s);
  made->addItems({u"Generic"_s, u"Character"_s, u"Product"_s, u"Location"_s});
  made->setCurrentIndex(2);
  made->setFixedWidth(kField);
  return made;
}

// The menu that opens over the field, as it opens.
QWidget* openMenu() {
  const std::unique_ptr<ChoiceField> field(kind());
  field->move(200, 200);  // with room above for the values before the chosen one
  field->showPopup();
  auto* picture = new QLabel;
  if (auto* menu = field->findChild<QMenu*>()) {
    picture->setPixmap(menu->grab());
    menu->setAttribute(Qt::WA_DeleteOnClose, false);
    menu->close();
  }
  return picture;
}

QWidget* choiceFields() {
  return row({stateFlow({u"Field of one of several values"_s, [] { return kind(); }},
                        {normalState(), hoverState(), focusState(), disabledState()}, 2),
              openMenu()});
}

QWidget* textAreas() {
  const Component notes{u"Notes"_s, [] {
                          auto* made = new TextArea(u"Notes"_s, u"What to keep in mind"_s);
                          made->setPlainText(u"The label faces the light.\nNever crop the lid."_s);
                          made->setFixedSize(kField, 62);
                          return made;
                        }};
  const State empty{u"Empty"_s, [](QWidget&, QWidget& part) { static_cast<TextArea&>(part).clear(); }};
  return stateFlow(notes, {normalState(), empty, focusState(), disabledState()}, 4);
}

// A prompt as it stands in the dock.
class PromptPanel final : public QWidget {
 public:
  PromptPanel() {
    auto* box = new QVBoxLayout(this);
    box->setContentsMargins(12, 10, 12, 10);
    auto* edit = new PromptEdit(u"Prompt"_s);
    edit->setPlaceholderText(u"Describe an image or a clip. Type @ to use a reference."_s);
    edit->setDraft(kDraft);
    edit->setMarks({{4, 4, true}, {28, 5, false}});
    edit->setFixedSize(346, 48);
    box->addWidget(edit);
  }
  static PromptEdit& editOf(QWidget& panel) { return *panel.findChild<PromptEdit*>(); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    paintPanel(painter, rect(), metrics().radiusPanel, colors().surfaceRaised, colors().lineDefault);
  }

 private:
  const QString kDraft = u"The @Tin tin on the quay of @Quay"_s;
};

QWidget* prompts() {
  const Component prompt{u"Prompt"_s, [] { return new PromptPanel; },
                         [](QWidget& whole) -> QWidget* { return &PromptPanel::editOf(whole); }};
  const State normal{u"Normal"_s};
  const State empty{u"Empty"_s, [](QWidget& whole, QWidget&) {
                      PromptPanel::editOf(whole).setMarks({});
                      PromptPanel::editOf(whole).setDraft({});
                    }};
  const State selected{u"Focus, with a selection"_s,
                       [](QWidget&, QWidget& part) { static_cast<PromptEdit&>(part).selectAll(); }, true};
  return stateFlow(prompt, {normal, empty, focusState(), selected, disabledState()}, 3);
}

MentionOffer offer(const QString& pictures) {
  MentionOffer all;
  all.groups = {{{}, {{u"Tin"_s, u"Product"_s, pictures + u"/tin_1.jpg"_s, {}, {}}}},
                {u"Project References"_s,
                 {{u"Quay"_s, u"Location · 3 images"_s, pictures + u"/light_dawn_0.jpg"_s, {}, {}},
                  {u"Look"_s, {}, u"/gone.png"_s, {}, {}}}}};
  return all;
}

// The list over the line that it is for.
QWidget* mentions(ThumbnailStore& thumbnails, const MentionOffer& offered, int height) {
  auto* window = new QWidget;
  window->setFixedSize(364, height);
  auto* popup = new MentionPopup(thumbnails, window);
  popup->showAt(offered, QRect(26, height - 4, 2, 4));
  return window;
}

QWidget* mentionLists(ThumbnailStore& thumbnails, const QString& pictures) {
  const auto listOf = [](QWidget& whole) -> QWidget* { return whole.findChild<MentionList*>(); };
  const Component list{u"Names"_s, [&thumbnails, pictures] { return mentions(thumbnails, offer(pictures), 190); }, listOf};
  const State second{u"Hover"_s, [](QWidget&, QWidget& part) {
                       hoverAt(part, static_cast<MentionList&>(part).cellRect(1).center());
                     }};
  const State none{u"Nothing to offer"_s, [](QWidget&, QWidget& part) {
                     MentionOffer empty;
                     empty.hint =
                         u"No references yet. Attach an image with the Reference button, or save one to reuse it here."_s;
                     static_cast<MentionList&>(part).setOffer(empty);
                   }};
  return stateFlow(list, {normalState(), second, none}, 3);
}

}  // namespace

std::unique_ptr<QWidget> fieldsSheet(const QString& pictures) {
  auto* thumbnails = new ThumbnailStore;
  std::unique_ptr<QWidget> sheet = sheetOf(u"fields"_s, u"Fields"_s,
                                           {{u"Text fields"_s, fields()},
                                            {u"A field in error"_s, fieldsInError()},
                                            {u"Read only"_s, fixedFields()},
                                            {u"One of several values"_s, choiceFields()},
                                            {u"Several lines"_s, textAreas()},
                                            {u"Prompt editor"_s, prompts()},
                                            {u"Mention list"_s, mentionLists(*thumbnails, pictures)}});
  QObject::connect(sheet.get(), &QObject::destroyed, thumbnails, &QObject::deleteLater);
  return sheet;
}

}  // namespace sorvan::views
