// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/data_source_dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "designer/dialogs/busy_pointer.h"
#include "designer/dialogs/note.h"
#include "designer/dialogs/part_form.h"
#include "designer/dialogs/query_run.h"
#include "designer/dialogs/shared_source_dialog.h"
#include "designer/dialogs/source_form.h"
#include "platform/contracts/runtime.h"

namespace designer {
namespace {

std::vector<std::string> NamesOf(const std::vector<ReportSource>& sources) {
    std::vector<std::string> names;
    names.reserve(sources.size());
    for (const ReportSource& source : sources) {
        names.push_back(source.name);
    }
    return names;
}

}  // namespace

DataSourceDialog::DataSourceDialog(DesignModel& model, QWidget* parent)
    : QDialog(parent),
      m_model(model),
      m_part(new PartForm(model.Source(), DataPart::Source, NamesOf(SourcesOf(model.Source())), this)),
      m_form(new SourceForm(this)),
      m_isShared(new QCheckBox(tr("In a fi&le of its own, which reports share"), this)) {
    setObjectName("dataSourceDialog");
    setWindowTitle(tr("Data Source"));
    m_isShared->setObjectName("isShared");
    m_shared = BuildShared();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_part);
    layout->addWidget(m_isShared);
    layout->addWidget(m_form);
    layout->addWidget(m_shared);
    layout->addStretch(1);
    layout->addWidget(buttons);
    setTabOrder(m_isShared, m_form);
    m_form->SetFolder(model.File().parent_path());
    connect(buttons, &QDialogButtonBox::accepted, this, &DataSourceDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &DataSourceDialog::reject);
    connect(m_part, &PartForm::Chosen, this, &DataSourceDialog::ShowSource);
    connect(m_part, &PartForm::Changed, m_part, &PartForm::LockChoice);
    connect(m_form, &SourceForm::Changed, this, &DataSourceDialog::Lock);
    connect(m_isShared, &QCheckBox::toggled, this, [this] {
        Lock();
        ShowShared();
    });
    ShowSource();
    resize(fontMetrics().averageCharWidth() * 80, sizeHint().height());
}

QWidget* DataSourceDialog::BuildShared() {
    auto* part = new QWidget(this);
    m_reference = new QLineEdit(part);
    m_reference->setObjectName("reference");
    m_reference->setPlaceholderText(tr("Name of a file NAME.rds in the folder of the report"));
    m_referenceNote = new Note(*m_reference, part);
    auto* browse = new QPushButton(tr("Browse..."), part);
    browse->setObjectName("browseShared");
    browse->setAccessibleName(tr("Browse for the shared data source"));
    auto* test = new QPushButton(tr("Test the &connection"), part);
    test->setObjectName("testShared");
    test->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    m_result = new Note(*test, part);
    auto* change = new QPushButton(tr("Change the &file..."), part);
    change->setObjectName("changeShared");
    change->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(test);
    buttons->addWidget(change);
    buttons->addStretch(1);
    auto* line = new QHBoxLayout;
    line->addWidget(m_reference, 1);
    line->addWidget(browse);
    auto* form = new QFormLayout(part);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(tr("S&hared data source:"), line);
    static_cast<QLabel*>(form->labelForField(line))->setBuddy(m_reference);
    form->addRow(QString(), m_referenceNote);
    form->addRow(QString(), buttons);
    form->addRow(QString(), m_result);
    connect(m_reference, &QLineEdit::textEdited, this, [this] {
        m_referenceNote->Clear();
        m_result->Clear();
        Lock();
    });
    connect(browse, &QPushButton::clicked, this, &DataSourceDialog::AskForShared);
    connect(test, &QPushButton::clicked, this, &DataSourceDialog::TestShared);
    connect(change, &QPushButton::clicked, this, &DataSourceDialog::ChangeShared);
    return part;
}

void DataSourceDialog::Lock() {
    if (!m_isShowing) {
        m_part->LockChoice();
    }
}

void DataSourceDialog::ShowShared() {
    m_form->setVisible(!m_isShared->isChecked());
    m_shared->setVisible(m_isShared->isChecked());
}

// The engine looks for the name in the folder of the report.
void DataSourceDialog::AskForShared() {
    const QString folder = QString::fromStdString(m_model.File().parent_path().string());
    const QString file = QFileDialog::getOpenFileName(this, tr("Shared Data Source"), folder,
                                                      tr("Shared data sources (*.rds)"));
    if (!file.isEmpty()) {
        m_reference->setText(QFileInfo(file).completeBaseName());
        m_referenceNote->Clear();
        m_result->Clear();
        Lock();
    }
}

bool DataSourceDialog::IsSharedComplete() {
    if (m_reference->text().trimmed().isEmpty()) {
        m_referenceNote->ShowError(tr("Type the name of the file with the data source"));
        return false;
    }
    return true;
}

void DataSourceDialog::TestShared() {
    if (!IsSharedComplete()) {
        return;
    }
    try {
        const BusyPointer busy;
        rdl::QueryRequest request;
        request.folder = m_model.File().parent_path();
        const rdl::SharedSourceText shared =
            SharedSourceOf(m_reference->text().trimmed().toStdString(), request.folder);
        request.provider = shared.provider;
        request.connectString = shared.connectString;
        m_result->ShowText(TestOf(KindOf(shared.provider), request));
    } catch (const RuntimeError& error) {
        m_result->ShowError(QString::fromStdString(error.Description()));
    }
}

// The file is written at once, also if this dialog is cancelled later.
void DataSourceDialog::ChangeShared() {
    if (!IsSharedComplete()) {
        return;
    }
    m_result->Clear();
    try {
        const std::filesystem::path folder = m_model.File().parent_path();
        const auto shared = SharedSourceOf(m_reference->text().trimmed().toStdString(), folder);
        SharedSourceDialog dialog(shared.file, folder, this);
        if (dialog.exec() == QDialog::Accepted && !dialog.TypedLogon().user.empty()) {
            m_model.SourceLogons()[m_part->Name()] = dialog.TypedLogon();
        }
    } catch (const RuntimeError& error) {
        m_result->ShowError(QString::fromStdString(error.Description()));
    } catch (const SourceFlaw& flaw) {
        m_result->ShowError(QString::fromUtf8(flaw.what()));
    }
}

void DataSourceDialog::ShowSource() {
    m_isShowing = true;
    const std::vector<ReportSource> sources = SourcesOf(m_model.Source());
    const auto found = std::find_if(sources.begin(), sources.end(),
                                    [&](const ReportSource& source) { return source.name == m_part->Old(); });
    m_isShared->setChecked(found != sources.end() && found->isShared);
    m_reference->setText(found == sources.end() ? QString() : QString::fromStdString(found->reference));
    m_referenceNote->Clear();
    m_result->Clear();
    ShowShared();
    if (found == sources.end() || found->isShared) {
        m_form->SetSource(std::string(SourceKinds().front().provider), {});
    } else {
        m_form->SetSource(found->provider, found->connectString);
        const auto logon = m_model.SourceLogons().find(found->name);
        if (logon != m_model.SourceLogons().end() && !m_form->Fields().keepsLogon) {
            m_form->SetLogon(logon->second.user, logon->second.password);
        }
    }
    m_old = found == sources.end() ? ReportSource() : *found;
    m_shown = Typed();
    m_isShowing = false;
}

// The source without its name.
ReportSource DataSourceDialog::Typed() const {
    if (m_isShared->isChecked()) {
        return {.name = {}, .isShared = true, .reference = m_reference->text().trimmed().toStdString()};
    }
    return {.name = {},
            .provider = m_form->Provider(),
            .connectString = ConnectStringOf(m_form->Kind(), m_form->Fields())};
}

void DataSourceDialog::Choose(const std::string& name) {
    m_part->Choose(name);
}

// What nobody has changed stays as it is written.
void DataSourceDialog::accept() {
    const bool isShared = m_isShared->isChecked();
    if (!m_part->IsComplete() || !(isShared ? IsSharedComplete() : m_form->IsComplete())) {
        return;
    }
    const SourceFields fields = isShared ? SourceFields() : m_form->Fields();
    const std::string old = m_part->Old();
    ReportSource source = Typed();
    if (!old.empty() && source == m_shown) {
        source = m_old;
    } else if (!old.empty() && source.provider == m_shown.provider) {
        source.provider = m_old.provider;
    }
    source.name = m_part->Name();
    const std::vector<ReportSource> sources = SourcesOf(m_model.Source());
    // One that was typed for the shared file stays.
    const bool staysShared =
        isShared && std::any_of(sources.begin(), sources.end(), [&](const ReportSource& one) {
            return one.name == old && one.isShared && old == source.name;
        });
    const QString step = old.empty() ? tr("Add Data Source %1") : tr("Change Data Source %1");
    const bool isDone = m_model.Edit(step.arg(QString::fromStdString(source.name)),
                                     [&](Document& document) { PutSource(document, old, source); });
    if (isDone) {
        if (!staysShared) {
            m_model.SourceLogons().erase(old);
        }
        if (!fields.user.empty() && !fields.keepsLogon) {
            m_model.SourceLogons()[source.name] = {.user = fields.user, .password = fields.password};
        }
        QDialog::accept();
    }
}

}  // namespace designer
