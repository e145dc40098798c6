// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "formats/input_file.h"

namespace formats::lwo2 {

/// Where the reader takes its bytes from, a piece at a time.
class ChunkSource {
public:
    /// Most bytes that can be asked for at once: more than the longest value of any chunk.
    static constexpr std::size_t longest_run = std::size_t{512} * 1024;

    ChunkSource() = default;
    ChunkSource(const ChunkSource&) = delete;
    ChunkSource& operator=(const ChunkSource&) = delete;
    virtual ~ChunkSource() = default;

    /// Size of the whole file in bytes.
    [[nodiscard]] virtual std::uint64_t size() const noexcept = 0;

    /// The bytes from `offset` on that are at hand, at least `least` of them, all of which lie
    /// within the size; valid until the next call.
    [[nodiscard]] virtual std::span<const std::byte> read(std::uint64_t offset,
                                                          std::size_t least) = 0;
};

/// Bytes in memory, which must outlive the source.
[[nodiscard]] std::unique_ptr<ChunkSource> memory_source(std::span<const std::byte> bytes);

/// A file, of which only the piece being read is in memory; of a pipe as much is read first as the
/// object in it says to have. @throws FileError here and in `read`.
[[nodiscard]] std::unique_ptr<ChunkSource> file_source(InputFile file);

} // namespace formats::lwo2
