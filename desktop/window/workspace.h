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

    /// Begins the scene anew with the file's layers: foreground, hidden where the file says so, or
    /// shown only where they hold nothing but clones, so that no clones come onto clones.
    /// Whatever is thrown, the scene is as it was. @throws std::bad_alloc
    void begin(ReadFile file, std::vector<std::string>& warnings);
    /// The same with a scene that was kept, whose layers had these roles: no file has it, so that
    /// it counts as modified.
    void begin_kept(ReadFile file, const std::vector<modeler::LayerRole>& roles);
    /// Adds the file's layers as background behind those that are there, or begins an empty scene
    /// with them. Undo ends here. Whatever is thrown, the scene is as it was, with its undo.
    /// @throws formats::LimitError, std::bad_alloc
    void add(ReadFile file, std::vector<std::string>& warnings);
    /// Empties the scene. @throws std::bad_alloc, and the scene is as it was
    void clear();
    [[nodiscard]] bool empty() const noexcept { return session_.document().layers.empty(); }

    /// Writes all layers, or those of the foreground alone with the layers of clones that are
    /// shown beside them, as the command line writes the ground.
    /// May be called on any thread while nobody changes the document.
    /// @throws formats::LimitError, formats::FileError, std::bad_alloc
    void write(const std::filesystem::path& path, bool foreground_only) const;
    /// The scene as it is now stands in this file.
    void saved_as(const std::filesystem::path& path);
    /// The file that "Save" writes; empty when the scene has several files, or none yet.
    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
    /// A name for titles: of the file, or of all that came together.
    [[nodiscard]] std::string title() const;
    /// A path in a folder that is no file of the scene, for a dialog to propose: the name of the
    /// ground with what is written, such as "-with-clones", and an ending, such as ".lwo".
    [[nodiscard]] std::filesystem::path suggested_file(const std::filesystem::path& folder,
                                                       std::string_view written,
                                                       std::string_view ending) const;
    /// The file of the scene that stands at this path, by whatever name or link the path leads to
    /// it; empty: none.
    [[nodiscard]] std::filesystem::path open_file_at(const std::filesystem::path& path) const;
    /// The file that a layer came from; empty for a layer that a run made.
    [[nodiscard]] const std::filesystem::path& file_of(std::size_t layer) const noexcept
    {
        static const std::filesystem::path none;
        return layer < layer_files_.size() ? layer_files_[layer] : none;
    }
    /// A layer in words, for a sentence.
    [[nodiscard]] std::string layer_title(std::size_t layer) const;
    /// Names of what a clone is made of, in the order of the background layers: of their files, or
    /// of the layers themselves where the ground stands in the same file.
    [[nodiscard]] std::vector<std::string> models() const;
    /// A name for a layer of the clones that a run makes of the background, which no layer has.
    [[nodiscard]] std::string clone_layer_name() const;

    /// Whether something was done to the layers that no file has. To put files together is nothing
    /// of the kind.
    [[nodiscard]] bool modified() const noexcept { return session_.state() != saved_state_; }
    /// To be called after a run that changed the document: counts it.
    void note_run() noexcept { ++runs_; }
    /// Runs of this window so far that changed the document.
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
    std::uint64_t saved_state_ = 0; ///< of the session
};

} // namespace desktop
