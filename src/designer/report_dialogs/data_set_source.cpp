// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DataSetDialog: where the rows come from, a query of the report or a shared data set.
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>
#include <QTabWidget>
#include <algorithm>
#include <utility>

#include "designer/dialogs/note.h"
#include "designer/dialogs/query_form.h"
#include "designer/report_dialogs/data_set_dialog.h"
#include "designer/report_dialogs/query_parameters.h"
#include "designer/report_dialogs/shared_set_form.h"
#include "platform/base/ascii.h"
#include "platform/contracts/runtime.h"

namespace designer {
namespace {

QString TitleOf(rdl::QueryKind kind) {
    return kind == rdl::QueryKind::StoredProcedure ? DataSetDialog::tr("Stored procedure")
           : kind == rdl::QueryKind::Table         ? DataSetDialog::tr("Table")
                                                   : DataSetDialog::tr("Text");
}

}  // namespace

QWidget* DataSetDialog::BuildQueryPage() {
    auto* page = new QWidget(m_tabs);
    m_isShared = new QCheckBox(tr("In a file of its o&wn, which reports share"), page);
    m_isShared->setObjectName("isShared");
    m_shared = new SharedSetForm(m_model.File().parent_path(), page);
    BuildSource(*page);
    m_query = new QueryForm(page);
    m_takesFields = new QCheckBox(tr("&Fields are the columns of the query, and what is computed"), page);
    m_takesFields->setObjectName("takesFields");
    m_takesFields->setToolTip(tr("Without it OK does not run the query, and the fields stay as they are"));
    m_takesFields->setChecked(true);
    page->setFocusProxy(m_isShared);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(m_isShared);
    layout->addLayout(m_sourceForm);
    layout->addWidget(m_shared);
    layout->addWidget(m_query, 1);
    layout->addWidget(m_takesFields);
    return page;
}

void DataSetDialog::BuildSource(QWidget& page) {
    m_source = new QComboBox(&page);
    m_source->setObjectName("source");
    for (const ReportSource& source : m_sources) {
        m_source->addItem(QString::fromStdString(source.name));
    }
    m_sourceNote = new Note(*m_source, &page);
    m_type = new QComboBox(&page);
    m_type->setObjectName("queryType");
    for (const rdl::QueryKindRow& row : rdl::QueryKinds) {
        m_type->addItem(TitleOf(row.kind),
                        QString::fromUtf8(row.name.data(), static_cast<qsizetype>(row.name.size())));
    }
    m_seconds = new QSpinBox(&page);
    m_seconds->setObjectName("seconds");
    m_seconds->setRange(0, rdl::MostQuerySeconds);
    m_seconds->setSpecialValueText(tr("the usual one"));
    m_seconds->setSuffix(tr(" s"));
    m_seconds->setToolTip(tr("How long the query may take in a run"));
    auto* limit = new QLabel(tr("Time l&imit:"), &page);
    limit->setBuddy(m_seconds);
    auto* details = new QWidget(&page);
    auto* line = new QHBoxLayout(details);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_type, 1);
    line->addWidget(limit);
    line->addWidget(m_seconds, 1);
    m_sourceForm = new QFormLayout;
    m_sourceForm->addRow(tr("Data s&ource:"), m_source);
    m_sourceForm->addRow(QString(), m_sourceNote);
    m_sourceForm->addRow(tr("The query is &a:"), details);
    static_cast<QLabel*>(m_sourceForm->labelForField(details))->setBuddy(m_type);
}

// What was typed as a query comes back when it is a query again.
void DataSetDialog::ShowKind() {
    const bool isShared = m_isShared->isChecked();
    if (isShared && !m_isShowing) {
        m_ownQuery = m_query->Query();
    }
    for (int row = 0; row < m_sourceForm->rowCount(); ++row) {
        m_sourceForm->setRowVisible(row, !isShared);
    }
    m_shared->setVisible(isShared);
}

// A source in another file is read from there. Raises RuntimeError.
void DataSetDialog::SetSource(rdl::QueryRequest& request, const ReportSource& source) {
    request.source = source.name;
    request.provider = source.provider;
    request.connectString = source.connectString;
    if (source.isShared) {
        const rdl::SharedSourceText shared = SharedSourceOf(source.reference, request.folder);
        request.provider = shared.provider;
        request.connectString = shared.connectString;
    }
    const Logons& logons = m_model.SourceLogons();
    if (const auto logon = logons.find(source.name); logon != logons.end()) {
        request.user = logon->second.user;
        request.password = logon->second.password;
    }
}

void DataSetDialog::ShowSource() {
    m_types.clear();
    m_sourceNote->Clear();
    rdl::QueryRequest request;
    request.folder = m_model.File().parent_path();
    if (m_isShared->isChecked()) {
        ShowShared(std::move(request));
        return;
    }
    const int index = m_source->currentIndex();
    bool canRun = index >= 0;
    try {
        if (canRun) {
            SetSource(request, m_sources[static_cast<std::size_t>(index)]);
        }
    } catch (const RuntimeError& error) {
        canRun = false;
        m_sourceNote->ShowFault(QString::fromStdString(error.Description()));
    }
    m_query->setEnabled(index >= 0);
    m_takesFields->setChecked(canRun);
    m_takesFields->setEnabled(canRun);
    const std::string query = m_showsShared || m_isShowing ? m_ownQuery : m_query->Query();
    m_showsShared = false;
    m_query->ShowQuery(KindOf(request.provider), request, query,
                       canRun ? QueryForm::CanRun::Yes : QueryForm::CanRun::No);
    ShowRun();
}

// A data source of the report with the name of the shared one is used in its place, as in a run.
void DataSetDialog::ShowShared(rdl::QueryRequest request) {
    const std::optional<rdl::SharedSetText> text = m_shared->Read();
    bool canRun = text.has_value();
    request.sharedSet = m_shared->Reference();
    const auto named = std::find_if(m_sources.begin(), m_sources.end(), [&](const ReportSource& source) {
        return text && SameAscii(source.name, text->source);
    });
    try {
        if (named != m_sources.end()) {
            SetSource(request, *named);
        }
    } catch (const RuntimeError& error) {
        canRun = false;
        m_note->ShowFault(QString::fromStdString(error.Description()));
    }
    m_showsShared = true;
    m_query->setEnabled(canRun);
    m_takesFields->setChecked(canRun);
    m_takesFields->setEnabled(canRun);
    m_query->ShowQuery(KindOf(request.provider), request, text ? text->query : std::string(),
                       canRun ? QueryForm::CanRun::Yes : QueryForm::CanRun::No);
    ShowRun();
}

void DataSetDialog::ShowRun() {
    m_query->SetRun(KindOfType(m_type->currentData().toString().toStdString()), m_parameters->TestValues());
}

bool DataSetDialog::HasSource() {
    if (m_isShared->isChecked()) {
        m_tabs->setCurrentIndex(m_shared->Reference().empty() ? 0 : m_tabs->currentIndex());
        return m_shared->IsComplete();
    }
    if (m_source->currentIndex() >= 0) {
        return true;
    }
    m_tabs->setCurrentIndex(0);
    m_sourceNote->ShowError(m_sources.empty() ? tr("The report has no data source: the menu Report makes one")
                                              : tr("Pick the source of the rows"));
    return false;
}

}  // namespace designer
