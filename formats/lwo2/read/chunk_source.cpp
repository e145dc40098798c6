// SPDX-License-Identifier: MIT
#include "formats/lwo2/read/chunk_source.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <unistd.h>

#include "formats/errors.h"
#include "formats/file_kind.h"
#include "formats/lwo2/big_endian.h"
#include "formats/lwo2/ids.h"
#include "mesh/buffer.h"

namespace formats::lwo2 {

namespace {

class MemorySource final : public ChunkSource {
public:
    explicit MemorySource(std::span<const std::byte> bytes) : bytes_(bytes) {}

    [[nodiscard]] std::uint64_t size() const noexcept override { return bytes_.size(); }

    [[nodiscard]] std::span<const std::byte> read(std::uint64_t offset, std::size_t) override
    {
        return bytes_.subspan(static_cast<std::size_t>(offset));
    }

private:
    std::span<const std::byte> bytes_;
};

class FileSource final : public ChunkSource {
public:
    FileSource(std::filesystem::path path, Descriptor file, std::uint64_t size)
        : path_(std::move(path)), file_(std::move(file)), size_(size)
    {}

    [[nodiscard]] std::uint64_t size() const noexcept override { return size_; }

    [[nodiscard]] std::span<const std::byte> read(std::uint64_t offset, std::size_t least) override
    {
        if (offset < begin_ || offset + least > begin_ + window_size_)
            fill(offset, least);
        const auto passed = static_cast<std::size_t>(offset - begin_);
        return {window_.get() + passed, window_size_ - passed};
    }

private:
    void fill(std::uint64_t offset, std::size_t least)
    {
        // small enough to stay in the processor's cache
        constexpr std::size_t usual = std::size_t{128} * 1024;
        const auto wanted = static_cast<std::size_t>(
            std::min<std::uint64_t>(std::max(least, usual), size_ - offset));
        begin_ = offset;
        window_size_ = 0;
        while (window_size_ < wanted) {
            const ssize_t got =
                ::pread(file_.number(), window_.get() + window_size_, wanted - window_size_,
                        static_cast<off_t>(offset + window_size_));
            if (got < 0 && errno == EINTR)
                continue;
            if (got < 0)
                throw FileError(path_, "cannot be read", errno);
            if (got == 0)
                break;
            window_size_ += static_cast<std::size_t>(got);
        }
        if (window_size_ < least)
            throw FileError(path_, "cannot be read", "it became shorter while it was read");
    }

    std::filesystem::path path_;
    Descriptor file_;
    std::uint64_t size_;
    std::uint64_t begin_ = 0; ///< where the window stands in the file
    std::size_t window_size_ = 0;
    std::unique_ptr<std::byte[]> window_ = std::make_unique_for_overwrite<std::byte[]>(longest_run);
};

/// A source over a pipe, which is read completely.
class OwnedSource final : public ChunkSource {
public:
    explicit OwnedSource(mesh::Buffer<std::byte> bytes) : bytes_(std::move(bytes)) {}

    [[nodiscard]] std::uint64_t size() const noexcept override { return bytes_.size(); }

    [[nodiscard]] std::span<const std::byte> read(std::uint64_t offset, std::size_t) override
    {
        return bytes_.span().subspan(static_cast<std::size_t>(offset));
    }

private:
    mesh::Buffer<std::byte> bytes_;
};

/// Number of bytes to read from a pipe that begins with these bytes: the size of the object plus
/// one byte or, for other data, enough to detect its type. So an endless pipe does no harm.
std::uint64_t bytes_wanted(std::span<const std::byte> begin)
{
    constexpr std::size_t header_size = 12;
    if (begin.size() < header_size || read_u4(begin.data()) != id_form ||
        read_u4(begin.data() + 8) != id_lwo2)
        return kind_bytes;
    return 8 + std::uint64_t{read_u4(begin.data() + 4)} + 1;
}

std::unique_ptr<ChunkSource> read_in_order(const InputFile& file)
{
    constexpr std::size_t step = std::size_t{1024} * 1024;
    mesh::Buffer<std::byte> bytes;
    std::size_t have = 0;
    while (have < bytes_wanted({bytes.data(), have})) {
        const std::uint64_t missing = bytes_wanted({bytes.data(), have}) - have;
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(missing, step));
        bytes.resize(have + wanted);
        const ssize_t got = ::read(file.descriptor.number(), bytes.data() + have, wanted);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            throw FileError(file.name, "cannot be read", errno);
        if (got == 0)
            break;
        have += static_cast<std::size_t>(got);
    }
    bytes.truncate(have);
    return std::make_unique<OwnedSource>(std::move(bytes));
}

} // namespace

std::unique_ptr<ChunkSource> memory_source(std::span<const std::byte> bytes)
{
    return std::make_unique<MemorySource>(bytes);
}

std::unique_ptr<ChunkSource> file_source(InputFile file)
{
    if (!file.ordinary)
        return read_in_order(file);
    return std::make_unique<FileSource>(std::move(file.name), std::move(file.descriptor),
                                        file.size);
}

} // namespace formats::lwo2
