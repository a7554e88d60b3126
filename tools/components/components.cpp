// sorvan-components FOLDER: paints every window with sample data into FOLDER, dark and light.
#include <QApplication>
#include <QGridLayout>

#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/fields.h"
#include "shell/views/labels.h"
#include "shell/views/segmented_control.h"
#include "shell/views/theme.h"
#include "shell/views/welcome_view.h"

using namespace sorvan::views;
using namespace sorvan::shell;
using namespace Qt::Literals::StringLiterals;

namespace {

WelcomeDisplay welcomeSample() {
  return {u"Sorvan Studio"_s,
          u"A local workspace for your AI-generated images and videos."_s,
          u"Use Pictures/Sorvan"_s,
          u"Creates a Sorvan folder in Pictures, or opens the one already there"_s,
          u"Choose Another Folder…"_s,
          u"Your library stays in this folder. Generating and AI analysis send the selected prompt and references to the model provider.\nOrganising existing files needs no account or API key."_s};
}

QWidget* controls() {
  auto* page = new Surface(&Colors::surfaceChrome);
  page->setObjectName(u"controls"_s);
  page->resize(720, 420);
  auto* grid = new QGridLayout(page);
  int row = 0;
  const std::pair<const char*, ButtonVariant> variants[] = {{"Primary", ButtonVariant::primary},
                                                            {"Secondary", ButtonVariant::secondary},
                                                            {"Quiet", ButtonVariant::quiet},
                                                            {"Destructive", ButtonVariant::destructive},
                                                            {"Link", ButtonVariant::link}};
  for (const auto& [name, variant] : variants) {
    grid->addWidget(new Label(QLatin1StringView(name), Type::small, &Colors::textSecondary), row, 0);
    int column = 1;
    for (const ControlSize size : {ControlSize::compact, ControlSize::regular, ControlSize::large}) {
      auto* button = new Button(u"Generate"_s, variant);
      button->setControlSize(size);
      grid->addWidget(button, row, column++, Qt::AlignLeft);
    }
    auto* disabled = new Button(u"Generate"_s, variant);
    disabled->setEnabled(false);
    grid->addWidget(disabled, row, column++, Qt::AlignLeft);
    auto* icon = new Button(u"Save Result"_s, variant);
    icon->setIconName(u"download"_s);
    icon->setTrailingIconName(u"corner-down-left"_s);
    grid->addWidget(icon, row++, column, Qt::AlignLeft);
  }
  int column = 0;
  for (const ChipTone tone : {ChipTone::set, ChipTone::quiet, ChipTone::active, ChipTone::attention}) {
    auto* chip = new Chip(u"box"_s);
    chip->setLabel(u"Nano Banana 2"_s, tone == ChipTone::set ? u"per model"_s : QString());
    chip->setTone(tone);
    grid->addWidget(chip, row, column++, Qt::AlignLeft);
  }
  ++row;
  grid->addWidget(new SegmentedControl(u"Kind"_s, {{u"Images and video"_s, u"image"_s, {}}, {u"Audio"_s, u"audio-lines"_s, {}}}), row, 0, 1, 3, Qt::AlignLeft);
  grid->addWidget(new SegmentedControl(u"Type"_s, {{u"All"_s, {}, {}}, {u"Images"_s, {}, {}}, {u"Video"_s, {}, {}}}, ControlSize::compact), row++, 3, 1, 3, Qt::AlignLeft);
  auto* search = new TextField(u"Search"_s, u"Search media"_s);
  search->setIconName(u"search"_s);
  search->setKeyHint(u"Ctrl F"_s);
  grid->addWidget(search, row, 0, 1, 2);
  auto* invalid = new TextField(u"Name"_s);
  invalid->setText(u"9th Street"_s);
  invalid->setInvalid(true);
  grid->addWidget(invalid, row, 2, 1, 2);
  auto* toggle = new Switch(u"On"_s);
  toggle->setChecked(true);
  grid->addWidget(toggle, row, 4);
  grid->addWidget(new Spinner(16), row++, 5);
  column = 0;
  for (const BadgeTone tone : {BadgeTone::accent, BadgeTone::info, BadgeTone::neutral, BadgeTone::warning, BadgeTone::danger})
    grid->addWidget(new Badge(u"Top rated"_s, tone), row, column++, Qt::AlignLeft);
  ++row;
  grid->addWidget(new NoticeBar(AlertTone::warning, u"Social Portrait · 4:5 isn’t supported by every selected model."_s), row++, 0, 1, 6);
  return page;
}

void save(QWidget& widget, const QString& folder, const QString& name) {
  widget.show();
  QCoreApplication::processEvents();
  QCoreApplication::processEvents();
  widget.grab().save(folder + u'/' + name + (Theme::instance().isDark() ? u"-dark.png"_s : u"-light.png"_s));
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  Theme::instance().dress(application);
  const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : u"."_s;
  QDir().mkpath(folder);
  for (const Appearance appearance : {Appearance::dark, Appearance::light}) {
    Theme::instance().setAppearance(appearance);
    std::unique_ptr<QWidget> page(controls());
    save(*page, folder, u"controls"_s);
    for (const QSize size : {QSize(1440, 866), QSize(1024, 646)}) {
      WelcomeView welcome(welcomeSample());
      welcome.resize(size);
      save(welcome, folder, u"welcome-%1"_s.arg(size.width()));
    }
  }
  return 0;
}
