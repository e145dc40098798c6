// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "mesh/surface_look.h"
#include "modeler/modeler.h"
#include "modeler/module.h"

namespace desktop {

/// The scene of a window: one document made of the layers of its files, with the module that works
/// on it, and what the window has to know about saving. Knows no widgets.
class Workspace {
public:
    [[nodiscard]] const modeler::Modeler& session() const noexcept { return session_; }
    [[nodiscard]] modeler::Modeler& session() noexcept { return session_; }

    /// Loads the module, its clock fixed by the environment or, for good, by the calendar now.
    /// @throws modeler::ModuleError, std::runtime_error
    void load_module(const std::filesystem::path& file);
    /// The same with the module that belongs to the program.
    void load_module();
    [[nodiscard]] modeler::Module* module() noexcept { return module_ ? &*module_ : nullptr; }
    /// Seconds from which the module's sampler started; empty without a module.
    [[nodiscard]] const std::string& clock() const noexcept { return clock_; }

    /// A file that was read and has no place in the scene yet.
    struct ReadFile {
        std::filesystem::path path;
        mesh::Document document;
        std::vector<std::string> warnings;
    };
    /// Reads a file; may be called on any thread.
    /// @throws formats::FormatError, formats::FileError, std::bad_alloc
    [[nodiscard]] static ReadFile read(const std::filesystem::path& path);

    /// Adds the file's layers behind those that are there. Layers of the first file are foreground
    /// (hidden where the file says so), layers of all others background. Undo ends here.
    /// @throws formats::LimitError; the scene is then as it was, without undo
    void add(ReadFile file, std::vector<std::string>& warnings);
    /// Empties the scene.
    void clear();
    [[nodiscard]] bool empty() const noexcept { return session_.document().layers.empty(); }

    /// Writes all layers, or those of the foreground alone, as the command line writes the ground.
    /// May be called on any thread while nobody changes the document.
    /// @throws formats::LimitError, formats::FileError, std::bad_alloc
    void write(const std::filesystem::path& path, bool foreground_only) const;
    /// The scene as it is now stands in this file.
    void saved_as(const std::filesystem::path& path);
    /// The file that "Save" writes; empty when the scene has several files, or none yet.
    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
    /// A name for titles: of the file, or of all that came together.
    [[nodiscard]] std::string title() const;
    /// The file that a layer came from.
    [[nodiscard]] const std::filesystem::path& file_of(std::size_t layer) const
    {
        return layer_files_[layer];
    }

    [[nodiscard]] bool modified() const noexcept { return state_ != saved_state_; }
    /// To be called after a run: notes its edits.
    void note_edits();
    /// @throws std::bad_alloc
    void undo();
    void redo();
    /// Runs of this window so far that changed the document.
    [[nodiscard]] int runs() const noexcept { return runs_; }

    [[nodiscard]] const std::vector<mesh::SurfaceLook>& looks() const noexcept { return looks_; }

private:
    void renew_looks();

    modeler::Modeler session_;
    std::optional<modeler::Module> module_;
    std::string clock_;
    std::filesystem::path path_;
    std::vector<std::filesystem::path> files_;
    std::vector<std::filesystem::path> layer_files_;
    std::vector<mesh::SurfaceLook> looks_;
    int runs_ = 0;
    // States of the document are numbered; undo and redo go back to numbers that were there.
    int state_ = 0;
    int saved_state_ = 0;
    int last_state_ = 0;
    std::vector<int> before_edits_;
    std::vector<int> after_undos_;
};

} // namespace desktop
