// SPDX-License-Identifier: GPL-3.0-or-later
// What all dialogs of a report have in common: names for those who do not see them, and keys that differ.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <functional>
#include <map>

#include "designer/dialogs/data_source_dialog.h"
#include "designer/report_dialogs/code_dialog.h"
#include "designer/report_dialogs/data_set_dialog.h"
#include "designer/report_dialogs/links_dialog.h"
#include "designer/report_dialogs/page_dialog.h"
#include "designer/report_dialogs/parameters_dialog.h"
#include "designer/report_dialogs/pictures_dialog.h"

namespace designer {
namespace {

const std::string Report =
    R"(<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition">
  <DataSources>
    <DataSource Name="Sales">
      <DataSourceReference>Sales</DataSourceReference>
    </DataSource>
  </DataSources>
  <DataSets>
    <DataSet Name="Orders">
      <Query><DataSourceName>Sales</DataSourceName><CommandText>select 1</CommandText></Query>
    </DataSet>
  </DataSets>
  <ReportSections>
    <ReportSection>
      <Body>
        <ReportItems>
          <Image Name="Logo">
            <ActionInfo><Actions><Action><Drillthrough/></Action></Actions></ActionInfo>
          </Image>
        </ReportItems>
        <Height>8cm</Height>
      </Body>
      <Width>16cm</Width>
      <Page/>
    </ReportSection>
  </ReportSections>
  <ReportParameters>
    <ReportParameter Name="Year">
      <DefaultValue><Values><Value>1</Value></Values></DefaultValue>
      <ValidValues><DataSetReference/></ValidValues>
    </ReportParameter>
  </ReportParameters>
  <EmbeddedImages>
    <EmbeddedImage Name="Tree"/>
  </EmbeddedImages>
</Report>
)";

class AllDialogs : public testing::Test {
 protected:
    using Make = std::function<QDialog*()>;
    std::map<std::string, Make> Dialogs() {
        return {{"source", [this] { return new DataSourceDialog(m_model); }},
                {"set", [this] { return new DataSetDialog(m_model); }},
                {"parameters", [this] { return new ParametersDialog(m_model); }},
                {"page", [this] { return new PageDialog(m_model); }},
                {"pictures", [this] { return new PicturesDialog(m_model, {}); }},
                {"code", [this] { return new CodeDialog(m_model); }},
                {"links", [this] { return new LinksDialog(m_model, {m_model.Items().items.front().id}); }}};
    }
    // Calls `look` with each page of each dialog.
    void ForEachPage(const std::function<void(QDialog&, const std::string&)>& look) {
        for (const auto& [name, make] : Dialogs()) {
            const std::unique_ptr<QDialog> dialog(make());
            dialog->show();
            ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
            auto* tabs = dialog->findChild<QTabWidget*>();
            for (int page = 0; page < (tabs ? tabs->count() : 1); ++page) {
                if (tabs) {
                    tabs->setCurrentIndex(page);
                }
                look(*dialog, name + ", page " + std::to_string(page));
            }
        }
    }

    DesignModel m_model{Document(Report)};
};

TEST_F(AllDialogs, EveryControlHasAName) {
    ForEachPage([](QDialog& dialog, const std::string& where) {
        for (QWidget* control : dialog.findChildren<QWidget*>()) {
            const bool isOwn = !control->objectName().startsWith("qt_") && control->focusProxy() == nullptr;
            if (!control->isVisible() || !isOwn || !(control->focusPolicy() & Qt::TabFocus) ||
                qobject_cast<QTabBar*>(control) || qobject_cast<QTabWidget*>(control) ||
                qobject_cast<QComboBox*>(control->parentWidget())) {
                continue;
            }
            const QAccessibleInterface* shown = QAccessible::queryAccessibleInterface(control);
            ASSERT_TRUE(shown) << where;
            EXPECT_FALSE(shown->text(QAccessible::Name).isEmpty())
                << where << ": " << control->metaObject()->className() << " "
                << control->objectName().toStdString();
        }
    });
}

TEST_F(AllDialogs, NoKeyIsTakenTwice) {
    ForEachPage([](QDialog& dialog, const std::string& where) {
        std::map<QString, QString> taken;
        const auto take = [&](const QString& text) {
            const QString keys = QKeySequence::mnemonic(text).toString();
            if (!keys.isEmpty()) {
                EXPECT_FALSE(taken.contains(keys))
                    << where << ": " << text.toStdString() << " and " << taken[keys].toStdString();
                taken[keys] = text;
            }
        };
        for (const auto* label : dialog.findChildren<QLabel*>()) {
            if (label->isVisible() && label->buddy()) {
                take(label->text());
            }
        }
        for (const auto* button : dialog.findChildren<QAbstractButton*>()) {
            if (button->isVisible()) {
                take(button->text());
            }
        }
        if (const auto* bar = dialog.findChild<QTabBar*>()) {
            for (int page = 0; page < bar->count(); ++page) {
                take(bar->tabText(page));
            }
        }
    });
}

TEST_F(AllDialogs, NoTextIsCutAtALargeFont) {
    QFont large = QApplication::font();
    const QFont usual = large;
    large.setPointSizeF(large.pointSizeF() * 2);
    QApplication::setFont(large);
    ForEachPage([](QDialog& dialog, const std::string& where) {
        dialog.resize(dialog.minimumSizeHint().expandedTo(dialog.size()));
        QApplication::processEvents();
        for (const auto* label : dialog.findChildren<QLabel*>()) {
            if (label->isVisible() && !label->wordWrap() && !label->text().isEmpty()) {
                EXPECT_GE(label->width(), label->sizeHint().width())
                    << where << ": " << label->text().toStdString();
            }
        }
        for (const auto* button : dialog.findChildren<QAbstractButton*>()) {
            if (button->isVisible() && !button->text().isEmpty()) {
                EXPECT_GE(button->width(), button->minimumSizeHint().width())
                    << where << ": " << button->text().toStdString();
            }
        }
    });
    QApplication::setFont(usual);
}

}  // namespace
}  // namespace designer
