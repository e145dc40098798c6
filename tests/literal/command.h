// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "tests/literal/clone_copy.h"
#include "tests/literal/kernel/sampler.h"
#include "tests/literal/scene.h"

namespace literal {

/// The scatter command in its plainest form: what the real module does, written as lists and loops
/// that follow the rules one by one. An object is one loading of the module; its runs share the
/// settings, the sampler and the numbers that one run leaves to the next.
class Command {
public:
    /// Loads the command at a calendar time in seconds, which seeds its sampler.
    explicit Command(std::int64_t clock_seconds) : sampler_(clock_seconds) {}

    /// What the panel shows at the start of the next run.
    [[nodiscard]] const Settings& panel() const { return settings_; }

    /// Runs once. `confirmed` holds the settings at the panel's OK and is empty for Cancel. The
    /// indices of the scene must be in range and its faces have fewer than 65,536 points.
    [[nodiscard]] Result run(const Scene& scene, const std::optional<Settings>& confirmed);

private:
    Settings settings_;
    Sampler sampler_;
    CloneDraws draws_;
};

} // namespace literal
