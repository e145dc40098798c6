// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
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

/// A text box that a command showed.
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
    bool created = false; ///< it was not there before, in the layer it was written to

    friend bool operator==(const WrittenMap&, const WrittenMap&) = default;
};

/// What came of one run of a command.
struct RunResult {
    int code = 0;         ///< what the command returned; 0: nothing went wrong
    bool applied = false; ///< the document was changed (one undo step for each edit)
    std::size_t points_added = 0;
    std::size_t polygons_added = 0;
    std::vector<WrittenMap> maps_written; ///< in order of first writing
    std::vector<Message> errors;          ///< error boxes that the command showed, in order
    bool panel_cancelled = false;         ///< the user closed a panel with Cancel
};

/// The class of servers that a Modeler runs.
inline constexpr std::string_view mesh_edit_class = "MeshDataEdit";

/// A session of the host: one document with the roles of its layers, on which commands of modules
/// are run, and the undo of what they did.
///
/// The indices in the document must be sound (polygons name points, tags and maps that are there),
/// as those of a document read from a file are.
class Modeler {
public:
    /// An empty document without layers.
    Modeler() = default;
    /// @throws std::invalid_argument when there is not one role for each layer.
    explicit Modeler(mesh::Document document, std::vector<LayerRole> roles);

    [[nodiscard]] const mesh::Document& document() const noexcept { return document_; }
    [[nodiscard]] const std::vector<LayerRole>& roles() const noexcept { return roles_; }

    /// Puts another document in place of this one and forgets all undo.
    /// @throws std::invalid_argument when there is not one role for each layer.
    void replace(mesh::Document document, std::vector<LayerRole> roles);

    /// Takes the document out; what remains is an empty session.
    [[nodiscard]] mesh::Document release();

    /// Changes the role of the layer at this position. Not an undo step.
    /// @throws std::out_of_range when there is no such layer.
    void set_role(std::size_t layer, LayerRole role);

    /// Selects a polygon, or takes it out of the selection. Not an undo step.
    /// @throws std::out_of_range when there is no such layer or polygon.
    void select(std::size_t layer, std::size_t polygon, bool on);

    /// Whether the server's enable condition holds: "pol" asks for a polygon in the foreground. A
    /// condition that this host does not know never disables a server.
    [[nodiscard]] bool enabled(const Server& server) const;

    /// Runs a server of the class "MeshDataEdit" once, whether it is enabled or not.
    ///
    /// Only edits that the command finished without an error change the document; an edit that it
    /// left open is dropped.
    /// @throws ModuleError when there is no such server; when an exception comes out of the module,
    /// std::bad_alloc among them; when it describes a panel wrongly; when memory ended inside an
    /// edit; when a command is already running on this thread. What `front_end` threw, allocation
    /// failure aside, comes out as it is. After every exception the document is as it was before
    /// the run.
    RunResult run(Module& module, std::string_view server, FrontEnd& front_end);

    /// Number of edits that can be undone.
    [[nodiscard]] std::size_t undo_steps() const noexcept { return undo_.size(); }
    [[nodiscard]] bool can_undo() const noexcept { return !undo_.empty(); }

    /// Takes the last edit back: the mesh is then exactly as it was before.
    /// Out of memory for what `redo` needs, nothing is changed.
    /// @throws std::logic_error when there is nothing to undo; std::bad_alloc
    void undo();

    /// Number of edits that were taken back and can be made again. A run that changes the document
    /// forgets them.
    [[nodiscard]] std::size_t redo_steps() const noexcept { return redo_.size(); }
    [[nodiscard]] bool can_redo() const noexcept { return !redo_.empty(); }

    /// Makes the edit that was taken back last again: the mesh is then exactly as it was before the
    /// undo. Out of memory, nothing is changed.
    /// @throws std::logic_error when there is nothing to redo; std::bad_alloc
    void redo();

private:
    mesh::Document document_;
    std::vector<LayerRole> roles_;
    std::vector<UndoStep> undo_;
    std::vector<RedoStep> redo_;
};

} // namespace modeler
