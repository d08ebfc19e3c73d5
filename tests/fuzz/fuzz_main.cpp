// SPDX-License-Identifier: GPL-3.0-or-later
// One fuzzer of them all: OXC_FUZZ_TARGET is the function that it feeds.
#include <QtCore/QCoreApplication>
#include <cstddef>
#include <cstdint>

#include "fuzz/targets.h"
#include "fuzz/xml_mutator.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    // Lives as long as the fuzzer, which leaves by exit().
    static int one = 1;
    static const QCoreApplication* const application = new QCoreApplication(one, *argv);
    static_cast<void>(argc);
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

// Most changes of single bytes only break the XML: two in three are made to its elements.
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
    const std::string output = mutator.Mutate(input);
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
