// The replayer of power cuts: what it keeps and what it takes away.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "torture/power_cut.h"

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

const QString root = u"/w"_s;

Step step(const QString& call, const QString& path, const QString& other = {}) {
  Step step;
  step.call = call;
  step.path = root + path;
  if (!other.isEmpty()) step.other = root + other;
  return step;
}

Step write(const QString& path, const QByteArray& bytes, qint64 offset = 0) {
  Step write = step(u"write"_s, path);
  write.bytes = bytes;
  write.offset = offset;
  return write;
}

class APowerCut : public testing::Test {
 protected:
  APowerCut() {
    put(u"before.png"_s, "old");
    QDir(before_.path()).mkdir(u"sub"_s);
  }

  void put(const QString& name, const QByteArray& bytes) const {
    QFile file(before_.filePath(name));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(bytes);
  }
  void cut(const std::vector<Step>& steps, CutModel model, quint64 seed = 1) {
    PowerCut cut(before_.path());
    cut.play(steps, root);
    left_ = std::make_unique<QTemporaryDir>();
    cut.leave(model, seed, left_->path());
  }
  // What stands there now, or nothing.
  std::optional<QByteArray> left(const QString& name) const {
    QFile file(left_->filePath(name));
    if (!file.open(QFile::ReadOnly)) return std::nullopt;
    return file.readAll();
  }

  QTemporaryDir before_;
  std::unique_ptr<QTemporaryDir> left_;
};

const std::vector<Step> unsynced{step(u"open"_s, u"/new"_s), write(u"/new"_s, "bytes")};
const std::vector<Step> fileSynced{step(u"open"_s, u"/new"_s), write(u"/new"_s, "bytes"), step(u"fsync"_s, u"/new"_s)};
const std::vector<Step> bothSynced{step(u"open"_s, u"/new"_s), write(u"/new"_s, "bytes"), step(u"fsync"_s, u"/new"_s),
                                   step(u"fsync"_s, QString())};

TEST_F(APowerCut, LeavesWhatStoodBefore) {
  cut({}, CutModel::strict);
  EXPECT_EQ(left(u"before.png"_s), "old");
  EXPECT_TRUE(QDir(left_->path()).exists(u"sub"_s));
}

TEST_F(APowerCut, TakesANewFileWhoseFolderWasNotSynced) {
  cut(fileSynced, CutModel::strict);
  EXPECT_EQ(left(u"new"_s), std::nullopt);
}

TEST_F(APowerCut, KeepsAFileWhoseBytesAndFolderWereSynced) {
  cut(bothSynced, CutModel::strict);
  EXPECT_EQ(left(u"new"_s), "bytes");
}

TEST_F(APowerCut, EmptiesAFileWhoseNameWasSyncedButNotItsBytes) {
  std::vector<Step> steps = unsynced;
  steps.push_back(step(u"fsync"_s, QString()));
  cut(steps, CutModel::strict);
  EXPECT_EQ(left(u"new"_s), "");
}

TEST_F(APowerCut, OnAJournalKeepsANameWhenItsFileWasSynced) {
  cut(fileSynced, CutModel::ordered);
  EXPECT_EQ(left(u"new"_s), "bytes");
  cut(unsynced, CutModel::ordered);
  EXPECT_EQ(left(u"new"_s), std::nullopt);
}

TEST_F(APowerCut, UndoesARenameThatWasNotSynced) {
  std::vector<Step> steps = bothSynced;
  steps.push_back(step(u"rename"_s, u"/before.png"_s, u"/new"_s));
  cut(steps, CutModel::strict);
  EXPECT_EQ(left(u"before.png"_s), "old");
  EXPECT_EQ(left(u"new"_s), "bytes");
  steps.push_back(step(u"fsync"_s, QString()));
  cut(steps, CutModel::strict);
  EXPECT_EQ(left(u"before.png"_s), "bytes");
  EXPECT_EQ(left(u"new"_s), std::nullopt);
}

TEST_F(APowerCut, LosesAFileMovedToAFolderThatWasNotSyncedWhenItsOldOneWas) {
  std::vector<Step> steps{step(u"rename"_s, u"/sub/moved"_s, u"/before.png"_s), step(u"fsync"_s, QString())};
  cut(steps, CutModel::strict);
  EXPECT_EQ(left(u"before.png"_s), std::nullopt);
  EXPECT_EQ(left(u"sub/moved"_s), std::nullopt);
}

TEST_F(APowerCut, BringsBackARemovedFileWhoseFolderWasNotSynced) {
  cut({step(u"unlink"_s, u"/before.png"_s)}, CutModel::strict);
  EXPECT_EQ(left(u"before.png"_s), "old");
}

TEST_F(APowerCut, TearsAWriteAtSectors) {
  const QByteArray page(4096, 'x');
  std::vector<Step> steps = bothSynced;
  steps.push_back(write(u"/new"_s, page));
  int torn = 0;
  for (quint64 seed = 1; seed <= 20; ++seed) {
    cut(steps, CutModel::torn, seed);
    const QByteArray found = left(u"new"_s).value_or(QByteArray());
    EXPECT_LE(found.size(), page.size());
    torn += found.contains('x') && found != page ? 1 : 0;
  }
  EXPECT_GT(torn, 10);
}

TEST_F(APowerCut, LeavesTheSameForTheSameSeed) {
  std::vector<Step> steps = bothSynced;
  steps.push_back(write(u"/new"_s, QByteArray(4096, 'x')));
  cut(steps, CutModel::torn, 7);
  const auto first = left(u"new"_s);
  cut(steps, CutModel::torn, 7);
  EXPECT_EQ(left(u"new"_s), first);
}

}  // namespace
}  // namespace sorvan::torture
