#include "shell/costs_presenter.h"

#include "account/account_texts.h"
#include "base/durable_file.h"
#include "base/ids.h"
#include "core/library_store.h"
#include "shell/alerts_presenter.h"
#include "shell/cost_texts.h"
#include "shell/payment_desk.h"
#include "shell/texts.h"
#include "shell/workspace_state.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace sorvan::shell {
using namespace Qt::Literals::StringLiterals;

namespace {

const QString periodKeys[] = {u"month"_s, u"last"_s, u"quarter"_s, u"all"_s};

// A library of this size is not read again for each result of a busy queue, but after this pause.
constexpr std::size_t manyCharges = 10'000;
constexpr std::chrono::milliseconds pauseBetweenReports{500};

// Stepping from an item that was opened from a row walks through this many rows each way.
constexpr int rowsBeside = 200;

bool sameQuestion(const account::CostDashboard& one, const account::CostDashboard& other) {
  return one.scope == other.scope && one.period == other.period;
}

// The old values are many small pieces; the pool takes them apart.
template <class Value>
void dropOnPool(std::shared_ptr<const Value>& value) {
  if (value) runOnPool([old = std::exchange(value, nullptr)]() mutable { old.reset(); });
}

}  // namespace

CostsPresenter::CostsPresenter(Ports ports, QObject* parent) : QObject(parent), on_(std::move(ports)) {
  connect(&on_.store, &core::LibraryStore::workspaceChanged, this, &CostsPresenter::forget);
  connect(&on_.store, &core::LibraryStore::revisionChanged, this, &CostsPresenter::refreshIfShown);
  connect(&on_.state, &WorkspaceState::modeChanged, this, &CostsPresenter::refreshIfShown);
  connect(&on_.payment, &PaymentDesk::changed, this, &CostsPresenter::refreshIfShown);
}

CostsPresenter::~CostsPresenter() = default;

bool CostsPresenter::isShown() const { return on_.state.mode().kind == ModeKind::costs && on_.store.hasWorkspace(); }

account::Spend CostsPresenter::spend() const { return {on_.payment.billing().ownKeyAllowed}; }

CostQuestion CostsPresenter::question() const { return {about_, on_.store.now(), spend()}; }

QString CostsPresenter::workspaceName() const {
  const auto root = on_.store.workspaceRoot();
  return root ? QDir(*root).dirName() : QString();
}

QString CostsPresenter::explanation() const {
  return spend().ownKeyAllowed ? account::texts::costsWithOwnKey() : account::texts::costsInCredits();
}

QString CostsPresenter::tableNote() const {
  return spend().ownKeyAllowed ? QString() : account::texts::exactCredits();
}

std::vector<QString> CostsPresenter::periods() {
  return {account::texts::periodMonth(), account::texts::periodLast(), account::texts::periodQuarter(),
          account::texts::periodAll()};
}

int CostsPresenter::period() const {
  const auto found = std::ranges::find(periodKeys, about_.period);
  return static_cast<int>(std::min<std::ptrdiff_t>(found - std::begin(periodKeys), std::ssize(periodKeys) - 1));
}

void CostsPresenter::setPeriod(int index) {
  about_.period = periodKeys[std::clamp<std::ptrdiff_t>(index, 0, std::ssize(periodKeys) - 1)];
  refreshIfShown();
}

void CostsPresenter::showAllTime() { setPeriod(static_cast<int>(std::ssize(periodKeys)) - 1); }

std::vector<CostScope> CostsPresenter::scopes() const {
  std::vector<CostScope> scopes{{u"all"_s, account::texts::allProjects()}, {u"inbox"_s, account::texts::inbox()}};
  for (const bool archived : {false, true})
    for (const core::ProjectRef& project : on_.store.projects())
      if (project->archived == archived) scopes.push_back({uuidText(project->id), project->name});
  return scopes;
}

QString CostsPresenter::scopeTitle() const { return about_.scopeName(on_.store); }

void CostsPresenter::setScope(const QString& key) {
  about_.scope = key;
  refreshIfShown();
}

void CostsPresenter::setShowing(CostBreakdownKind kind) {
  showing_ = kind;
  Q_EMIT changed();
}

CostPageState CostsPresenter::pageState() const {
  if (!problem_.isEmpty()) return CostPageState::failed;
  if (!page_) return CostPageState::reading;
  return page_->charges.empty() ? CostPageState::empty : CostPageState::report;
}

bool CostsPresenter::offersAllTime() const {
  return pageState() == CostPageState::empty && about_.interval(on_.store.now()) && book_ && !book_->charges.empty();
}

QString CostsPresenter::emptyText() const {
  return book_ && !book_->charges.empty() ? texts::costNothingThen : texts::costNothingHere;
}

CostRow CostsPresenter::row(int index) const {
  return costRow(*page_, static_cast<std::size_t>(index), spend(), on_.store.now());
}

// A project that is gone is no scope any more.
void CostsPresenter::dropLostScope() {
  const QUuid project = uuidFromText(about_.scope);
  if (!project.isNull() && !on_.store.project(project)) about_.scope = u"all"_s;
}

void CostsPresenter::refreshIfShown() {
  if (!isShown()) return;
  dropLostScope();
  refresh();
}

void CostsPresenter::forget() {
  dropOnPool(book_);
  dropOnPool(page_);
  problem_.clear();
  about_.scope = u"all"_s;
  Q_EMIT changed();
  refreshIfShown();
}

void CostsPresenter::refresh() {
  again_ = true;
  if (!working_) {
    working_ = true;
    problem_.clear();
    tasks_.spawn(work(this, tasks_.token()));
  }
  Q_EMIT changed();
}

bool CostsPresenter::bookIsCurrent() const {
  return book_ && bookOpening_ == on_.store.opening() && bookRevision_ == on_.store.revision();
}

Task<> CostsPresenter::work(CostsPresenter* self, std::stop_token stop) {
  while (self->again_) {
    self->again_ = false;
    try {
      co_await makeReport(self, stop);
      if (self->again_ && self->book_ && self->book_->charges.size() > manyCharges && !self->bookIsCurrent()) {
        Q_EMIT self->changed();
        co_await self->on_.store.services().clock->sleep(pauseBetweenReports, stop);
      }
    } catch (const Cancelled&) {
      // The presenter may be gone; or another workspace was opened, which asked for a report of its own.
      if (stop.stop_requested()) co_return;
    } catch (const std::exception& failure) {
      self->problem_ = describe(failure);
    }
  }
  self->working_ = false;
  Q_EMIT self->changed();
}

Task<> CostsPresenter::makeReport(CostsPresenter* self, std::stop_token stop) {
  if (!self->isShown()) co_return;
  if (!self->bookIsCurrent()) {
    const std::uint64_t opening = self->on_.store.opening();
    const std::uint64_t revision = self->on_.store.revision();
    account::ChargeBook book = co_await account::gatherCharges(self->on_.store, self->on_.nameOfModel, stop);
    dropOnPool(self->book_);
    self->book_ = std::make_shared<const account::ChargeBook>(std::move(book));
    self->bookOpening_ = opening;
    self->bookRevision_ = revision;
  }
  const CostQuestion asked = self->question();
  const auto report = [book = self->book_, asked] { return std::make_shared<const CostPage>(costPage(*book, asked)); };
  std::shared_ptr<const CostPage> page = co_await onPool(report, stop);
  // The newest question wins, and so does another workspace.
  if (!sameQuestion(asked.about, self->about_) || self->bookOpening_ != self->on_.store.opening()) co_return;
  dropOnPool(self->page_);
  self->page_ = std::move(page);
  ++self->pageNumber_;
  self->pageAbout_ = asked.about;
  self->problem_.clear();
  Q_EMIT self->changed();
}

void CostsPresenter::openRow(int index) {
  if (!page_ || index < 0 || index >= rowCount()) return;
  const core::AssetRef& chosen = page_->charges[static_cast<std::size_t>(index)].asset;
  if (!chosen || !on_.store.asset(chosen->id)) return;
  std::vector<QUuid> order;
  for (int at = std::max(0, index - rowsBeside); at < std::min(rowCount(), index + rowsBeside + 1); ++at) {
    const core::AssetRef& item = page_->charges[static_cast<std::size_t>(at)].asset;
    if (item && on_.store.asset(item->id) && std::ranges::find(order, item->id) == order.end())
      order.push_back(item->id);
  }
  on_.state.openAsset(chosen->id, order);
}

QString CostsPresenter::exportName() const {
  return (page_ ? pageAbout_ : about_).fileName(on_.store);
}

void CostsPresenter::exportTo(const QString& file) {
  if (!canExport() || file.isEmpty()) return;
  exporting_ = true;
  Q_EMIT changed();
  tasks_.spawn(write(this, file, page_));
}

// It is not given up half way: the scope is drained before the program ends.
Task<> CostsPresenter::write(CostsPresenter* self, QString file, std::shared_ptr<const CostPage> page) {
  const int rows = static_cast<int>(page->charges.size());
  std::optional<QString> failure;
  try {
    co_await onPool([file, page] {
      writeDurably(file, account::costCSV(page->charges, page->names).toUtf8(), DurableMode::Media);
    });
  } catch (const std::exception& thrown) {
    failure = describe(thrown);
  }
  self->exporting_ = false;
  if (failure)
    self->on_.alerts.showError(*failure);
  else
    self->tellExported(file, rows);
  Q_EMIT self->changed();
}

void CostsPresenter::tellExported(const QString& file, int rows) {
  Toast toast;
  toast.tone = AlertTone::success;
  toast.text = texts::costExported(rows);
  toast.secondLine = QFileInfo(file).fileName();
  if (on_.showInFiles) toast.actionTitle = texts::showInFiles;
  on_.alerts.showToast(toast, [show = on_.showInFiles, file] {
    if (show) show(file);
  });
}

}  // namespace sorvan::shell
