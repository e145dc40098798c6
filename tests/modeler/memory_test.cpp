// SPDX-License-Identifier: MIT
// Memory that ends inside the host. Each run goes on in a process of its own, whose memory is
// limited to little more than it has.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include <sys/resource.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "modeler/errors.h"
#include "tests/modeler/session.h"
#include "tests/support/mesh_compare.h"
#include "tests/support/sanitizers.h"

namespace {

#ifndef ADDRESS_SANITIZER // it reserves more addresses than any limit

void leave(std::size_t bytes)
{
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t most = pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + bytes;
    const rlimit limit{most, most};
    if (setrlimit(RLIMIT_AS, &limit) != 0)
        std::abort();
}

/// Runs a command that calls `work` over and over until it answers false, and finishes the edit
/// with 0. Ends the process: 0 when the run was reported and the document is as it was.
template <typename Work> [[noreturn]] void run_out(const char* operation, Work work)
{
    modeler::Modeler host = session::sample_host();
    int status = 1;
    try {
        session::run(host, [&](GlobalFunc*, MeshEditBegin* begin) {
            MeshEditOp* const op = begin(0, 0, OPSEL_USER);
            leave(std::size_t{16} << 20);
            while (work(op))
                continue;
            const double position[3] = {0, 0, 0};
            if (op->addPoint(op->state, position) != nullptr)
                std::_Exit(2); // an edit that has failed takes no more
            op->done(op->state, EDERR_NONE, 0);
            return 0;
        });
        status = 3;
    } catch (const modeler::ModuleError& error) {
        const std::string what = error.what();
        status = what.find(operation) != std::string::npos &&
                         what.find("nothing was changed") != std::string::npos
                     ? 0
                     : 4;
        std::fprintf(stderr, "%s\n", error.what());
    }
    if (support::first_difference(host.document(), session::sample_document()) != "")
        status = 5;
    std::_Exit(status);
}

TEST(MemoryDeathTest, ThatEndsInAddPointDropsTheEdit)
{
    EXPECT_EXIT(run_out("addPoint",
                        [](MeshEditOp* op) {
                            const double position[3] = {1, 2, 3};
                            return op->addPoint(op->state, position) != nullptr;
                        }),
                testing::ExitedWithCode(0), "mesh edit: addPoint: memory ended");
}

TEST(MemoryDeathTest, ThatEndsInAddPolyDropsTheEdit)
{
    EXPECT_EXIT(run_out("addPoly",
                        [like = LWPolID{}](MeshEditOp* op) mutable {
                            if (like == nullptr)
                                like = session::scanned_polygons(op, OPLYR_BG)[0];
                            return op->addPoly(op->state, LWPOLTYPE_FACE, like, nullptr, 0,
                                               nullptr) != nullptr;
                        }),
                testing::ExitedWithCode(0), "mesh edit: addPoly: memory ended");
}

TEST(MemoryDeathTest, ThatEndsInPntVMapDropsTheEdit)
{
    EXPECT_EXIT(run_out("pntVMap",
                        [point = LWPntID{}, number = 0](MeshEditOp* op) mutable {
                            if (point == nullptr)
                                point = session::scanned_points(
                                    op, session::scanned_polygons(op, OPLYR_FG)[0])[0];
                            const std::string name = "Map" + std::to_string(number++);
                            const float value = 1.0f;
                            return op->pntVMap(op->state, point, LWVMAP_WGHT, name.c_str(), 1,
                                               &value) == EDERR_NONE;
                        }),
                testing::ExitedWithCode(0), "mesh edit: pntVMap: memory ended");
}

#else

TEST(Memory, CannotBeLimitedUnderThisSanitizer) { GTEST_SKIP(); }

#endif

} // namespace
