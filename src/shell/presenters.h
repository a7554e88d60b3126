#pragma once

#include "shell/room.h"

namespace sorvan::shell {

class AccountPresenter;
class ActionsPresenter;
class AlertsPresenter;
class ComparisonPresenter;
class ComposerPresenter;
class CostsPresenter;
class CurationPresenter;
class FilterPresenter;
class GalleryPresenter;
class HealthPresenter;
class InspectorPresenter;
class JobsPresenter;
class MarkingPresenter;
class SavedReferencesPresenter;
class SettingsPresenter;
class SidebarPresenter;
class TransferPresenter;
class UpdatesPresenter;
class WelcomePresenter;
class WindowPresenter;
class WorkspaceState;

// What a main window is built on. The composition root owns all of them, and they outlive the window.
struct Presenters {
  WorkspaceState* state = nullptr;
  WindowPresenter* window = nullptr;
  WelcomePresenter* welcome = nullptr;
  SidebarPresenter* sidebar = nullptr;
  GalleryPresenter* gallery = nullptr;
  FilterPresenter* filters = nullptr;
  JobsPresenter* jobs = nullptr;
  InspectorPresenter* inspector = nullptr;
  CurationPresenter* curation = nullptr;
  TransferPresenter* transfer = nullptr;
  ComposerPresenter* composer = nullptr;
  SavedReferencesPresenter* savedReferences = nullptr;  // without one, there are no pages of them
  ComparisonPresenter* comparison = nullptr;  // without one, there are no contact sheets and no lineage
  MarkingPresenter* marking = nullptr;  // without one, nothing can be marked
  CostsPresenter* costs = nullptr;  // without one, there is no report on costs
  UpdatesPresenter* updates = nullptr;  // without one, nothing is told of newer builds and of usage counts
  AccountPresenter* account = nullptr;  // without one, nothing of an account is shown
  SettingsPresenter* settings = nullptr;
  HealthPresenter* health = nullptr;
  AlertsPresenter* alerts = nullptr;
  ActionsPresenter* actions = nullptr;
};

}  // namespace sorvan::shell
