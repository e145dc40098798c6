// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "modeler/model_size.h"
#include "modeler/modeler.h"
#include "settings/form_filling.h"

namespace cli {

/// Inputs and results of a run.
struct ScatterReport {
    struct Input {
        std::string name;
        std::size_t layers = 0;
        std::size_t points = 0;
        std::size_t polygons = 0;
    };
    /// Wall-clock seconds.
    struct Seconds {
        double read = 0.0;
        double scatter = 0.0;
        double write = 0.0;
        double picture = 0.0;
    };

    std::vector<Input> inputs;
    std::uint64_t clone_points = 0; ///< points of one clone if it has several models, otherwise 0
    std::optional<modeler::SizeMismatch> size_mismatch;
    std::string output;
    std::string picture;   ///< picture file; empty: none
    std::string own_layer; ///< name of the new layer for the clones; empty: none
    std::filesystem::path module;
    std::int64_t clock = 0;
    std::vector<settings::UsedSetting> settings;
    std::int64_t clones = 0;
    modeler::RunResult result;
    Seconds seconds;
};

/// The report as one line of text.
[[nodiscard]] std::string summary_line(const ScatterReport& report);

/// The report as JSON. Its settings can be saved as a settings file.
[[nodiscard]] std::string summary_json(const ScatterReport& report,
                                       std::span<const std::string> warnings);

} // namespace cli
