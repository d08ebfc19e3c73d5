// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/regfile/registry_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "support/sanitizer.h"
#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

constexpr const char* Key = "Software\\Norvale\\Oxbow Courier";

class Settings : public testing::Test {
 protected:
    Settings() { fs::create_directory(Folder()); }
    fs::path Folder() const { return m_folder / "conf"; }

    long Write(const std::string& key, const std::string& name, const std::string& text) {
        Registry::Handle handle = 0;
        if (const long code = m_settings.RegCreateKeyA(HKEY_LOCAL_MACHINE, key, handle); code != 0) {
            return code;
        }
        const long result = m_settings.RegSetValueExA(handle, name, REG_SZ, text + '\0');
        m_settings.RegCloseKey(handle);
        return result;
    }

    std::string Read(const std::string& key, const std::string& name) {
        Registry::Handle handle = 0;
        std::uint32_t type = 0;
        std::string bytes;
        if (m_settings.RegOpenKeyA(HKEY_LOCAL_MACHINE, key, handle) != 0 ||
            m_settings.RegQueryValueExA(handle, name, type, bytes) != 0) {
            return "(none)";
        }
        m_settings.RegCloseKey(handle);
        return bytes;
    }

    TemporaryFolder m_folder;
    RegistryFile m_settings{m_folder / "conf"};
};

TEST_F(Settings, ValueIsReadBackInAnyCase) {
    EXPECT_EQ(Write(Key, "Poll", "15"), 0);
    EXPECT_EQ(Read(Key, "Poll"), "15\0"s);
    EXPECT_EQ(Read("SOFTWARE\\norvale\\OXBOW COURIER\\", "POLL"), "15\0"s);
    EXPECT_EQ(ReadBytes(Folder() / "settings.reg"),
              "Windows Registry Editor Version 5.00\n\n"
              "[HKEY_LOCAL_MACHINE\\Software\\Norvale\\Oxbow Courier]\n\"Poll\"=\"15\"\n");
}

TEST_F(Settings, MissingKeyAndValueAreNotFound) {
    Registry::Handle handle = 0;
    EXPECT_EQ(m_settings.RegOpenKeyA(HKEY_LOCAL_MACHINE, Key, handle), 2);
    EXPECT_EQ(m_settings.RegCreateKeyA(HKEY_LOCAL_MACHINE, Key, handle), 0);
    std::uint32_t type = 0;
    std::string bytes;
    EXPECT_EQ(m_settings.RegQueryValueExA(handle, "Poll", type, bytes), 2);
    EXPECT_EQ(m_settings.RegCloseKey(handle), 0);
    EXPECT_NE(m_settings.RegQueryValueExA(handle, "Poll", type, bytes), 0);
    EXPECT_NE(m_settings.RegCloseKey(handle), 0);
    EXPECT_NE(m_settings.RegOpenKeyA(0x12345678, Key, handle), 0);
    EXPECT_FALSE(fs::exists(Folder() / "settings.reg.bad"));
}

TEST_F(Settings, OtherTypesKeepTheirType) {
    WriteBytes(Folder() / "settings.reg",
               "Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\A]\n\"Poll\"=dword:0000000f\n");
    Registry::Handle handle = 0;
    ASSERT_EQ(m_settings.RegOpenKeyA(HKEY_LOCAL_MACHINE, "A", handle), 0);
    std::uint32_t type = 0;
    std::string bytes;
    EXPECT_EQ(m_settings.RegQueryValueExA(handle, "Poll", type, bytes), 0);
    EXPECT_EQ(type, 4U);
    EXPECT_EQ(bytes, "\x0f\0\0\0"s);
}

TEST_F(Settings, FileIsForItsOwnerOnly) {
    Write(Key, "Poll", "15");
    for (const auto& entry : fs::directory_iterator(Folder())) {
        struct stat status {};
        ASSERT_EQ(stat(entry.path().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0600U) << entry.path();
    }
}

TEST_F(Settings, TextsThatWouldBreakTheirLineDoNot) {
    EXPECT_EQ(Write(Key, "Output", "one\n\"Poll\"=\"99\""), 0);
    EXPECT_EQ(Read(Key, "Output"), "one\n\"Poll\"=\"99\"\0"s);
    EXPECT_EQ(Read(Key, "Poll"), "(none)");
    EXPECT_NE(Write(Key, "a\"=\"b\"\n\"Poll", "1"), 0);
    EXPECT_NE(Write("A]\n[B", "Poll", "1"), 0);
}

TEST_F(Settings, DamagedFileIsKeptBesideAndTheRestSurvives) {
    const std::string damaged =
        "Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\Software\\Norvale\\Oxbow Courier]\n"
        "\"AlertWho\"=\"ann\"\n\"Poll\"=\"1\n\"Output\"=\"Z:\\\\out\\\\\"\n";
    WriteBytes(Folder() / "settings.reg", damaged);
    EXPECT_EQ(Read(Key, "AlertWho"), "ann\0"s);
    EXPECT_FALSE(fs::exists(Folder() / "settings.reg.bad"));
    EXPECT_EQ(Write(Key, "Poll", "20"), 0);
    EXPECT_EQ(ReadBytes(Folder() / "settings.reg.bad"), damaged);
    EXPECT_EQ(Read(Key, "AlertWho"), "ann\0"s);
    EXPECT_EQ(Read(Key, "Output"), "Z:\\out\\\0"s);
    EXPECT_EQ(Read(Key, "Poll"), "20\0"s);
}

TEST_F(Settings, FolderThatCannotBeWrittenDeniesAccess) {
    RegistryFile elsewhere(m_folder / "no-such-folder");
    Registry::Handle handle = 0;
    EXPECT_EQ(elsewhere.RegCreateKeyA(HKEY_LOCAL_MACHINE, Key, handle), 5);
    EXPECT_EQ(elsewhere.RegOpenKeyA(HKEY_LOCAL_MACHINE, Key, handle), 2);
}

TEST_F(Settings, FileThatCannotBeReadDeniesAccessAndStaysAsItIs) {
    if (ChecksNeedDescriptors) {
        GTEST_SKIP() << "the sanitizers need file descriptors of their own";
    }
    ASSERT_EQ(Write(Key, "Poll", "20"), 0);
    const std::string before = ReadBytes(Folder() / "settings.reg");
    const auto useWithoutHandles = [this] {
        const rlimit none{3, 3};
        setrlimit(RLIMIT_NOFILE, &none);
        Registry::Handle handle = 0;
        const long opened = m_settings.RegOpenKeyA(HKEY_LOCAL_MACHINE, Key, handle);
        const long created = m_settings.RegCreateKeyA(HKEY_LOCAL_MACHINE, Key, handle);
        std::_Exit(opened == 5 && created == 5 ? 0 : 1);
    };
    EXPECT_EXIT(useWithoutHandles(), testing::ExitedWithCode(0),
                "The settings file \".*settings.reg\" cannot be read: Too many open files");
    EXPECT_EQ(ReadBytes(Folder() / "settings.reg"), before);
}

// A folder is opened, and then every read of it fails.
TEST_F(Settings, FailureOfTheReadItselfIsNoEmptyFile) {
    fs::create_directory(Folder() / "settings.reg");
    Registry::Handle handle = 0;
    testing::internal::CaptureStderr();
    EXPECT_EQ(m_settings.RegOpenKeyA(HKEY_LOCAL_MACHINE, Key, handle), 5);
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("settings.reg\" cannot be read: Is a directory\n"), std::string::npos) << said;
    EXPECT_EQ(Write(Key, "Poll", "20"), 5);
    EXPECT_TRUE(fs::is_directory(Folder() / "settings.reg"));
}

// Who has no home to write in runs with the defaults.
TEST_F(Settings, FolderThatCannotBeMadeHoldsNoSettings) {
    const std::string former = std::getenv("XDG_CONFIG_HOME") ? std::getenv("XDG_CONFIG_HOME") : "";
    setenv("XDG_CONFIG_HOME", "/proc/none", 1);
    RegistryFile nowhere;
    Registry::Handle handle = 0;
    EXPECT_EQ(nowhere.RegOpenKeyA(HKEY_LOCAL_MACHINE, Key, handle), 2);
    EXPECT_EQ(nowhere.RegCreateKeyA(HKEY_LOCAL_MACHINE, Key, handle), 5);
    former.empty() ? unsetenv("XDG_CONFIG_HOME") : setenv("XDG_CONFIG_HOME", former.c_str(), 1);
}

TEST_F(Settings, AutostartValueMakesADesktopEntry) {
    const std::string run = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";
    EXPECT_EQ(Write(run, "Another", "x"), 0);
    EXPECT_FALSE(fs::exists(m_folder / "autostart"));
    EXPECT_EQ(Write(run, "OXC", "\"Z:\\app\\oxc.exe\" -sched"), 0);
    EXPECT_NE(ReadBytes(m_folder / "autostart/OXC.desktop").find("oxc -sched\n"), std::string::npos);
    EXPECT_EQ(Read(run, "OXC"), "\"Z:\\app\\oxc.exe\" -sched\0"s);
}

TEST_F(Settings, TwoProcessesWritingDifferentValuesLoseNone) {
    constexpr int Count = 40;
    const auto writer = [this](const std::string& who) {
        const pid_t child = fork();
        if (child == 0) {
            bool good = true;
            for (int index = 0; index < Count; ++index) {
                good = good && Write(Key, who + std::to_string(index), who) == 0;
            }
            _exit(good ? 0 : 1);
        }
        return child;
    };
    for (const pid_t child : {writer("editor"), writer("scheduler")}) {
        int status = 1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    for (int index = 0; index < Count; ++index) {
        EXPECT_EQ(Read(Key, "editor" + std::to_string(index)), "editor\0"s);
        EXPECT_EQ(Read(Key, "scheduler" + std::to_string(index)), "scheduler\0"s);
    }
}

}  // namespace
