// SPDX-License-Identifier: MIT
#include "formats/file_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string_view>
#include <thread>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "formats/errors.h"
#include "formats/lwo2_reader.h"
#include "formats/lwo2_writer.h"
#include "tests/formats/support/samples.h"
#include "tests/formats/support/text_files.h"

namespace {

namespace fs = std::filesystem;
using test::get;
using test::put;
using test::write_whole;
using testing::HasSubstr;

/// A folder of its own for each test, with letters that are not ASCII in its name.
class FileWriterTest : public testing::Test {
protected:
    void SetUp() override
    {
        const auto* const info = testing::UnitTest::GetInstance()->current_test_info();
        folder = fs::path(testing::TempDir()) /
                 fs::path(u8"dastrel-w\u00e4ld-\u68ee-" +
                          std::u8string(reinterpret_cast<const char8_t*>(info->name())) + u8"-" +
                          std::u8string(1, static_cast<char8_t>('a' + ::getpid() % 26)));
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }

    [[nodiscard]] std::size_t file_count() const
    {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }

    fs::path folder;
};

std::span<const std::byte> bytes(std::string_view text) { return std::as_bytes(std::span(text)); }

std::string refusal_of(const fs::path& path)
{
    try {
        formats::check_output_path(path);
    } catch (const formats::FileError& error) {
        EXPECT_EQ(error.path(), path);
        return error.what();
    }
    return {};
}

/// The permissions that a file made in the ordinary way gets.
mode_t ordinary_mode(const fs::path& folder)
{
    const fs::path path = folder / "ordinary";
    put(path, "");
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    fs::remove(path);
    return status.st_mode & 0777u;
}

mode_t mode_of(const fs::path& path)
{
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 0777u;
}

TEST_F(FileWriterTest, ShowsTheFileWhenItIsWhole)
{
    const fs::path path = folder / fs::path(u8"f\u00f6rest.lwo");
    {
        formats::FileWriter file(path);
        file.write(bytes("one "));
        EXPECT_FALSE(fs::exists(path));
        file.write(bytes("two"));
        file.commit();
    }
    EXPECT_EQ(get(path), "one two");
    EXPECT_EQ(file_count(), 1u);
    EXPECT_EQ(mode_of(path), ordinary_mode(folder));
}

TEST_F(FileWriterTest, LeavesTheOldFileWhenItIsNotCommitted)
{
    const fs::path path = folder / "old.lwo";
    put(path, "old");
    {
        formats::FileWriter file(path);
        file.write(bytes("new"));
        EXPECT_EQ(file_count(), 2u);
    }
    EXPECT_EQ(get(path), "old");
    EXPECT_EQ(file_count(), 1u);
}

TEST_F(FileWriterTest, KeepsThePermissionsOfTheFileItReplaces)
{
    const fs::path path = folder / "secret.lwo";
    put(path, "old");
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    write_whole(path, "new");
    EXPECT_EQ(get(path), "new");
    EXPECT_EQ(mode_of(path), 0600u);
}

TEST_F(FileWriterTest, ReplacesWhatALinkLeadsTo)
{
    fs::create_directory(folder / "elsewhere");
    put(folder / "elsewhere" / "real", "old");
    fs::create_symlink("elsewhere/real", folder / "link");
    fs::create_symlink("link", folder / "link to link");
    write_whole(folder / "link to link", "new");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_TRUE(fs::is_symlink(folder / "link to link"));
    EXPECT_EQ(get(folder / "elsewhere" / "real"), "new");

    fs::create_symlink("elsewhere/not yet", folder / "dangling");
    write_whole(folder / "dangling", "made");
    EXPECT_EQ(get(folder / "elsewhere" / "not yet"), "made");
}

TEST_F(FileWriterTest, RefusesLinksThatGoRoundInCircles)
{
    fs::create_symlink("b", folder / "a");
    fs::create_symlink("a", folder / "b");
    EXPECT_THAT(refusal_of(folder / "a"), HasSubstr("cannot be written: "));
}

TEST_F(FileWriterTest, WritesAPipeDirectly)
{
    const fs::path path = folder / "pipe";
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { received = get(path); });
    write_whole(path, "through");
    reader.join();
    EXPECT_EQ(received, "through");
    EXPECT_TRUE(fs::is_fifo(path));
}

TEST_F(FileWriterTest, WritesAnOpenDescriptorDirectly)
{
    const fs::path path = folder / "log";
    put(path, "before ");
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_APPEND);
    ASSERT_GE(descriptor, 0);
    write_whole("/dev/fd/" + std::to_string(descriptor), "after");
    ::close(descriptor);
    EXPECT_EQ(get(path), "before after");
    EXPECT_EQ(file_count(), 1u);
}

TEST_F(FileWriterTest, TellsThatADeviceIsFull)
{
    formats::FileWriter file("/dev/full");
    try {
        file.write(bytes("x"));
        FAIL() << "nothing was refused";
    } catch (const formats::FileError& error) {
        EXPECT_STREQ(error.what(), "/dev/full: cannot be written: No space left on device");
    }
}

TEST_F(FileWriterTest, RemovesUnfinishedFilesOfAllWriters)
{
    formats::FileWriter one(folder / "one");
    formats::FileWriter two(folder / "two");
    EXPECT_EQ(file_count(), 2u);
    formats::remove_unfinished_files();
    EXPECT_EQ(file_count(), 0u);
}

TEST_F(FileWriterTest, LeavesFinishedFilesAlone)
{
    write_whole(folder / "done", "done");
    formats::remove_unfinished_files();
    EXPECT_EQ(get(folder / "done"), "done");
}

/// For as long as it lives no file of this process grows past a size.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t size)
    {
        before_ = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &limit_);
        const rlimit lower{size, limit_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &lower);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &limit_);
        std::signal(SIGXFSZ, before_);
    }

private:
    rlimit limit_{};
    void (*before_)(int) = nullptr;
};

TEST_F(FileWriterTest, LeavesTheOldFileWhenWritingFailsHalfWay)
{
    mesh::Document document;
    document.layers.emplace_back().points.resize(500000);
    const fs::path path = folder / "forest.lwo";
    formats::write_lwo2_file(formats::read_lwo2(test::triangle(), {}), path);
    const std::string before = get(path);
    {
        const FileSizeLimit limit(2000000);
        try {
            formats::write_lwo2_file(document, path);
            FAIL() << "nothing was refused";
        } catch (const formats::FileError& error) {
            EXPECT_THAT(error.what(), HasSubstr("forest.lwo: cannot be written: File too large"));
        }
    }
    EXPECT_EQ(get(path), before);
    EXPECT_EQ(file_count(), 1u);
    formats::write_lwo2_file(document, path);
    EXPECT_EQ(formats::read_lwo2_file(path, {}).layers[0].points.size(), 500000u);
}

TEST_F(FileWriterTest, LeavesTheOldFileWhenTheDocumentDoesNotFit)
{
    mesh::Document document;
    document.layers.emplace_back().points.push_back({1e300, 0, 0});
    put(folder / "old.lwo", "old");
    EXPECT_THROW(formats::write_lwo2_file(document, folder / "old.lwo"), formats::LimitError);
    EXPECT_THROW(formats::write_lwo2_file(document, folder / "new.lwo"), formats::LimitError);
    EXPECT_EQ(get(folder / "old.lwo"), "old");
    EXPECT_EQ(file_count(), 1u);
}

TEST_F(FileWriterTest, JudgesAPathBeforeTheWork)
{
    EXPECT_EQ(refusal_of(folder / "new.lwo"), "");
    EXPECT_EQ(file_count(), 0u) << "judging creates nothing";
    put(folder / "file", "");
    EXPECT_EQ(refusal_of(folder / "file"), "");
    EXPECT_EQ(refusal_of("/dev/null"), "");
    EXPECT_THAT(refusal_of(""), HasSubstr("the name is empty"));
    EXPECT_THAT(refusal_of(folder), HasSubstr("it is a folder; name a file in it"));
    EXPECT_THAT(refusal_of(folder / ""), HasSubstr("it is a folder; name a file in it"));
    EXPECT_THAT(refusal_of(folder / "none" / "a.lwo"), HasSubstr("there is no folder"));
    EXPECT_THAT(refusal_of(folder / "file" / "a.lwo"), HasSubstr("is not a folder"));
    EXPECT_THAT(refusal_of(folder / std::string(300, 'x')), HasSubstr("File name too long"));
    EXPECT_THAT(refusal_of("/dev/fd/4000"), HasSubstr("Bad file descriptor"));
    const int descriptor = ::open("/dev/null", O_RDONLY);
    EXPECT_THAT(refusal_of("/dev/fd/" + std::to_string(descriptor)),
                HasSubstr("open for reading only"));
    ::close(descriptor);
}

TEST_F(FileWriterTest, RefusesAFolderOrFileWithoutPermission)
{
    // Permissions do not bind the superuser: as such the test goes on as nobody.
    constexpr ::uid_t nobody = 65534;
    const bool superuser = ::geteuid() == 0;
    if (superuser) {
        ASSERT_EQ(::chown(folder.c_str(), nobody, nobody), 0);
        ASSERT_EQ(::setresuid(nobody, nobody, 0), 0);
    }
    put(folder / "locked.lwo", "");
    fs::permissions(folder / "locked.lwo", fs::perms::owner_read);
    EXPECT_THAT(refusal_of(folder / "locked.lwo"), HasSubstr("Permission denied"));
    fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_THAT(refusal_of(folder / "new.lwo"), HasSubstr("Permission denied"));
    fs::permissions(folder, fs::perms::owner_all);
    if (superuser) {
        EXPECT_EQ(::setresuid(0, 0, 0), 0);
    }
}

TEST_F(FileWriterTest, TakesTheLongestNameThatThereIs)
{
    const fs::path path = folder / std::string(255, 'x');
    write_whole(path, "long");
    EXPECT_EQ(get(path), "long");
}

using ReadFile = FileWriterTest;

TEST_F(ReadFile, GivesWhatTheBytesGive)
{
    const fs::path path = folder / fs::path(u8"\u6811.lwo");
    const auto sample = test::rich();
    write_whole(path, {reinterpret_cast<const char*>(sample.data()), sample.size()});
    EXPECT_EQ(formats::write_lwo2(formats::read_lwo2_file(path, {})), sample);
}

TEST_F(ReadFile, ReadsChunksLargerThanItsWindow)
{
    const fs::path path = folder / "large.lwo";
    mesh::Document document;
    for (int i = 0; i < 3; ++i) {
        mesh::Layer& layer = document.layers.emplace_back();
        layer.number = static_cast<std::uint16_t>(i);
        for (int p = 0; p < 70000; ++p)
            layer.points.push_back({double(p), 0, double(i)});
        layer.polygons.add(mesh::polygon_face, std::vector<std::uint32_t>{0, 69999});
    }
    formats::write_lwo2_file(document, path);
    const auto again = formats::read_lwo2_file(path, {});
    EXPECT_EQ(again.layers[2].points[69999], (mesh::Vec3{69999, 0, 2}));
    EXPECT_EQ(again.layers[2].polygons.points(0)[1], 69999u);
}

TEST_F(ReadFile, ReadsAPipe)
{
    const fs::path path = folder / "pipe";
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    const auto sample = test::rich();
    std::thread writer([&] {
        put(path, {reinterpret_cast<const char*>(sample.data()), sample.size()});
    });
    const auto document = formats::read_lwo2_file(path, {});
    writer.join();
    EXPECT_EQ(formats::write_lwo2(document), sample);
}

TEST_F(ReadFile, NamesTheFileInItsFaults)
{
    put(folder / "bad.lwo", "FORM....LWOB");
    try {
        static_cast<void>(formats::read_lwo2_file(folder / "bad.lwo", {}));
        FAIL() << "nothing was refused";
    } catch (const formats::FormatError& fault) {
        EXPECT_THAT(fault.what(), HasSubstr("bad.lwo: "));
        EXPECT_EQ(fault.chunk(), "FORM");
        EXPECT_EQ(fault.offset(), 0u);
    }
}

TEST_F(ReadFile, TellsWhyAFileCannotBeRead)
{
    const auto refusal = [](const fs::path& path) -> std::string {
        try {
            static_cast<void>(formats::read_lwo2_file(path, {}));
        } catch (const formats::FileError& error) {
            return error.what();
        }
        return {};
    };
    EXPECT_THAT(refusal(folder / "none.lwo"),
                HasSubstr("none.lwo: cannot be opened: No such file or directory"));
    EXPECT_THAT(refusal(folder), HasSubstr("cannot be read: it is a folder"));
}

} // namespace
