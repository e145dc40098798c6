// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "hostapi/mesh_edit.h"
#include "modeler/edit/mesh_edit.h"

namespace modeler {

/// An edit and its function table for the module. The table stays valid until the activation ends;
/// its functions do nothing after the edit has ended.
class EditTable {
public:
    EditTable(mesh::Document& document, const std::vector<LayerRole>& roles,
              MeshEdit::Target target, const StringPool& strings);
    EditTable(const EditTable&) = delete;
    EditTable& operator=(const EditTable&) = delete;
    ~EditTable();

    [[nodiscard]] const MeshEdit& edit() const noexcept { return edit_; }
    [[nodiscard]] MeshEditOp* operations() noexcept { return &operations_; }

    /// Commits the edit and returns its undo step, or, if `keep` is false, rolls it back.
    std::optional<UndoStep> end(bool keep);

private:
    void close() noexcept;

    MeshEdit edit_;
    MeshEditOp operations_;
};

} // namespace modeler
