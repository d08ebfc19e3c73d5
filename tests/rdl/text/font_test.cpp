// SPDX-License-Identifier: GPL-3.0-or-later
// Which font stands for what a report names.
#include <fontconfig/fontconfig.h>
#include <gmock/gmock.h>

#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "rdl/guide.h"
#include "rdl/text/font_table.h"
#include "rdl/text/machine_fonts.h"
#include "rdl/text/near_families.h"
#include "rdl/values/error.h"
#include "support/sanitizer.h"

namespace rdl::text::test {
namespace {

double AdvanceOf(FontId font, const char* letter) {
    return GlyphAdvance(font, Shaped(letter, font).at(0).glyphs.at(0).id);
}

TEST(FindFont, StandInsForTheUsualFontsHaveTheirWidths) {
    NEEDS_FONT("Liberation Sans");
    struct Expected {
        const char* family;
        const char* letter;
        double width;  // as the makers of the named fonts publish them
    };
    for (const Expected& e : {Expected{"Arial", "A", 667}, Expected{"Arial", "i", 222},
                              Expected{"Arial", " ", 278}, Expected{"Helvetica", "W", 944},
                              Expected{"Times New Roman", "A", 722}, Expected{"Times New Roman", "i", 278},
                              Expected{"Courier New", "i", 600}, Expected{"Courier New", "W", 600}}) {
        EXPECT_NEAR(AdvanceOf(FindFont({e.family}), e.letter), e.width, 1) << e.family << ' ' << e.letter;
    }
    EXPECT_NEAR(AdvanceOf(FindFont({"Arial", true}), "A"), 722, 1);
}

TEST(FindFont, TheUsualFontsOfReportsBecomeTheNearestInstalledOnes) {
    struct Expected {
        const char* named;
        const char* becomes;
    };
    for (const Expected& e :
         {Expected{"Tahoma", "Liberation Sans"}, Expected{"helvetica", "Liberation Sans"},
          Expected{"Arial Narrow", "Liberation Sans Narrow"}, Expected{"Verdana", "DejaVu Sans"},
          Expected{"Times", "Liberation Serif"}, Expected{"Courier", "Liberation Mono"},
          Expected{"Consolas", "Liberation Mono"}, Expected{"Calibri", "Carlito"},
          Expected{"Cambria", "Caladea"}, Expected{"Century Gothic", "URW Gothic"},
          Expected{"Book Antiqua", "P052"}, Expected{"Bookman Old Style", "URW Bookman"}}) {
        if (Has(e.becomes) && !Has(e.named)) {
            EXPECT_EQ(File(FindFont({e.named})).family, e.becomes) << e.named;
        }
    }
}

// The guide has the table of the code, row by row.
TEST(FindFont, TheGuideListsTheNearFamilies) {
    std::set<std::string> listed;
    for (const std::string& row : GuideLines("fonts")) {
        const std::size_t middle = row.find(" | ");
        const std::vector<std::string> near = Quoted(row.substr(middle));
        for (const std::string& name : Quoted(row.substr(0, middle))) {
            const auto known = NearFamilies(name);
            EXPECT_EQ(near, std::vector<std::string>(known.begin(), known.end())) << name;
            listed.insert(name);
        }
    }
    const std::vector<std::string_view> all = FamiliesWithNearOnes();
    EXPECT_EQ(listed, std::set<std::string>(all.begin(), all.end()));
}

// A process that takes another font for one report would keep it for all that follow.
class WithoutDescriptors {
 public:
    WithoutDescriptors() {
        getrlimit(RLIMIT_NOFILE, &m_before);
        const int lowest = dup(0);
        close(lowest);
        const rlimit bound{static_cast<rlim_t>(lowest), m_before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &bound);
    }
    ~WithoutDescriptors() { setrlimit(RLIMIT_NOFILE, &m_before); }

 private:
    rlimit m_before{};
};

template <typename Body>
std::string FailureWithoutDescriptors(Body body) {
    const WithoutDescriptors none;
    try {
        body();
    } catch (const Error& error) {
        return error.what();
    }
    return {};
}

TEST(FindFont, FontThatCannotBeOpenedForLackOfDescriptorsIsAnErrorAndNotAnotherFont) {
    if (ChecksNeedDescriptors) {
        GTEST_SKIP() << "the sanitizers need file descriptors of their own";
    }
    NEEDS_FONT("DejaVu Serif");
    NEEDS_FONT("Liberation Sans");
    FindFont({"Liberation Sans"});  // the list of fonts is read
    const std::string failure = FailureWithoutDescriptors([] { FindFont({"DejaVu Serif", true}); });
    EXPECT_TRUE(failure.starts_with("The font file /")) << failure;
    EXPECT_TRUE(failure.ends_with("DejaVuSerif-Bold.ttf cannot be read: Too many open files")) << failure;
    EXPECT_EQ(File(FindFont({"DejaVu Serif", true})).family, "DejaVu Serif");
}

TEST(FindFont, CharacterWhoseFontCannotBeOpenedIsAnErrorAndNotABox) {
    if (ChecksNeedDescriptors) {
        GTEST_SKIP() << "the sanitizers need file descriptors of their own";
    }
    NEEDS_FONT("DejaVu Sans");
    NEEDS_FONT("Liberation Mono");
    constexpr char32_t Arrow = U'\u27A4';  // which Liberation Mono lacks
    const FontId font = FindFont({"Liberation Mono", true});
    const std::string failure = FailureWithoutDescriptors([font] { FontWith(font, Arrow); });
    EXPECT_TRUE(failure.ends_with(" cannot be read: Too many open files")) << failure;
    EXPECT_NE(FontWith(font, Arrow), font);
}

TEST(FindFont, TheSameRequestIsTheSameFont) {
    const FontId first = FindFont({"Times New Roman", true, false});
    FindFont({"Courier New"});
    EXPECT_EQ(FindFont({"Times New Roman", true, false}), first);
    EXPECT_EQ(FindFont({"times new ROMAN", true, false}), first);
    EXPECT_NE(FindFont({"Times New Roman", false, false}), first);
}

TEST(FindFont, SansFontsThatAreMissingAreAsWideAsArial) {
    NEEDS_FONT("Liberation Sans");
    EXPECT_EQ(File(FindFont({"No Such Sans"})).family, "Liberation Sans");
    EXPECT_EQ(File(FindFont({"No Such Sans", true})).family, "Liberation Sans");
    NEEDS_FONT("DejaVu Sans");
    EXPECT_THAT(File(FindFont({"Verdana"})).family, testing::AnyOf("Verdana", "DejaVu Sans"));
}

TEST(FindFont, SerifAndFixedFontsThatAreMissingStayOfTheirKind) {
    EXPECT_NE(FindFont({"Georgia"}), FindFont({"Arial"}));
    EXPECT_NE(FindFont({"Consolas"}), FindFont({"Arial"}));
    EXPECT_EQ(FindFont({"Courier New"}), FindFont({"courier new"}));
}

TEST(FindFont, NoFamilyIsArial) {
    EXPECT_EQ(FindFont({""}), FindFont({"Arial"}));
}

TEST(FindFont, BoldAndItalicAreFilesOfTheirOwnWhereThereAreAny) {
    NEEDS_FONT("Liberation Sans");
    const FontFile& file = File(FindFont({"Liberation Sans", true, true}));
    EXPECT_TRUE(file.bold && file.italic);
    EXPECT_FALSE(file.syntheticBold || file.syntheticItalic);
    EXPECT_LT(file.italicAngle, 0);
    EXPECT_THAT(file.postscriptName, testing::HasSubstr("BoldItalic"));
}

TEST(FindFont, AStyleThatTheFamilyLacksIsToldAsMade) {
    NEEDS_FONT("DejaVu Math TeX Gyre");
    const FontId plain = FindFont({"DejaVu Math TeX Gyre"});
    const FontId bold = FindFont({"DejaVu Math TeX Gyre", true});
    EXPECT_TRUE(File(bold).syntheticBold);
    EXPECT_FALSE(File(plain).syntheticBold);
    EXPECT_NE(plain, bold);
}

TEST(FindFont, WhateverTheNameIsThereIsAFont) {
    for (const std::string& family :
         {std::string("No Such Family Anywhere"), std::string("\xFF\xC0 \xED\xA0\x80"),
          std::string(100'000, 'x'), std::string("a\0b", 3), std::string("Arial:bold:file=/etc/passwd"),
          std::string("%s%n ' \" <&>")}) {
        const FontId font = FindFont({family});
        EXPECT_TRUE(std::filesystem::exists(File(font).path)) << family.substr(0, 40);
        EXPECT_GT(TextWidth("A", font, 10), 0);
    }
}

TEST(FindFont, ManyNamesOutOfDataKeepTheirFont) {
    const FontId before = FindFont({"Family 1"});
    for (int i = 2; i < 5000; ++i) {
        FindFont({"Family " + std::to_string(i)});
    }
    EXPECT_EQ(FindFont({"Family 1"}), before);
}

TEST(Metrics, AreFractionsOfTheSize) {
    NEEDS_FONT("Liberation Sans");
    const FontMetrics& metrics = Metrics(Arial());
    EXPECT_NEAR(metrics.ascent, 0.905, 0.001);
    EXPECT_NEAR(metrics.descent, 0.212, 0.001);
    EXPECT_NEAR(metrics.lineGap, 0.033, 0.001);
    EXPECT_EQ(metrics.unitsPerEm, 2048);
    EXPECT_GT(metrics.underlinePosition, 0);
    EXPECT_GT(metrics.underlineThickness, 0);
    EXPECT_GT(metrics.strikePosition, 0.2);
    EXPECT_NEAR(File(Arial()).capHeight, 716, 30);
}

// A font file of another name and licence, known to this process alone.
class LicensedFont : public testing::Test {
 protected:
    void SetUp() override {
        NEEDS_FONT("Liberation Sans");
        std::ifstream file(File(FindFont({"Liberation Sans"})).path, std::ios::binary);
        m_bytes.assign(std::istreambuf_iterator<char>(file), {});
    }
    void TearDown() override {
        if (!m_path.empty()) {
            std::remove(m_path.c_str());
        }
    }
    void Install(const std::string& tenLetters, unsigned licence) {
        Rename("Liberation", tenLetters);
        Rename(Wide("Liberation"), Wide(tenLetters));
        const std::size_t entry = m_bytes.find("OS/2");
        ASSERT_NE(entry, std::string::npos);
        std::size_t table = 0;
        for (std::size_t i = entry + 8; i < entry + 12; ++i) {
            table = table << 8 | static_cast<unsigned char>(m_bytes[i]);
        }
        m_bytes[table + 8] = static_cast<char>(licence >> 8);
        m_bytes[table + 9] = static_cast<char>(licence);
        m_path = (std::filesystem::temp_directory_path() / (tenLetters + std::to_string(::getpid()) + ".ttf"))
                     .string();
        std::ofstream(m_path, std::ios::binary) << m_bytes;
        ASSERT_TRUE(FcConfigAppFontAddFile(nullptr, reinterpret_cast<const FcChar8*>(m_path.c_str())));
    }
    const std::string& Path() const { return m_path; }

 private:
    static std::string Wide(const std::string& text) {
        std::string wide;
        for (const char c : text) {
            wide += '\0';
            wide += c;
        }
        return wide;
    }
    void Rename(const std::string& from, const std::string& to) {
        for (std::size_t at = 0; (at = m_bytes.find(from, at)) != std::string::npos;) {
            m_bytes.replace(at, from.size(), to);
        }
    }
    std::string m_bytes, m_path;
};

TEST_F(LicensedFont, WithoutBoundsIsTaken) {
    Install("Permissive", 0);
    EXPECT_EQ(File(FindFont({"Permissive Sans"})).family, "Permissive Sans");
}

TEST_F(LicensedFont, ForPreviewAndPrintIsTaken) {
    Install("Previewing", 0x0004);
    EXPECT_EQ(File(FindFont({"Previewing Sans"})).family, "Previewing Sans");
}

TEST_F(LicensedFont, ThatMustNotBeEmbeddedIsReplaced) {
    Install("Restricted", 0x0002);
    const FontFile& file = File(FindFont({"Restricted Sans"}));
    EXPECT_NE(file.family, "Restricted Sans");
    EXPECT_TRUE(file.embeddable);
}

TEST_F(LicensedFont, ThatMustNotBeSubsetIsReplaced) {
    Install("Wholefonts", 0x0100);
    EXPECT_NE(File(FindFont({"Wholefonts Sans"})).family, "Wholefonts Sans");
}

TEST_F(LicensedFont, WhoseFileIsCutShortIsReplaced) {
    Install("Vanishings", 0);
    std::filesystem::resize_file(Path(), 100);
    EXPECT_NE(File(FindFont({"Vanishings Sans"})).family, "Vanishings Sans");
}

}  // namespace
}  // namespace rdl::text::test
