// SPDX-License-Identifier: GPL-3.0-or-later
// The file of the profile: whole, private, and a bad one never replaces a good one.
#include "platform/mail/profile/editor.h"

#include <sys/stat.h>

#include "mail_fixture.h"
#include "support/config_home.h"

namespace {

using mailer::ProfileEditor;

class ProfileFile : public MailTest {
 public:
    std::filesystem::path Folder() const { return m_home.Folder(); }
    std::filesystem::path File() const { return m_home.MailProfile(); }
    static int ModeOf(const std::filesystem::path& path) {
        struct stat status {};
        return stat(path.c_str(), &status) == 0 ? static_cast<int>(status.st_mode & 0777U) : -1;
    }
    static void MakeOutboxProfile() {
        ProfileEditor editor;
        editor.Set("Transport", "outbox");
        editor.Set("From", "Reports <r@example.com>");
        editor.Save();
    }

 protected:
    ConfigHome m_home;
};

}  // namespace

TEST_F(ProfileFile, NewProfileIsPrivate) {
    const mode_t mask = umask(0);
    MakeOutboxProfile();
    umask(mask);
    EXPECT_EQ(ModeOf(File()), 0600);
    EXPECT_EQ(ModeOf(Folder()), 0700);
    EXPECT_EQ(ReadBytes(File()), "[Profile]\nTransport=outbox\nFrom=Reports <r@example.com>\n");
}

TEST_F(ProfileFile, OlderProfileThatOthersCanReadBecomesPrivate) {
    MakeOutboxProfile();
    chmod(File().c_str(), 0644);
    chmod(Folder().c_str(), 0755);
    ProfileEditor editor;
    EXPECT_FALSE(editor.IsNew());
    editor.Set("Password", "x");
    editor.Save();
    EXPECT_EQ(ModeOf(File()), 0600);
    EXPECT_EQ(ModeOf(Folder()), 0700);
}

TEST_F(ProfileFile, BrokenProfileNeverReplacesAGoodOne) {
    MakeOutboxProfile();
    const std::string before = ReadBytes(File());
    ProfileEditor editor;
    editor.Set("Transport", "pigeon");
    EXPECT_EQ(NumberRaisedBy([&] { editor.Save(); }), mailer::ErrBadProfile);
    EXPECT_EQ(ReadBytes(File()), before);
    EXPECT_EQ(FilesIn(Folder()).size(), 1u);
}

TEST_F(ProfileFile, EveryKeyIsReadBackFromItsSection) {
    ProfileEditor editor;
    EXPECT_TRUE(editor.IsNew());
    for (const mailer::KnownKey key : mailer::ProfileKeys) {
        EXPECT_EQ(editor.Value(key), "");
        editor.Set(key, "value of " + key.Name());
        EXPECT_EQ(editor.Value(key), "value of " + key.Name());
    }
}

TEST_F(ProfileFile, LinkedProfileIsChangedWhereItLies) {
    MakeOutboxProfile();
    std::filesystem::rename(File(), m_folder / "elsewhere.ini");
    std::filesystem::create_symlink(m_folder / "elsewhere.ini", File());
    ProfileEditor editor;
    editor.Set("From", "b@example.com");
    editor.Save();
    EXPECT_TRUE(std::filesystem::is_symlink(File()));
    EXPECT_NE(ReadBytes(m_folder / "elsewhere.ini").find("From=b@example.com"), std::string::npos);
}

TEST_F(ProfileFile, ProfileThatCannotBeReadIsNotTakenForAMissingOne) {
    std::filesystem::create_directories(File());
    EXPECT_EQ(NumberRaisedBy([] { const ProfileEditor editor; }), 75);
}

TEST_F(ProfileFile, LinkThatLeadsToItselfIsNotTakenForAMissingOne) {
    std::filesystem::create_directories(Folder());
    std::filesystem::create_symlink(File(), File());
    EXPECT_EQ(NumberRaisedBy([] { const ProfileEditor editor; }), 75);
}
