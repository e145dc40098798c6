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

/// Implementation of Module: the dlopen handle, the module's descriptor and its startup token.
struct Module::Loaded {
    explicit Loaded(std::filesystem::path path) : file(std::move(path)) {}
    Loaded(const Loaded&) = delete;
    Loaded& operator=(const Loaded&) = delete;
    ~Loaded();

    /// Adds a server. False, and nothing is added, if there is one of the same class and name.
    [[nodiscard]] bool add(Server server, ActivateFunc* activate);

    /// Index of a server in `servers`; `servers.size()` if there is none.
    [[nodiscard]] std::size_t find(std::string_view class_name, std::string_view name) const;

    /// The activation function of a server, or null.
    [[nodiscard]] ActivateFunc* activation(std::string_view class_name,
                                           std::string_view name) const;

    std::filesystem::path file;
    void* handle = nullptr;                       ///< from dlopen
    const ModuleDescriptor* descriptor = nullptr; ///< inside the module; null until validated
    void* token = nullptr;                        ///< result of startup; null before it
    std::vector<Server> servers;
    std::vector<ActivateFunc*> activations; ///< one for each server

private:
    using Key = std::pair<std::string, std::string>; ///< class and name
    /// Transparent comparison of keys of std::string and of std::string_view.
    struct KeyOrder {
        using is_transparent = void;
        template <typename First, typename Second>
        bool operator()(const First& a, const Second& b) const
        {
            const int order = std::string_view(a.first).compare(b.first);
            return order < 0 || (order == 0 && std::string_view(a.second) < b.second);
        }
    };
    std::map<Key, std::size_t, KeyOrder> positions_; ///< indices into `servers`
};

} // namespace modeler
