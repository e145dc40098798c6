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

/// The numbers of one kind of chunk, images or envelopes, while one document is joined to another:
/// which number each of the incoming gets, and which of them have to come.
class IndexSpace {
public:
    /// Gives the content by which an incoming chunk is compared with those present; none for one
    /// that must not be shared.
    using Content = std::function<std::optional<Bytes>(std::span<const std::byte> rest)>;

    explicit IndexSpace(mesh::FourCC id) : id_(id) {}

    /// Takes note of a chunk that is there already.
    void add_present(const mesh::FileChunk& chunk);

    /// Takes note of a chunk of the incoming document, which must outlive this.
    void add_incoming(const mesh::FileChunk& chunk);

    /// The number that an incoming number becomes: that of a present chunk of the same content, or
    /// its own where it is free, or a free one. Always below `index_limit`, so that a surface can
    /// name it.
    /// @throws LimitError when no number is free.
    std::uint32_t map(std::uint32_t number, const Content& content);

    /// Whether a number that was mapped is one of a chunk that has to come.
    [[nodiscard]] bool is_new(std::uint32_t number) const { return new_.contains(number); }

    /// The incoming chunk of a number, or null.
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
