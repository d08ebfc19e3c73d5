// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/data_source_dialog.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>
#include <algorithm>

#include "designer/dialogs/part_form.h"
#include "designer/dialogs/source_form.h"

namespace designer {
namespace {

std::vector<std::string> OwnSources(const Document& document) {
    std::vector<std::string> names;
    for (const ReportSource& source : SourcesOf(document)) {
        if (!source.isShared) {
            names.push_back(source.name);
        }
    }
    return names;
}

}  // namespace

DataSourceDialog::DataSourceDialog(DesignModel& model, Logons& logons, QWidget* parent)
    : QDialog(parent),
      m_model(model),
      m_logons(logons),
      m_part(new PartForm(model.Source(), DataPart::Source, OwnSources(model.Source()), this)),
      m_form(new SourceForm(this)) {
    setObjectName("dataSourceDialog");
    setWindowTitle(tr("Data Source"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_part);
    layout->addWidget(m_form);
    layout->addStretch(1);
    layout->addWidget(buttons);
    m_form->SetFolder(model.File().parent_path());
    connect(buttons, &QDialogButtonBox::accepted, this, &DataSourceDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &DataSourceDialog::reject);
    connect(m_part, &PartForm::Chosen, this, &DataSourceDialog::ShowSource);
    connect(m_part, &PartForm::Changed, m_part, &PartForm::LockChoice);
    connect(m_form, &SourceForm::Changed, this, [this] {
        if (!m_isShowing) {
            m_part->LockChoice();
        }
    });
    ShowSource();
    resize(fontMetrics().averageCharWidth() * 80, sizeHint().height());
}

void DataSourceDialog::ShowSource() {
    m_isShowing = true;
    const std::vector<ReportSource> sources = SourcesOf(m_model.Source());
    const auto found = std::find_if(sources.begin(), sources.end(),
                                    [&](const ReportSource& source) { return source.name == m_part->Old(); });
    if (found == sources.end()) {
        m_form->SetSource(std::string(SourceKinds().front().provider), {});
    } else {
        m_form->SetSource(found->provider, found->connectString);
        const auto logon = m_logons.find(found->name);
        if (logon != m_logons.end() && !m_form->Fields().keepsLogon) {
            m_form->SetLogon(logon->second.user, logon->second.password);
        }
    }
    m_isShowing = false;
}

void DataSourceDialog::accept() {
    if (!m_part->IsComplete() || !m_form->IsComplete()) {
        return;
    }
    const SourceFields fields = m_form->Fields();
    const ReportSource source{.name = m_part->Name(),
                              .provider = m_form->Provider(),
                              .connectString = ConnectStringOf(m_form->Kind(), fields)};
    const std::string old = m_part->Old();
    const QString step = old.empty() ? tr("Add Data Source %1") : tr("Change Data Source %1");
    const bool isDone = m_model.Edit(step.arg(QString::fromStdString(source.name)),
                                     [&](Document& document) { PutSource(document, old, source); });
    if (isDone) {
        m_logons.erase(old);
        if (!fields.user.empty() && !fields.keepsLogon) {
            m_logons[source.name] = {.user = fields.user, .password = fields.password};
        }
        QDialog::accept();
    }
}

}  // namespace designer
