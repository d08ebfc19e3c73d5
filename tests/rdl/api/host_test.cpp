// SPDX-License-Identifier: GPL-3.0-or-later
// The host that answers by itself, for a program without one of its own.
#include "rdl/api/host.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <fstream>

namespace rdl {
namespace {

class PlainHost : public testing::Test {
 protected:
    void SetUp() override {
        std::string name = (std::filesystem::temp_directory_path() / "rdl-host-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_folder = name;
        std::filesystem::create_directories(m_folder / "Data");
        std::ofstream(m_folder / "Data" / "Sales.csv") << "a";
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    std::filesystem::path m_folder;
    const Host m_host;
};

TEST_F(PlainHost, NamesOfReportsAreFoundWithoutRegardToCase) {
    const std::filesystem::path sales = m_folder / "Data" / "Sales.csv";
    EXPECT_EQ(m_host.PathOf("Data/Sales.csv", m_folder), sales);
    EXPECT_EQ(m_host.PathOf("data\\SALES.CSV", m_folder), sales);
    EXPECT_EQ(m_host.PathOf((m_folder / "DATA" / "sales.csv").string(), ""), sales);
}

TEST_F(PlainHost, NameThatExistsInNoFormIsKept) {
    EXPECT_EQ(m_host.PathOf("data\\none.csv", m_folder), m_folder / "Data" / "none.csv");
}

TEST_F(PlainHost, TemporaryFileHasNoNameAndTakesBytes) {
    const int handle = m_host.OpenTemporaryFile();
    EXPECT_EQ(write(handle, "abc", 3), 3);
    close(handle);
}

}  // namespace
}  // namespace rdl
