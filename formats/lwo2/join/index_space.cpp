// SPDX-License-Identifier: MIT
#include "formats/lwo2/join/index_space.h"

#include <fmt/format.h>

#include "formats/errors.h"
#include "formats/lwo2/ids.h"

namespace formats::lwo2 {

namespace {

std::string key(std::span<const std::byte> content)
{
    return {reinterpret_cast<const char*>(content.data()), content.size()};
}

} // namespace

void IndexSpace::add_present(const mesh::FileChunk& chunk)
{
    if (const auto parts = numbered(chunk)) {
        taken_.insert(parts->number);
        // a surface cannot refer to a number past the limit, so such a chunk is not shared
        if (parts->number < index_limit)
            present_.try_emplace(key(parts->rest), parts->number);
    }
}

void IndexSpace::add_incoming(const mesh::FileChunk& chunk)
{
    const auto parts = numbered(chunk);
    if (parts && incoming_.try_emplace(parts->number, &chunk).second)
        incoming_order_.push_back(parts->number);
}

std::uint32_t IndexSpace::map(std::uint32_t number, const Content& content)
{
    const auto known = mapped_.find(number);
    if (known != mapped_.end())
        return known->second;
    const mesh::FileChunk* const chunk = incoming(number);
    std::uint32_t result = 0;
    if (chunk != nullptr) {
        const auto own = content(numbered(*chunk)->rest);
        const auto same = own ? present_.find(key(*own)) : present_.end();
        if (same != present_.end())
            result = same->second;
    }
    if (result == 0) {
        result = number >= index_limit || taken_.contains(number) ? free_number() : number;
        taken_.insert(result);
        if (chunk != nullptr)
            new_.insert(number);
    }
    mapped_.emplace(number, result);
    return result;
}

const mesh::FileChunk* IndexSpace::incoming(std::uint32_t number) const
{
    const auto found = incoming_.find(number);
    return found == incoming_.end() ? nullptr : found->second;
}

std::uint32_t IndexSpace::free_number()
{
    while (taken_.contains(next_free_))
        ++next_free_;
    if (next_free_ >= index_limit)
        throw LimitError(fmt::format("document: no number is left for another {} chunk; use fewer "
                                     "images and envelopes",
                                     mesh::to_text(id_)));
    return next_free_;
}

} // namespace formats::lwo2
