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
    std::string user_name;        ///< for lists and titles; the name where the module gives none
    std::string button_name;      ///< for buttons; the user name where the module gives none
    std::string enable_condition; ///< such as "pol"; empty: none
};

/// A loaded module file. It can be moved, not copied; its destructor ends the module's life and
/// unloads it. One file loaded twice at the same time is one module to the system: both share its
/// variables.
class Module {
public:
    /// Opens the file, checks its descriptor, starts it, and lists its servers.
    /// @throws ModuleError naming the first step that fails and, where words differ, both values;
    /// the file is then unloaded again.
    [[nodiscard]] static Module load(const std::filesystem::path& file);

    Module(Module&&) noexcept;
    Module& operator=(Module&&) noexcept;
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    ~Module();

    [[nodiscard]] const std::filesystem::path& file() const noexcept;
    /// In the module's order; at least one.
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
