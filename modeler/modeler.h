// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "mesh/document.h"
#include "modeler/edit/redo_step.h"
#include "modeler/edit/undo_step.h"
#include "modeler/errors.h"
#include "modeler/front_end.h"
#include "modeler/module.h"
#include "modeler/roles.h"

namespace modeler {

/// A message box that a command showed.
struct Message {
    std::string line1;
    std::string line2; ///< empty: none

    friend bool operator==(const Message&, const Message&) = default;
};

/// A vertex map into which a command wrote.
struct WrittenMap {
    mesh::FourCC type = 0;
    std::string name;
    std::size_t dimension = 0;
    bool created = false; ///< the layer that was written to had no such map before

    friend bool operator==(const WrittenMap&, const WrittenMap&) = default;
};

/// How the last edit of a command ended.
enum class EditEnd {
    never_begun, ///< the command began no edit
    left_open,   ///< the command did not finish it; rolled back
    with_error,  ///< the command finished it with an error code; rolled back
    finished     ///< the command finished it without an error, with or without changes
};

/// The result of one run of a command.
struct RunResult {
    int code = 0;                             ///< return code of the command; 0: success
    EditEnd last_edit = EditEnd::never_begun; ///< how the last edit ended
    int edit_error = 0;                       ///< error code with which the last edit was finished
    bool applied = false; ///< the document was changed (one undo step for each edit)
    std::size_t points_added = 0;
    std::size_t polygons_added = 0;
    std::vector<WrittenMap> maps_written; ///< in order of the first write
    std::vector<Message> errors;          ///< error messages that the command showed, in order
    bool panel_cancelled = false;         ///< the user closed a panel with Cancel
};

/// Options of a run.
struct RunOptions {
    /// Name of a new layer for the added elements; empty: they go into the first foreground layer.
    /// The new layer is the last one, has the role foreground during the run and `shown`
    /// afterwards, and is removed and restored by undo and redo. It is not created if the run adds
    /// nothing.
    std::string own_layer;
    /// Called when the command first adds something (so after its panel was closed): whether to use
    /// the new layer. Empty: yes. Must not throw.
    std::function<bool()> wants_own_layer = {};
};

/// The class of servers that a Modeler runs.
inline constexpr std::string_view mesh_edit_class = "MeshDataEdit";

/// A session of the host: a document, the roles of its layers, and the undo history. Runs commands
/// of modules on the document. Not thread-safe.
///
/// All indices in the document must be valid (points, tags and maps that polygons refer to exist),
/// as they are in a document read from a file.
class Modeler {
public:
    /// An empty document without layers.
    Modeler() = default;
    /// @throws std::invalid_argument unless there is one role for each layer.
    explicit Modeler(mesh::Document document, std::vector<LayerRole> roles);

    [[nodiscard]] const mesh::Document& document() const noexcept { return document_; }
    [[nodiscard]] const std::vector<LayerRole>& roles() const noexcept { return roles_; }

    /// Replaces the document and clears the undo history.
    /// @throws std::invalid_argument unless there is one role for each layer.
    void replace(mesh::Document document, std::vector<LayerRole> roles);

    /// Moves the document out and leaves an empty session.
    [[nodiscard]] mesh::Document release();

    /// Calls `append_layers`, which appends `roles.size()` layers to the document, and clears the
    /// undo history. If `append_layers` throws, it must leave the document unchanged; the exception
    /// propagates, and history and roles are unchanged, too.
    /// @throws std::bad_alloc
    void append(const std::vector<LayerRole>& roles,
                const std::function<void(mesh::Document&)>& append_layers);

    /// Revision of the document, from 0. Each change, except of roles and selection, gives a new
    /// number; undo and redo restore earlier numbers.
    [[nodiscard]] std::uint64_t state() const noexcept { return state_; }

    /// Changes the role of the layer at this index. Not an undo step.
    /// @throws std::out_of_range if there is no such layer.
    void set_role(std::size_t layer, LayerRole role);

    /// Selects or deselects a polygon. Not an undo step.
    /// @throws std::out_of_range if there is no such layer or polygon.
    void select(std::size_t layer, std::size_t polygon, bool on);

    /// Whether the server's enable condition is met: "pol" requires a polygon in the foreground.
    /// Unknown conditions count as met.
    [[nodiscard]] bool enabled(const Server& server) const;

    /// Runs a server of the class "MeshDataEdit" once, even if it is not enabled.
    ///
    /// Only edits that the command finished without an error change the document; an edit that it
    /// left open is rolled back.
    /// @throws ModuleError if there is no such server, the module throws an exception (including
    /// std::bad_alloc), the module describes a panel wrongly, an edit runs out of memory, or a
    /// command is already running on this thread. Exceptions of `front_end` other than
    /// std::bad_alloc propagate unchanged. After any exception the document is unchanged.
    RunResult run(Module& module, std::string_view server, FrontEnd& front_end,
                  const RunOptions& options = {});

    /// Number of edits that can be undone.
    [[nodiscard]] std::size_t undo_steps() const noexcept { return undo_.size(); }
    [[nodiscard]] bool can_undo() const noexcept { return !undo_.empty(); }

    /// Undoes the last edit and restores the exact previous mesh. A layer that the edit created is
    /// removed together with its role.
    /// @throws std::logic_error if there is nothing to undo; std::bad_alloc (for the redo data),
    /// and nothing is changed
    void undo();

    /// Number of edits that can be redone. A run that changes the document resets it to 0.
    [[nodiscard]] std::size_t redo_steps() const noexcept { return redo_.size(); }
    [[nodiscard]] bool can_redo() const noexcept { return !redo_.empty(); }

    /// Redoes the edit that was undone last and restores the exact mesh. A layer that the edit
    /// created gets the role `shown`.
    /// @throws std::logic_error if there is nothing to redo; std::bad_alloc, and nothing is changed
    void redo();

private:
    /// A step and the revision it leads to.
    struct Undo {
        UndoStep step;
        std::uint64_t state = 0;
    };
    struct Redo {
        RedoStep step;
        std::uint64_t state = 0;
    };

    void begin_state() noexcept { state_ = ++last_state_; }
    /// Adds or removes roles after the number of layers has changed; new layers are `shown`. Does
    /// not allocate if there is spare capacity.
    void fit_roles() { roles_.resize(document_.layers.size(), LayerRole::shown); }

    mesh::Document document_;
    std::vector<LayerRole> roles_;
    std::vector<Undo> undo_;
    std::vector<Redo> redo_;
    std::uint64_t state_ = 0;
    std::uint64_t last_state_ = 0;
};

} // namespace modeler
