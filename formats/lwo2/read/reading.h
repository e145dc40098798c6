// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include <fmt/format.h>

#include "formats/lwo2/read/cursor.h"
#include "formats/warnings.h"

namespace formats::lwo2 {

/// What one reading of a file shares: its warnings and its claim on memory.
class Reading {
public:
    Reading(const WarningSink& sink, std::uint64_t file_size)
        : sink_(sink), memory_left_(file_size * 16u + (std::uint64_t{64} << 20u))
    {}

    /// Passes a warning on, up to a number that a person may still want to read.
    void warn(mesh::FourCC chunk, std::uint64_t offset, const std::string& text)
    {
        constexpr int most = 100;
        if (!sink_ || warned_ > most)
            return;
        if (warned_++ == most)
            sink_("further warnings about this file are left out");
        else
            sink_(fmt::format("chunk {} at byte {}: {}", mesh::to_text(chunk), offset, text));
    }

    /// Accounts for memory that a few bytes of the file can claim in any amount, and throws when it
    /// passes what a sound file of this size could need.
    void claim(std::uint64_t bytes, const Cursor& at)
    {
        if (bytes > memory_left_)
            at.fail("the vertex maps would take far more memory than a file of this size can "
                    "need; the file is damaged");
        memory_left_ -= bytes;
    }

private:
    const WarningSink& sink_;
    std::uint64_t memory_left_;
    int warned_ = 0;
};

} // namespace formats::lwo2
