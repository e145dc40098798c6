// SPDX-License-Identifier: MIT
#include "mesh/tags.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using mesh::no_tag;
using mesh::TagList;

TEST(TagList, InternsEachTextOnce)
{
    TagList tags;
    EXPECT_EQ(tags.intern("Grass"), 0u);
    EXPECT_EQ(tags.intern(""), 1u);
    EXPECT_EQ(tags.intern("Grass"), 0u);
    EXPECT_EQ(tags.size(), 2u);
    EXPECT_EQ(tags[0], "Grass");
    EXPECT_EQ(tags[1], "");
}

TEST(TagList, AppendsWhatIsThereAlreadyAndFindsTheFirst)
{
    TagList tags;
    EXPECT_EQ(tags.append("A"), 0u);
    EXPECT_EQ(tags.append("A"), 1u);
    EXPECT_EQ(tags.find("A"), 0u);
    EXPECT_EQ(tags.find("a"), no_tag);
}

TEST(TagList, MovingKeepsWhatItFinds)
{
    TagList first;
    first.append("short");
    first.append(std::string(100, 'x'));
    TagList second = std::move(first);
    EXPECT_EQ(second.find("short"), 0u);
    EXPECT_EQ(second.find(std::string(100, 'x')), 1u);
    TagList third;
    third = std::move(second);
    EXPECT_EQ(third.find("short"), 0u);
}

TEST(TagList, TruncatingForgetsTheLaterTextsOnly)
{
    TagList tags;
    tags.append("A");
    tags.append("B");
    tags.append("A");
    tags.append("C");
    tags.truncate(9);
    EXPECT_EQ(tags.size(), 4u);
    tags.truncate(2);
    EXPECT_EQ(tags.size(), 2u);
    EXPECT_EQ(tags.find("A"), 0u) << "the first A is still there";
    EXPECT_EQ(tags.find("B"), 1u);
    EXPECT_EQ(tags.find("C"), no_tag);
    EXPECT_EQ(tags.intern("C"), 2u);
}

RC_GTEST_PROP(TagListLaw, FindsTheLowestNumberOfEveryText, (const std::vector<std::string>& texts))
{
    TagList tags;
    for (const std::string& text : texts)
        tags.append(text);
    const auto kept = *rc::gen::inRange<std::size_t>(0, texts.size() + 1);
    tags.truncate(kept);
    RC_ASSERT(tags.size() == kept);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        std::size_t first = 0;
        while (texts[first] != texts[i])
            ++first;
        RC_ASSERT(tags.find(texts[i]) ==
                  (first < kept ? static_cast<mesh::TagIndex>(first) : no_tag));
        if (i < kept)
            RC_ASSERT(tags[static_cast<mesh::TagIndex>(i)] == texts[i]);
    }
}

} // namespace
