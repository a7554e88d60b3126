#include "shell/gallery_filter.h"

#include <gtest/gtest.h>

#include <random>

#include "base/ids.h"
#include "base/settings.h"
#include "base/text.h"
#include "shell/byte_search.h"

namespace sorvan::shell {
namespace {

constexpr base::Instant now{800'000'000};
constexpr double day = 86400;

core::AssetRow plainRow(const QString& name) {
  core::AssetRow row;
  row.id = base::newUuid();
  row.name = name;
  row.status = QStringLiteral("draft");
  row.mediaType = QStringLiteral("image");
  row.width = 640;
  row.height = 480;
  row.createdAt = row.recentDate = now;
  return row;
}

struct FilterTest : testing::Test {
  GalleryFilter filter;
  core::AssetRow row = plainRow(QStringLiteral("fox.png"));

  bool passes() const {
    const ModelTest model(filter.model, {QStringLiteral("fal/flux"), QStringLiteral("fal/flux-pro")},
                          [](const QString& id) { return QStringLiteral("Name of ") + id; });
    return RowTest(filter, now, model)(row);
  }
  bool passesAt(const QString& location) {
    filter.location = location;
    return passes();
  }
};

TEST_F(FilterTest, EveryLocationButTrashLeavesOutWhatIsInTrash) {
  row.favorite = true;
  for (const char* place : {"all", "library", "recent", "inbox", "favorites", "somewhere"})
    EXPECT_TRUE(passesAt(QString::fromLatin1(place))) << place;
  EXPECT_FALSE(passesAt(QStringLiteral("trash")));
  row.trashed = true;
  for (const char* place : {"all", "library", "recent", "inbox", "favorites"})
    EXPECT_FALSE(passesAt(QString::fromLatin1(place))) << place;
  EXPECT_TRUE(passesAt(QStringLiteral("trash")));
}

TEST_F(FilterTest, TheInboxAndAProjectHoldTheirOwn) {
  const QUuid project = base::newUuid();
  EXPECT_TRUE(passesAt(QStringLiteral("inbox")));
  EXPECT_FALSE(passesAt(base::uuidText(project)));
  row.projectID = project;
  EXPECT_FALSE(passesAt(QStringLiteral("inbox")));
  EXPECT_TRUE(passesAt(base::uuidText(project)));
  filter.projectID = project;
  EXPECT_TRUE(passesAt(QStringLiteral("recent")));
  filter.projectID = base::newUuid();
  EXPECT_FALSE(passesAt(QStringLiteral("recent")));
}

TEST_F(FilterTest, RecentMeansSevenDaysFromWhenItCameIn) {
  row.recentDate = now - 7 * day;
  EXPECT_TRUE(passesAt(QStringLiteral("recent")));
  row.recentDate = now - 7 * day - 1;
  EXPECT_FALSE(passesAt(QStringLiteral("recent")));
}

TEST_F(FilterTest, TypesAreOneKindOrWhatCanBeSeen) {
  const auto passesAs = [&](const char* type) {
    filter.type = QString::fromLatin1(type);
    return passes();
  };
  EXPECT_TRUE(passesAs("all") && passesAs("visual") && passesAs("image"));
  EXPECT_FALSE(passesAs("video") || passesAs("audio"));
  row.mediaType = QStringLiteral("audio");
  EXPECT_TRUE(passesAs("audio"));
  EXPECT_FALSE(passesAs("visual"));
}

TEST_F(FilterTest, ASquarePictureIsNeitherPortraitNorLandscapeAndASoundHasNoShape) {
  const auto passesAs = [&](const char* shape) {
    filter.orientation = QString::fromLatin1(shape);
    return passes();
  };
  row.height = 640;
  EXPECT_TRUE(passesAs("square") && passesAs("all"));
  EXPECT_FALSE(passesAs("portrait") || passesAs("landscape"));
  row.height = 700;
  EXPECT_TRUE(passesAs("portrait"));
  row.height = 600;
  EXPECT_TRUE(passesAs("landscape"));
  row.width = row.height = 0;
  EXPECT_FALSE(passesAs("square") || passesAs("portrait") || passesAs("landscape"));
}

TEST_F(FilterTest, StatusProviderRatingAndFavouritesNarrow) {
  filter.status = QStringLiteral("approved");
  EXPECT_FALSE(passes());
  row.status = QStringLiteral("approved");
  EXPECT_TRUE(passes());
  filter.provider = QStringLiteral("fal.ai");
  EXPECT_FALSE(passes());
  row.provider = QStringLiteral("fal.ai");
  EXPECT_TRUE(passes());
  filter.minimumRating = 3;
  row.rating = 2;
  EXPECT_FALSE(passes());
  row.rating = 3;
  EXPECT_TRUE(passes());
  filter.favoritesOnly = true;
  EXPECT_FALSE(passes());
}

TEST_F(FilterTest, AKnownModelIsMetExactlyAndAnyOtherTextInPart) {
  row.model = QStringLiteral("fal/flux-pro");
  filter.model = QStringLiteral("fal/flux");
  EXPECT_FALSE(passes());
  filter.model = QStringLiteral("FLUX");
  EXPECT_TRUE(passes());
  filter.model = QStringLiteral("name of fal");
  EXPECT_TRUE(passes());
  filter.model = QStringLiteral("kling");
  EXPECT_FALSE(passes());
  row.model.reset();
  filter.model = QStringLiteral("FLUX");
  EXPECT_FALSE(passes());
}

TEST_F(FilterTest, ZeroDaysAreNoLimit) {
  row.createdAt = now - 400 * day;
  EXPECT_TRUE(passes());
  filter.days = 1;
  EXPECT_FALSE(passes());
  row.createdAt = now - day;
  EXPECT_TRUE(passes());
}

TEST_F(FilterTest, AnIntervalWantsADateOfGeneration) {
  filter.generatedInterval = DateInterval{now - day, now};
  EXPECT_FALSE(passes());
  row.generatedAt = now - day;
  EXPECT_TRUE(passes());
  row.generatedAt = now + 1;
  EXPECT_FALSE(passes());
}

TEST_F(FilterTest, KnowsWhetherItNarrows) {
  EXPECT_FALSE(filter.narrows());
  filter.location = QStringLiteral("trash");
  filter.sort = GallerySort::name;
  EXPECT_FALSE(filter.narrows());
  filter.search = QStringLiteral("x");
  EXPECT_TRUE(filter.narrows());
}

struct SortTest : testing::Test {
  std::vector<core::AssetRow> newestFirst;

  // The names in the order of the sort.
  QString sorted(GallerySort sort) const {
    const Rows rows(std::vector<core::AssetRow>(newestFirst.rbegin(), newestFirst.rend()));
    RowNumbers numbers(newestFirst.size());
    for (std::uint32_t number = 0; number < numbers.size(); ++number) numbers[number] = number;
    sortRows(rows, numbers, sort);
    QString names;
    for (const std::uint32_t number : numbers) names += rows[number].name;
    return names;
  }
  core::AssetRow& add(const char* name, double age) {
    newestFirst.push_back(plainRow(QString::fromLatin1(name)));
    newestFirst.back().createdAt = now - age;
    return newestFirst.back();
  }
};

TEST_F(SortTest, OldestFirstKeepsTheOrderOfEqualDates) {
  add("a", 0);
  add("b", 1);
  add("c", 1);
  add("d", 2);
  EXPECT_EQ(sorted(GallerySort::newest), QStringLiteral("abcd"));
  EXPECT_EQ(sorted(GallerySort::oldest), QStringLiteral("dbca"));
}

TEST_F(SortTest, RatingPutsTheBestFirstAndTheNewestOfEqualOnes) {
  add("a", 0).rating = 2;
  add("b", 1).rating = 5;
  add("c", 2);
  add("d", 3).rating = 5;
  EXPECT_EQ(sorted(GallerySort::rating), QStringLiteral("bdac"));
}

TEST_F(SortTest, WhatCostNothingKnownComesLastBothWays) {
  add("a", 0);
  add("b", 1).credits = 3.5;
  add("c", 2).credits = 0;
  add("d", 3).credits = 12;
  add("e", 4).credits = 3.5;
  add("f", 5);
  EXPECT_EQ(sorted(GallerySort::costHigh), QStringLiteral("dbecaf"));
  EXPECT_EQ(sorted(GallerySort::costLow), QStringLiteral("cbedaf"));
}

TEST_F(SortTest, CostsAgreeWithAPlainSortOfManyNumbers) {
  std::mt19937 random(11);
  std::uniform_real_distribution<double> costs(0, 2000);
  for (int index = 0; index < 500; ++index)
    if (core::AssetRow& row = add("x", index); index % 7 != 0) row.credits = std::floor(costs(random)) / 8;
  const Rows rows(std::vector<core::AssetRow>(newestFirst.rbegin(), newestFirst.rend()));
  RowNumbers numbers(newestFirst.size());
  for (std::uint32_t number = 0; number < numbers.size(); ++number) numbers[number] = number;
  RowNumbers expected = numbers;
  const auto cost = [&](std::uint32_t number) { return rows[number].credits.value_or(1e9); };
  std::ranges::stable_sort(expected, {}, cost);
  sortRows(rows, numbers, GallerySort::costLow);
  EXPECT_EQ(numbers, expected);
}

TEST(NameSortKey, OrdersAsNaturalOrderDoes) {
  std::mt19937 random(23);
  const std::u32string letters = U"aAäBb 0019-_éeİi.ß𝄞हि";
  const auto word = [&] {
    QString text;
    for (unsigned length = random() % 9; length > 0; --length)
      text += QString::fromUcs4(&letters[random() % letters.size()], 1);
    return text;
  };
  const auto sign = [](int order) { return order < 0 ? -1 : order > 0 ? 1 : 0; };
  for (int round = 0; round < 20'000; ++round) {
    const QString left = word();
    const QString right = word();
    const int byKey = nameSortKey(left).compare(nameSortKey(right));
    EXPECT_EQ(sign(byKey), sign(base::naturalCompare(left, right)))
        << left.toStdString() << " | " << right.toStdString();
  }
}

TEST(GallerySortSetting, IsKeptForEachWorkspaceAndFallsBackToNewest) {
  base::Settings settings;
  const QString one = QStringLiteral("/one");
  EXPECT_EQ(keptSort(settings, one), GallerySort::newest);
  keepSort(settings, one, GallerySort::costHigh);
  EXPECT_EQ(settings.get(QStringLiteral("gallerySort./one"), QString()), QStringLiteral("costHigh"));
  EXPECT_EQ(keptSort(settings, one), GallerySort::costHigh);
  EXPECT_EQ(keptSort(settings, QStringLiteral("/two")), GallerySort::newest);
  settings.set(QStringLiteral("gallerySort./one"), QStringLiteral("sideways"));
  EXPECT_EQ(keptSort(settings, one), GallerySort::newest);
  keepSort(settings, std::nullopt, GallerySort::name);
  EXPECT_EQ(keptSort(settings, std::nullopt), GallerySort::newest);
}

TEST(FindBytes, FindsWhatAPlainSearchFinds) {
  std::mt19937 random(5);
  for (int round = 0; round < 3000; ++round) {
    std::string text(random() % 90, 'a');
    for (char& letter : text) letter = static_cast<char>('a' + random() % 3);
    std::string needle(1 + random() % 20, 'a');
    for (char& letter : needle) letter = static_cast<char>('a' + random() % 3);
    const char* found = findBytes(text.data(), text.size(), needle.data(), needle.size());
    const std::size_t expected = text.find(needle);
    ASSERT_EQ(found == nullptr, expected == std::string::npos) << text << " | " << needle;
    if (found) EXPECT_EQ(static_cast<std::size_t>(found - text.data()), expected);
  }
}

}  // namespace
}  // namespace sorvan::shell
