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

/// Merges the surfaces of a document that is appended to another: decides which surfaces are
/// shared, which are copied, and under which name.
class SurfaceMerge {
public:
    /// Both documents must outlive this object and must not change before `finish`.
    SurfaceMerge(const mesh::Document& into, const mesh::Document& from, std::string_view from_name,
                 const WarningSink& warnings);

    /// The name of an incoming surface in the target document; decided at the first call for each
    /// surface. @throws LimitError
    const std::string& name(const std::string& incoming);

    /// The chunks that have to be copied: envelopes and images, and surfaces.
    struct Chunks {
        std::vector<mesh::FileChunk> numbered;
        std::vector<mesh::FileChunk> surfaces;
    };
    [[nodiscard]] Chunks finish();

private:
    /// An incoming surface as it will be in the target document, except for its name.
    struct MappedSurface {
        SurfaceHead head;
        bool needs_new = false; ///< refers to images or envelopes that have to be copied
        bool has_nodes = false;
        /// Incoming numbers of the images and envelopes that it refers to.
        std::vector<std::uint32_t> images = {};
        std::vector<std::uint32_t> envelopes = {};
        Bytes rest = {}; ///< bytes after the strings, renumbered
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
    std::unordered_map<std::string, std::string> names_; ///< decided names by incoming name
    std::unordered_set<std::string> new_names_;
    std::vector<MappedSurface> added_;
    bool all_mapped_ = false; ///< all images and envelopes are mapped, as node data requires
    bool all_moved_ = false;  ///< with all_mapped_: some number has changed
    bool all_new_ = false;    ///< with all_mapped_: some chunk has to be copied
};

} // namespace formats::lwo2
