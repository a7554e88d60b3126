// What a power cut leaves of a workspace: its files as they were, and the journal of the steps since, give the folder
// that the next start finds.
#pragma once

#include <QHash>
#include <QString>
#include <map>
#include <random>
#include <vector>

#include "torture/journal.h"

namespace sorvan::torture {

enum class CutModel {
  strict,   // only what was synced survives: bytes by a sync of their file, names by a sync of their folder
  ordered,  // as on ext4: a sync of anything takes every earlier change of names with it, bytes still need their own
  torn,     // a seeded choice: of each folder some of the unsynced names, of each file some sectors of unsynced writes
};

// The files below a folder, and what was done to them since.
class PowerCut {
 public:
  // Takes up everything below `folder` as it stands; that much is taken for synced.
  explicit PowerCut(const QString& folder);

  // Takes up what was done, with paths below `root`.
  void play(const std::vector<Step>& steps, const QString& root);

  // Writes what the cut leaves into `target`, an empty folder. The same seed gives the same folder.
  void leave(CutModel model, quint64 seed, const QString& target) const;

 private:
  struct Write {
    qint64 offset;
    QByteArray bytes;
    bool truncates;  // the file ends at `offset`
  };
  struct Node {
    bool folder = false;
    QByteArray synced;
    QByteArray now;
    std::vector<Write> unsynced;
    std::map<QString, int> first;  // names at the beginning
    std::map<QString, int> names;  // names now
    std::size_t namesSynced = 0;   // changes of names before this one are certain
  };
  struct Rename {  // one change of a folder's names: `erased` goes and `name` comes, either may be empty
    int folder;
    QString erased;
    QString name;
    int node;
  };

  int takeUp(const QString& folder);
  int find(const QString& path) const;
  void carryOut(const Step& step, const QString& path, const QString& other);
  void opened(const QString& path, bool truncates);
  void wrote(int file, Write write);
  void synced(int node);
  void renamed(const QString& from, const QString& to);
  void linked(const QString& from, const QString& to);
  void change(Rename rename);
  int make(bool folder, const QString& path);
  int parentOf(const QString& path) const;

  using Chance = std::mt19937_64;
  std::map<QString, int> namesLeft(int folder, CutModel model, Chance& chance) const;
  QByteArray bytesLeft(const Node& file, CutModel model, Chance& chance) const;
  void leaveFolder(int folder, const QString& target, CutModel model, Chance& chance) const;

  std::vector<Node> nodes_;
  std::vector<Rename> renames_;
  std::size_t committed_ = 0;  // changes of names that a journalling file system has written
};

}  // namespace sorvan::torture
