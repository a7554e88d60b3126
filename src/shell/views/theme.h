// What everything looks like: the colours, sizes and times of tokens.json, resolved for the look that is on.
#pragma once

#include <QColor>

#include "shell/settings_presenter.h"
#include "shell/views/room.h"

class QApplication;

namespace sorvan::views {

enum class Look { dark, light };

struct Shadow {
  int offsetY = 0;  // pixels downwards
  int blur = 0;     // pixels
  QColor color;
};

struct Colors {
#define COLOR(field, path) QColor field;
#include "shell/views/color_tokens.inc"
#undef COLOR
  std::vector<QColor> chart;
  Shadow popoverShadow;
  Shadow dockShadow;
  Shadow dialogShadow;
};

// Logical pixels and milliseconds, as the names of the tokens say.
struct Metrics {
#define METRIC(field, path) int field = 0;
#include "shell/views/metric_tokens.inc"
#undef METRIC
};

struct TypeToken {
  int size = 0;  // pixels
  int line = 0;  // pixels
  int weight = 400;
};

class DesktopAppearance;

// One per process, on the main thread. `changed` follows a change of the appearance or of the desktop's colour scheme;
// every widget of the program is then repainted and its palette is the new one.
class Theme final : public QObject {
  Q_OBJECT

 public:
  static Theme& instance();

  // Gives the application its style, palette and font, and keeps them current. Call once, before the first window.
  void dress(QApplication& application);

  Appearance appearance() const { return appearance_; }
  void setAppearance(Appearance appearance);
  Look look() const { return look_; }
  bool isDark() const { return look_ == Look::dark; }
  bool reducedMotion() const;

  const Colors& colors() const { return isDark() ? dark_ : light_; }
  const Colors& colorsOf(Look look) const { return look == Look::dark ? dark_ : light_; }
  const Metrics& metrics() const { return metrics_; }
  TypeToken type(const QString& role) const { return types_.value(role); }
  const QStringList& uiFamilies() const { return uiFamilies_; }
  const QStringList& monoFamilies() const { return monoFamilies_; }

 Q_SIGNALS:
  void changed();

 private:
  Theme();
  void read(const QJsonObject& tokens);
  void resolve();
  void applyPalette();

  Colors dark_;
  Colors light_;
  Metrics metrics_;
  QHash<QString, TypeToken> types_;
  QStringList uiFamilies_;
  QStringList monoFamilies_;
  Appearance appearance_ = Appearance::system;
  Look look_ = Look::dark;
  DesktopAppearance* desktop_ = nullptr;
  bool dressed_ = false;
};

inline const Colors& colors() { return Theme::instance().colors(); }
inline const Metrics& metrics() { return Theme::instance().metrics(); }

}  // namespace sorvan::views
