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

/// Texts that neither move nor change while a command runs, so that an address that comes back says
/// all: those that the host lends, each held once, and those in memory that nobody can write to.
class StringPool {
public:
    /// The address of this text, the same for the same text, valid as long as this object.
    [[nodiscard]] const char* intern(std::string_view text)
    {
        const char* const address = strings_.emplace(text).first->c_str();
        addresses_.insert(address);
        return address;
    }

    /// Counts what stands in this memory among the lasting texts.
    void add_read_only(std::span<const char> memory) { read_only_.push_back(memory); }

    /// Whether the text at this address is one of them.
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
    std::unordered_set<std::string> strings_; // its elements do not move
    std::unordered_set<const char*> addresses_;
    std::vector<std::span<const char>> read_only_;
};

} // namespace modeler
