// SPDX-License-Identifier: GPL-3.0-or-later
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

// Every property keeps its value until it is set again, FileName included: after a cancel it is still the
// file chosen before, by whichever routine.
class CommonDialog : public QObject {
    Q_OBJECT
 public:
    using QObject::QObject;

    std::string DialogTitle;
    bool CancelError = false;  // true: ShowOpen raises err::DialogCancelled after a cancel
    std::string Filter;        // "Name|pattern|Name|pattern;pattern|"
    std::string InitDir;       // first folder, as a path of the system
    std::string FileName;      // the chosen file, as a path of the system

    // Asks for a file. The user may also name a file that does not exist.
    void ShowOpen();
};

// The function that asks the user. It gets the dialog and returns the chosen file as a path of the system, or
// nullopt after a cancel. A test sets its answer here; an empty function restores the dialog on the screen.
using FileChooser = std::function<std::optional<std::string>(const CommonDialog& asked)>;
void SetFileChooser(FileChooser chooser);
