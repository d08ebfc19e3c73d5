// SPDX-License-Identifier: GPL-3.0-or-later
// oxc-design: the designer of report files.
#include <QIcon>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "designer/window/designer_program.h"
#include "platform/contracts/runtime.h"
#include "platform/posix/program.h"
#include "platform/qt/application.h"
#include "platform/qt/display.h"
#include "platform/qt/messages.h"
#include "platform/qt/qt_prompts.h"
#include "platform/regfile/registry_file.h"
#include "tools/console.h"

namespace {

constexpr const char* Usage =
    "oxc-design                    opens a blank report (needs a display)\n"
    "oxc-design FILE...            opens each report file in a window of its own\n"
    "oxc-design --help | --version\n"
    "\n"
    "Exit code: 0 done; 1 there is no display; 2 wrong usage.\n";

int ShowWindows(int argc, char** argv, const std::vector<std::filesystem::path>& files) {
    if (!MayHaveDisplay()) {
        throw RuntimeError(err::DeviceIo, "The designer needs a display");
    }
    TakeQtMessages();
    AwaitDisplay("oxc-design", "oxc-report runs reports without one", argv);
    Application application(argc, argv);
    QtPrompts prompts;
    SetPrompts(&prompts);
    designer::DesignerProgram program;
    program.Start(files);
    QObject::connect(&application, &QGuiApplication::lastWindowClosed, &application, &QCoreApplication::quit);
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    PrepareProgram();
    try {
        SetRegistry(&SettingsFile());
        const std::vector<std::string> arguments{argv + 1, argv + argc};
        for (const std::string& argument : arguments) {
            if (argument == "--help" || argument == "-h") {
                std::cout << Usage;
                return 0;
            }
            if (argument == "--version") {
                std::cout << "oxc-design " OXC_VERSION "\n";
                return 0;
            }
            if (argument.size() > 1 && argument.front() == '-') {
                tools::ComplainOfUsage("oxc-design", tools::Quoted(argument) + " is no option");
                return 2;
            }
        }
        return ShowWindows(argc, argv, {arguments.begin(), arguments.end()});
    } catch (...) {
        tools::Complain("oxc-design", CurrentError().Description());
        return 1;
    }
}
