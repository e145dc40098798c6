// SPDX-License-Identifier: MIT
#include "mesh/buffer.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using mesh::Buffer;
using testing::ElementsAre;

std::vector<int> values(const Buffer<int>& buffer) { return {buffer.begin(), buffer.end()}; }

Buffer<int> filled(std::initializer_list<int> list)
{
    Buffer<int> buffer;
    buffer.append(std::vector<int>(list));
    return buffer;
}

TEST(Buffer, StartsEmpty)
{
    const Buffer<int> buffer;
    EXPECT_TRUE(buffer.empty());
    EXPECT_EQ(buffer.size(), 0u);
    EXPECT_EQ(buffer.begin(), buffer.end());
}

TEST(Buffer, ACopyIsOfItsOwn)
{
    Buffer<int> first = filled({1, 2, 3});
    const Buffer<int> second = first;
    first[0] = 9;
    EXPECT_THAT(values(second), ElementsAre(1, 2, 3));
    EXPECT_THAT(values(first), ElementsAre(9, 2, 3));
}

TEST(Buffer, AMoveLeavesNothingBehind)
{
    Buffer<int> first = filled({1, 2});
    Buffer<int> second = std::move(first);
    EXPECT_EQ(first.size(), 0u); // NOLINT(bugprone-use-after-move): what is left is promised
    EXPECT_THAT(values(second), ElementsAre(1, 2));
    first = filled({7});
    second = std::move(first);
    EXPECT_THAT(values(second), ElementsAre(7));
}

TEST(Buffer, AssigningItToItselfKeepsIt)
{
    Buffer<int> buffer = filled({1, 2});
    const Buffer<int>& same = buffer;
    buffer = same;
    EXPECT_THAT(values(buffer), ElementsAre(1, 2));
}

TEST(Buffer, TruncateNeverLengthens)
{
    Buffer<int> buffer = filled({1, 2, 3});
    buffer.truncate(5);
    EXPECT_EQ(buffer.size(), 3u);
    buffer.truncate(1);
    EXPECT_THAT(values(buffer), ElementsAre(1));
}

TEST(Buffer, ReserveChangesNothingThatIsSeen)
{
    Buffer<int> buffer = filled({1, 2, 3});
    buffer.reserve(10'000);
    EXPECT_THAT(values(buffer), ElementsAre(1, 2, 3));
    const int* const place = buffer.data();
    buffer.resize(10'000, 4);
    EXPECT_EQ(buffer.data(), place) << "what was reserved is used";
    EXPECT_EQ(buffer.back(), 4);
}

TEST(Buffer, KeepsItsContentsThroughManyStretches)
{
    constexpr std::size_t count = 3'000'000; // of 4 bytes: many stretches and several blocks
    Buffer<std::uint32_t> single;
    Buffer<std::uint32_t> reserved;
    reserved.reserve(count);
    Buffer<std::uint32_t> extended;
    const std::uint32_t* const block = reserved.data();
    for (std::uint32_t i = 0; i < count; ++i) {
        single.push_back(i);
        reserved.push_back(i);
        if (i % 1000 == 0) {
            std::uint32_t* const room = extended.extend(1000);
            std::iota(room, room + 1000, i);
        }
    }
    EXPECT_EQ(reserved.data(), block) << "what was reserved does not move";
    ASSERT_EQ(single.size(), count);
    ASSERT_EQ(extended.size(), count);
    for (std::uint32_t i = 0; i < count; ++i)
        ASSERT_TRUE(single[i] == i && reserved[i] == i && extended[i] == i) << i;
    const Buffer<std::uint32_t> copy = single;
    EXPECT_TRUE(std::equal(copy.begin(), copy.end(), single.begin(), single.end()));
}

TEST(Buffer, RoomIsWhatCanBeAddedWithoutMoving)
{
    Buffer<int> buffer;
    EXPECT_EQ(buffer.spare_capacity(), 0u);
    buffer.push_back(1);
    const int* const block = buffer.data();
    for (std::size_t left = buffer.spare_capacity(); left > 0; --left) {
        EXPECT_EQ(buffer.spare_capacity(), left);
        buffer.push_back(2);
    }
    EXPECT_EQ(buffer.data(), block);
}

TEST(Buffer, RefusesASizeThatNoMemoryHasAndKeepsItsContents)
{
    Buffer<double> buffer;
    buffer.push_back(1.5);
    EXPECT_THROW(buffer.reserve(static_cast<std::size_t>(-1) / 4), std::bad_alloc);
    ASSERT_EQ(buffer.size(), 1u);
    EXPECT_EQ(buffer[0], 1.5);
}

RC_GTEST_PROP(BufferLaw, BehavesAsAVector, ())
{
    Buffer<int> buffer;
    std::vector<int> model;
    const auto steps = *rc::gen::container<std::vector<std::pair<int, std::vector<int>>>>(
        rc::gen::pair(rc::gen::inRange(0, 6), rc::gen::arbitrary<std::vector<int>>()));
    for (const auto& [kind, run] : steps) {
        const std::size_t at = model.empty() ? 0 : run.size() * 7 % (model.size() + 1);
        switch (kind) {
        case 0:
            buffer.push_back(static_cast<int>(run.size()));
            model.push_back(static_cast<int>(run.size()));
            break;
        case 1:
            buffer.append(run);
            model.insert(model.end(), run.begin(), run.end());
            break;
        case 2:
            buffer.insert(at, run);
            model.insert(model.begin() + static_cast<std::ptrdiff_t>(at), run.begin(), run.end());
            break;
        case 3: {
            const std::size_t count = std::min(run.size(), model.size() - at);
            buffer.erase(at, count);
            const auto first = model.begin() + static_cast<std::ptrdiff_t>(at);
            model.erase(first, first + static_cast<std::ptrdiff_t>(count));
            break;
        }
        case 4:
            buffer.resize(at + run.size(), -1);
            model.resize(at + run.size(), -1);
            break;
        default:
            buffer.truncate(at);
            model.resize(at);
            break;
        }
        RC_ASSERT(values(buffer) == model);
    }
}

} // namespace
