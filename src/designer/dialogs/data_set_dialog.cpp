// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/data_set_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QScreen>
#include <algorithm>

#include "designer/dialogs/note.h"
#include "designer/dialogs/part_form.h"
#include "designer/dialogs/query_form.h"
#include "platform/contracts/runtime.h"

namespace designer {
namespace {

std::vector<std::string> OwnSets(const Document& document) {
    std::vector<std::string> names;
    for (const ReportSet& set : SetsOf(document)) {
        if (!set.isShared) {
            names.push_back(set.name);
        }
    }
    return names;
}

}  // namespace

DataSetDialog::DataSetDialog(DesignModel& model, const Logons& logons, QWidget* parent)
    : QDialog(parent),
      m_model(model),
      m_logons(logons),
      m_sources(SourcesOf(model.Source())),
      m_part(new PartForm(model.Source(), DataPart::Set, OwnSets(model.Source()), this)) {
    setObjectName("dataSetDialog");
    setWindowTitle(tr("Data Set"));
    BuildForm();
    connect(m_part, &PartForm::Chosen, this, &DataSetDialog::ShowSet);
    connect(m_part, &PartForm::Changed, m_part, &PartForm::LockChoice);
    connect(m_source, &QComboBox::currentIndexChanged, this, [this] {
        if (!m_isShowing) {
            m_part->LockChoice();
            ShowSource();
        }
    });
    connect(m_query, &QueryForm::Edited, this, [this] {
        if (!m_isShowing) {
            m_part->LockChoice();
        }
    });
    ShowSet();
    const QSize wanted(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 36);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

void DataSetDialog::BuildForm() {
    m_source = new QComboBox(this);
    m_source->setObjectName("source");
    for (const ReportSource& source : m_sources) {
        m_source->addItem(QString::fromStdString(source.name));
    }
    m_sourceNote = new Note(*m_source, this);
    m_query = new QueryForm(this);
    m_takesFields = new QCheckBox(tr("&Fields are the columns of the query, and what is computed"), this);
    m_takesFields->setObjectName("takesFields");
    m_takesFields->setToolTip(tr("Without it OK does not run the query, and the fields stay as they are"));
    m_takesFields->setChecked(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &DataSetDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &DataSetDialog::reject);
    auto* form = new QFormLayout;
    form->addRow(tr("Data s&ource:"), m_source);
    form->addRow(QString(), m_sourceNote);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_part);
    layout->addLayout(form);
    layout->addWidget(m_query, 1);
    layout->addWidget(m_takesFields);
    layout->addWidget(buttons);
}

void DataSetDialog::ShowSet() {
    m_isShowing = true;
    m_old = {};
    for (ReportSet& set : SetsOf(m_model.Source())) {
        if (set.name == m_part->Old()) {
            m_old = std::move(set);
        }
    }
    m_source->setCurrentIndex(m_old.name.empty() ? std::min(0, m_source->count() - 1)
                                                 : m_source->findText(QString::fromStdString(m_old.source)));
    ShowSource();
    m_isShowing = false;
}

// A source in another file is not read here.
void DataSetDialog::ShowSource() {
    m_sourceNote->Clear();
    const int index = m_source->currentIndex();
    const ReportSource* source = index < 0 ? nullptr : &m_sources[static_cast<std::size_t>(index)];
    const bool canRun = source && !source->isShared;
    m_query->setEnabled(source != nullptr);
    m_takesFields->setChecked(canRun);
    m_takesFields->setEnabled(canRun);
    rdl::QueryRequest request;
    if (canRun) {
        request.provider = source->provider;
        request.connectString = source->connectString;
        request.parameters = m_old.parameters;
        request.folder = m_model.File().parent_path();
        const auto logon = m_logons.find(source->name);
        if (logon != m_logons.end()) {
            request.user = logon->second.user;
            request.password = logon->second.password;
        }
    } else if (source) {
        m_sourceNote->ShowText(tr("This source is in another file: the designer does not read its rows."));
    }
    m_query->ShowQuery(KindOf(request.provider), request, m_isShowing ? m_old.query : m_query->Query(),
                       canRun);
}

bool DataSetDialog::TakeFields(ReportSet& set) {
    if (!m_query->Run()) {
        return false;
    }
    try {
        std::vector<ReportColumn> columns = ColumnsOf(*m_query->Rows());
        for (ReportColumn& column : columns) {
            if (m_query->Rows()->RowCount() == 0) {
                column.typeName.clear();  // nobody knows it
            }
        }
        set.fields = FieldsFor(columns, m_old.fields);
        return true;
    } catch (const RuntimeError& error) {
        m_query->ShowError(QString::fromStdString(error.Description()));
        return false;
    }
}

void DataSetDialog::accept() {
    if (!m_part->IsComplete()) {
        return;
    }
    if (m_source->currentIndex() < 0) {
        m_sourceNote->ShowError(m_sources.empty()
                                    ? tr("The report has no data source: the menu Report makes one")
                                    : tr("Pick the source of the rows"));
        return;
    }
    ReportSet set{.name = m_part->Name(),
                  .source = m_source->currentText().toStdString(),
                  .query = m_query->Query(),
                  .fields = m_old.fields};
    if (m_takesFields->isChecked() && !TakeFields(set)) {
        return;
    }
    const std::string old = m_part->Old();
    const QString step = old.empty() ? tr("Add Data Set %1") : tr("Change Data Set %1");
    const bool isDone = m_model.Edit(step.arg(QString::fromStdString(set.name)),
                                     [&](Document& document) { PutSet(document, old, set); });
    if (isDone) {
        QDialog::accept();
    }
}

}  // namespace designer
