// SPDX-License-Identifier: GPL-3.0-or-later
// The windows of the designer: opens and follows them.
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <filesystem>
#include <vector>

#include "designer/window/design_window.h"

namespace designer {

class DesignerProgram : public QObject {
    Q_OBJECT
 public:
    using QObject::QObject;

    // Offers what was not saved when a designer was ended by force, then opens a window for each file, or one
    // with a blank report.
    void Start(const std::vector<std::filesystem::path>& files);

    // Opens the file in a window that shows a blank report, if there is one, else in a new window. A file
    // that a window shows already comes to the front. Returns null if the file cannot be read.
    DesignWindow* Open(const QString& file);
    DesignWindow* NewWindow();
    // Shows a report that no file has yet, in a blank window if there is one.
    void ShowNew(const std::string& bytes, const Logon& logon);
    QList<DesignWindow*> Windows() const;
    // Closes all windows, or none if the user wants to stay at one of them.
    void Quit();

 private:
    void OfferLost();

    QList<QPointer<DesignWindow>> m_windows;
};

}  // namespace designer
