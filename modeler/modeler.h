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

/// How a command left an edit.
enum class EditEnd {
    never_begun, ///< it began none
    left_open,   ///< it did not finish it
    with_error,  ///< it finished it with an error code, and so gave it up
    finished     ///< it finished it without an error, changed or not
};

/// What came of one run of a command.
struct RunResult {
    int code = 0;                             ///< what the command returned; 0: nothing went wrong
    EditEnd last_edit = EditEnd::never_begun; ///< how the last edit ended
    int edit_error = 0;                       ///< error code that the last edit was finished with
    bool applied = false; ///< the document was changed (one undo step for each edit)
    std::size_t points_added = 0;
    std::size_t polygons_added = 0;
    std::vector<WrittenMap> maps_written; ///< in order of first writing
    std::vector<Message> errors;          ///< error boxes that the command showed, in order
    bool panel_cancelled = false;         ///< the user closed a panel with Cancel
};

/// How a command is run.
struct RunOptions {
    /// Name of a layer to be made for what the command adds; empty: it goes into the first
    /// foreground layer. The layer stands behind the others, is in the foreground during the run
    /// and `shown` afterwards, and comes and goes with undo and redo. A run that adds nothing makes
    /// none.
    std::string own_layer;
    /// Asked when the command first adds something, and so after its panel was answered: whether
    /// that layer is wanted. None: it is. Must not throw.
    std::function<bool()> wants_own_layer = {};
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

    /// Lets `append_layers` add layers behind those of the document, as many as there are roles for
    /// them, and forgets all undo. Whatever `append_layers` throws comes out of here, and must
    /// leave the document as it was; then undo and roles are as they were, too.
    /// @throws std::bad_alloc
    void append(const std::vector<LayerRole>& roles,
                const std::function<void(mesh::Document&)>& append_layers);

    /// Number of the present state of the document, from 0. Every change of it besides roles and
    /// selection has a new number; undo and redo come back to numbers that were there.
    [[nodiscard]] std::uint64_t state() const noexcept { return state_; }

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
    RunResult run(Module& module, std::string_view server, FrontEnd& front_end,
                  const RunOptions& options = {});

    /// Number of edits that can be undone.
    [[nodiscard]] std::size_t undo_steps() const noexcept { return undo_.size(); }
    [[nodiscard]] bool can_undo() const noexcept { return !undo_.empty(); }

    /// Takes the last edit back: the mesh is then exactly as it was before. A layer that was made
    /// for the edit goes with its role.
    /// Out of memory for what `redo` needs, nothing is changed.
    /// @throws std::logic_error when there is nothing to undo; std::bad_alloc
    void undo();

    /// Number of edits that were taken back and can be made again. A run that changes the document
    /// forgets them.
    [[nodiscard]] std::size_t redo_steps() const noexcept { return redo_.size(); }
    [[nodiscard]] bool can_redo() const noexcept { return !redo_.empty(); }

    /// Makes the edit that was taken back last again: the mesh is then exactly as it was before the
    /// undo, and a layer that was made for the edit is `shown`. Out of memory, nothing is changed.
    /// @throws std::logic_error when there is nothing to redo; std::bad_alloc
    void redo();

private:
    /// A step, and the state that it leads to.
    struct Undo {
        UndoStep step;
        std::uint64_t state = 0;
    };
    struct Redo {
        RedoStep step;
        std::uint64_t state = 0;
    };

    void begin_state() noexcept { state_ = ++last_state_; }
    /// Gives layers that an edit brought their role, and forgets those of layers that went with
    /// one. Asks for no memory where there is room for one more role.
    void fit_roles() { roles_.resize(document_.layers.size(), LayerRole::shown); }

    mesh::Document document_;
    std::vector<LayerRole> roles_;
    std::vector<Undo> undo_;
    std::vector<Redo> redo_;
    std::uint64_t state_ = 0;
    std::uint64_t last_state_ = 0;
};

} // namespace modeler
