// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_mail/mail_window.h"

#include <string>

#include "platform/qt/application.h"
#include "platform/qt/display.h"
#include "platform/qt/messages.h"
#include "platform/qt/qt_prompts.h"
#include "tools/oxc_mail/mail_dialog.h"

namespace tools {

int ShowMailWindow(int argc, char** argv) {
    const std::string advice = "oxc-mail --help lists the commands, which need none";
    if (!MayHaveDisplay()) {
        throw RuntimeError(err::DeviceIo, "The window needs a display; " + advice);
    }
    TakeQtMessages();
    AwaitDisplay("oxc-mail", advice, argv);
    Application application(argc, argv);
    QtPrompts prompts;
    SetPrompts(&prompts);
    MailDialog dialog;
    dialog.show();
    QObject::connect(&dialog, &QDialog::finished, &application, &QCoreApplication::quit);
    return QApplication::exec();
}

}  // namespace tools
