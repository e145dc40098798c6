// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "formats/lwo2/join/index_space.h"
#include "formats/lwo2/join/references.h"
#include "formats/warnings.h"
#include "mesh/document.h"

namespace formats::lwo2 {

/// Decides what becomes of the surfaces of one document when its layers join another's: which are
/// shared, which come along, and under which name.
class SurfaceMerge {
public:
    /// Both documents must outlive this and stay as they are until `finish`.
    SurfaceMerge(const mesh::Document& into, const mesh::Document& from, std::string_view from_name,
                 const WarningSink& warnings);

    /// The name that a surface of the incoming document has in the other one. Decided at the first
    /// call for each. @throws LimitError
    const std::string& name(const std::string& incoming);

    /// The chunks that have to come along: envelopes, images and surfaces.
    struct Chunks {
        std::vector<mesh::FileChunk> numbered;
        std::vector<mesh::FileChunk> surfaces;
    };
    [[nodiscard]] Chunks finish();

private:
    /// A surface as it would be in the other document, but for its name.
    struct MappedSurface {
        SurfaceHead head;
        bool needs_new = false; ///< names images or envelopes that are not there yet
        bool has_nodes = false;
        /// What it names, by incoming numbers.
        std::vector<std::uint32_t> images = {};
        std::vector<std::uint32_t> envelopes = {};
        Bytes rest = {}; ///< what follows the texts, renumbered
    };

    [[nodiscard]] MappedSurface map_surface(const SurfaceHead& head);
    void add_surface(MappedSurface mapped);
    [[nodiscard]] bool is_alike(const MappedSurface& mapped, const SurfaceHead& present) const;
    [[nodiscard]] bool is_of_incoming(const std::string& name) const;
    [[nodiscard]] std::string rename(const std::string& incoming, const MappedSurface* mapped,
                                     bool& is_there);
    [[nodiscard]] std::string decide(const std::string& incoming);
    std::uint32_t map_image(std::uint32_t number);
    std::uint32_t map_envelope(std::uint32_t number);
    void map_all();
    void add_numbered(Chunks& chunks);

    const mesh::Document& into_;
    const mesh::Document& from_;
    std::string from_name_;
    const WarningSink& warnings_;
    IndexSpace images_;
    IndexSpace envelopes_;
    std::unordered_map<std::string, SurfaceHead> present_;
    std::unordered_map<std::string, SurfaceHead> incoming_;
    std::unordered_map<std::string, std::string> names_; ///< decided ones, by incoming name
    std::unordered_set<std::string> new_names_;
    std::vector<MappedSurface> added_;
    bool all_mapped_ = false; ///< for the data of nodes, which may name anything
    bool all_moved_ = false;  ///< some number became another
    bool all_new_ = false;    ///< something is not there yet
};

} // namespace formats::lwo2
