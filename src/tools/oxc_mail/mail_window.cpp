#include "tools/oxc_mail/mail_window.h"

#include "platform/qt/application.h"
#include "platform/qt/qt_prompts.h"
#include "tools/oxc_mail/mail_dialog.h"

namespace tools {

int ShowMailWindow(int argc, char** argv) {
    const bool isOffscreenWanted = qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    FallBackToOffscreen();
    Application application(argc, argv);
    if (!HasDisplay() && !isOffscreenWanted) {
        throw RuntimeError(err::DeviceIo,
                           "The window needs a display; oxc-mail --help tells the commands, which need none");
    }
    QtPrompts prompts;
    SetPrompts(&prompts);
    MailDialog dialog;
    dialog.show();
    QObject::connect(&dialog, &QDialog::finished, &application, &QCoreApplication::quit);
    return QApplication::exec();
}

}  // namespace tools
