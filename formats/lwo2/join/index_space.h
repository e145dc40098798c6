// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "formats/lwo2/join/references.h"
#include "mesh/file_chunk.h"

namespace formats::lwo2 {

/// Renumbers one kind of numbered chunks, images or envelopes, while a document is appended to
/// another: decides the new number of each incoming chunk, and which chunks have to be copied.
class IndexSpace {
public:
    /// Returns the content of an incoming chunk for comparison with present ones; empty for a chunk
    /// that must not be shared.
    using Content = std::function<std::optional<Bytes>(std::span<const std::byte> rest)>;

    explicit IndexSpace(mesh::FourCC id) : id_(id) {}

    /// Registers a chunk of the target document.
    void add_present(const mesh::FileChunk& chunk);

    /// Registers a chunk of the incoming document, which must outlive this object.
    void add_incoming(const mesh::FileChunk& chunk);

    /// Maps an incoming number to its new one: that of a present chunk with the same content, or
    /// else the same number if it is free, or else a free number. Always below `index_limit`, so
    /// that a surface can refer to it.
    /// @throws LimitError if no number is free
    std::uint32_t map(std::uint32_t number, const Content& content);

    /// Whether a mapped number denotes a chunk that has to be copied.
    [[nodiscard]] bool is_new(std::uint32_t number) const { return new_.contains(number); }

    /// The incoming chunk with this number, or null.
    [[nodiscard]] const mesh::FileChunk* incoming(std::uint32_t number) const;

    /// The numbers of all incoming chunks, in order.
    [[nodiscard]] const std::vector<std::uint32_t>& incoming_numbers() const noexcept
    {
        return incoming_order_;
    }

private:
    [[nodiscard]] std::uint32_t free_number();

    mesh::FourCC id_;
    std::unordered_map<std::string, std::uint32_t> present_; ///< content to number
    std::unordered_set<std::uint32_t> taken_;
    std::unordered_map<std::uint32_t, const mesh::FileChunk*> incoming_;
    std::vector<std::uint32_t> incoming_order_;
    std::unordered_map<std::uint32_t, std::uint32_t> mapped_;
    std::unordered_set<std::uint32_t> new_;
    std::uint32_t next_free_ = 1;
};

} // namespace formats::lwo2
