#include "tools/oxc_mail/mail_window.h"

#include "platform/qt/application.h"
#include "platform/qt/qt_prompts.h"
#include "tools/oxc_mail/mail_dialog.h"

namespace tools {
namespace {

[[noreturn]] void RefuseWithoutDisplay() {
    throw RuntimeError(err::DeviceIo,
                       "The window needs a display; oxc-mail --help tells the commands, which need none");
}

}  // namespace

int ShowMailWindow(int argc, char** argv) {
    if (!MayHaveDisplay()) {
        RefuseWithoutDisplay();
    }
    // A display that does not answer must not end the process by force.
    const bool isPlatformChosen = qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    FallBackToOffscreen();
    Application application(argc, argv);
    if (!HasDisplay() && !isPlatformChosen) {
        RefuseWithoutDisplay();
    }
    QtPrompts prompts;
    SetPrompts(&prompts);
    MailDialog dialog;
    dialog.show();
    QObject::connect(&dialog, &QDialog::finished, &application, &QCoreApplication::quit);
    return QApplication::exec();
}

}  // namespace tools
