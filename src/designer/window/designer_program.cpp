// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/window/designer_program.h"

#include <QMessageBox>
#include <QPushButton>
#include <algorithm>

#include "designer/document/report_file.h"
#include "designer/window/recovery.h"

namespace designer {

void DesignerProgram::Start(const std::vector<std::filesystem::path>& files) {
    OfferLost();
    for (const std::filesystem::path& file : files) {
        Open(QString::fromStdString(file.string()));
    }
    if (Windows().isEmpty()) {
        NewWindow();
    }
}

QList<DesignWindow*> DesignerProgram::Windows() const {
    QList<DesignWindow*> windows;
    for (const auto& window : m_windows) {
        if (window && window->isVisible()) {
            windows.append(window);
        }
    }
    return windows;
}

DesignWindow* DesignerProgram::NewWindow() {
    auto* window = new DesignWindow;
    connect(window, &DesignWindow::WindowRequested, this, [this](const QString& file) {
        if (file.isEmpty()) {
            NewWindow();
        } else {
            Open(file);
        }
    });
    connect(window, &DesignWindow::QuitRequested, this, &DesignerProgram::Quit);
    connect(window, &DesignWindow::ReportMade, this, &DesignerProgram::ShowNew);
    m_windows.removeIf([](const QPointer<DesignWindow>& one) { return one.isNull(); });
    m_windows.append(window);
    window->show();
    return window;
}

void DesignerProgram::ShowNew(const std::string& bytes, const Logon& logon) {
    const QList<DesignWindow*> windows = Windows();
    const auto blank = std::find_if(windows.begin(), windows.end(),
                                    [](const DesignWindow* window) { return window->IsUntouched(); });
    (blank == windows.end() ? NewWindow() : *blank)->ShowNew(bytes, logon);
}

DesignWindow* DesignerProgram::Open(const QString& file) {
    const std::filesystem::path path = std::filesystem::absolute(file.toStdString()).lexically_normal();
    DesignWindow* blank = nullptr;
    for (DesignWindow* window : Windows()) {
        if (IsSameFile(window->File(), path)) {
            window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
            window->raise();
            window->activateWindow();
            return window;
        }
        blank = window->IsUntouched() ? window : blank;
    }
    DesignWindow* window = blank ? blank : NewWindow();
    if (window->OpenFile(path)) {
        return window;
    }
    if (window != blank && Windows().size() > 1) {
        window->close();
    }
    return nullptr;
}

void DesignerProgram::Quit() {
    const QList<DesignWindow*> windows = Windows();
    const bool mayLeave = std::all_of(windows.begin(), windows.end(),
                                      [](DesignWindow* window) { return window->AskToLeave(); });
    for (DesignWindow* window : windows) {
        if (mayLeave) {
            window->close();
        } else {
            window->Stay();
        }
    }
}

void DesignerProgram::OfferLost() {
    for (const LostReport& lost : FindLostReports()) {
        const QString name = lost.original.empty()
                                 ? tr("a new report")
                                 : "\"" + QString::fromStdString(lost.original.string()) + "\"";
        QMessageBox box(QMessageBox::Question, tr("Oxbow Courier Designer"),
                        tr("The designer was ended before the changes of %1 were saved.").arg(name),
                        QMessageBox::NoButton);
        QPushButton* recover = box.addButton(tr("&Recover"), QMessageBox::AcceptRole);
        QPushButton* discard = box.addButton(tr("&Discard"), QMessageBox::DestructiveRole);
        QPushButton* later = box.addButton(tr("&Later"), QMessageBox::RejectRole);
        box.setDefaultButton(recover);
        box.setEscapeButton(later);
        box.exec();
        if (box.clickedButton() == recover) {
            NewWindow()->ShowLost(lost);
        }
        if (box.clickedButton() == recover || box.clickedButton() == discard) {
            ForgetLostReport(lost);
        }
    }
}

}  // namespace designer
