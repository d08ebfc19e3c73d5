// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/qt_prompts.h"

#include <QApplication>
#include <QFontMetrics>
#include <QGridLayout>
#include <QInputDialog>
#include <QMessageBox>

#include "platform/contracts/process.h"

namespace {

QMessageBox::Icon IconOf(int flags) {
    constexpr int IconBits = 0x70;
    switch (flags & IconBits) {
        case vbCritical:
            return QMessageBox::Critical;
        case vbQuestion:
            return QMessageBox::Question;
        case vbExclamation:
            return QMessageBox::Warning;
        case vbInformation:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

// Widens a box for its title: a box is as wide as its text, and the window manager cuts off a longer title.
void MakeRoomForTitle(QMessageBox& box) {
    auto* layout = qobject_cast<QGridLayout*>(box.layout());
    if (layout == nullptr) {
        return;
    }
    constexpr int FrameCharacters = 12;  // average characters for its icon and buttons
    const QFontMetrics metrics(QApplication::font("QMdiSubWindowTitleBar"));
    const int width =
        metrics.horizontalAdvance(box.windowTitle()) + FrameCharacters * metrics.averageCharWidth();
    layout->addItem(new QSpacerItem(width, 0), layout->rowCount(), 0, 1, layout->columnCount());
}

QString TitleOf(const std::string& title) {
    return QString::fromStdString(title.empty() ? AppTitle : title);
}

// There may be no user at the scheduler's screen: its boxes are written to standard error as well.
void JournalOfScheduler(const std::string& text, const std::string& title) {
    if (!Command().empty()) {
        JournalBox(text, title);
    }
}

}  // namespace

int QtPrompts::Box(const std::string& text, int flags, const std::string& title) {
    JournalOfScheduler(text, title);
    constexpr int ButtonBits = 0x0F;
    const bool question = (flags & ButtonBits) == vbYesNo;
    QMessageBox box(QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setWindowTitle(TitleOf(title));
    box.setText(QString::fromStdString(text));
    box.setIcon(question && IconOf(flags) == QMessageBox::NoIcon ? QMessageBox::Question : IconOf(flags));
    box.setStandardButtons(question ? QMessageBox::Yes | QMessageBox::No
                                    : QMessageBox::StandardButtons(QMessageBox::Ok));
    MakeRoomForTitle(box);
    const int button = box.exec();
    if (!question) {
        return vbOK;
    }
    return button == QMessageBox::Yes ? vbYes : vbNo;
}

std::string QtPrompts::Input(const std::string& prompt, const std::string& title, const std::string& preset) {
    JournalOfScheduler(prompt, title);
    bool accepted = false;
    const QString text =
        QInputDialog::getText(QApplication::activeWindow(), TitleOf(title), QString::fromStdString(prompt),
                              QLineEdit::Normal, QString::fromStdString(preset), &accepted);
    return accepted ? text.toStdString() : std::string();
}
