// Reading ten thousand commands against the patterns alone: the least that rules made of these patterns could take.
#include <random>

#include "bench/row.h"
#include "composer/local_intent_parser.h"

namespace sorvan::bench {
namespace {

using namespace Qt::StringLiterals;
using composer::LocalIntentParser;

constexpr int commands = 10'000;

/// What people type, in one text a line: commands of every kind, and prompts.
const QStringList& shapes() {
  static const QStringList list{u"find %1 images"_s,
                                u"search for my %1 photos"_s,
                                u"show %1"_s,
                                u"show flux images of %1"_s,
                                u"create a new project called %1"_s,
                                u"move the selected images to %1"_s,
                                u"mark selected as approved"_s,
                                u"favorite these"_s,
                                u"compare selected"_s,
                                u"remove the project %1"_s,
                                u"generate 3 pictures of %1"_s,
                                u"draw %1 in the rain, soft light, 35mm, shallow depth of field"_s,
                                u"%1"_s,
                                u"make a colour variation of this image with %1"_s,
                                u"delete %1"_s};
  return list;
}

void makeCommands(const QDir& data) {
  const QStringList words{u"temple"_s, u"red bicycle"_s, u"Île de Ré"_s, u"東京"_s, u"a fox in deep snow"_s};
  std::mt19937 random(7);
  QFile file(data.filePath(u"commands"_s));
  if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("the commands could not be written");
  for (int index = 0; index < commands; ++index) {
    const QString& shape = shapes()[qsizetype(random() % unsigned(shapes().size()))];
    const QString& word = words[qsizetype(random() % unsigned(words.size()))];
    file.write(QString(shape).replace(u"%1"_s, word).toUtf8() + '\n');
  }
}

QStringList readCommands(const QDir& data) {
  QFile file(data.filePath(u"commands"_s));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("the commands could not be read");
  return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

Contestants contestants(const QDir& data) {
  const QStringList texts = readCommands(data);
  const auto understood = std::make_shared<std::size_t>(0);
  return {.ours =
              [=] {
                return timed([&] {
                  for (const QString& text : texts) *understood += LocalIntentParser::parse(text).index();
                });
              },
          .peer = {},
          .limit =
              [=] {
                return timed([&] {
                  for (const QString& text : texts)
                    for (const QRegularExpression* pattern : LocalIntentParser::patterns())
                      *understood += pattern->match(text).hasMatch() ? 1 : 0;
                });
              }};
}

const RegisterRow row{{.name = u"parse-10k"_s, .make = makeCommands, .measure = contestants}};

}  // namespace
}  // namespace sorvan::bench
