#include "torture/power_cut.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <stdexcept>

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

constexpr int nowhere = -1;
constexpr qint64 sectorBytes = 512;

QByteArray bytesOf(const QString& path) {
  QFile file(path);
  if (!file.open(QFile::ReadOnly)) throw std::runtime_error("A file of the workspace cannot be read.");
  return file.readAll();
}

void put(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size())
    throw std::runtime_error("What the power cut leaves cannot be written.");
}

void lay(QByteArray& content, qint64 offset, const QByteArray& bytes) {
  if (content.size() < offset + bytes.size()) content.resize(offset + bytes.size(), '\0');
  std::copy(bytes.begin(), bytes.end(), content.begin() + offset);
}

QString folderOf(const QString& path) { return path.section(u'/', 0, -2); }
QString nameOf(const QString& path) { return path.section(u'/', -1); }

// Memory that the database shares between processes, and the lock: neither is meant to outlive a start.
bool isFleeting(const QString& name) { return name.endsWith(u"-shm"_s) || name == u"workspace.lock"_s; }

bool isNoChange(const QString& call) { return call == u"died"_s || call == u"failed"_s || call == u"refused"_s; }

}  // namespace

PowerCut::PowerCut(const QString& folder) { takeUp(folder); }

int PowerCut::takeUp(const QString& path) {
  const int folder = static_cast<int>(nodes_.size());
  nodes_.push_back({.folder = true});
  std::map<QString, int> names;
  for (const QFileInfo& entry : QDir(path).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
    if (isFleeting(entry.fileName())) continue;
    if (entry.isDir()) {
      names[entry.fileName()] = takeUp(entry.filePath());
      continue;
    }
    const QByteArray bytes = bytesOf(entry.filePath());
    names[entry.fileName()] = static_cast<int>(nodes_.size());
    nodes_.push_back({.synced = bytes, .now = bytes});
  }
  Node& node = nodes_[static_cast<std::size_t>(folder)];
  node.first = node.names = names;
  return folder;
}

int PowerCut::find(const QString& path) const {
  int at = 0;
  for (const QString& name : path.split(u'/', Qt::SkipEmptyParts)) {
    const Node& folder = nodes_[static_cast<std::size_t>(at)];
    const auto entry = folder.names.find(name);
    if (entry == folder.names.end()) return nowhere;
    at = entry->second;
  }
  return at;
}

int PowerCut::parentOf(const QString& path) const {
  const int parent = find(folderOf(path));
  if (parent == nowhere) throw std::runtime_error("The journal names a folder that it never made: " + path.toStdString());
  return parent;
}

void PowerCut::change(Rename rename) {
  Node& folder = nodes_[static_cast<std::size_t>(rename.folder)];
  if (!rename.erased.isEmpty()) folder.names.erase(rename.erased);
  if (!rename.name.isEmpty()) folder.names[rename.name] = rename.node;
  renames_.push_back(std::move(rename));
}

int PowerCut::make(bool folder, const QString& path) {
  const int node = static_cast<int>(nodes_.size());
  nodes_.push_back({.folder = folder});
  change({parentOf(path), {}, nameOf(path), node});
  return node;
}

void PowerCut::opened(const QString& path, bool truncates) {
  const int file = find(path);
  if (file == nowhere) make(false, path);
  else if (truncates) wrote(file, {0, {}, true});
}

void PowerCut::wrote(int number, Write write) {
  Node& file = nodes_[static_cast<std::size_t>(number)];
  if (write.truncates) file.now.resize(write.offset, '\0');
  else lay(file.now, write.offset, write.bytes);
  file.unsynced.push_back(std::move(write));
}

void PowerCut::synced(int number) {
  Node& node = nodes_[static_cast<std::size_t>(number)];
  committed_ = renames_.size();
  if (node.folder) node.namesSynced = renames_.size();
  node.synced = node.now;
  node.unsynced.clear();
}

void PowerCut::renamed(const QString& from, const QString& to) {
  const int node = find(from);
  if (node == nowhere) throw std::runtime_error("The journal moves a file that is not there: " + from.toStdString());
  const int source = parentOf(from);
  const int target = parentOf(to);
  if (source == target) return change({source, nameOf(from), nameOf(to), node});
  change({target, {}, nameOf(to), node});
  change({source, nameOf(from), {}, nowhere});
}

void PowerCut::linked(const QString& from, const QString& to) { change({parentOf(to), {}, nameOf(to), find(from)}); }

void PowerCut::carryOut(const Step& step, const QString& path, const QString& other) {
  const int node = find(path);
  if (step.call == u"mkdir"_s) return void(make(true, path));
  if (step.call == u"open"_s || step.call == u"opentrunc"_s) return opened(path, step.call == u"opentrunc"_s);
  if (step.call == u"rename"_s) return renamed(other, path);
  if (step.call == u"link"_s) return linked(other, path);
  if (step.call == u"unlink"_s || step.call == u"rmdir"_s) return change({parentOf(path), nameOf(path), {}, nowhere});
  if (node == nowhere) return;  // written or synced after its last name was taken away
  if (step.call == u"fsync"_s) return synced(node);
  if (step.call == u"write"_s) return wrote(node, {step.offset, step.bytes, false});
  if (step.call == u"truncate"_s) return wrote(node, {step.offset, {}, true});
}

void PowerCut::play(const std::vector<Step>& steps, const QString& root) {
  for (const Step& step : steps) {
    if (step.path.isEmpty() || isNoChange(step.call)) continue;
    carryOut(step, step.path.mid(root.size()), step.other.mid(root.size()));
  }
}

std::map<QString, int> PowerCut::namesLeft(int number, CutModel model, Chance& chance) const {
  const Node& folder = nodes_[static_cast<std::size_t>(number)];
  std::size_t certain = folder.namesSynced;
  if (model == CutModel::ordered) certain = committed_;
  if (model == CutModel::torn)
    certain = std::uniform_int_distribution<std::size_t>(folder.namesSynced, renames_.size())(chance);
  std::map<QString, int> names = folder.first;
  for (std::size_t i = 0; i < certain; ++i) {
    const Rename& rename = renames_[i];
    if (rename.folder != number) continue;
    if (!rename.erased.isEmpty()) names.erase(rename.erased);
    if (!rename.name.isEmpty()) names[rename.name] = rename.node;
  }
  return names;
}

QByteArray PowerCut::bytesLeft(const Node& file, CutModel model, Chance& chance) const {
  if (model != CutModel::torn) return file.synced;
  std::bernoulli_distribution survives(0.5);
  QByteArray content = file.synced;
  for (const Write& write : file.unsynced) {
    if (write.truncates && survives(chance)) content.resize(write.offset, '\0');
    for (qint64 at = 0; at < write.bytes.size();) {
      const qint64 toSectorEnd = sectorBytes - (write.offset + at) % sectorBytes;
      const QByteArray piece = write.bytes.mid(at, toSectorEnd);
      if (survives(chance)) lay(content, write.offset + at, piece);
      at += piece.size();
    }
  }
  return content;
}

void PowerCut::leaveFolder(int folder, const QString& target, CutModel model, Chance& chance) const {
  QDir().mkpath(target);
  for (const auto& [name, number] : namesLeft(folder, model, chance)) {
    const Node& node = nodes_[static_cast<std::size_t>(number)];
    const QString path = target + u'/' + name;
    if (node.folder) leaveFolder(number, path, model, chance);
    else put(path, bytesLeft(node, model, chance));
  }
}

void PowerCut::leave(CutModel model, quint64 seed, const QString& target) const {
  Chance chance(seed);
  leaveFolder(0, target, model, chance);
}

}  // namespace sorvan::torture
