// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <utility>
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

    /// Adds a server. False, and nothing is added, when there is one of its class and name.
    [[nodiscard]] bool add(Server server, ActivateFunc* activate);

    /// Position of a server in `servers`; their number when there is no such server.
    [[nodiscard]] std::size_t find(std::string_view class_name, std::string_view name) const;

    /// The activation function of a server, or null.
    [[nodiscard]] ActivateFunc* activation(std::string_view class_name,
                                           std::string_view name) const;

    std::filesystem::path file;
    void* handle = nullptr;                       ///< of the dynamic loader
    const ModuleDescriptor* descriptor = nullptr; ///< in the module; null until it was checked
    void* token = nullptr;                        ///< null until the module was started
    std::vector<Server> servers;
    std::vector<ActivateFunc*> activations; ///< one for each server

private:
    using Key = std::pair<std::string, std::string>; ///< class and name
    /// Compares with keys that hold their texts and with keys that only refer to them.
    struct KeyOrder {
        using is_transparent = void;
        template <typename First, typename Second>
        bool operator()(const First& a, const Second& b) const
        {
            const int order = std::string_view(a.first).compare(b.first);
            return order < 0 || (order == 0 && std::string_view(a.second) < b.second);
        }
    };
    std::map<Key, std::size_t, KeyOrder> positions_; ///< of the servers, by class and name
};

} // namespace modeler
