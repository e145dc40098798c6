// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace modeler {

/// Strings that stay at their address and do not change while a command runs: equal pointers mean
/// equal strings. Consists of interned strings, owned by the pool, and of read-only memory of the
/// module, such as its string literals.
class StringPool {
public:
    /// Interns a string: equal strings give the same pointer, which is valid as long as the pool.
    [[nodiscard]] const char* intern(std::string_view text)
    {
        const char* const address = strings_.emplace(text).first->c_str();
        addresses_.insert(address);
        return address;
    }

    /// Adds a range of read-only memory; every address in it counts as a stable string.
    void add_read_only(std::span<const char> memory) { read_only_.push_back(memory); }

    /// Whether this is the address of an interned string or lies in read-only memory.
    [[nodiscard]] bool contains(const char* address) const
    {
        const auto lies_in = [address](std::span<const char> memory) {
            constexpr std::less<const char*> before;
            return !before(address, memory.data()) &&
                   before(address, memory.data() + memory.size());
        };
        return addresses_.contains(address) ||
               std::any_of(read_only_.begin(), read_only_.end(), lies_in);
    }

private:
    std::unordered_set<std::string> strings_; // node-based: elements do not move
    std::unordered_set<const char*> addresses_;
    std::vector<std::span<const char>> read_only_;
};

} // namespace modeler
