// The pieces of the inspector: preview, stars, sections.
#pragma once

#include <QAbstractButton>

#include "shell/inspector_presenter.h"
#include "shell/views/labels.h"
#include "shell/views/thumbnail_store.h"

namespace sorvan::views {

// The picture of the item on a dark ground; a press opens it large.
class PreviewPicture final : public QAbstractButton {
  Q_OBJECT

 public:
  PreviewPicture(ThumbnailStore& thumbnails, QWidget* parent = nullptr);
  void setPath(const QString& path);
  QSize sizeHint() const override { return {288, 214}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ThumbnailStore& thumbnails_;
  QString path_;
};

// Up to four pictures of several items, two in a row. Decoration: what is selected is told in words.
class PreviewMosaic final : public QWidget {
  Q_OBJECT

 public:
  PreviewMosaic(ThumbnailStore& thumbnails, std::vector<QString> paths, QWidget* parent = nullptr);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ThumbnailStore& thumbnails_;
  std::vector<QString> paths_;
};

// The picture of a job with the areas that were marked on it.
class MarkedPicture final : public QWidget {
  Q_OBJECT

 public:
  MarkedPicture(ThumbnailStore& thumbnails, const InspectorMarks& marks, QWidget* parent = nullptr);
  void setMarks(const InspectorMarks& marks);
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override { return {288, heightForWidth(288)}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QPixmap picture() const;

  ThumbnailStore& thumbnails_;
  InspectorMarks marks_;
};

// Five stars: one stop of the tab key, arrows and digits change them, a press on the last one clears.
class StarRow final : public QWidget {
  Q_OBJECT

 public:
  explicit StarRow(QWidget* parent = nullptr);
  void setStars(int stars);
  int stars() const { return stars_; }
  QSize sizeHint() const override { return {90, 22}; }

 Q_SIGNALS:
  void chosen(int stars);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  int starAt(double x) const;

  int stars_ = 0;
  int hovered_ = 0;
};

// The heart, filled while the item is a favourite.
class HeartButton final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit HeartButton(QWidget* parent = nullptr);
  QSize sizeHint() const override { return {30, 30}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// A status: its dot and its word. A press asks for another one.
class StatusButton final : public QAbstractButton {
  Q_OBJECT

 public:
  StatusButton(const QString& text, const QString& token, QWidget* parent = nullptr);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString token_;
};

QColor statusColor(const QString& token);
// On the badges over pictures, which are dark in both looks.
QColor statusColorOnPicture(const QString& token);

// A heading with rows or a paragraph below it, which the heading folds away.
class InspectorSectionView final : public QWidget {
  Q_OBJECT

 public:
  // The store outlives the section.
  InspectorSectionView(const InspectorSection& section, ThumbnailStore& thumbnails, QWidget* parent = nullptr);
  // The section must have as many rows as at first.
  void setWords(const InspectorSection& section);
  // A control at the right end of the heading.
  void addHeadAction(QWidget* action);

 Q_SIGNALS:
  void actionRequested(sorvan::shell::ActionId action);
  void itemOpened(QUuid item);

 private:
  QWidget* buildRows(const InspectorSection& section);
  void buildHeadAction(const InspectorButton& spec);
  void showText(const InspectorSection& section);

  QWidget* head_;
  QWidget* body_;
  Paragraph* text_ = nullptr;
  std::vector<Paragraph*> values_;        // null where the row is monospaced
  std::vector<ElidedLabel*> monospaced_;  // null elsewhere
};

}  // namespace sorvan::views
