// SPDX-License-Identifier: MIT
#include "formats/part_file.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "formats/file_writer.h"
#include "tests/formats/support/text_files.h"

namespace {

namespace fs = std::filesystem;
using test::get;
using test::put;
using test::write_whole;

constexpr uid_t nobody = 65534;

class PartFileTest : public testing::Test {
protected:
    void SetUp() override
    {
        folder =
            fs::path(testing::TempDir()) / ("dastrel-part-files-" + std::to_string(::getpid()));
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }

    [[nodiscard]] std::vector<fs::path> part_files() const
    {
        std::vector<fs::path> found;
        for (const auto& entry : fs::directory_iterator(folder))
            if (entry.path().extension() == ".part")
                found.push_back(entry.path());
        return found;
    }

    fs::path folder;
};

struct stat status_of(const fs::path& path)
{
    struct stat status = {};
    EXPECT_EQ(::lstat(path.c_str(), &status), 0);
    return status;
}

/// Begins to write a file in another process, which is then killed.
void write_and_be_killed(const fs::path& path)
{
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const formats::FileWriter file(path);
        ::raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
}

/// Runs `work` in another process as a user who owns nothing. True when it ended without a fault.
template <typename Work> bool as_nobody(Work work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        if (::setresgid(nobody, nobody, nobody) != 0 || ::setresuid(nobody, nobody, nobody) != 0)
            ::_exit(2);
        try {
            work();
        } catch (const std::exception&) {
            ::_exit(1);
        }
        ::_exit(0);
    }
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST_F(PartFileTest, OpensToNobodyElseOverATargetThatIsClosed)
{
    put(folder / "secret.lwo", "old");
    fs::permissions(folder / "secret.lwo", fs::perms::owner_read | fs::perms::owner_write);
    const mode_t mask = ::umask(0);
    formats::FileWriter file(folder / "secret.lwo");
    ::umask(mask);
    ASSERT_EQ(part_files().size(), 1u);
    EXPECT_EQ(status_of(part_files()[0]).st_mode & 0777u, 0600u);
    file.commit();
    EXPECT_EQ(status_of(folder / "secret.lwo").st_mode & 0777u, 0600u);
}

TEST_F(PartFileTest, OpensToNobodyElseUntilItIsInItsPlace)
{
    put(folder / "open.lwo", "old");
    fs::permissions(folder / "open.lwo", fs::perms(0664));
    formats::FileWriter file(folder / "open.lwo");
    ASSERT_EQ(part_files().size(), 1u);
    EXPECT_EQ(status_of(part_files()[0]).st_mode & 0777u, 0600u);
    file.commit();
    EXPECT_EQ(status_of(folder / "open.lwo").st_mode & 0777u, 0664u);
}

TEST_F(PartFileTest, OfAKilledRunIsRemovedByTheNextToTheSameTarget)
{
    write_and_be_killed(folder / "forest.lwo");
    ASSERT_EQ(part_files().size(), 1u);
    write_whole(folder / "other.lwo", "another target");
    EXPECT_EQ(part_files().size(), 1u) << "it is not the other target's";
    write_whole(folder / "forest.lwo", "whole");
    EXPECT_TRUE(part_files().empty());
    EXPECT_EQ(get(folder / "forest.lwo"), "whole");
}

TEST_F(PartFileTest, IsFoundThroughALinkToTheTarget)
{
    fs::create_symlink("forest.lwo", folder / "link");
    write_and_be_killed(folder / "forest.lwo");
    write_whole(folder / "link", "whole");
    EXPECT_TRUE(part_files().empty());
}

TEST_F(PartFileTest, ThatIsBeingWrittenIsLeftAlone)
{
    formats::FileWriter first(folder / "forest.lwo");
    write_whole(folder / "forest.lwo", "second");
    EXPECT_EQ(part_files().size(), 1u);
    first.write(std::as_bytes(std::span(std::string_view("first"))));
    first.commit();
    EXPECT_EQ(get(folder / "forest.lwo"), "first");
    EXPECT_TRUE(part_files().empty());
}

TEST_F(PartFileTest, IsRemovedOnlyIfItIsAFile)
{
    const std::string prefix = formats::part_file_prefix(folder / "forest.lwo");
    put(folder / "mine", "mine");
    fs::create_symlink("mine", folder / (prefix + "1.part"));
    fs::create_directory(folder / (prefix + "2.part"));
    ASSERT_EQ(::mkfifo((folder / (prefix + "3.part")).c_str(), 0600), 0);
    put(folder / (prefix + "4.lwo"), "not a part file");
    write_whole(folder / "forest.lwo", "whole");
    EXPECT_EQ(part_files().size(), 3u);
    EXPECT_EQ(get(folder / "mine"), "mine");
    EXPECT_TRUE(fs::exists(folder / (prefix + "4.lwo")));
}

TEST_F(PartFileTest, OfAnotherUserIsLeftAlone)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the superuser can give a file away";
    write_and_be_killed(folder / "forest.lwo");
    ASSERT_EQ(part_files().size(), 1u);
    ASSERT_EQ(::chown(part_files()[0].c_str(), nobody, nobody), 0);
    write_whole(folder / "forest.lwo", "whole");
    EXPECT_EQ(part_files().size(), 1u);
}

TEST_F(PartFileTest, TakesOverOwnerGroupAndPermissions)
{
    const fs::path path = folder / "forest.lwo";
    put(path, "old");
    gid_t group = nobody;
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(path.c_str(), nobody, group), 0);
    } else {
        std::vector<gid_t> groups(static_cast<std::size_t>(std::max(0, ::getgroups(0, nullptr))));
        static_cast<void>(::getgroups(static_cast<int>(groups.size()), groups.data()));
        if (groups.empty())
            GTEST_SKIP() << "the user has one group only";
        group = groups.back();
        ASSERT_EQ(::chown(path.c_str(), static_cast<uid_t>(-1), group), 0);
    }
    ASSERT_EQ(::chmod(path.c_str(), 06754), 0);
    const struct stat before = status_of(path);
    write_whole(path, "new");
    const struct stat after = status_of(path);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, group);
    EXPECT_EQ(after.st_mode & 07777u, 0754u) << "a new file runs as nobody else";
    EXPECT_EQ(get(path), "new");
}

TEST_F(PartFileTest, GivesNobodyMoreWhereTheGroupCannotBeKept)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "needs a file of somebody else";
    ASSERT_EQ(::chmod(folder.c_str(), 0777), 0);
    const fs::path path = folder / "forest.lwo";
    for (const auto& [mode, expected] :
         {std::pair<mode_t, mode_t>{0606, 0600}, {0646, 0644}, {0666, 0666}, {0676, 0666}}) {
        fs::remove(path);
        put(path, "old");
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        ASSERT_TRUE(as_nobody([&] { write_whole(path, "new"); }));
        const struct stat after = status_of(path);
        EXPECT_EQ(after.st_uid, nobody);
        EXPECT_EQ(after.st_mode & 07777u, expected);
        EXPECT_EQ(get(path), "new");
    }
}

} // namespace
