// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/wizards/data_pages.h"

#include <QVBoxLayout>
#include <filesystem>

#include "designer/dialogs/query_form.h"
#include "designer/dialogs/source_form.h"
#include "platform/contracts/runtime.h"

namespace designer {

DataSourcePage::DataSourcePage(ReportDraft& draft) : m_draft(draft), m_form(new SourceForm(this)) {
    setObjectName("sourcePage");
    setTitle(tr("Data source"));
    setSubTitle(tr("Where is the data that the report shows?"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_form);
    layout->addStretch(1);
    setFocusProxy(m_form->focusProxy());
}

bool DataSourcePage::validatePage() {
    if (!m_form->Works()) {
        return false;
    }
    m_draft.kind = &m_form->Kind();
    m_draft.request = m_form->Request();
    m_draft.report.provider = m_form->Provider();
    m_draft.report.connectString = ConnectStringOf(*m_draft.kind, m_form->Fields());
    const std::filesystem::path file = m_form->Fields().file;
    const bool isFile = m_draft.kind->shape == SourceShape::File;
    m_draft.report.sourceName = isFile ? file.stem().string() : m_form->Fields().database;
    m_draft.subject = isFile ? file.stem().string() : std::string();
    return true;
}

QueryPage::QueryPage(ReportDraft& draft) : m_draft(draft), m_form(new QueryForm(this)) {
    setObjectName("queryPage");
    setTitle(tr("Rows"));
    m_form->HasNoParameters();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_form, 1);
    setFocusProxy(m_form->focusProxy());
}

void QueryPage::initializePage() {
    setSubTitle(m_draft.kind->IsSql()
                    ? tr("Pick a table, or type a query for the rows that the report shows.")
                    : tr("These are the rows that the report shows."));
    m_form->SetSource(*m_draft.kind, m_draft.request);
    setFocusProxy(m_form->focusProxy());
}

bool QueryPage::validatePage() {
    if (!m_form->Run()) {
        return false;
    }
    try {
        m_draft.report.columns = ColumnsOf(*m_form->Rows());
    } catch (const RuntimeError& error) {
        m_form->ShowError(QString::fromStdString(error.Description()));
        return false;
    }
    m_draft.rows = *m_form->Rows();
    m_draft.report.query = m_form->Query();
    if (m_draft.kind->IsSql()) {
        m_draft.subject = m_form->TableOfQuery();
    }
    return true;
}

}  // namespace designer
