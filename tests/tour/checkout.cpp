#include "tour/checkout.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QUrl>
#include <stdexcept>

namespace tour {
namespace {

constexpr int noBrowser = 3;
constexpr int longestVisitMilliseconds = 60000;

QString& paidBy() {
  static QString how;
  return how;
}

QStringList linesOf(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

void writeScript(const QString& path, const QString& text) {
  QFile script(path);
  if (!script.open(QIODevice::WriteOnly)) throw std::runtime_error("no script");
  script.write(text.toUtf8());
  script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void submitForm(const sorvan::test::SandboxProcess& sandbox, const QByteArray& path) {
  const QByteArray form = "action=\"" + path + "/pay\"";
  EXPECT_TRUE(sandbox.page("GET", path).contains(form)) << "the page has no form of its own";
  EXPECT_TRUE(sandbox.page("POST", path + "/pay").contains("id=\"paid\"")) << "the page does not say that it is paid";
}

}  // namespace

PagesOpened::PagesOpened(Tourist& person) : list_(person.desktop().home() + u"/pages.txt"_qs) {
  const QString folder = person.desktop().home() + u"/openers"_qs;
  const QString browser = folder + u"/browser"_qs;
  QDir().mkpath(folder);
  writeScript(browser, u"#!/bin/sh\necho \"$1\" >>'%1'\n"_qs.arg(list_));
  person.run(QStringLiteral(SORVAN_SANDBOX_OPENER),
             {folder, person.sandbox().configuration().value(u"control"_qs).toString(), browser});
  person.putFirstInPath(folder);
}

QString PagesOpened::next() {
  if (!within(20, [this] { return linesOf(list_).size() > seen_; })) throw std::runtime_error("no page was opened");
  return linesOf(list_).at(seen_++);
}

void payOn(const Tourist& person, const QString& page) {
  QProcess browser;
  browser.setProcessChannelMode(QProcess::MergedChannels);
  browser.start(u"python3"_qs, {QStringLiteral(SORVAN_TOUR_BROWSER), page});
  ASSERT_TRUE(browser.waitForFinished(longestVisitMilliseconds)) << "the browser does not come back";
  if (browser.exitCode() == noBrowser) {
    submitForm(person.sandbox(), QUrl(page).path().toUtf8());
    paidBy() = u"Chromium could not be started: the form of the page to pay on was submitted over HTTP."_qs;
    return;
  }
  EXPECT_EQ(browser.exitCode(), 0) << browser.readAll().toStdString();
  paidBy() = u"Paid on the sandbox's page in Chromium."_qs;
}

QString howItWasPaid() { return paidBy(); }

}  // namespace tour
