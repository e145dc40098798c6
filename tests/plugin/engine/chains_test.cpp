// SPDX-License-Identifier: MIT
#include "plugin/engine/IDs_typ.h"
#include "plugin/engine/UV_typ.h"
#include "plugin/engine/clone.h"
#include "plugin/engine/index/node_memory.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/weights/LW6-weight.h"
#include "tests/plugin/module_test.h"
#include "tests/support/allocations.h"

namespace dastrel {
namespace {

constexpr int a_million = 1000000;

/// Releases a chain of a million nodes by its head. One stack frame for each node would overflow
/// the stack.
template <typename Node> void release_a_million()
{
    support::reset_allocations();
    {
        const support::ModuleSide module_side;
        Node* const head = new Node;
        Node* last = head;
        for (int i = 1; i < a_million; ++i) {
            last->next = new Node;
            last = last->next;
        }
        delete head;
        release_node_memory(); // of the nodes that come from large blocks
    }
    EXPECT_GT(support::allocations().made, 0U);
    EXPECT_EQ(support::allocations().freed, support::allocations().made);
}

TEST(Chains, OfAMillionPointsAreReleased) { release_a_million<IDs_typ>(); }

TEST(Chains, OfAMillionMapNamesAreReleased) { release_a_million<UV_typ>(); }

TEST(Chains, OfAMillionWeightMapNamesAreReleased) { release_a_million<weight_map::WG_typ>(); }

TEST(Chains, OfAMillionPositionsAreReleased)
{
    reset_module();
    par.clone_num = a_million;
    support::reset_allocations();
    {
        const support::ModuleSide module_side;
        for (int i = a_million; i > 0; --i)
            add_item(XYZ6_typ(i)); // each before all others
        free_memory();
    }
    EXPECT_GT(support::allocations().made, 0U);
    EXPECT_EQ(support::allocations().freed, support::allocations().made);
    EXPECT_EQ(pos_list, nullptr);
    reset_module();
}

TEST(Chains, NeverReleaseTheNamesTheyHold)
{
    static const char name[] = "Grass";
    auto* const list = new UV_typ;
    list->name = name;
    delete list;
    EXPECT_STREQ(name, "Grass");
}

TEST(Chains, AReaderReleasesItsNames)
{
    support::reset_allocations();
    {
        const support::ModuleSide module_side;
        weight_map reader(nullptr);
        reader.head = new weight_map::WG_typ;
        reader.head->next = new weight_map::WG_typ;
    }
    EXPECT_EQ(support::allocations().freed, 2U);
}

} // namespace
} // namespace dastrel
