// SPDX-License-Identifier: MIT
// Every allocation of a run with a layer of its own, of its undo and of its redo fails once.
#include <new>

#include <gtest/gtest.h>

#include "modeler/errors.h"
#include "tests/modeler/session.h"
#include "tests/support/failing_memory.h"
#include "tests/support/mesh_compare.h"

namespace {

using session::sample_host;
using support::FailingMemory;
using support::first_difference;

const modeler::RunOptions own_layer{"clones"};

int add_triangle(GlobalFunc*, MeshEditBegin* begin)
{
    MeshEditOp* const op = begin(0, 0, OPSEL_USER);
    if (op == nullptr)
        return 1;
    LWPntID points[3] = {};
    for (int i = 0; i < 3; ++i) {
        const double position[3] = {double(i), 1.0, 2.0};
        points[i] = op->addPoint(op->state, position);
        const float value[3] = {1.0f, 2.0f, 3.0f};
        if (points[i] != nullptr)
            op->pntVMap(op->state, points[i], LWVMAP_WGHT, "Fresh", 1, value);
    }
    op->addPoly(op->state, LWPOLTYPE_FACE, nullptr, "Leaf", 3, points);
    op->done(op->state, EDERR_NONE, 0);
    return 0;
}

/// Does `change` on hosts that `prepare` made, with another allocation failing each time, until all
/// were tried. A change that fails must have changed nothing.
template <typename Prepare, typename Change> void fail_each(Prepare prepare, Change change)
{
    std::size_t failures = 0;
    for (std::size_t number = 1;; ++number) {
        modeler::Modeler host = sample_host();
        prepare(host);
        const mesh::Document before = support::copy_of(host.document());
        const std::vector<modeler::LayerRole> roles = host.roles();
        const std::size_t undo_steps = host.undo_steps();
        const std::size_t redo_steps = host.redo_steps();
        bool refused = false;
        bool failed = false;
        {
            const FailingMemory memory(number);
            try {
                change(host);
            } catch (const std::bad_alloc&) {
                refused = true;
            } catch (const modeler::ModuleError&) {
                refused = true;
            }
            failed = memory.failed();
        }
        ASSERT_EQ(host.roles().size(), host.document().layers.size()) << number;
        if (refused) {
            ++failures;
            ASSERT_EQ(first_difference(host.document(), before), "") << number;
            ASSERT_EQ(host.roles(), roles) << number;
            ASSERT_EQ(host.undo_steps(), undo_steps) << number;
            ASSERT_EQ(host.redo_steps(), redo_steps) << number;
        }
        if (!failed)
            break;
    }
    EXPECT_GT(failures, 0u);
}

void run_once(modeler::Modeler& host)
{
    session::LoggingFrontEnd front_end;
    session::run(host, front_end, add_triangle, own_layer);
}

TEST(OwnLayerMemory, ThatEndsInTheRun)
{
    // The module is loaded once before: what a loader allocates is not the run's.
    modeler::Module module = modeler::Module::load(session::module_file("script"));
    fail_each([](modeler::Modeler&) {}, run_once);
}

TEST(OwnLayerMemory, ThatEndsInUndo)
{
    fail_each(run_once, [](modeler::Modeler& host) { host.undo(); });
}

TEST(OwnLayerMemory, ThatEndsInRedo)
{
    fail_each(
        [](modeler::Modeler& host) {
            run_once(host);
            host.undo();
        },
        [](modeler::Modeler& host) { host.redo(); });
}

} // namespace
