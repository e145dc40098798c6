// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "hostapi/module.h"
#include "modeler/module.h"

namespace modeler {

/// What stands behind a Module: the open file, its descriptor and its token.
struct Module::Loaded {
    explicit Loaded(std::filesystem::path path) : file(std::move(path)) {}
    Loaded(const Loaded&) = delete;
    Loaded& operator=(const Loaded&) = delete;
    ~Loaded();

    /// The activation function of a server, or null.
    [[nodiscard]] ActivateFunc* activation(std::string_view class_name,
                                           std::string_view name) const;

    std::filesystem::path file;
    void* handle = nullptr;                       ///< of the dynamic loader
    const ModuleDescriptor* descriptor = nullptr; ///< in the module; null until it was checked
    void* token = nullptr;                        ///< null until the module was started
    std::vector<Server> servers;
    std::vector<ActivateFunc*> activations; ///< one for each server
};

} // namespace modeler
