// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace mesh {

/// Index of a string in a TagList.
using TagIndex = std::uint32_t;

constexpr TagIndex no_tag = 0xFFFFFFFFu;

/// The strings that polygons refer to by index: surface names, part names, colours. The string at
/// an index never changes. A list read from a file keeps its indices; empty and duplicate strings
/// are allowed.
class TagList {
public:
    TagList() = default;
    TagList(const TagList&) = delete; // the index has views into this list's strings
    TagList& operator=(const TagList&) = delete;
    TagList(TagList&&) = default;
    TagList& operator=(TagList&&) = default;
    ~TagList() = default;

    [[nodiscard]] std::size_t size() const noexcept { return texts_.size(); }
    /// The raw bytes of the string. The reference stays valid as the list grows.
    [[nodiscard]] const std::string& operator[](TagIndex index) const { return texts_[index]; }

    /// Appends a string, even a duplicate, and returns its index.
    TagIndex append(std::string text);

    /// The lowest index of this string, or `no_tag`.
    [[nodiscard]] TagIndex find(std::string_view text) const;

    /// The lowest index of this string, which is appended if missing.
    TagIndex intern(std::string_view text);

    /// Removes the strings from index `count` on. No polygon may still refer to them.
    void truncate(std::size_t count) noexcept;

private:
    std::deque<std::string> texts_; // never moves its elements: the views below stay valid
    std::unordered_map<std::string_view, TagIndex> index_;
};

} // namespace mesh
