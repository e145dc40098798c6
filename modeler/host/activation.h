// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <exception>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hostapi/module.h"
#include "mesh/document.h"
#include "modeler/edit/string_pool.h"
#include "modeler/edit/undo_step.h"
#include "modeler/front_end.h"
#include "modeler/host/edit_table.h"
#include "modeler/host/map_catalog.h"
#include "modeler/host/monitors.h"
#include "modeler/modeler.h"
#include "modeler/panel/panels.h"

namespace modeler {

/// One running command and everything that the host keeps for it.
///
/// The host's functions carry no state pointer for the most part, so the running activation is
/// known by thread: it is current from its construction to its destruction. What the command
/// changed is taken back at the end unless `accept` was called.
class Activation {
public:
    /// @param options  must live as long
    /// @throws ModuleError when a command is running on this thread already.
    Activation(mesh::Document& document, const std::vector<LayerRole>& roles, FrontEnd& front_end,
               const std::filesystem::path& module_file, const RunOptions& options);
    Activation(const Activation&) = delete;
    Activation& operator=(const Activation&) = delete;
    ~Activation();

    /// The activation that is running on this thread, or null.
    [[nodiscard]] static Activation* current() noexcept;

    /// Runs the command to its end; an edit that it leaves open is dropped. Never throws: whatever
    /// goes wrong is held.
    void call(ActivateFunc* activate) noexcept;

    /// Throws what was held, if anything was.
    void rethrow() const;

    /// Tells what came of the run.
    [[nodiscard]] RunResult take_result() { return std::move(result_); }
    [[nodiscard]] std::size_t finished_edits() const noexcept { return committed_.size(); }
    /// What takes the finished edits back, in their order; they stay in the document from now on.
    [[nodiscard]] std::vector<UndoStep> accept() noexcept;

    [[nodiscard]] mesh::Document& document() noexcept { return document_; }
    [[nodiscard]] const std::vector<LayerRole>& roles() const noexcept { return roles_; }
    [[nodiscard]] FrontEnd& front_end() noexcept { return front_end_; }
    [[nodiscard]] RunResult& result() noexcept { return result_; }
    [[nodiscard]] StringPool& strings() noexcept { return strings_; }
    [[nodiscard]] MapCatalog& catalog() noexcept { return catalog_; }
    [[nodiscard]] Panels& panels() noexcept { return panels_; }
    [[nodiscard]] Monitors& monitors() noexcept { return monitors_; }
    [[nodiscard]] const std::filesystem::path& module_file() const noexcept { return module_file_; }

    /// Begins an edit; null while one is open, or when there is no foreground layer.
    [[nodiscard]] MeshEditOp* begin_edit();
    /// The edit that is open, or null.
    [[nodiscard]] const MeshEdit* open_edit() const noexcept;
    /// Ends the open edit: keeps it where the error code is EDERR_NONE, otherwise drops it.
    void end_edit(int error);

    /// Keeps the first thing that went wrong; it is thrown when the command has ended.
    void capture(std::exception_ptr problem) noexcept;
    /// Holds a ModuleError.
    void capture_error(std::string_view step, std::string_view problem) noexcept;

    /// Calls `call`; an exception out of it is held, and `otherwise` is the result. For calls of
    /// the front end and for work of the host's own: no exception of theirs may cross into the
    /// module.
    template <typename Result, typename Call>
    [[nodiscard]] Result guarded(Result otherwise, Call call) noexcept
    {
        try {
            return call();
        } catch (...) {
            capture(std::current_exception());
            return otherwise;
        }
    }

private:
    /// The layer that the next edit adds to; makes it, where it is one of the command's own.
    [[nodiscard]] MeshEdit::Target edit_target();
    void capture_edit_error(const MeshEdit& edit) noexcept;
    void record_commit(const MeshEdit& edit, const UndoStep& step);

    mesh::Document& document_;
    std::vector<LayerRole> roles_;
    FrontEnd& front_end_;
    std::filesystem::path module_file_;
    const RunOptions& options_;
    std::size_t given_layers_; ///< layers that were there before the command

    RunResult result_;
    std::set<std::pair<mesh::FourCC, std::string>> written_; ///< maps that the result lists
    std::exception_ptr exception_;
    StringPool strings_;
    MapCatalog catalog_;
    Monitors monitors_;
    Panels panels_;
    std::vector<std::unique_ptr<EditTable>> edits_; ///< only the last one can be open
    std::vector<UndoStep> committed_;
};

} // namespace modeler
