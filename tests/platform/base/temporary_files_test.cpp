// SPDX-License-Identifier: GPL-3.0-or-later
// Where temporary files are made, whatever the environment says.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/posix/atomic_file.h"
#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

// A working folder of the test's own; folder and environment are put back.
class TemporaryFiles : public testing::Test {
 protected:
    void SetUp() override {
        const char* const given = std::getenv("TMPDIR");
        m_given = given != nullptr ? std::optional<std::string>(given) : std::nullopt;
        m_former = fs::current_path();
        fs::create_directory(Working());
        fs::current_path(Working());
    }
    void TearDown() override {
        fs::current_path(m_former);
        m_given ? setenv("TMPDIR", m_given->c_str(), 1) : unsetenv("TMPDIR");
    }
    fs::path Working() const { return m_folder / "working"; }

    // Makes one of each kind; where they are made.
    fs::path PlaceOfBoth() const {
        const int file = OpenTemporaryFile();
        EXPECT_GE(file, 0);
        const std::string link = fs::read_symlink("/proc/self/fd/" + std::to_string(file)).string();
        close(file);
        const HeldFolder folder("oxc-place-of-both-");
        EXPECT_EQ(folder.Path().parent_path(), TemporaryPlace());
        EXPECT_TRUE(link.starts_with(TemporaryPlace().string() + "/")) << link;
        EXPECT_TRUE(fs::is_empty(Working()));
        return TemporaryPlace();
    }

    TemporaryFolder m_folder;

 private:
    std::optional<std::string> m_given;
    fs::path m_former;
};

TEST_F(TemporaryFiles, AreMadeWhereTheEnvironmentSays) {
    fs::create_directory(m_folder / "chosen");
    setenv("TMPDIR", (m_folder / "chosen").c_str(), 1);
    EXPECT_EQ(PlaceOfBoth(), m_folder / "chosen");
}

TEST_F(TemporaryFiles, AreNeverMadeInTheWorkingFolder) {
    WriteBytes(m_folder / "file", "x");
    unsetenv("TMPDIR");
    EXPECT_EQ(PlaceOfBoth(), "/tmp");
    for (const std::string& place :
         {std::string(), std::string("."), std::string("missing"), std::string("../working"),
          (m_folder / "missing").string(), (m_folder / "file").string()}) {
        setenv("TMPDIR", place.c_str(), 1);
        EXPECT_EQ(PlaceOfBoth(), "/tmp") << place;
    }
}

TEST_F(TemporaryFiles, FolderThatMayNotBeWrittenIsPassedOver) {
    fs::create_directory(m_folder / "locked");
    chmod((m_folder / "locked").c_str(), S_IRUSR | S_IXUSR);
    setenv("TMPDIR", (m_folder / "locked").c_str(), 1);
    const auto makeAsNobody = [this] {
        constexpr uid_t Nobody = 65534;
        chmod(m_folder.Path().c_str(), S_IRWXU | S_IRWXG | S_IRWXO);
        if (geteuid() == 0 && seteuid(Nobody) != 0) {
            std::_Exit(2);
        }
        std::_Exit(PlaceOfBoth() == "/tmp" && !HasFailure() ? 0 : 1);
    };
    EXPECT_EXIT(makeAsNobody(), testing::ExitedWithCode(0), "");
}

}  // namespace
