// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/folders/common_dialog.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStringList>

#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"

namespace {

FileChooser& Chooser() {
    static FileChooser chooser;
    return chooser;
}

QString MachinePath(const std::string& path) {
    try {
        return QString::fromStdString(paths::ToMachine(path).string());
    } catch (const RuntimeError&) {
        return {};  // a drive that this machine does not have
    }
}

// Returns the nearest existing folder of the path, or the user's home folder.
QString StartFolder(const std::string& path) {
    if (path.empty()) {
        return QDir::homePath();
    }
    QString folder = QDir::cleanPath(MachinePath(path));
    while (!folder.isEmpty() && !QFileInfo(folder).isDir()) {
        const qsizetype end = folder.lastIndexOf('/');
        folder = end > 0 ? folder.left(end) : (folder == "/" || end < 0 ? QString() : QString("/"));
    }
    return folder.isEmpty() ? QDir::homePath() : folder;
}

// Qt reads the patterns from the parentheses at the end of a filter's name.
QStringList NameFilters(const std::string& filter) {
    const QStringList pieces = QString::fromStdString(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < pieces.size(); i += 2) {
        const QString patterns = "(" + QString(pieces[i + 1]).replace(';', ' ') + ")";
        filters << (pieces[i].endsWith(patterns) ? pieces[i] : pieces[i] + " " + patterns);
    }
    return filters;
}

std::optional<std::string> AskOnScreen(const CommonDialog& asked) {
    QFileDialog dialog(QApplication::activeWindow(), QString::fromStdString(asked.DialogTitle));
    dialog.setFileMode(QFileDialog::AnyFile);
    if (!asked.Filter.empty()) {
        dialog.setNameFilters(NameFilters(asked.Filter));
    }
    const QString folder = StartFolder(asked.InitDir);
    dialog.setDirectory(folder);
    const QFileInfo last(asked.FileName.empty() ? QString() : MachinePath(asked.FileName));
    if (last.isFile() && last.absolutePath() == folder) {
        dialog.selectFile(last.fileName());
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return paths::FromMachine(dialog.selectedFiles().constFirst().toStdString());
}

}  // namespace

void CommonDialog::ShowOpen() {
    const std::optional<std::string> file = Chooser() ? Chooser()(*this) : AskOnScreen(*this);
    if (file) {
        FileName = *file;
    } else if (CancelError) {
        throw RuntimeError(err::DialogCancelled, "Cancel was selected.");
    }
}

void SetFileChooser(FileChooser chooser) {
    Chooser() = std::move(chooser);
}
