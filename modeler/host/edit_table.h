// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "hostapi/mesh_edit.h"
#include "modeler/edit/mesh_edit.h"

namespace modeler {

/// An edit with the table of functions through which a module works on it. The table stays there
/// until the activation ends; its functions do nothing once the edit is finished.
class EditTable {
public:
    EditTable(mesh::Document& document, const std::vector<LayerRole>& roles,
              MeshEdit::Target target, const StringPool& strings);
    EditTable(const EditTable&) = delete;
    EditTable& operator=(const EditTable&) = delete;
    ~EditTable();

    [[nodiscard]] const MeshEdit& edit() const noexcept { return edit_; }
    [[nodiscard]] MeshEditOp* operations() noexcept { return &operations_; }

    /// Ends the edit: keeps what it added, and gives what takes that back again, or drops it.
    std::optional<UndoStep> end(bool keep);

private:
    void close() noexcept;

    MeshEdit edit_;
    MeshEditOp operations_;
};

} // namespace modeler
