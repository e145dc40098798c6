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

/// One running command and the host's state for it.
///
/// Most host functions have no state argument, so the activation of the calling thread is found
/// through a thread-local pointer, set from construction to destruction. The destructor reverts the
/// command's changes unless `accept` was called.
class Activation {
public:
    /// All reference arguments must outlive the activation.
    /// @throws ModuleError if a command is already running on this thread.
    Activation(mesh::Document& document, const std::vector<LayerRole>& roles, FrontEnd& front_end,
               const std::filesystem::path& module_file, const RunOptions& options);
    Activation(const Activation&) = delete;
    Activation& operator=(const Activation&) = delete;
    ~Activation();

    /// The activation that is running on this thread, or null.
    [[nodiscard]] static Activation* current() noexcept;

    /// Runs the command; rolls back an edit that it leaves open. Exceptions are captured (see
    /// `rethrow`).
    void call(ActivateFunc* activate) noexcept;

    /// Throws the captured exception, if any.
    void rethrow() const;

    /// Moves the result of the run out.
    [[nodiscard]] RunResult take_result() { return std::move(result_); }
    [[nodiscard]] std::size_t finished_edits() const noexcept { return committed_.size(); }
    /// Makes the finished edits permanent and returns their undo steps, in order.
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

    /// Begins an edit; null if one is open or there is no foreground layer.
    [[nodiscard]] MeshEditOp* begin_edit();
    /// The edit that is open, or null.
    [[nodiscard]] const MeshEdit* open_edit() const noexcept;
    /// Ends the open edit: commits it if the error code is EDERR_NONE, otherwise rolls it back.
    void end_edit(int error);

    /// Captures an exception, to be rethrown after the command has ended. Only the first one
    /// counts.
    void capture(std::exception_ptr problem) noexcept;
    /// Captures a ModuleError with this step and message.
    void capture_error(std::string_view step, std::string_view problem) noexcept;

    /// Calls `call`. On an exception, captures it and returns `otherwise`. For host code called
    /// from the module: no exception may propagate into the module.
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
    /// The target layer of the next edit; creates it if RunOptions::own_layer requires a new one.
    [[nodiscard]] MeshEdit::Target edit_target();
    void capture_edit_error(const MeshEdit& edit) noexcept;
    void record_commit(const MeshEdit& edit, const UndoStep& step);

    mesh::Document& document_;
    std::vector<LayerRole> roles_;
    FrontEnd& front_end_;
    std::filesystem::path module_file_;
    const RunOptions& options_;
    std::size_t given_layers_; ///< number of layers before the command

    RunResult result_;
    std::set<std::pair<mesh::FourCC, std::string>> written_; ///< maps that the result lists
    std::exception_ptr exception_;
    StringPool strings_;
    MapCatalog catalog_;
    Monitors monitors_;
    Panels panels_;
    std::vector<std::unique_ptr<EditTable>> edits_; ///< at most the last one is open
    std::vector<UndoStep> committed_;
};

} // namespace modeler
