#include "composer/reference_names.h"

#include <gtest/gtest.h>

#include "base/ids.h"
#include "generation/mentions.h"
#include "generation/texts.h"
#include "support/failure_of.h"
#include "support/text_printers.h"

namespace sorvan::composer {
namespace {

using namespace Qt::StringLiterals;
using sorvan::test::failureOf;

const QUuid fox = newUuid();
const QUuid hare = newUuid();
const QUuid owl = newUuid();

ReferenceBinding named(const QUuid& asset, const QString& label) { return {asset, label, {}, {}, {}}; }

QStringList labels(const std::vector<ReferenceBinding>& bindings) {
  QStringList result;
  for (const ReferenceBinding& binding : bindings) result << binding.label;
  return result;
}

TEST(ReferenceNames, EachNewPictureTakesTheSmallestFreeNumber) {
  EXPECT_EQ(labels(synchronizedNames({}, {fox, hare}, {})), (QStringList{u"Reference1"_s, u"Reference2"_s}));
  EXPECT_EQ(labels(synchronizedNames({named(hare, u"reference1"_s)}, {fox, hare, owl}, {})),
            (QStringList{u"reference1"_s, u"Reference2"_s, u"Reference3"_s}));
}

TEST(ReferenceNames, ARemovedPictureKeepsItsNameWhileThereAreWords) {
  const std::vector<ReferenceBinding> both{named(fox, u"Tin"_s), named(hare, u"Reference1"_s)};
  EXPECT_EQ(synchronizedNames(both, {hare}, u"with @Tin"_s), both);
  EXPECT_EQ(labels(synchronizedNames(both, {hare}, u" \n"_s)), QStringList{u"Reference1"_s});
  EXPECT_EQ(labels(synchronizedNames(both, {hare, owl}, u"x"_s)),
            (QStringList{u"Tin"_s, u"Reference1"_s, u"Reference2"_s}));
}

TEST(ReferenceNames, AutomaticNamesAreNumberedAnewAroundTheUsers) {
  const NamedReferences names =
      namesForNewPrompt({named(fox, u"Reference3"_s), named(hare, u"Reference 1"_s), named(owl, u"Reference5"_s)},
                        u"@reference3 beside @Reference5, not a@reference3"_s);
  EXPECT_EQ(labels(names.bindings), (QStringList{u"Reference2"_s, u"Reference 1"_s, u"Reference3"_s}));
  EXPECT_EQ(names.draft, u"@Reference2 beside @Reference3, not a@reference3"_s);
}

TEST(ReferenceNames, TwoNamesCanChangePlaces) {
  const NamedReferences names =
      namesForNewPrompt({named(fox, u"Reference2"_s), named(hare, u"Reference1"_s)}, u"@Reference1 and @Reference2"_s);
  EXPECT_EQ(labels(names.bindings), (QStringList{u"Reference1"_s, u"Reference2"_s}));
  EXPECT_EQ(names.draft, u"@Reference2 and @Reference1"_s);
}

TEST(ReferenceNames, ANewNameIsWrittenIntoTheDraft) {
  const NamedReferences before{{named(fox, u"Reference1"_s), named(hare, u"Hare"_s)}, u"(@REFERENCE1) by @hare"_s};
  const NamedReferences after = renamedReference(before, fox, u"  Rose Bottle "_s, u"Product"_s);
  EXPECT_EQ(after.bindings[0].label, u"Rose Bottle"_s);
  EXPECT_EQ(after.bindings[0].role, u"Product"_s);
  EXPECT_EQ(after.draft, u"(@RoseBottle) by @hare"_s);
}

TEST(ReferenceNames, GenericIsNoRole) {
  const NamedReferences before{{named(fox, u"Tin"_s)}, u"@Tin"_s};
  EXPECT_EQ(renamedReference(before, fox, u"Tin"_s, u"Generic"_s), before);
  EXPECT_EQ(renamedReference(before, fox, u"Tin"_s, u"Style"_s).bindings[0].role, u"Style"_s);
}

TEST(ReferenceNames, AnUnfitOrTakenNameIsRefused) {
  const NamedReferences names{{named(fox, u"Tin"_s), named(hare, u"Hare"_s)}, {}};
  for (const QString& label : {u"hARE"_s, u""_s, u"7up"_s, u"!"_s, QString(49, u'a')})
    EXPECT_EQ(failureOf([&] { renamedReference(names, fox, label, {}); }), generation::texts::referenceNames())
        << label.toStdString();
  EXPECT_EQ(renamedReference(names, fox, QString(48, u'a'), {}).bindings[0].label.size(), 48);
  EXPECT_EQ(renamedReference(names, owl, u"Any"_s, {}), names);
}

TEST(ReferenceNames, MarksBelongToTheFirstPicture) {
  EXPECT_FALSE(marksAreStray(fox, {fox, hare}));
  EXPECT_TRUE(marksAreStray(fox, {hare, fox}));
  EXPECT_TRUE(marksAreStray(fox, {}));
  EXPECT_TRUE(marksAreStray(std::nullopt, {fox}));
}

}  // namespace
}  // namespace sorvan::composer
