#include "torture/scenario.h"

#include <QJsonObject>

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

QJsonObject command(const QString& name) { return {{u"do"_s, name}}; }

QJsonObject order(const QString& model, const QString& prompt) {
  return {{u"do"_s, u"enqueue"_s}, {u"model"_s, model}, {u"prompt"_s, prompt}};
}

QJsonObject picture(const QString& prompt) { return order(u"fal-ai/flux/schnell"_s, prompt); }

QJsonObject edit(const QString& prompt) {
  QJsonObject edit = order(u"fal-ai/nano-banana-2/edit"_s, prompt);
  edit.insert(u"references"_s, QJsonArray{0});
  return edit;
}

QJsonObject two(const QString& prompt) {
  QJsonObject two = picture(prompt);
  two.insert(u"count"_s, 2);
  return two;
}

QJsonObject place(const QString& file) { return {{u"do"_s, u"place"_s}, {u"file"_s, file}}; }

QJsonObject rate(int stars) { return {{u"do"_s, u"rate"_s}, {u"stars"_s, stars}}; }

}  // namespace

std::vector<Scenario> allScenarios(const QString& file) {
  const QJsonObject run = command(u"run"_s);
  const QJsonObject retry = command(u"retry"_s);
  const QJsonArray library{place(file)};
  std::vector<Scenario> all;
  all.push_back({u"picture"_s, {}, {}, {picture(u"a lighthouse, %1"_s), run}, false, {}});
  all.push_back({u"edit"_s, library, {}, {edit(u"make it dusk, %1"_s), run}, false, {}});
  all.push_back({u"two"_s, {}, {}, {two(u"two boats, %1"_s), run}, false, {}});
  all.push_back({u"clip"_s, {}, {}, {order(u"bytedance/seedance-2.5/text-to-video"_s, u"waves, %1"_s), run}, false, {}});
  all.push_back(
      {u"sound"_s, {}, {}, {order(u"fal-ai/elevenlabs/sound-effects/v2"_s, u"rain, %1"_s), run}, false, {}});
  all.push_back({u"cancel"_s,
                 {},
                 {},
                 {picture(u"a cancelled one, %1"_s), command(u"handle"_s), command(u"cancel"_s), run},
                 true,
                 {}});
  all.push_back({u"retry"_s,
                 {picture(u"retried, from before"_s), run},
                 u"before rename results.json"_s,
                 {retry, run},
                 false,
                 {}});
  all.push_back({u"rate"_s, library, {}, {rate(3), picture(u"beside a rating, %1"_s), rate(5), run}, false, {}});
  all.push_back({u"interrupted"_s,
                 {place(file), picture(u"interrupted, one"_s), edit(u"interrupted, two"_s), run},
                 u"before rename /submitting"_s,
                 {retry, picture(u"after an interruption, %1"_s), run},
                 false,
                 {}});
  all.push_back({u"damaged"_s, library, {}, {picture(u"with a damaged ledger, %1"_s), run}, false, u"charges.json"_s});
  return all;
}

QJsonArray named(const QJsonArray& commands, const QString& trial) {
  QJsonArray result;
  for (const QJsonValue& value : commands) {
    QJsonObject command = value.toObject();
    const QString prompt = command.value(u"prompt"_s).toString();
    if (prompt.contains(u"%1"_s)) command.insert(u"prompt"_s, prompt.arg(trial));
    result.append(command);
  }
  return result;
}

}  // namespace sorvan::torture
