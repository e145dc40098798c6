// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mesh/surface_look.h"
#include "modeler/modeler.h"
#include "modeler/module.h"

namespace desktop {

/// The scene of a window: one document with the layers of all loaded files, the module, and the
/// state for saving. Independent of widgets.
class Workspace {
public:
    [[nodiscard]] const modeler::Modeler& session() const noexcept { return session_; }
    [[nodiscard]] modeler::Modeler& session() noexcept { return session_; }

    /// Loads the module and fixes its clock (see settings::fix_clock).
    /// @throws modeler::ModuleError, std::runtime_error
    void load_module(const std::filesystem::path& file);
    /// Loads the program's own module (see modeler::module_search_paths).
    void load_module();
    [[nodiscard]] modeler::Module* module() noexcept { return module_ ? &*module_ : nullptr; }
    /// The module's clock in seconds, its random seed; empty without a module.
    [[nodiscard]] const std::string& clock() const noexcept { return clock_; }

    /// A file that was read but not yet added to the scene.
    struct ReadFile {
        std::filesystem::path path;
        mesh::Document document;
        std::vector<std::string> warnings;
    };
    /// Reads a file. Thread-safe.
    /// @throws formats::FormatError, formats::FileError, std::bad_alloc
    [[nodiscard]] static ReadFile read(const std::filesystem::path& path);

    /// Replaces the scene by the file's layers. Their roles: hidden if the file says so, `shown` if
    /// they contain only clones (so that clones are not placed on clones), otherwise foreground.
    /// @throws std::bad_alloc; the scene is then unchanged
    void begin(ReadFile file, std::vector<std::string>& warnings);
    /// Replaces the scene by a recovered one with these roles. The scene counts as modified.
    /// @throws std::bad_alloc; the scene is then unchanged
    void begin_kept(ReadFile file, const std::vector<modeler::LayerRole>& roles);
    /// Appends the file's layers as background; calls `begin` if the scene is empty. Clears the
    /// undo history.
    /// @throws formats::LimitError, std::bad_alloc; the scene and its history are then unchanged
    void add(ReadFile file, std::vector<std::string>& warnings);
    /// Removes all layers. @throws std::bad_alloc; the scene is then unchanged
    void clear();
    [[nodiscard]] bool empty() const noexcept { return session_.document().layers.empty(); }

    /// Writes all layers or, with `foreground_only`, the foreground layers and the `shown` layers
    /// of clones. May be called on any thread while the document is not changed.
    /// @throws formats::LimitError, formats::FileError, std::bad_alloc
    void write(const std::filesystem::path& path, bool foreground_only) const;
    /// Records that the current scene was saved to this file.
    void saved_as(const std::filesystem::path& path);
    /// The file for "Save"; empty if the scene has several files or none.
    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
    /// The title of the scene: the name of its file or files.
    [[nodiscard]] std::string title() const;
    /// Suggests a file for a save dialog that is not a file of the scene: the name of the ground,
    /// `written` (such as "-with-clones"), and `ending` (such as ".lwo").
    [[nodiscard]] std::filesystem::path suggested_file(const std::filesystem::path& folder,
                                                       std::string_view written,
                                                       std::string_view ending) const;
    /// The file of the scene that this path refers to (see formats::FileIdentity); empty: none.
    [[nodiscard]] std::filesystem::path open_file_at(const std::filesystem::path& path) const;
    /// The file that a layer was read from; empty for a layer created by a run.
    [[nodiscard]] const std::filesystem::path& file_of(std::size_t layer) const noexcept
    {
        static const std::filesystem::path none;
        return layer < layer_files_.size() ? layer_files_[layer] : none;
    }
    /// Display name of a layer for messages.
    [[nodiscard]] std::string layer_title(std::size_t layer) const;
    /// Names of the models, in the order of the background layers: file names, or layer names if
    /// the ground is in the same file.
    [[nodiscard]] std::vector<std::string> models() const;
    /// A unique name for a new layer with clones of the background.
    [[nodiscard]] std::string clone_layer_name() const;

    /// Whether there are unsaved edits. Loading several files is not an edit.
    [[nodiscard]] bool modified() const noexcept { return session_.state() != saved_state_; }
    /// Counts a run that changed the document.
    void note_run() noexcept { ++runs_; }
    /// Number of runs that changed the document.
    [[nodiscard]] int runs() const noexcept { return runs_; }

    [[nodiscard]] const std::vector<mesh::SurfaceLook>& looks() const noexcept { return looks_; }

private:
    [[nodiscard]] bool shares_file_with_ground(std::size_t layer) const;
    void take_over(std::filesystem::path path, std::vector<std::filesystem::path> files,
                   std::vector<std::filesystem::path> layer_files) noexcept;

    modeler::Modeler session_;
    std::optional<modeler::Module> module_;
    std::string clock_;
    std::filesystem::path path_;
    std::vector<std::filesystem::path> files_;
    std::vector<std::filesystem::path> layer_files_;
    std::vector<mesh::SurfaceLook> looks_;
    int runs_ = 0;
    std::uint64_t saved_state_ = 0; ///< revision of the session when it was saved
};

} // namespace desktop
