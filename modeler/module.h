// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace modeler {

/// One command of a module.
struct Server {
    std::string class_name;       ///< kind of server, such as "MeshDataEdit"
    std::string name;             ///< internal name, unique within the class
    std::string user_name;        ///< for lists and titles; defaults to `name`
    std::string button_name;      ///< for buttons; defaults to `user_name`
    std::string enable_condition; ///< such as "pol"; empty: always enabled
};

/// A loaded module file. Movable, not copyable. The destructor shuts the module down and unloads
/// it. If one file is loaded twice at the same time, both objects share the module's global
/// variables (as with dlopen).
class Module {
public:
    /// Opens the file, checks its descriptor, starts the module, and lists its servers.
    /// @throws ModuleError with the step that failed and, for a mismatch, both values; the file is
    /// then unloaded again.
    [[nodiscard]] static Module load(const std::filesystem::path& file);

    Module(Module&&) noexcept;
    Module& operator=(Module&&) noexcept;
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    ~Module();

    [[nodiscard]] const std::filesystem::path& file() const noexcept;
    /// All servers in the order of the module; at least one.
    [[nodiscard]] const std::vector<Server>& servers() const noexcept;
    /// The server of this class and name, or null.
    [[nodiscard]] const Server* find(std::string_view class_name, std::string_view name) const;

private:
    friend class Modeler;
    struct Loaded;
    explicit Module(std::unique_ptr<Loaded> loaded) noexcept;

    std::unique_ptr<Loaded> loaded_;
};

} // namespace modeler
