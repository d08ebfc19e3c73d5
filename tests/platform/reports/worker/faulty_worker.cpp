// SPDX-License-Identifier: GPL-3.0-or-later
// A report process with a fault: see the header.
#include "platform/reports/worker/faulty_worker.h"

#include <unistd.h>
#include <QtCore/QCoreApplication>
#include <csignal>
#include <cstdlib>
#include <map>

#include "platform/contracts/regional.h"
#include "platform/posix/program.h"
#include "platform/reports/worker/frames.h"
#include "platform/reports/worker/server.h"

namespace {

using reports::worker::Kind;
using reports::worker::ServerSocket;

std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

void Put(const std::string& bytes) {
    [[maybe_unused]] const auto written = ::write(ServerSocket, bytes.data(), bytes.size());
}

[[noreturn]] void WaitForEver() {
    while (true) {
        ::pause();
    }
}

[[noreturn]] void TakeMemory() {
    constexpr std::size_t Piece = std::size_t{16} << 20;
    while (true) {
        new std::string(Piece, 'x');  // kept for ever
    }
}

const std::map<std::string, void (*)()> Faults{
    {"Crash", [] { std::abort(); }},
    {"Segmentation", [] { std::raise(SIGSEGV); }},
    {"Kill", [] { std::raise(SIGKILL); }},
    {"Exit", [] { ::_exit(faulty::ExitCode); }},
    {"Stop", [] { std::raise(SIGSTOP); }},
    {"Spin",
     [] {
         while (std::getenv("") == nullptr) {
         }
     }},
    {"Sleep", [] { WaitForEver(); }},
    {"Memory", [] { TakeMemory(); }},
    {"Garbage",
     [] {
         Put(std::string(64, '\xFF'));
         WaitForEver();
     }},
    {"WrongAnswer",
     [] {
         Put(reports::worker::Framed(Kind::Answer, "\x01"));
         WaitForEver();
     }},
    {"TwoAnswers",
     [] {
         Put(reports::worker::Framed(Kind::Answer, {}) + reports::worker::Framed(Kind::Answer, {}));
         WaitForEver();
     }},
    {"Hangup",
     [] {
         ::close(ServerSocket);
         WaitForEver();
     }},
    {"ForeignNumber",
     [] {
         Put(reports::worker::Framed(
             Kind::Error, reports::worker::Encoded(reports::worker::Failed{-2147467259, "it's me"})));
         WaitForEver();
     }},
};

void MisbehaveAt(std::size_t operation) {
    const std::string fault = Variable(faulty::Variable);
    const std::size_t colon = fault.find(':');
    if (fault.substr(0, colon) == faulty::Operations[operation]) {
        Faults.at(fault.substr(colon + 1))();
    }
}

// A confined process cannot remove the file: it is looked for, and removed, before that.
bool TakesTurn() {
    const std::string once = Variable(faulty::OnceVariable);
    return once.empty() || ::unlink(once.c_str()) == 0;
}

}  // namespace

int main(int argc, char** argv) {
    PrepareProgram();
    const bool isFaulty = TakesTurn();
    const QCoreApplication application(argc, argv);
    KeepNumbersPlain();
    if (!isFaulty) {
        ::_exit(reports::worker::Serve(ServerSocket));
    }
    MisbehaveAt(0);
    ::_exit(reports::worker::Serve(
        ServerSocket, [](const reports::worker::Operation& operation) { MisbehaveAt(operation.index()); }));
}
