// SPDX-License-Identifier: MIT
/// What the tests of the module share: its globals as they are after loading, a host, and short
/// ways to say things.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugin/host/run_state.h"
#include "plugin/random/LW6-random2.h"
#include "plugin/settings/params.h"
#include "tests/support/recording_host.h"

namespace dastrel {

using support::RecordingHost;
using support::Side;
using Lines = std::vector<std::string>;

/// Releases what a run or a test left and puts every global to its value after loading; the run's
/// sampler starts at `sampler_seed`.
void reset_module(unsigned sampler_seed = 1);

/// Settings that copy as things are: no variation, no rotation, no alignment.
[[nodiscard]] params_typ still();

/// Copies every setting into `par`.
void use(const params_typ& settings);

/// A test with a fresh module and a host of its own. The services and the edit are connected to
/// the host as a run connects them, so that parts of a run can be called alone.
class ModuleTest : public testing::Test {
protected:
    ModuleTest();
    ~ModuleTest() override;

    /// Runs the command, on the module's side of the allocation count.
    int run();

    /// A unit square on the ground whose corner nearest to the origin is (x, 0, z).
    int add_ground(double x = 0.0, double z = 0.0);
    /// A triangle in the background with corners (1,0,0), (0,2,0), (0,0,4).
    int add_model();

    /// Runs the scan of the ground as a run does, with the settings of `par`.
    void scan();

    RecordingHost host;
};

/// Expects that nothing is left of what a run holds.
void expect_run_state_released();

/// The nodes of `pos_list` from its head on.
[[nodiscard]] std::vector<const pos_typ*> positions();

/// How many outputs the sampler has given since it stood at `seed`, found by repeating them.
[[nodiscard]] int draws_since(unsigned seed, const random& sampler);

/// A text for a vector, to the last bit.
[[nodiscard]] std::string text(XYZ6_typ v);

/// Expects the components of `actual` within `tolerance` of those given.
void expect_near(XYZ6_typ actual, double x, double y, double z, double tolerance = 1e-12);
/// Expects the same components, -0.0 counting as 0.0.
void expect_equal(XYZ6_typ actual, double x, double y, double z);

} // namespace dastrel
