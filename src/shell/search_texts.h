#pragma once

#include "shell/room.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QUuid>

#include <cstdint>
#include <vector>

namespace sorvan::shell {

// What of an item can be found by searching. The texts are shared with the records, so that comparing two of these
// mostly compares addresses.
struct SearchSource {
  QString path;
  QString originalName;
  QString notes;
  QString prompt;
  QString modelName;
  QString projectName;
  bool operator==(const SearchSource&) const = default;
};

// One item's texts, folded on any thread.
struct FoldedItem {
  QUuid id;
  SearchSource source;
  QByteArray text;     // UTF-8, the fields parted by line ends
  QByteArray nameKey;  // see `nameSortKey`
};
FoldedItem fold(const QUuid& id, SearchSource source);
// What is looked for, folded the same way; empty when nothing is left.
QByteArray foldedNeedle(const QString& search);

// The folded texts of a library, side by side in a few large pieces, so that a search is one pass over bytes rather
// than a hundred thousand small ones. An item is known by a number that stays while it is there. Main thread.
class SearchTexts {
 public:
  static constexpr std::uint32_t unknown = ~std::uint32_t{0};

  void clear();
  // Takes over texts; those of items that are known replace what was there.
  void put(std::vector<FoldedItem> items);
  bool isCurrent(const QUuid& id, const SearchSource& source) const;
  std::uint32_t numberOf(const QUuid& id) const { return numbers_.value(id, unknown); }
  std::size_t count() const { return items_.size(); }
  const QUuid& idOf(std::uint32_t number) const { return items_[number].id; }
  const QByteArray& nameKeyOf(std::uint32_t number) const { return items_[number].nameKey; }
  // One byte for each number: whether the item's text contains the needle, which is not empty.
  std::vector<char> find(const QByteArray& needle) const;
  // All bytes that a search reads.
  std::size_t bytes() const { return bytes_; }

 private:
  struct Item {
    QUuid id;
    SearchSource source;
    QByteArray nameKey;
    std::uint32_t piece = 0;
    std::uint32_t place = 0;  // which of the piece's texts
  };
  struct Piece {
    QByteArray bytes;                    // the texts, each ended by a zero
    std::vector<std::uint32_t> begins;   // of each text, and one for the end
    std::vector<std::uint32_t> numbers;  // whose text it is
  };

  static void findIn(const Piece& piece, const QByteArray& needle, std::vector<char>& hits);
  void addText(std::uint32_t number, const QByteArray& text);
  void dropText(const Item& item);
  void compact();

  std::vector<Item> items_;
  QHash<QUuid, std::uint32_t> numbers_;
  std::vector<Piece> pieces_;
  std::size_t bytes_ = 0;
  std::size_t unusedBytes_ = 0;
};

}  // namespace sorvan::shell
