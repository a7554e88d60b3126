#include "shell/search_texts.h"

#include "base/text.h"
#include "shell/byte_search.h"
#include "shell/gallery_filter.h"

#include <algorithm>

namespace sorvan::shell {

namespace {

constexpr qsizetype pieceSize = 1 << 20;

QString fileNameOf(const QString& path) { return path.mid(path.lastIndexOf(u'/') + 1); }

}  // namespace

FoldedItem fold(const QUuid& id, SearchSource source) {
  const QString name = fileNameOf(source.path);
  QStringList fields{name, source.originalName, source.notes, source.prompt, source.modelName, source.projectName};
  fields.removeAll(QString());
  QByteArray text = base::foldForSearch(fields.join(u'\n')).toUtf8();
  // The texts of a piece are parted by zeros.
  text.replace('\0', ' ');
  QByteArray nameKey = nameSortKey(name);
  return {id, std::move(source), std::move(text), std::move(nameKey)};
}

QByteArray foldedNeedle(const QString& search) {
  if (base::isBlank(search)) return {};
  QByteArray needle = base::foldForSearch(search).toUtf8();
  needle.replace('\0', ' ');
  return needle;
}

void SearchTexts::clear() {
  items_.clear();
  numbers_.clear();
  pieces_.clear();
  bytes_ = 0;
  unusedBytes_ = 0;
}

bool SearchTexts::isCurrent(const QUuid& id, const SearchSource& source) const {
  const std::uint32_t number = numberOf(id);
  return number != unknown && items_[number].source == source;
}

void SearchTexts::put(std::vector<FoldedItem> items) {
  for (FoldedItem& folded : items) {
    std::uint32_t number = numberOf(folded.id);
    if (number == unknown) {
      number = static_cast<std::uint32_t>(items_.size());
      items_.emplace_back();
      numbers_.insert(folded.id, number);
    } else {
      dropText(items_[number]);
    }
    Item& item = items_[number];
    item.id = folded.id;
    item.source = std::move(folded.source);
    item.nameKey = std::move(folded.nameKey);
    addText(number, folded.text);
  }
  if (unusedBytes_ > static_cast<std::size_t>(pieceSize) && unusedBytes_ > bytes_ / 2) compact();
}

void SearchTexts::addText(std::uint32_t number, const QByteArray& text) {
  const qsizetype size = text.size() + 1;
  if (pieces_.empty() || pieces_.back().bytes.size() + size > pieceSize) {
    pieces_.emplace_back();
    pieces_.back().bytes.reserve(std::max(pieceSize, size));
    pieces_.back().begins.push_back(0);
  }
  Piece& piece = pieces_.back();
  piece.bytes += text;
  piece.bytes += '\0';
  piece.begins.push_back(static_cast<std::uint32_t>(piece.bytes.size()));
  piece.numbers.push_back(number);
  items_[number].piece = static_cast<std::uint32_t>(pieces_.size() - 1);
  items_[number].place = static_cast<std::uint32_t>(piece.numbers.size() - 1);
  bytes_ += static_cast<std::size_t>(size);
}

void SearchTexts::dropText(const Item& item) {
  Piece& piece = pieces_[item.piece];
  piece.numbers[item.place] = unknown;
  unusedBytes_ += piece.begins[item.place + 1] - piece.begins[item.place];
}

// Old texts that were replaced one by one would make every search read them.
void SearchTexts::compact() {
  const std::vector<Piece> old = std::exchange(pieces_, {});
  bytes_ = 0;
  unusedBytes_ = 0;
  for (const Piece& piece : old)
    for (std::size_t place = 0; place < piece.numbers.size(); ++place)
      if (piece.numbers[place] != unknown)
        addText(piece.numbers[place],
                piece.bytes.mid(piece.begins[place], piece.begins[place + 1] - piece.begins[place] - 1));
}

std::vector<char> SearchTexts::find(const QByteArray& needle) const {
  std::vector<char> hits(items_.size(), 0);
  for (const Piece& piece : pieces_) findIn(piece, needle, hits);
  return hits;
}

void SearchTexts::findIn(const Piece& piece, const QByteArray& needle, std::vector<char>& hits) {
  const char* begin = piece.bytes.constData();
  const char* end = begin + piece.bytes.size();
  auto next = piece.begins.begin();
  for (const char* at = begin; at < end;) {
    const char* place =
        findBytes(at, static_cast<std::size_t>(end - at), needle.constData(), static_cast<std::size_t>(needle.size()));
    if (!place) return;
    // The text that the place is in; the search goes on behind it.
    next = std::upper_bound(next, piece.begins.end(), static_cast<std::uint32_t>(place - begin));
    const std::uint32_t number = piece.numbers[static_cast<std::size_t>(next - piece.begins.begin() - 1)];
    if (number != unknown) hits[number] = 1;
    at = begin + *next;
  }
}

}  // namespace sorvan::shell
