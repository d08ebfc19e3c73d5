// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/shell/desktop_shell.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "platform/base/paths.h"
#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

class DesktopShellOpens : public testing::Test {
 protected:
    void SetUp() override {
        fs::permissions(folder.Path(), fs::perms(0755));
        SetAppPath(paths::FromMachine(folder.Path()));
        fs::remove(marker);
    }
    void TearDown() override { SetAppPath({}); }

    std::string Make(const std::string& name, const std::string& bytes, int mode = 0644) const {
        fs::create_directories((folder / name).parent_path());
        WriteBytes(folder / name, bytes);
        fs::permissions(folder / name, fs::perms(mode));
        return paths::FromMachine(folder / name);
    }
    std::string Named(const std::string& name) const { return paths::FromMachine(folder / name); }
    int Open(const std::string& file, const std::string& directory = {},
             const std::string& parameters = {}) const {
        return shell->ShellExecuteA("open", file, parameters, directory, 1);
    }
    // Returns the lines that an opened program wrote: its arguments, its folder ...
    std::vector<std::string> Opened() const {
        for (int tries = 0; tries < 500 && !fs::exists(marker); ++tries) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        std::ifstream file(marker);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) {
            lines.push_back(line);
        }
        return lines.empty() ? std::vector<std::string>{"nothing was opened", ""} : lines;
    }
    // A program that writes its arguments and its platform.
    std::string Marking() const {
        return "#!/bin/sh\necho \"$#:$*\" > " + marker.string() +
               ".part\necho \"${QT_QPA_PLATFORM-none}\" >> " + marker.string() + ".part\nmv " +
               marker.string() + ".part " + marker.string() + "\n";
    }

    const fs::path desktop = std::getenv("OXC_TEST_DESKTOP");
    const fs::path marker = desktop / "opened";
    TemporaryFolder folder;
    std::unique_ptr<Shell> shell = std::make_unique<DesktopShell>(folder / "programs/oxc");
};

// Root may read every file: acts as the user nobody while it lives.
class AsNobody {
 public:
    AsNobody() {
        if (geteuid() == 0) {
            m_switched = seteuid(65534) == 0;
        }
    }
    ~AsNobody() {
        if (m_switched && seteuid(0) != 0) {
            std::abort();
        }
    }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

 private:
    bool m_switched = false;
};

}  // namespace

TEST_F(DesktopShellOpens, ADocumentWithItsAssociatedApplication) {
    const std::string file = Make("sales of may.csv", "a,b\n");
    EXPECT_GT(Open(file), 32);
    EXPECT_EQ(Opened()[0], (folder / "sales of may.csv").string());
}

TEST_F(DesktopShellOpens, ADocumentSpelledInAnotherCase) {
    Make("Sales.csv", "a,b\n");
    EXPECT_GT(Open(Named("SALES.CSV")), 32);
    EXPECT_NE(Opened()[0].find("Sales.csv"), std::string::npos);
}

TEST_F(DesktopShellOpens, ADocumentOfAnyNameAsOneWord) {
    for (const char* name : {"-o 100%u.csv", "ann's \"may\" $HOME;x.csv", "sales.exe.csv"}) {
        fs::remove(marker);
        EXPECT_GT(Open(Make(name, "a,b\n")), 32);
        EXPECT_EQ(Opened()[0], (folder / name).string());
    }
}

TEST_F(DesktopShellOpens, ADocumentBehindASymbolicLink) {
    Make("may.csv", "a,b\n");
    fs::create_symlink("may.csv", folder / "latest.csv");
    EXPECT_GT(Open(Named("latest.csv")), 32);
    EXPECT_EQ(Opened()[0], (folder / "latest.csv").string());
}

TEST_F(DesktopShellOpens, NoSymbolicLinkThatLeadsNowhere) {
    fs::create_symlink("gone.csv", folder / "broken.csv");
    fs::create_symlink("circle.csv", folder / "circle.csv");
    EXPECT_EQ(Open(Named("broken.csv")), 2);
    EXPECT_EQ(Open(Named("circle.csv")), 2);
}

TEST_F(DesktopShellOpens, NoPipeThatNobodyWritesInto) {
    ASSERT_EQ(mkfifo((folder / "pipe.csv").c_str(), 0644), 0);
    EXPECT_EQ(Open(Named("pipe.csv")), 31);
}

TEST_F(DesktopShellOpens, ADocumentInTheFolderGiven) {
    Make("sub/sales.csv", "a,b\n");
    EXPECT_GT(Open("sales.csv", Named("sub")), 32);
    const auto opened = Opened();
    EXPECT_NE(opened[0].find("/sub/sales.csv"), std::string::npos) << opened[0];
    EXPECT_EQ(opened[1], (folder / "sub").string());
}

TEST_F(DesktopShellOpens, ADocumentSoThatItsApplicationLivesOnItsOwn) {
    const int inherited = open("/dev/null", O_RDONLY);
    const int high = fcntl(inherited, F_DUPFD, 300);
    EXPECT_GT(Open(Make("sales.csv", "a,b\n")), 32);
    const auto opened = Opened();
    close(inherited);
    close(high);
    ASSERT_GE(opened.size(), 5U);
    EXPECT_EQ((" " + opened[2]).find(" 300 "), std::string::npos) << opened[2];
    std::istringstream numbers(opened[4]);
    pid_t parent = 0;
    pid_t session = 0;
    numbers >> parent >> session;
    EXPECT_NE(parent, getpid());
    EXPECT_NE(session, getsid(0));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no zombie";
}

TEST_F(DesktopShellOpens, AnAddressInTheBrowser) {
    EXPECT_GT(Open("https://oxbow-courier.example/Support.htm"), 32);
    EXPECT_EQ(Opened()[0], "https://oxbow-courier.example/Support.htm");
}

TEST_F(DesktopShellOpens, NoAddressWithoutABrowser) {
    EXPECT_EQ(Open("mailto:ann@example.com"), 31);
}

TEST_F(DesktopShellOpens, NoFileThatIsMissing) {
    EXPECT_EQ(Open(Named("missing.csv")), 2);
    EXPECT_EQ(Open(""), 2);
}

TEST_F(DesktopShellOpens, NoFileInAMissingFolder) {
    EXPECT_EQ(Open(Named("missing/sales.csv")), 3);
    EXPECT_EQ(Open("C:\\reports\\sales.csv"), 3);
    EXPECT_EQ(Open(Make("file", "") + "\\sales.csv"), 3);
    EXPECT_EQ(Open(Make("sales.csv", "a,b\n"), Named("missing")), 3);
}

TEST_F(DesktopShellOpens, NoFileThatMayNotBeRead) {
    const std::string file = Make("sales.csv", "a,b\n", 0);
    const AsNobody nobody;
    EXPECT_EQ(Open(file), 5);
}

TEST_F(DesktopShellOpens, NoFileInAFolderThatMayNotBeEntered) {
    const std::string file = Make("closed/sales.csv", "a,b\n");
    fs::permissions(folder / "closed", fs::perms(0));
    int code = 0;
    {
        const AsNobody nobody;
        code = Open(file);
    }
    fs::permissions(folder / "closed", fs::perms(0755));
    EXPECT_EQ(code, 5);
}

TEST_F(DesktopShellOpens, NoFileWithoutAnAssociation) {
    EXPECT_EQ(Open(Make("sales.unheard-of", std::string("\0\1\2\3", 4))), 31);
}

TEST_F(DesktopShellOpens, AReportFileWithoutAnAssociationInTheDesigner) {
    const std::string bytes("\0\1\2\3", 4);
    EXPECT_EQ(Open(Make("sales.rdl", bytes)), 31);
    Make("programs/oxc-design", Marking(), 0755);
    for (const char* name : {"sales of may.rdl", "-sales.RPT"}) {
        fs::remove(marker);
        EXPECT_GT(Open(Make(name, bytes)), 32);
        EXPECT_EQ(Opened()[0], "1:" + (folder / name).string());
    }
    EXPECT_EQ(Open(Make("sales.unheard-of", bytes)), 31);
}

TEST_F(DesktopShellOpens, NoFileWhoseApplicationIsGone) {
    EXPECT_EQ(Open(Make("logo.tga", std::string(32, '\0'))), 31);
}

TEST_F(DesktopShellOpens, NoFileWhoseApplicationHasAnUnreadableEntry) {
    EXPECT_EQ(Open(Make("logo.bmp", "BM" + std::string(32, '\0'))), 31);
}

TEST_F(DesktopShellOpens, NoFileItselfInPlaceOfAnApplicationWithoutACommand) {
    EXPECT_EQ(Open(Make("logo.gif", Marking(), 0755)), 31);
    EXPECT_FALSE(fs::exists(marker));
}

TEST_F(DesktopShellOpens, NothingByAnUnknownVerb) {
    EXPECT_EQ(shell->ShellExecuteA("print", Make("sales.csv", "a,b\n"), "", "", 1), 31);
}

TEST_F(DesktopShellOpens, AProgramWithItsParametersAndItsFolder) {
    const std::string file =
        Make("tool.EXE",
             "#!/bin/sh\npwd > " + marker.string() + ".part\necho \"$#:$2\" >> " + marker.string() +
                 ".part\nmv " + marker.string() + ".part " + marker.string() + "\n",
             0755);
    EXPECT_GT(Open(file, "Z:\\usr", "-o \"a b\""), 32);
    EXPECT_EQ(Opened(), (std::vector<std::string>{"/usr", "2:a b"}));
}

TEST_F(DesktopShellOpens, NoProgramThatCannotBeRun) {
    EXPECT_EQ(Open(Make("tool.exe", std::string("MZ\0\0\1\2", 6), 0755)), 11);
    EXPECT_EQ(Open(Make("script.exe", "#!/bin/sh\n", 0644)), 11);
    EXPECT_EQ(Open(Make("lost.exe", "#!/no/such/interpreter\n", 0755)), 11);
}

TEST_F(DesktopShellOpens, NoReportThatHappensToBeExecutable) {
    // Network shares of other systems mark every file as executable.
    const std::string file = Make("report.csv", Marking(), 0755);
    EXPECT_GT(Open(file), 32);
    EXPECT_NE(Opened()[0].find("report.csv"), std::string::npos);
}

TEST_F(DesktopShellOpens, TheInstalledProgramForItsOldName) {
    Make("programs/oxc", Marking(), 0755);
    EXPECT_GT(Open(AppPath() + "\\oxc.exe"), 32);
    EXPECT_EQ(Opened()[0], "0:");
}

TEST_F(DesktopShellOpens, NoInstalledProgramThatIsMissing) {
    fs::create_directories(folder / "programs");
    EXPECT_EQ(Open(AppPath() + "\\OXC.exe"), 2);
}

TEST_F(DesktopShellOpens, ThisProcessNeighbourAsTheInstalledProgram) {
    EXPECT_EQ(DesktopShell::InstalledProgram(), fs::read_symlink("/proc/self/exe").parent_path() / "oxc");
}
