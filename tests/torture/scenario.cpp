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

QJsonObject markedEdit(const QString& prompt) {
  QJsonObject marked = edit(prompt);
  QJsonArray boxes;
  boxes.append(QJsonArray{0.25, 0.25, 0.5, 0.5});
  marked.insert(u"marks"_s, boxes);
  return marked;
}

QJsonObject prompt(const QString& text) { return {{u"do"_s, u"prompt"_s}, {u"text"_s, text}}; }

QJsonObject draft(int number) { return {{u"do"_s, u"draft"_s}, {u"number"_s, number}}; }

QJsonObject type(int number) { return {{u"do"_s, u"type"_s}, {u"number"_s, number}}; }

QJsonObject gateway(const QString& what) { return {{u"do"_s, u"gateway"_s}, {what, true}}; }

QJsonObject place(const QString& file) { return {{u"do"_s, u"place"_s}, {u"file"_s, file}}; }

QJsonObject importFile(const QString& file) { return {{u"do"_s, u"import"_s}, {u"file"_s, file}}; }

QJsonObject importPasted(int shade) { return {{u"do"_s, u"import"_s}, {u"shade"_s, shade}}; }

QJsonObject rate(int stars) { return {{u"do"_s, u"rate"_s}, {u"stars"_s, stars}}; }

// A scenario that begins with an empty library and does only this.
Scenario plain(const QString& name, const QJsonArray& commands) {
  Scenario scenario;
  scenario.name = name;
  scenario.commands = commands;
  return scenario;
}

Scenario after(const QJsonArray& setUp, const QString& endsAt, Scenario scenario) {
  scenario.setUp = setUp;
  scenario.setUpEndsAt = endsAt;
  return scenario;
}

QJsonObject runAll() { return command(u"run"_s); }
QJsonObject retryAll() { return command(u"retry"_s); }

// An order in a folder that was no library before.
Scenario first(const QJsonArray& commands) {
  Scenario scenario = plain(u"first"_s, commands);
  scenario.beginsWithNothing = true;
  return scenario;
}

// Orders of each kind, from nothing to the item.
std::vector<Scenario> orders(const QJsonArray& library) {
  return {
      first({picture(u"the very first, %1"_s), runAll()}),
      plain(u"picture"_s, {picture(u"a lighthouse, %1"_s), runAll()}),
      after(library, {}, plain(u"edit"_s, {edit(u"make it dusk, %1"_s), runAll()})),
      after(library, {}, plain(u"marked"_s, {markedEdit(u"put a boat there, %1"_s), runAll()})),
      plain(u"two"_s, {two(u"two boats, %1"_s), runAll()}),
      plain(u"clip"_s, {order(u"bytedance/seedance-2.5/text-to-video"_s, u"waves, %1"_s), runAll()}),
      plain(u"sound"_s, {order(u"fal-ai/elevenlabs/sound-effects/v2"_s, u"rain, %1"_s), runAll()}),
  };
}

// What a user does to an order that did not simply end.
std::vector<Scenario> secondThoughts(const QJsonObject& placed) {
  const QJsonObject handle = command(u"handle"_s);
  const QJsonObject cancel = command(u"cancel"_s);
  std::vector<Scenario> all{
      plain(u"cancel"_s, {picture(u"a cancelled one, %1"_s), handle, cancel, runAll()}),
      after({picture(u"retried, from before"_s), runAll()}, u"before rename results.json"_s, plain(u"retry"_s, {retryAll(), runAll()})),
      after({placed, markedEdit(u"kept as it came, from before"_s), runAll()}, u"after rename results.json"_s,
            plain(u"raw"_s, {command(u"save-raw"_s), runAll()})),
      after({placed, picture(u"interrupted, one"_s), edit(u"interrupted, two"_s), runAll()}, u"before rename /submitting"_s,
            plain(u"interrupted"_s, {retryAll(), picture(u"after an interruption, %1"_s), runAll()})),
      after({gateway(u"pays"_s), gateway(u"away"_s), picture(u"cancelled, and charged"_s), handle, cancel, runAll()}, {},
            plain(u"settle"_s, {command(u"settled"_s)})),
  };
  all.front().jobsStand = true;
  all.back().setUpStands = true;
  return all;
}

QJsonObject sheet(const QString& what, int number = 0) {
  return {{u"do"_s, u"sheet"_s}, {u"what"_s, what}, {u"number"_s, number}};
}

QJsonObject quietly(QJsonObject command) {
  command.insert(u"quietly"_s, true);
  return command;
}

// A contact sheet comes out of Trash, is put into another order and titled; another one is made and moved to Trash.
Scenario contactSheets(const QJsonArray& library) {
  QJsonArray withSheet = library;
  for (const QJsonObject& more :
       {library.first().toObject(), quietly(sheet(u"make"_s)), quietly(sheet(u"trash"_s))})
    withSheet.append(more);
  return after(withSheet, {},
               plain(u"sheet"_s, {sheet(u"restore"_s), sheet(u"order"_s), sheet(u"title"_s, 1), sheet(u"make"_s),
                                  sheet(u"trash"_s), sheet(u"title"_s, 2)}));
}

QJsonObject project(const QString& what, int number = 0) {
  return {{u"do"_s, u"project"_s}, {u"what"_s, what}, {u"number"_s, number}};
}

// A project with its folder gets another name; then there is another one, and the first is put away.
Scenario projects() {
  return plain(u"project"_s, {project(u"make"_s, 1), project(u"name"_s, 2), project(u"make"_s, 3), project(u"archive"_s)});
}

// The same roads with credits.
std::vector<Scenario> paidWithCredits(const QJsonArray& library) {
  const QJsonObject pays = gateway(u"pays"_s);
  const QJsonObject handle = command(u"handle"_s);
  std::vector<Scenario> all{
      plain(u"credits"_s, {pays, picture(u"a lighthouse for credits, %1"_s), runAll()}),
      after(library, {}, plain(u"credits-edit"_s, {pays, edit(u"make it dusk for credits, %1"_s), runAll()})),
      plain(u"credits-cancel"_s,
            {pays, picture(u"cancelled, for credits, %1"_s), handle, command(u"cancel"_s), runAll()}),
      after({pays, picture(u"interrupted, for credits"_s), runAll()}, u"after rename gateway.json"_s,
            plain(u"credits-retry"_s, {retryAll(), pays, picture(u"after that, %1"_s), runAll()})),
  };
  all[2].jobsStand = true;
  return all;
}

// Work that is no order.
std::vector<Scenario> ownWork(const QJsonArray& library) {
  const QJsonObject save = command(u"retry-save"_s);
  std::vector<Scenario> all{
      after(library, {},
            plain(u"rate"_s, {rate(3), picture(u"beside a rating, %1"_s), rate(5), runAll(), save, save})),
      after(library, {}, plain(u"damaged"_s, {picture(u"with a damaged ledger, %1"_s), runAll()})),
      after(library, {},
            plain(u"sidecars"_s, {prompt(u"a first one, %1"_s), draft(1), command(u"review"_s), draft(2),
                                  prompt(u"a second one, %1"_s), rate(2), save, save})),
      after(library, {}, plain(u"typing"_s, {type(1), type(7), save, save})),
  };
  const QJsonObject quietTrash{{u"do"_s, u"trash"_s}, {u"quietly"_s, true}};
  QJsonArray withTrash = library;
  withTrash.append(quietTrash);
  withTrash.append(library.first());
  all.push_back(after(withTrash, {}, plain(u"trash"_s, {command(u"restore"_s), command(u"trash"_s)})));
  all.push_back(contactSheets(library));
  all.push_back(projects());
  all[1].damagedSidecar = u"charges.json"_s;
  all[0].endsSaved = all[2].endsSaved = all[3].endsSaved = true;
  return all;
}

// A file and a pasted picture become references, the file a second time too, which copies nothing.
std::vector<Scenario> imports(const QString& file) {
  return {plain(u"import"_s, {importFile(file), importPasted(200), importFile(file)})};
}

// Libraries of every earlier form, each with one picture.
std::vector<Scenario> upgrades() {
  std::vector<Scenario> all;
  for (int version = 1; version < 7; ++version) {
    all.push_back(plain(u"upgrade-%1"_s.arg(version), {rate(5)}));
    all.back().oldVersion = version;
  }
  return all;
}

}  // namespace

std::vector<Scenario> allScenarios(const QString& file) {
  std::vector<Scenario> all = orders({place(file)});
  for (const auto& part :
       {secondThoughts(place(file)), paidWithCredits({place(file)}), ownWork({place(file)}), imports(file),
        upgrades()})
    all.insert(all.end(), part.begin(), part.end());
  return all;
}

QJsonArray named(const QJsonArray& commands, const QString& trial) {
  QJsonArray result;
  for (const QJsonValue& value : commands) {
    QJsonObject command = value.toObject();
    for (const QString& field : {u"prompt"_s, u"text"_s}) {
      const QString text = command.value(field).toString();
      if (text.contains(u"%1"_s)) command.insert(field, text.arg(trial));
    }
    result.append(command);
  }
  return result;
}

}  // namespace sorvan::torture
