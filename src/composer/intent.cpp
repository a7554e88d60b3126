#include "composer/intent.h"

namespace sorvan::composer {

using namespace Qt::StringLiterals;

namespace {

struct Label {
  QString operator()(const GenerationInstruction&) const { return u"Generate"_s; }
  QString operator()(const SearchAssets&) const { return u"Find media"_s; }
  QString operator()(const FilterAssets&) const { return u"Filter library"_s; }
  QString operator()(const CompoundAssetFilter&) const { return u"Filter library"_s; }
  QString operator()(const MoveAssets&) const { return u"Move selected media"_s; }
  QString operator()(const FavoriteAssets& intent) const {
    return intent.favorite ? u"Favorite selected media"_s : u"Remove favorites"_s;
  }
  QString operator()(const SetAssetStatus& intent) const { return u"Mark selected as "_s + capitalized(intent.status); }
  QString operator()(const CreateProject&) const { return u"Create project"_s; }
  QString operator()(const Unsupported&) const { return u"Review command"_s; }
  QString operator()(const Unknown&) const { return u"Review command"_s; }
  QString operator()(const CompareAssets&) const { return u"Open contact sheet"_s; }
  QString operator()(const ShowLineage&) const { return u"Show lineage"_s; }
  QString operator()(const ShowGallery&) const { return u"Show gallery"_s; }
};

QString generationKey(const GenerationInstruction& instruction) {
  return u"generate:%1:%2:%3"_s.arg(QString::number(instruction.count.value_or(0)),
                                    instruction.usesSelection ? u"true"_s : u"false"_s,
                                    rawValue(instruction.relationship));
}

}  // namespace

QString capitalized(AssetStatus status) {
  QString word = rawValue(status);
  word[0] = word[0].toUpper();
  return word;
}

QString label(const SorvanIntent& intent) { return std::visit(Label(), intent); }

QString presentationKey(const SorvanIntent& intent) {
  if (std::holds_alternative<Unknown>(intent)) return u"unknown"_s;
  if (std::holds_alternative<Unsupported>(intent)) return u"unsupported"_s;
  if (const auto* instruction = std::get_if<GenerationInstruction>(&intent)) return generationKey(*instruction);
  return label(intent);
}

}  // namespace sorvan::composer
