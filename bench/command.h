// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "mesh/layer.h"
#include "modeler/modeler.h"
#include "modeler/module.h"

namespace bench {

/// The whole command on a ground and a model: a module, loaded as every host loads it, and a
/// session of the Modeler.
class Command {
public:
    Command(const std::filesystem::path& module, mesh::Layer ground, mesh::Layer model);
    /// With a model of several layers.
    Command(const std::filesystem::path& module, mesh::Layer ground,
            std::vector<mesh::Layer> model);

    /// Runs it once with settings in the form of a settings file, and stays with the result.
    /// @throws std::runtime_error when the command refused.
    modeler::RunResult run(const std::string& settings);

    /// Takes the last run back.
    void undo() { session_.undo(); }

    [[nodiscard]] const mesh::Document& document() const { return session_.document(); }
    [[nodiscard]] mesh::Document release() { return session_.release(); }

private:
    modeler::Module module_;
    modeler::Modeler session_;
};

} // namespace bench
