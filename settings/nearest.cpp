// SPDX-License-Identifier: MIT
#include "settings/nearest.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <vector>

#include <fmt/format.h>

namespace settings {

namespace {

char folded(char c)
{
    if (c >= 'A' && c <= 'Z')
        return static_cast<char>(c - 'A' + 'a');
    return c == '_' ? '-' : c;
}

std::size_t edit_distance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t changed = diagonal + (folded(a[i - 1]) == folded(b[j - 1]) ? 0u : 1u);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, changed});
        }
    }
    return row.back();
}

} // namespace

std::string nearest(std::string_view word, std::span<const std::string> candidates)
{
    std::size_t best_distance = std::max<std::size_t>(1, word.size() / 3) + 1;
    std::string best;
    for (const std::string& candidate : candidates) {
        const std::size_t distance = edit_distance(word, candidate);
        if (distance < best_distance) {
            best_distance = distance;
            best = candidate;
        }
    }
    return best;
}

std::string did_you_mean(std::string_view word, std::span<const std::string> candidates)
{
    const std::string found = nearest(word, candidates);
    return found.empty() ? std::string() : fmt::format("; did you mean '{}'?", found);
}

} // namespace settings
