// SPDX-License-Identifier: GPL-3.0-or-later
// One fuzzer of them all: OXC_FUZZ_TARGET is the function that it feeds. With --words it prints the names of
// the engine's tables as lines of a dictionary, and ends.
#include <QtCore/QCoreApplication>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "fuzz/targets.h"
#include "fuzz/xml_mutator.h"

static void PrintWords() {
    for (const fuzz::Target& target : fuzz::Targets) {
        if (target.run == fuzz::OXC_FUZZ_TARGET && target.words) {
            for (const std::string& word : target.words()) {
                std::puts(fuzz::DictionaryLine(word).c_str());
            }
        }
    }
}

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    if (*argc == 2 && std::string_view((*argv)[1]) == "--words") {
        PrintWords();
        std::exit(0);
    }
    // Lives as long as the fuzzer, which leaves by exit().
    static int one = 1;
    static const QCoreApplication* const application = new QCoreApplication(one, *argv);
    static_cast<void>(application);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::OXC_FUZZ_TARGET({reinterpret_cast<const char*>(data), size});
    return 0;
}

#ifdef OXC_FUZZ_XML
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

// Most changes of single bytes only break the XML: two in three are made to its elements. One in sixteen is
// of the format that the report is written in.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    fuzz::XmlMutator mutator(seed, [](std::string text) {
        const std::size_t room = text.size() + 64;
        const std::size_t old = text.size();
        text.resize(room);
        text.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(text.data()), old, room));
        return text;
    });
    const std::string output = seed % 16 == 0 ? fuzz::WithFormat(input, seed / 16) : mutator.Mutate(input);
    if (output.empty() || output.size() > maxSize) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    output.copy(reinterpret_cast<char*>(data), output.size());
    return output.size();
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* data, std::size_t size,
                                                 const std::uint8_t* other, std::size_t otherSize,
                                                 std::uint8_t* out, std::size_t maxSize, unsigned seed) {
    fuzz::XmlMutator mutator(seed, [](std::string text) { return text; });
    const std::string output = mutator.Cross({reinterpret_cast<const char*>(data), size},
                                             {reinterpret_cast<const char*>(other), otherSize});
    if (output.empty() || output.size() > maxSize) {
        return 0;
    }
    output.copy(reinterpret_cast<char*>(out), output.size());
    return output.size();
}
#endif
