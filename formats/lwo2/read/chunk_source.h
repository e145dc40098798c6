// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "formats/input_file.h"

namespace formats::lwo2 {

/// Random access to the bytes of a file, a piece at a time.
class ChunkSource {
public:
    /// Maximum for `least` in `read`; larger than the longest value of any chunk.
    static constexpr std::size_t longest_run = std::size_t{512} * 1024;

    ChunkSource() = default;
    ChunkSource(const ChunkSource&) = delete;
    ChunkSource& operator=(const ChunkSource&) = delete;
    virtual ~ChunkSource() = default;

    /// Size of the whole file in bytes.
    [[nodiscard]] virtual std::uint64_t size() const noexcept = 0;

    /// Reads from `offset` and returns at least `least` bytes, more if they are buffered. The bytes
    /// must lie within the file. Valid until the next call.
    [[nodiscard]] virtual std::span<const std::byte> read(std::uint64_t offset,
                                                          std::size_t least) = 0;
};

/// A source over bytes in memory, which must outlive it.
[[nodiscard]] std::unique_ptr<ChunkSource> memory_source(std::span<const std::byte> bytes);

/// A source over a file, with only the current piece in memory. A pipe is read completely first, up
/// to the size in the object's header. @throws FileError here and in `read`
[[nodiscard]] std::unique_ptr<ChunkSource> file_source(InputFile file);

} // namespace formats::lwo2
