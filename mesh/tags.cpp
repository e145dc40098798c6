// SPDX-License-Identifier: MIT
#include "mesh/tags.h"

#include <utility>

namespace mesh {

TagIndex TagList::append(std::string text)
{
    const auto number = static_cast<TagIndex>(texts_.size());
    texts_.push_back(std::move(text));
    try {
        index_.try_emplace(texts_.back(), number);
    } catch (...) {
        texts_.pop_back();
        throw;
    }
    return number;
}

void TagList::truncate(std::size_t count) noexcept
{
    while (texts_.size() > count) {
        const auto number = static_cast<TagIndex>(texts_.size() - 1);
        const auto found = index_.find(texts_.back());
        if (found != index_.end() && found->second == number)
            index_.erase(found);
        texts_.pop_back();
    }
}

TagIndex TagList::find(std::string_view text) const
{
    const auto found = index_.find(text);
    return found == index_.end() ? no_tag : found->second;
}

TagIndex TagList::intern(std::string_view text)
{
    const TagIndex found = find(text);
    return found != no_tag ? found : append(std::string(text));
}

} // namespace mesh
