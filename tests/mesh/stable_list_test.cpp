// SPDX-License-Identifier: MIT
#include "mesh/stable_list.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Texts = mesh::StableList<std::string>;

Texts numbered(int count)
{
    Texts texts;
    for (int i = 0; i < count; ++i)
        texts.push_back(std::to_string(i));
    return texts;
}

std::vector<std::string> all(const Texts& texts) { return {texts.begin(), texts.end()}; }

TEST(StableList, HoldsWhatWasAddedInItsOrder)
{
    for (const int count : {0, 1, 2, 3, 4, 5, 8, 9, 100}) {
        const Texts texts = numbered(count);
        EXPECT_EQ(texts.size(), static_cast<std::size_t>(count));
        EXPECT_EQ(texts.empty(), count == 0);
        for (int i = 0; i < count; ++i)
            EXPECT_EQ(texts[static_cast<std::size_t>(i)], std::to_string(i));
    }
}

TEST(StableList, MovesNoElementAsItGrows)
{
    Texts texts;
    std::vector<const std::string*> places;
    for (int i = 0; i < 100; ++i)
        places.push_back(&texts.emplace_back(std::to_string(i)));
    for (std::size_t i = 0; i < places.size(); ++i)
        EXPECT_EQ(&texts[i], places[i]);
}

TEST(StableList, CanBeShortenedAndLengthenedAnywhere)
{
    for (const std::size_t left : {0u, 1u, 2u, 3u, 7u, 8u, 9u, 19u, 20u}) {
        Texts texts = numbered(20);
        texts.truncate(left);
        ASSERT_EQ(texts.size(), left);
        texts.push_back("new");
        texts.resize(left + 3);
        EXPECT_EQ(texts[left], "new");
        EXPECT_EQ(texts.back(), "");
        if (left > 0) {
            EXPECT_EQ(texts.front(), "0");
            EXPECT_EQ(texts[left - 1], std::to_string(left - 1));
        }
    }
}

TEST(StableList, IsCopiedWholeAndMovedEmpty)
{
    Texts texts = numbered(5);
    Texts copy = texts;
    copy[0] = "other";
    EXPECT_EQ(all(texts), all(numbered(5)));
    Texts moved = std::move(copy);
    EXPECT_EQ(moved[0], "other");
    texts = std::move(moved);
    EXPECT_EQ(texts[0], "other");
    EXPECT_EQ(texts.size(), 5u);
}

TEST(StableList, IsSearchedAndSortedLikeAnArray)
{
    Texts texts = numbered(9);
    std::reverse(texts.begin(), texts.end());
    EXPECT_EQ(texts.front(), "8");
    const auto found = std::find(texts.begin(), texts.end(), "3");
    EXPECT_EQ(found - texts.begin(), 5);
    EXPECT_EQ(found[1], "2");
    const Texts::const_iterator same = found;
    EXPECT_EQ(same->size(), 1u);
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ(all(texts), all(numbered(9)));
}

TEST(StableList, HoldsWhatCannotBeCopied)
{
    mesh::StableList<std::unique_ptr<int>> list;
    list.push_back(std::make_unique<int>(1));
    list.emplace_back(std::make_unique<int>(2));
    EXPECT_EQ(*list.back(), 2);
    list.pop_back();
    EXPECT_EQ(*list.back(), 1);
}

} // namespace
