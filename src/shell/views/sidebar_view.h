// The list at the left of the window.
#pragma once

#include <QAbstractButton>
#include <QPointer>
#include <QWidget>

#include "shell/sidebar_presenter.h"
#include "shell/views/thumbnail_store.h"

class QVBoxLayout;

namespace sorvan::views {

class TextField;

// One row; narrow it shows its icon alone, with its title as a tooltip.
class SidebarRowButton final : public QAbstractButton {
  Q_OBJECT

 public:
  SidebarRowButton(const SidebarRow& row, ThumbnailStore* thumbnails, QWidget* parent = nullptr);
  void setRow(const SidebarRow& row);
  void setNarrow(bool narrow);
  const QString& key() const { return row_.key; }
  const SidebarRow& row() const { return row_; }
  QSize sizeHint() const override;

 Q_SIGNALS:
  // F2 or a double click on a project.
  void renameRequested();
  void menuRequested(QPoint globalPosition);
  void dropped(const std::vector<QUuid>& items);

 protected:
  void contextMenuEvent(QContextMenuEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  SidebarRow row_;
  ThumbnailStore* thumbnails_;
  bool narrow_ = false;
  bool dropHere_ = false;
};

// The workspace's name and path at the top of the sidebar; a press offers another workspace.
class WorkspaceButton final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit WorkspaceButton(QWidget* parent = nullptr);
  void setWorkspace(const QString& name, const QString& path);
  void setNarrow(bool narrow);
  QSize sizeHint() const override { return {40, 40}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString name_;
  QString path_;
  bool narrow_ = false;
};

class SidebarView final : public QWidget {
  Q_OBJECT

 public:
  explicit SidebarView(ThumbnailStore& thumbnails, QWidget* parent = nullptr);
  void show(const SidebarDisplay& display);
  // Icons only, 52 pixels wide.
  void setNarrow(bool narrow);
  // Lets a project's name be written in its row; in the narrow list the window asks for it.
  void startRenaming(const QString& key);

 Q_SIGNALS:
  void chosen(const QString& key);
  void workspacePressed();
  void newProjectPressed();
  void renamed(const QString& key, const QString& name);
  void renameAsked(const QString& key, const QString& name);
  void archiveChosen(const QString& key, bool archived);
  // Library items were dropped on a row.
  void dropped(const std::vector<QUuid>& items, const QString& key);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void rebuild();
  void giveKeyboardTo(const QString& key);
  void addRows(QVBoxLayout& column, SidebarSection section, const QString& title);
  void addHeading(QVBoxLayout& column, SidebarSection section, const QString& title);
  void addRow(QVBoxLayout& column, const SidebarRow& row);
  void openMenu(const SidebarRow& row, QPoint globalPosition);

  ThumbnailStore& thumbnails_;
  SidebarDisplay display_;
  WorkspaceButton* workspace_;
  QWidget* list_;
  std::vector<SidebarRowButton*> rows_;
  std::vector<QWidget*> headings_;
  QPointer<TextField> renaming_;
  bool narrow_ = false;
};

}  // namespace sorvan::views
