// What a remote interpreter of commands is told, what it answers, and what its answer amounts to.
#pragma once

#include <QString>
#include <QStringList>

#include <boost/describe.hpp>
#include <optional>
#include <vector>

#include "composer/intent.h"

namespace sorvan::composer {

/// An answer on the wire. Everything but `action` may be absent, and nothing in it is trusted.
struct RemoteAppAction {
  QString action;
  std::optional<QString> query;
  std::optional<QString> model;
  std::optional<QString> status;
  std::optional<QString> media;
  std::optional<QString> orientation;
  std::optional<bool> favorites;
  std::optional<int> days;
  std::optional<bool> enabled;
  std::optional<QString> project;
  std::optional<QString> prompt;
  std::optional<int> count;
  std::optional<bool> useSelection;
  std::optional<QString> message;

  /// The intent that the answer stands for. Throws SorvanError when it is incomplete or out of bounds.
  SorvanIntent intent() const;
  /// What the user reviews: the fields that are there, joined by " · ".
  QString summary() const;

  bool operator==(const RemoteAppAction&) const = default;
};
BOOST_DESCRIBE_STRUCT(RemoteAppAction, (),
                      (action, query, model, status, media, orientation, favorites, days, enabled, project, prompt,
                       count, useSelection, message))

/// What goes along with the text.
struct CommandContext {
  std::vector<QString> projects;  ///< names, at most 60
  int selectionCount = 0;
  QString currentProject;  ///< the destination's name, or "Inbox"
  bool operator==(const CommandContext&) const = default;
};
BOOST_DESCRIBE_STRUCT(CommandContext, (), (projects, selectionCount, currentProject))

/// The context of a window: only the first 60 names leave the machine.
CommandContext commandContext(const QStringList& projects, int selectionCount, const std::optional<QString>& current);

}  // namespace sorvan::composer
