// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <libdeflate.h>
#include <sys/resource.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

#include "rdl/writers/pdf/file.h"
#include "rdl/writers/pdf/pdf_kit.h"

namespace rdl::writers {
namespace {

// Texts of different lengths that shrink.
std::string StreamText(int number) {
    std::string text;
    for (int line = 0; line < 20 + number * 7 % 90; ++line) {
        text += "0 0 1 rg " + std::to_string(line * number) + " 20 30 re f\n";
    }
    return text;
}

void WriteStreams(PdfFile& file, int count) {
    for (int i = 0; i < count; ++i) {
        const int reserved = file.Reserve();
        file.Stream("/Nr " + std::to_string(i), StreamText(i));
        file.Object(reserved, "<</Before " + std::to_string(i) + ">>");
        file.Stream("", "not packed", PdfFile::Filter::None);
    }
}

std::size_t Threads() {
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return static_cast<std::size_t>(std::distance(begin(tasks), end(tasks)));
}

std::string Document(int count, std::size_t* threads = nullptr) {
    StringOutput output;
    PdfFile file(output);
    WriteStreams(file, count);
    if (threads) {
        *threads = Threads();
    }
    const int pages = file.Object("<</Type/Pages/Count 0/Kids[]>>");
    const int catalog = file.Object("<</Type/Catalog/Pages " + PdfReference(pages) + ">>");
    file.Finish(catalog, file.Object("<<>>"), "seed");
    return output.bytes;
}

// The object where the cross-reference table says that it is.
std::string ObjectAt(const std::string& pdf, int number) {
    const std::string entry = pdf.substr(pdf.find("xref\n") + std::strlen("xref\n"));
    const std::size_t table = entry.find('\n') + 1;
    const std::size_t begin = std::stoul(entry.substr(table + 20 * static_cast<std::size_t>(number), 10));
    return pdf.substr(begin, pdf.find("endobj", begin) - begin);
}

std::string Inflated(const std::string& object) {
    const std::size_t size = std::stoul(object.substr(object.find("/Length ") + std::strlen("/Length ")));
    const std::string packed = object.substr(object.find("stream\n") + std::strlen("stream\n"), size);
    std::string text(std::size_t{1} << 16, '\0');
    std::size_t length = 0;
    libdeflate_decompressor* const inflater = libdeflate_alloc_decompressor();
    const auto result =
        libdeflate_zlib_decompress(inflater, packed.data(), packed.size(), text.data(), text.size(), &length);
    libdeflate_free_decompressor(inflater);
    return result == LIBDEFLATE_SUCCESS ? text.substr(0, length) : "damaged";
}

std::size_t AddressSpace() {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * 4096;
}

TEST(PdfCompression, ManyStreamsAreWhereTheTableSays) {
    const std::string pdf = Document(300);
    test::ExpectSound(pdf);
    for (int i = 0; i < 300; ++i) {
        const std::string number = std::to_string(i);
        EXPECT_EQ(ObjectAt(pdf, 3 * i + 1),
                  std::to_string(3 * i + 1) + " 0 obj\n<</Before " + number + ">>\n");
        const std::string packed = ObjectAt(pdf, 3 * i + 2);
        ASSERT_TRUE(packed.starts_with(std::to_string(3 * i + 2) + " 0 obj\n<</Nr " + number + "/Length "));
        ASSERT_EQ(Inflated(packed), StreamText(i));
        EXPECT_EQ(ObjectAt(pdf, 3 * i + 3),
                  std::to_string(3 * i + 3) + " 0 obj\n<</Length 10>>\nstream\nnot packed\nendstream\n");
    }
}

TEST(PdfCompression, OnlyLongDocumentHasAThread) {
    if (std::thread::hardware_concurrency() < 2) {
        GTEST_SKIP() << "one processor";
    }
    const std::size_t before = Threads();
    {
        StringOutput output;
        PdfFile file(output);
        WriteStreams(file, 16);
        EXPECT_EQ(Threads(), before);
        WriteStreams(file, 1);
        EXPECT_EQ(Threads(), before + 1);
    }
    EXPECT_EQ(Threads(), before);
}

// The thread's stack does not fit into what is left of the address space. The C library keeps the stacks of
// ended threads, so the process is a new one.
TEST(PdfCompression, ProcessWithoutRoomForAThreadWritesTheSameBytes) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::filesystem::path path = std::filesystem::temp_directory_path() / "pdf-without-a-thread";
    const auto writeWithoutRoom = [&path] {
        const rlim_t most = AddressSpace() + (rlim_t{6} << 20);
        const rlimit limit{most, most};
        std::size_t threads = 0;
        if (setrlimit(RLIMIT_AS, &limit) == 0) {
            const std::string bytes = Document(100, &threads);
            std::ofstream(path, std::ios::binary) << bytes;
        }
        std::_Exit(static_cast<int>(threads));
    };
    EXPECT_EXIT(writeWithoutRoom(), testing::ExitedWithCode(1), "");
    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), {});
    std::filesystem::remove(path);
    EXPECT_TRUE(bytes == Document(100));
}

TEST(PdfCompression, ErrorOfTheOutputEndsTheDocument) {
    struct FullOutput : Output {
        void Write(const char*, std::size_t size) override {
            written += size;
            if (written > 20'000) {
                throw std::runtime_error("full");
            }
        }
        using Output::Write;
        std::size_t written = 0;
    } output;
    const std::size_t before = Threads();
    {
        PdfFile file(output);
        EXPECT_THROW(WriteStreams(file, 1000), std::runtime_error);
    }
    EXPECT_EQ(Threads(), before);
}

}  // namespace
}  // namespace rdl::writers
