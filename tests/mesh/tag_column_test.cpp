// SPDX-License-Identifier: MIT
#include "mesh/tag_column.h"

#include <map>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using mesh::no_tag;
using mesh::TagColumn;

using Model = std::map<std::size_t, mesh::TagIndex>;

constexpr mesh::FourCC part = mesh::fourcc("PART");
constexpr std::size_t polygons = 2000;

void check_equal(const TagColumn& column, const Model& model)
{
    for (std::size_t polygon = 0; polygon < polygons; ++polygon) {
        const auto expected = model.find(polygon);
        RC_ASSERT(column[polygon] == (expected == model.end() ? no_tag : expected->second));
    }
    const auto begin = *rc::gen::inRange<std::size_t>(0, polygons);
    const auto end = *rc::gen::inRange<std::size_t>(begin, polygons + 1);
    std::vector<std::pair<std::size_t, mesh::TagIndex>> found;
    column.for_each_in(begin, end,
                       [&](std::size_t at, mesh::TagIndex tag) { found.emplace_back(at, tag); });
    const std::vector<std::pair<std::size_t, mesh::TagIndex>> expected(model.lower_bound(begin),
                                                                       model.lower_bound(end));
    RC_ASSERT(found == expected);
    RC_ASSERT(column.any_in(begin, end) == !expected.empty());
}

RC_GTEST_PROP(TagColumn, TellsWhatWasSetHoweverSpread, ())
{
    TagColumn column(part);
    Model model;
    const int steps = *rc::gen::inRange(0, 200);
    const auto reach = *rc::gen::element<std::size_t>(10, 100, polygons);
    for (int step = 0; step < steps; ++step) {
        const auto polygon = *rc::gen::inRange<std::size_t>(0, reach);
        const auto tag = *rc::gen::inRange<mesh::TagIndex>(0, 5);
        if (*rc::gen::inRange(0, 50) == 0) {
            column.truncate(polygon);
            model.erase(model.lower_bound(polygon), model.end());
        } else {
            column.set(polygon, tag);
            model[polygon] = tag;
        }
    }
    check_equal(column, model);
    column.change_each([](mesh::TagIndex tag) { return tag + 10; });
    for (auto& [polygon, tag] : model)
        tag += 10;
    check_equal(column, model);
}

TEST(TagColumn, TakesTagsInAnyOrderInTimeThatGrowsWithThem)
{
    // an insertion that moved what follows would take minutes
    TagColumn column(part);
    constexpr mesh::TagIndex many = 300000;
    for (mesh::TagIndex i = 0; i < many; ++i)
        column.set(many - i, i);
    for (mesh::TagIndex i = 0; i < many; ++i)
        ASSERT_EQ(column[many - i], i);
}

} // namespace
