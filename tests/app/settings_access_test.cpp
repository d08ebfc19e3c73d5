// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "shared/ShellMod.h"
#include "support/fakes.h"

namespace {

constexpr auto Root = HKEY_LOCAL_MACHINE;
const char* const Key = ShellMod::SettingsKey;

}  // namespace

TEST(SettingsAccess, MissingKeyReadsAsTheDefault) {
    const fakes::FakeRegistry registry;
    EXPECT_EQ(ShellMod::ReadSetting(Root, Key, "Poll", "15"), "15");
    EXPECT_EQ(registry.closeCalls, 1);  // whether or not the key was opened
}

TEST(SettingsAccess, ValueOfAnotherTypeReadsAsTheDefault) {
    fakes::FakeRegistry registry;
    registry.keys[Key]["Poll"] = {4, std::string("\x1e\0\0\0", 4)};
    EXPECT_EQ(ShellMod::ReadSetting(Root, Key, "Poll", "15"), "15");
}

TEST(SettingsAccess, TextIsCutAtItsFirstZero) {
    fakes::FakeRegistry registry;
    registry.keys[Key]["Poll"] = {REG_SZ, std::string("30\0junk", 7)};
    EXPECT_EQ(ShellMod::ReadSetting(Root, Key, "Poll", "15"), "30");
    registry.keys[Key]["Empty"] = {REG_SZ, ""};
    EXPECT_EQ(ShellMod::ReadSetting(Root, Key, "Empty", "x"), "");
}

TEST(SettingsAccess, WritingMakesTheKeyAndClosesIt) {
    fakes::FakeRegistry registry;
    ShellMod::WriteSetting(Root, Key, "AlertWho", "ann@example.com");
    EXPECT_EQ(registry.keys[Key]["AlertWho"].bytes, "ann@example.com");
    EXPECT_EQ(registry.keys[Key]["AlertWho"].type, REG_SZ);
    EXPECT_EQ(registry.opened, registry.closed);
}

TEST(SettingsAccess, SettingThatCannotBeStoredIsALineOnStandardError) {
    class Refusing : public fakes::FakeRegistry {
     public:
        long RegCreateKeyA(std::uint32_t root, const std::string& key, Handle& handle) override {
            return makes ? FakeRegistry::RegCreateKeyA(root, key, handle) : 5;
        }
        long RegSetValueExA(Handle, const std::string&, std::uint32_t, const std::string&) override {
            return 112;
        }
        bool makes = false;
    };
    const fakes::FakeClock clock(fakes::At(2026, 11, 21, 14, 0, 0));
    Refusing registry;
    testing::internal::CaptureStderr();
    ShellMod::WriteSetting(Root, Key, "Poll", "15");
    registry.makes = true;
    ShellMod::WriteSetting(Root, Key, "AlertWho", "ann@example.com");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "2026-11-21 14:00:00 The setting \"Poll\" is not stored: error 5\n"
              "2026-11-21 14:00:00 The setting \"AlertWho\" is not stored: error 112\n");
    EXPECT_EQ(registry.opened, registry.closed);
}

TEST(SettingsAccess, KeyCanBeMadeEmpty) {
    fakes::FakeRegistry registry;
    ShellMod::CreateSettingsKey(Root, Key);
    EXPECT_EQ(registry.keys.count(Key), 1U);
}

TEST(SettingsAccess, KeyIsTheVendorsAndTheTitles) {
    EXPECT_STREQ(ShellMod::SettingsKey, "Software\\Norvale\\Oxbow Courier");
}
