// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/wizards/new_report_wizard.h"

#include <QGuiApplication>
#include <QLocale>
#include <QScreen>
#include <algorithm>

#include "designer/wizards/data_pages.h"
#include "designer/wizards/fields_page.h"
#include "designer/wizards/layout_page.h"
#include "designer/wizards/look_page.h"
#include "platform/contracts/regional.h"

namespace designer {

NewReportWizard::NewReportWizard(QWidget* parent) : QWizard(parent) {
    setObjectName("newReportWizard");
    setWizardStyle(ModernStyle);
    setOption(NoBackButtonOnStartPage);
    m_draft.report.language = RegionTag();
    const bool usesInches = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
    m_draft.report.paper = usesInches ? ReportPaper::Letter : ReportPaper::A4;
    addPage(new DataSourcePage(m_draft));
    addPage(new QueryPage(m_draft));
    addPage(new LayoutPage(m_draft));
    addPage(new FieldsPage(m_draft));
    addPage(new LookPage(m_draft));
    // A page begins at its first control, also on the way back.
    connect(this, &QWizard::currentIdChanged, this, [this] {
        setWindowTitle(
            tr("New Report From Data: %1").arg(currentPage() ? currentPage()->title() : QString()));
        if (currentPage() && currentPage()->focusProxy()) {
            currentPage()->focusProxy()->setFocus();
        }
    });
    const QSize wanted(fontMetrics().averageCharWidth() * 120, fontMetrics().height() * 40);
    const QScreen* const screen = this->screen();
    resize(screen ? wanted.boundedTo(screen->availableSize() * 9 / 10) : wanted);
}

}  // namespace designer
