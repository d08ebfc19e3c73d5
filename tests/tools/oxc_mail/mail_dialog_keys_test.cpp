// SPDX-License-Identifier: GPL-3.0-or-later
// The window of the mail profile by the keyboard alone.
#include <gmock/gmock.h>

#include <QApplication>
#include <QComboBox>
#include <QKeySequence>
#include <map>
#include <set>

#include "tools/oxc_mail/mail_dialog_kit.h"

TEST_F(MailWindow, MnemonicsOfWhatIsSeenTogetherDiffer) {
    WriteProfile("Transport=smtp\nHost=h\n");
    Open();
    auto* transport = Find<QComboBox>("cboTransport");
    for (int page = 0; page < transport->count(); ++page) {
        transport->setCurrentIndex(page);
        std::map<QString, std::string> known;
        for (const QWidget* control : m_dialog->findChildren<QWidget*>()) {
            const QString key = QKeySequence::mnemonic(control->property("text").toString()).toString();
            if (control->isVisible() && !key.isEmpty()) {
                EXPECT_TRUE(known.emplace(key, control->objectName().toStdString()).second)
                    << key.toStdString() << " of " << known[key];
            }
        }
        EXPECT_GE(known.size(), 8u);
    }
}

namespace {

// Controls whose middles are nearly at one height stand in a row.
bool StandsAfter(const QWidget& dialog, const QWidget& later, const QWidget& earlier) {
    constexpr int Near = 12;  // pixels
    const auto middle = [&](const QWidget& control) {
        return control.mapTo(&dialog, control.rect().center());
    };
    const int below = middle(later).y() - middle(earlier).y();
    return below > Near || (below >= -Near && middle(later).x() > middle(earlier).x());
}

}  // namespace

TEST_F(MailWindow, TabWalksThroughTheFieldsAsTheyStand) {
    WriteProfile("Transport=smtp\nHost=h\n");
    for (const int transport : {0, 1, 2}) {
        SCOPED_TRACE(transport);
        Open();
        Find<QComboBox>("cboTransport")->setCurrentIndex(transport);
        QApplication::processEvents();
        std::set<QWidget*> fields;
        for (QWidget* control : m_dialog->findChildren<QWidget*>()) {
            if (control->isVisible() && control->isEnabled() && (control->focusPolicy() & Qt::TabFocus) &&
                control->objectName().size() > 3 && !control->focusProxy()) {
                fields.insert(control);
            }
        }
        QWidget* first = Edit("txtName");
        first->setFocus();
        for (QWidget* before = first; fields.erase(before) == 1;) {
            QTest::keyClick(before, Qt::Key_Tab);
            QWidget* focused = QApplication::focusWidget();
            if (focused != first) {
                EXPECT_TRUE(StandsAfter(*m_dialog, *focused, *before))
                    << focused->objectName().toStdString() << " after " << before->objectName().toStdString();
            }
            before = focused;
        }
        for (const QWidget* missed : fields) {
            ADD_FAILURE() << missed->objectName().toStdString() << " is not reached";
        }
    }
}
