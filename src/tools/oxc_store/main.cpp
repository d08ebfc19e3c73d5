// SPDX-License-Identifier: GPL-3.0-or-later
// oxc-store: makes, fills, links and tries the store of a team.
#include "platform/posix/program.h"
#include "tools/console.h"
#include "tools/hidden_arguments.h"
#include "tools/oxc_store/check.h"
#include "tools/oxc_store/copy.h"
#include "tools/oxc_store/create.h"
#include "tools/oxc_store/linking.h"
#include "tools/oxc_store/store_arguments.h"

namespace {

using tools::Print;

Link TargetLink(const std::string& text) {
    const tools::StorePlace place = tools::PlaceOf(text);
    if (!place.link) {
        tools::RefuseStore("\"" + text + "\" is no connect string and no link");
    }
    return *place.link;
}

void Copy(const tools::StorePlace& from, const tools::StorePlace& to) {
    const std::int64_t rows = tools::CopyStore(from, to);
    Print("Copied " + std::to_string(rows) + " rows to " + to.Name() + ".\n");
}

tools::IfRunning IfRunning(const tools::StoreArguments& arguments) {
    return arguments.isForced ? tools::IfRunning::Continue : tools::IfRunning::Refuse;
}

void LinkFile(const tools::StoreArguments& arguments) {
    Link link = TargetLink(arguments.to);
    if (!arguments.passwordCommand.empty()) {
        if (!link.password.empty() || !link.passwordCommand.empty()) {
            throw tools::StoreUsageError("--to has a password already, beside --password-command");
        }
        link.passwordCommand = arguments.passwordCommand;
    }
    const std::filesystem::path file =
        arguments.place.empty() ? tools::LiveFile() : std::filesystem::absolute(arguments.place);
    tools::LinkStore(file, link, IfRunning(arguments));
    Print("The file \"" + file.string() + "\" is a link to the store " + link.Name() + ".\n");
}

void Unlink(const tools::StoreArguments& arguments) {
    const std::filesystem::path file =
        arguments.place.empty() ? tools::LiveFile() : std::filesystem::absolute(arguments.place);
    tools::UnlinkStore(file, IfRunning(arguments));
    Print("The file \"" + file.string() + "\" is no link any more.\n");
}

void Run(const tools::StoreArguments& arguments) {
    switch (arguments.command) {
        case tools::StoreCommand::Help:
            return Print(tools::StoreUsage());
        case tools::StoreCommand::Version:
            return Print("oxc-store " OXC_VERSION "\n");
        case tools::StoreCommand::Create: {
            const Link link = TargetLink(arguments.to);
            tools::CreateStore(link, arguments.editors, arguments.schedulers);
            return Print("The store " + link.Name() + " is ready.\n");
        }
        case tools::StoreCommand::Copy:
            return Copy(tools::PlaceOf(arguments.from), tools::PlaceOf(arguments.to));
        case tools::StoreCommand::Link:
            return LinkFile(arguments);
        case tools::StoreCommand::Unlink:
            return Unlink(arguments);
        case tools::StoreCommand::Check:
            return Print(tools::CheckStore(tools::PlaceOf(arguments.place)));
        case tools::StoreCommand::Backup:
            return Copy(tools::PlaceOf(arguments.place),
                        {std::filesystem::absolute(arguments.output), std::nullopt});
    }
}

}  // namespace

int main(int argc, char** argv) {
    PrepareProgram();
    try {
        const std::vector<std::string> arguments(argv + 1, argv + argc);
        tools::HideConnectStrings(argc, argv);
        Run(tools::ParseStoreArguments(arguments));
        return 0;
    } catch (const tools::StoreUsageError& error) {
        tools::ComplainOfUsage("oxc-store", error.what());
        return 2;
    } catch (...) {
        tools::Complain("oxc-store", CurrentError().Description());
        return 1;
    }
}
