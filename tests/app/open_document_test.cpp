// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <utility>

#include "shared/ShellMod.h"
#include "support/fake_shell.h"

namespace {

class OpenDocument : public testing::Test {
 protected:
    void SetUp() override { ShellMod::ShellErrorText = "none yet"; }
    bool Open(const std::string& file, int showMode = 1, const std::string& parameters = {},
              const std::string& directory = {}) {
        return ShellMod::OpenDocument(file, showMode, parameters, directory, verb, {});
    }
    int ShowModeFor(const std::string& file) {
        Open(file, 3);
        return shell.openings.back().showMode;
    }
    fakes::FakeShell shell;
    std::string verb = "open";
};

class FailureCode : public OpenDocument, public testing::WithParamInterface<std::pair<int, const char*>> {};

constexpr const char* Other = "An error occurred occurred whilst trying to open or print the selected file.";

class BrowseForFolder : public testing::Test {
 protected:
    fakes::FakeShell shell;
};

}  // namespace

TEST_F(OpenDocument, HandsEverythingToTheShell) {
    EXPECT_TRUE(Open("Z:\\out\\sales.pdf", 3, "-x", "Z:\\out"));
    EXPECT_EQ(shell.openings,
              (std::vector<fakes::Opening>{{"open", "Z:\\out\\sales.pdf", "-x", "Z:\\out", 3}}));
}

TEST_F(OpenDocument, HandsParametersOrDirectoryAloneToTheShellAsWell) {
    Open("a.pdf", 1, "-x", "");
    Open("a.pdf", 1, "", "Z:\\out");
    EXPECT_EQ(shell.openings, (std::vector<fakes::Opening>{{"open", "a.pdf", "-x", "", 1},
                                                           {"open", "a.pdf", "", "Z:\\out", 1}}));
}

TEST_F(OpenDocument, SucceedsFromThirtyThreeUp) {
    shell.code = 33;
    EXPECT_TRUE(Open("a.pdf"));
    shell.code = 42;
    EXPECT_TRUE(Open("a.pdf"));
    shell.code = 32;
    EXPECT_FALSE(Open("a.pdf"));
}

TEST_F(OpenDocument, LeavesTheLastFailuresTextWhenItSucceeds) {
    EXPECT_TRUE(Open("a.pdf"));
    EXPECT_EQ(ShellMod::ShellErrorText, "none yet");
}

TEST_F(OpenDocument, APathWithDotExeAnywhereIsOpenedWithShowMode0) {
    EXPECT_EQ(ShowModeFor("Z:\\app\\oxc.exe"), 0);
    EXPECT_EQ(ShowModeFor("Z:\\app\\OXC.ExE"), 0);
    EXPECT_EQ(ShowModeFor("Z:\\old.executed\\sales.rpt"), 0);
    EXPECT_EQ(ShowModeFor("Z:\\exe\\sales.rpt"), 3);
    EXPECT_EQ(ShowModeFor("Z:\\app\\oxc"), 3);
}

TEST_F(OpenDocument, AnErrorOfTheShellIsAFailureWithoutAResult) {
    shell.error = RuntimeError(err::PathNotFound);
    EXPECT_FALSE(Open("a.pdf"));
    EXPECT_EQ(ShellMod::ShellErrorText, "Out of memory");
}

TEST(OpenDocumentWithoutADesktop, FailsAndRaisesNothing) {
    ShellMod::ShellErrorText.clear();
    std::string verb = "open";
    EXPECT_FALSE(ShellMod::OpenDocument("a.pdf", 1, "", "", verb, {}));
    EXPECT_EQ(ShellMod::ShellErrorText, "Out of memory");
}

TEST_P(FailureCode, HasItsText) {
    shell.code = GetParam().first;
    EXPECT_FALSE(Open("a.pdf"));
    EXPECT_EQ(ShellMod::ShellErrorText, GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(
    OpenDocument, FailureCode,
    testing::Values(
        std::pair{0, "Out of memory"}, std::pair{8, "Out of memory"}, std::pair{2, "File not found"},
        std::pair{3, "Path not found"}, std::pair{5, "Path/file access error"},
        std::pair{11, "The executable is invalid or corrupt"}, std::pair{26, "A sharing violation occured"},
        std::pair{27, "This file does not have a valid association"},
        std::pair{28, "The file could not be opened due to a time out. Please try again in a moment"},
        std::pair{29,
                  "The file could not be opened because the DDE transaction failed. Please try again in a "
                  "moment."},
        std::pair{
            30,
            "The file could not be opened because the target application is busy. Please try again in a "
            "moment."},
        std::pair{31, "No application is associated with this file type."},
        std::pair{32, "The specified dynamic-link library was not found."}, std::pair{4, Other},
        std::pair{-1, Other}));

TEST_F(OpenDocument, AnUnassociatedFileTypeGivesCode31AndItsText) {
    shell.code = 31;
    EXPECT_FALSE(Open("Z:\\out\\sales.xyz"));
    EXPECT_EQ(ShellMod::ShellErrorText, "No application is associated with this file type.");
}

TEST_F(OpenDocument, ACodeWithoutARowGivesTheTextWithTheDoubledWord) {
    shell.code = 1;
    EXPECT_FALSE(Open("a.pdf"));
    EXPECT_EQ(ShellMod::ShellErrorText,
              "An error occurred occurred whilst trying to open or print the selected file.");
}

TEST_F(BrowseForFolder, GivesTheChosenFolderOfADialogOfItsOwner) {
    int form = 0;
    shell.folder = "Z:\\srv\\out";
    EXPECT_EQ(ShellMod::BrowseForFolderDialog({&form}, "Pick a folder"), "Z:\\srv\\out");
    EXPECT_EQ(shell.owners, std::vector<WindowHandle>{{&form}});
    EXPECT_EQ(shell.titles, std::vector<std::string>{"Pick a folder"});
    EXPECT_EQ(shell.starts, std::vector<std::string>{""});
}

TEST_F(BrowseForFolder, BeginsWhereItIsAskedTo) {
    ShellMod::BrowseForFolderDialog({}, "Pick a folder", "Z:\\srv\\out\\");
    EXPECT_EQ(shell.starts, std::vector<std::string>{"Z:\\srv\\out\\"});
}

TEST_F(BrowseForFolder, GivesAnEmptyTextWhenCancelled) {
    EXPECT_EQ(ShellMod::BrowseForFolderDialog({}, "Pick a folder"), "");
}

TEST_F(BrowseForFolder, CutsThePathAtItsFirstZeroCharacter) {
    shell.folder = std::string("Z:\\srv\0rest", 11);
    EXPECT_EQ(ShellMod::BrowseForFolderDialog({}, "Pick a folder"), "Z:\\srv");
}

TEST_F(BrowseForFolder, HasRoomForAPathOf259Letters) {
    std::string letters;
    for (int i = 0; i < 256; ++i) {
        letters += "ä";
    }
    shell.folder = "Z:\\" + letters;
    EXPECT_EQ(ShellMod::BrowseForFolderDialog({}, "Pick a folder"), shell.folder);
    shell.folder += "x";
    EXPECT_EQ(ShellMod::BrowseForFolderDialog({}, "Pick a folder"), "");
}

TEST_F(BrowseForFolder, RaisesNothing) {
    shell.error = RuntimeError(err::PathNotFound);
    EXPECT_EQ(ShellMod::BrowseForFolderDialog({}, "Pick a folder"), "");
}
