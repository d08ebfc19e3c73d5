// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/properties_fixture.h"
#include "support/shown_forms.h"

#include <fstream>

void PropertiesTest::SetUp() {
    Global::DeskWindows = {nullptr, &desk};
    Global::DeskCount = Global::DeskIndex = 1;
    Global::CurrentFolder = "Sales";
    Global::ParCaller.clear();
    Global::ParNames.clear();
    Global::ParValues.clear();
    std::filesystem::create_directories(database.Folder() / "Cache");
    std::ofstream(database.Folder() / "sales.rpt") << "as it is now";
    file = AppPath() + "\\sales.rpt";
    fakes::FakeReportSpec spec;
    spec.description = "Sales of a year";
    spec.formula = "{Sales.Total} > 0";
    spec.tables = 2;
    spec.parameterTypes = {report::StringField, report::NumberField};
    spec.parameterNames = {"Region", "Year"};
    engine.reports[file] = spec;
    AddSchedule(UsualRow());
}

void PropertiesTest::TearDown() {
    if (frmProp* form = Shown()) {
        form->close();
    }
    frame.area.closeAllSubWindows();
    LetGo();
    Global::DeskWindows.clear();
    Global::DeskCount = Global::DeskIndex = 0;
    Global::CurrentFolder.clear();
    Global::SelectedReportID.clear();
}

fakes::ScheduleRow PropertiesTest::UsualRow() {
    return {.title = "Week",
            .path = "Z:\\cache\\sales.rpt",
            .sendTo = "ann@example.com;",
            .subject = "Figures",
            .message = "See\nattached",
            .runAt = "07:30",
            .frequency = "Weekly",
            .nextRun = "2026-11-30",
            .formula = "{Sales.Region} = \"N\"",
            .format = "MS Excel",
            .userName = "sa",
            .password = "pw",
            .loginReq = "T"};
}

void PropertiesTest::AddSchedule(const fakes::ScheduleRow& row) {
    fakes::Insert(database, row);
    const std::string newest = "(select max(ReportID) from ReportScheduler)";
    database.Run("update ReportScheduler set OriginalPath='" + file +
                 "', Parent='Sales' where ReportID=" + newest);
    database.Run("insert into ReportParameter(ReportID,ParName,ParValue) values(" + newest +
                 ",'Region','North'),(" + newest + ",'Year','2025')");
}

void PropertiesTest::Set(const std::string& column, const std::string& value) const {
    database.Run("update ReportScheduler set " + column + "=" + value);
}

std::string PropertiesTest::Stored(const std::string& columns) const {
    return database.Rows("select " + columns + " from ReportScheduler where ReportID=1").at(0);
}

PropertiesTest::Texts PropertiesTest::StoredParameters() const {
    return database.Rows("select ParName,ParValue from ReportParameter where ReportID=1 order by rowid");
}

frmProp& PropertiesTest::Open(const std::string& reportID) {
    Global::SelectedReportID = reportID;
    frmProp& form = frmProp::Instance();
    form.ShowForm();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    return form;
}

frmProp* PropertiesTest::Shown() const {
    return fakes::ShownForm<frmProp>();
}

void PropertiesTest::LetGo() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

std::string PropertiesTest::Text(const char* name) const {
    return dynamic_cast<EditableText&>(Get<QWidget>(name)).Text();
}

void PropertiesTest::Turn(Tab tab) const {
    auto& strip = Get<TabStrip>("TabStrip1");
    QTest::mouseClick(&strip, Qt::LeftButton, {}, strip.tabRect(tab - 1).center());
}

void PropertiesTest::Click(const char* name) const {
    QTest::mouseClick(&Get<QPushButton>(name), Qt::LeftButton);
}

void PropertiesTest::Tick(const char* name) const {
    auto& button = Get<QAbstractButton>(name);
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(button.height() / 2, button.height() / 2));
}

void PropertiesTest::Type(const char* name, const char* text) const {
    auto& box = Get<QWidget>(name);
    box.setFocus();
    ASSERT_TRUE(box.hasFocus()) << name;
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&box, Qt::Key_Delete);
    QTest::keyClicks(&box, text);
}

void PropertiesTest::TabOut() const {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
}

PropertiesTest::Texts PropertiesTest::Lines() const {
    Texts lines;
    ListItems& items = Get<ListView>("lsvPar").ListItems();
    for (int i = 1; i <= items.Count(); ++i) {
        lines.push_back(items(i).Key + "|" + items(i).Text() + "|" + items(i).SubItems(1));
    }
    return lines;
}

std::string PropertiesTest::TickedOption() const {
    std::string ticked;
    for (const auto* option : Shown()->findChildren<OptionButton*>()) {
        ticked += option->Value() ? option->objectName().toStdString() : "";
    }
    return ticked;
}

fakes::Box PropertiesTest::ErrorBox(int number, const std::string& description) {
    return {"Oxbow Courier encountred an error. " + description + " [" + std::to_string(number) + "]",
            vbExclamation, "Oxbow Courier"};
}

fakes::Box PropertiesTest::EndBox(int number, const std::string& description) {
    return {"Run-time error \"" + std::to_string(number) + "\":\n\n" + description, vbCritical,
            "Oxbow Courier"};
}
