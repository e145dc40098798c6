// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

namespace modeler {

/// Texts that a module is given by their addresses. Each is held once, and is neither moved nor
/// changed as long as this object lives: an address that comes back says all.
class LentTexts {
public:
    /// The address of this text, the same for the same text.
    [[nodiscard]] const char* lend(std::string_view text)
    {
        const char* const address = texts_.emplace(text).first->c_str();
        addresses_.insert(address);
        return address;
    }

    /// Whether the address was given out by `lend`.
    [[nodiscard]] bool holds(const char* address) const { return addresses_.contains(address); }

private:
    std::unordered_set<std::string> texts_; // its elements do not move
    std::unordered_set<const char*> addresses_;
};

} // namespace modeler
