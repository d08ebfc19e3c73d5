// The common file dialog of a form: set it up, show it, read FileName.
#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace err {
inline constexpr std::int32_t DialogCancelled = 32755;
}  // namespace err

// Everything that is set stays set until it is set anew, FileName included: after a cancel it is still the
// file chosen the time before, by whichever routine.
class CommonDialog : public QObject {
    Q_OBJECT
 public:
    using QObject::QObject;

    std::string DialogTitle;
    bool CancelError = false;  // whether ShowOpen raises err::DialogCancelled when it is cancelled
    std::string Filter;        // "Name|pattern|Name|pattern;pattern|"
    std::string InitDir;       // where the dialog starts, as the system writes paths
    std::string FileName;      // the chosen file, as the system writes paths

    // Asks for a file. One that does not exist may be named as well.
    void ShowOpen();
};

// Who asks the user: gets the dialog as it is set up and returns the chosen file as the system writes paths,
// or nothing for a cancel. A test puts its answer here; empty returns to the dialog on the screen.
using FileChooser = std::function<std::optional<std::string>(const CommonDialog& asked)>;
void SetFileChooser(FileChooser chooser);
