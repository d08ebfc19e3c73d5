// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/items/list_items.h"

#include <gmock/gmock.h>

#include "shown_controls.h"
#include "support/raises.h"

using testing::ElementsAre;

class ItemsOfAList : public testing::Test {
 protected:
    ListView list;
    ::ListItems& items = list.ListItems();
};

TEST_F(ItemsOfAList, CountFromOneInTheOrderInWhichTheyCame) {
    items.Add("b", "Beta");
    items.Add("a", "Alpha");
    EXPECT_EQ(items.Count(), 2);
    EXPECT_EQ(items(1).Text(), "Beta");
    EXPECT_EQ(items(2).Key, "a");
    EXPECT_EQ(items("a").Index(), 2);
}

TEST_F(ItemsOfAList, RefuseAKeyThatIsTaken) {
    items.Add("pk1", "One");
    EXPECT_EQ(NumberRaisedBy([&] { items.Add("pk1", "Other"); }), 35602);
    EXPECT_EQ(DescriptionRaisedBy([&] { items.Add("pk1", "Other"); }), "Key is not unique in collection");
    EXPECT_EQ(items.Count(), 1);
    items.Remove("pk1");
    EXPECT_EQ(items.Add("pk1", "Again").Index(), 1);
}

TEST_F(ItemsOfAList, WithoutAKeyAreAsManyAsOneLikes) {
    items.Add("", "One");
    items.Add("", "Two");
    EXPECT_EQ(items.Count(), 2);
    EXPECT_FALSE(items.Has(""));
}

TEST_F(ItemsOfAList, ThatAreNotThereAreErrors) {
    items.Add("a", "Alpha");
    for (const int index : {0, 2, -1}) {
        EXPECT_EQ(DescriptionRaisedBy([&] { items(index); }), "Index out of bounds");
    }
    EXPECT_EQ(NumberRaisedBy([&] { items.Remove(2); }), 35600);
    EXPECT_EQ(NumberRaisedBy([&] { items("A"); }), 35601);
    EXPECT_EQ(DescriptionRaisedBy([&] { items.Remove("b"); }), "Element not found");
    EXPECT_EQ(NumberRaisedBy([&] { list.SelectedItem(); }), 91);
    EXPECT_EQ(NumberRaisedBy([&] { items(1).SubItems(0, "x"); }), 35600);
}

TEST_F(ItemsOfAList, HaveEmptyCellsWhereNothingWasSet) {
    ListItem& item = items.Add("a", "Alpha", 2);
    item.SubItems(3, "Monday");
    EXPECT_EQ(item.SubItems(1), "");
    EXPECT_EQ(item.SubItems(3), "Monday");
    EXPECT_EQ(item.SubItems(9), "");
    EXPECT_EQ(item.Icon, 2);
    EXPECT_EQ(item.SmallIcon, 0);
}

TEST_F(ItemsOfAList, StandElsewhereWhenOneBeforeThemIsRemoved) {
    items.Add("a", "Alpha");
    ListItem& beta = items.Add("b", "Beta");
    ListItem& gamma = items.Add("c", "Gamma");
    items.Remove(1);
    EXPECT_EQ(beta.Index(), 1);
    EXPECT_EQ(gamma.Index(), 2);
    items.Clear();
    EXPECT_EQ(items.Count(), 0);
    EXPECT_FALSE(items.Has("b"));
}

TEST_F(ItemsOfAList, NothingIsSelectedAtFirst) {
    items.Add("a", "Alpha");
    EXPECT_FALSE(list.HasSelection());
}

TEST_F(ItemsOfAList, AreSelectedOneAtATime) {
    ListItem& alpha = items.Add("a", "Alpha");
    ListItem& beta = items.Add("b", "Beta");
    alpha.Selected(true);
    beta.Selected(true);
    EXPECT_FALSE(alpha.Selected());
    EXPECT_EQ(&list.SelectedItem(), &beta);
    alpha.Selected(false);
    EXPECT_TRUE(beta.Selected());
    beta.Selected(false);
    EXPECT_FALSE(list.HasSelection());
}

TEST_F(ItemsOfAList, NothingIsSelectedOnceTheSelectedOneIsRemoved) {
    for (const char* key : {"a", "b", "c"}) {
        items.Add(key, key);
    }
    for (const char* key : {"b", "c", "a"}) {
        items(key).Selected(true);
        items.Remove(key);
        EXPECT_FALSE(list.HasSelection()) << key;
    }
    items.Add("d", "d").Selected(true);
    items.Clear();
    EXPECT_FALSE(list.HasSelection());
}

TEST_F(ItemsOfAList, SelectedStaysSelectedWhileOthersComeAndGo) {
    items.Add("a", "Alpha");
    items.Add("b", "Beta").Selected(true);
    items.Add("c", "Gamma");
    items.Remove("a");
    items.Remove("c");
    EXPECT_EQ(list.SelectedItem().Key, "b");
}

TEST_F(ItemsOfAList, AreSortedByTheirTextsWithoutRegardToCase) {
    for (const char* text : {"beta", "Alpha", "alpha", "Gamma"}) {
        items.Add(std::string("k") + text, text);
    }
    list.Sorted(true);
    EXPECT_THAT(TextsOf(list), ElementsAre("Alpha", "alpha", "beta", "Gamma"));
    EXPECT_EQ(items("kGamma").Index(), 4);
    EXPECT_EQ(items("kbeta").Index(), 3);
}

TEST_F(ItemsOfAList, ComeToTheirPlaceWhileTheListIsSorted) {
    list.Sorted(true);
    items.Add("c", "Gamma");
    items.Add("a", "Alpha");
    EXPECT_EQ(items.Add("b", "beta").Index(), 2);
    items("c").Text("aardvark");
    EXPECT_THAT(TextsOf(list), ElementsAre("aardvark", "Alpha", "beta"));
    list.Sorted(false);
    items.Add("d", "Aaa");
    EXPECT_EQ(items("d").Index(), 4);
}

TEST_F(ItemsOfAList, AreSortedByAnyColumnAndStaySoWhenCellsAreSet) {
    list.SortKey(2);
    list.Sorted(true);
    for (const char* text : {"c", "a", "b"}) {
        items.Add(text, text).SubItems(2, std::string("same"));
    }
    EXPECT_THAT(TextsOf(list), ElementsAre("c", "a", "b"));
    items("b").SubItems(2, "Monday");
    EXPECT_THAT(TextsOf(list), ElementsAre("b", "c", "a"));
    list.SortKey(0);
    EXPECT_THAT(TextsOf(list), ElementsAre("a", "b", "c"));
}

TEST_F(ItemsOfAList, SelectedStaysSelectedWhenTheListIsSorted) {
    items.Add("c", "Gamma").Selected(true);
    items.Add("a", "Alpha");
    list.Sorted(true);
    EXPECT_EQ(items(2).Key, "c");
    EXPECT_TRUE(items("c").Selected());
    EXPECT_EQ(list.SelectedItem().Text(), "Gamma");
}

TEST_F(ItemsOfAList, RemovedByPlaceIsTheOneThatStandsThere) {
    items.Add("c", "Gamma");
    items.Add("a", "Alpha");
    list.Sorted(true);
    items.Remove(1);
    EXPECT_EQ(items(1).Key, "c");
}

TEST_F(ItemsOfAList, HeadingsCountFromOneAndAreCleared) {
    ::ColumnHeaders& headings = list.ColumnHeaders();
    headings.Add("Report Name");
    headings.Add("Frequency");
    EXPECT_EQ(headings.Count(), 2);
    EXPECT_EQ(headings(2), "Frequency");
    EXPECT_EQ(NumberRaisedBy([&] { headings(3); }), 35600);
    headings.Clear();
    EXPECT_EQ(headings.Count(), 0);
    headings.Add("Path");
    EXPECT_EQ(headings(1), "Path");
}
