// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "hostapi/types.h"

namespace modeler {

/// A point or polygon of a document.
struct Element {
    std::uint32_t layer;
    std::uint32_t index;
};

static_assert(sizeof(std::uintptr_t) == 8, "an id holds a layer and an index of 32 bits each");

/// The element as a module sees it: one more than layer and index side by side, in pointer
/// clothing, so that no element is null. An array never has 2^32 elements, so nothing overflows.
template <typename Id> [[nodiscard]] Id to_id(Element element) noexcept
{
    const std::uint64_t packed = (std::uint64_t{element.layer} << 32) | element.index;
    return reinterpret_cast<Id>(static_cast<std::uintptr_t>(packed + 1));
}

/// The element that an id spells, whether it is there or not; none for null.
template <typename Id> [[nodiscard]] std::optional<Element> from_id(Id id) noexcept
{
    const auto packed = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(id));
    if (packed == 0)
        return std::nullopt;
    return Element{static_cast<std::uint32_t>((packed - 1) >> 32),
                   static_cast<std::uint32_t>((packed - 1) & 0xFFFFFFFFu)};
}

} // namespace modeler
