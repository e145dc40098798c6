// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace mesh {

/// Position of a text in a TagList.
using TagIndex = std::uint32_t;

constexpr TagIndex no_tag = 0xFFFFFFFFu;

/// The texts that polygons refer to by number: surface names, part names, colours. A number never
/// changes its text, and a list read from a file keeps its numbers, empty and repeated texts
/// included.
class TagList {
public:
    TagList() = default;
    TagList(const TagList&) = delete; // the index looks into the texts of its own list
    TagList& operator=(const TagList&) = delete;
    TagList(TagList&&) = default;
    TagList& operator=(TagList&&) = default;
    ~TagList() = default;

    [[nodiscard]] std::size_t size() const noexcept { return texts_.size(); }
    /// The text's bytes as they stand in the file. The reference stays valid as the list grows.
    [[nodiscard]] const std::string& operator[](TagIndex index) const { return texts_[index]; }

    /// Appends a text, whether it is there or not, and returns its number.
    TagIndex append(std::string text);

    /// The lowest number of this text, or `no_tag`.
    [[nodiscard]] TagIndex find(std::string_view text) const;

    /// The lowest number of this text, which is appended when it is not there.
    TagIndex intern(std::string_view text);

    /// Drops all texts from `count` on. No polygon may still refer to them.
    void truncate(std::size_t count) noexcept;

private:
    std::deque<std::string> texts_; // never moves its elements: the views below stay valid
    std::unordered_map<std::string_view, TagIndex> index_;
};

} // namespace mesh
