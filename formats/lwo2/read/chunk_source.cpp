// SPDX-License-Identifier: MIT
#include "formats/lwo2/read/chunk_source.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "formats/errors.h"
#include "mesh/buffer.h"

namespace formats::lwo2 {

namespace {

class MemorySource final : public ChunkSource {
public:
    explicit MemorySource(std::span<const std::byte> bytes) : bytes_(bytes) {}

    [[nodiscard]] std::uint64_t size() const noexcept override { return bytes_.size(); }

    [[nodiscard]] std::span<const std::byte> read(std::uint64_t offset, std::size_t count) override
    {
        return bytes_.subspan(static_cast<std::size_t>(offset), count);
    }

private:
    std::span<const std::byte> bytes_;
};

/// An open file that closes itself.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&&) = delete;
    ~Descriptor()
    {
        if (number_ >= 0)
            ::close(number_);
    }
    [[nodiscard]] int number() const noexcept { return number_; }

private:
    int number_;
};

class FileSource final : public ChunkSource {
public:
    FileSource(std::filesystem::path path, Descriptor file, std::uint64_t size)
        : path_(std::move(path)), file_(std::move(file)), size_(size)
    {}

    [[nodiscard]] std::uint64_t size() const noexcept override { return size_; }

    [[nodiscard]] std::span<const std::byte> read(std::uint64_t offset, std::size_t count) override
    {
        if (offset < begin_ || offset + count > begin_ + window_.size())
            fill(offset, count);
        return {window_.data() + (offset - begin_), count};
    }

private:
    void fill(std::uint64_t offset, std::size_t count)
    {
        // Small chunks come together, so that a file of many of them is not read in tiny steps.
        constexpr std::uint64_t least = std::uint64_t{256} * 1024;
        const auto wanted = static_cast<std::size_t>(
            std::min(std::max<std::uint64_t>(count, least), size_ - offset));
        begin_ = offset;
        window_.truncate(0);
        window_.resize(wanted);
        std::size_t have = 0;
        while (have < wanted) {
            const ssize_t got = ::pread(file_.number(), window_.data() + have, wanted - have,
                                        static_cast<off_t>(offset + have));
            if (got < 0 && errno == EINTR)
                continue;
            if (got < 0)
                throw FileError(path_, "cannot be read", errno);
            if (got == 0)
                throw FileError(path_, "cannot be read", "it became shorter while it was read");
            have += static_cast<std::size_t>(got);
        }
    }

    std::filesystem::path path_;
    Descriptor file_;
    std::uint64_t size_;
    std::uint64_t begin_ = 0;
    mesh::Buffer<std::byte> window_;
};

/// What could not be read in pieces, read whole.
class OwnedSource final : public ChunkSource {
public:
    explicit OwnedSource(mesh::Buffer<std::byte> bytes) : bytes_(std::move(bytes)) {}

    [[nodiscard]] std::uint64_t size() const noexcept override { return bytes_.size(); }

    [[nodiscard]] std::span<const std::byte> read(std::uint64_t offset, std::size_t count) override
    {
        return {bytes_.data() + offset, count};
    }

private:
    mesh::Buffer<std::byte> bytes_;
};

std::unique_ptr<ChunkSource> read_to_end(const std::filesystem::path& path, const Descriptor& file)
{
    constexpr std::size_t step = std::size_t{1024} * 1024;
    mesh::Buffer<std::byte> bytes;
    std::size_t have = 0;
    for (;;) {
        bytes.resize(have + step);
        const ssize_t got = ::read(file.number(), bytes.data() + have, step);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            throw FileError(path, "cannot be read", errno);
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

std::unique_ptr<ChunkSource> file_source(const std::filesystem::path& path)
{
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.number() < 0)
        throw FileError(path, "cannot be opened", errno);
    struct stat status = {};
    if (::fstat(file.number(), &status) != 0)
        throw FileError(path, "cannot be read", errno);
    if (S_ISDIR(status.st_mode))
        throw FileError(path, "cannot be read", "it is a folder");
    if (!S_ISREG(status.st_mode))
        return read_to_end(path, file);
    return std::make_unique<FileSource>(path, std::move(file),
                                        static_cast<std::uint64_t>(status.st_size));
}

} // namespace formats::lwo2
