// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/report_dialogs/shared_set_form.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <utility>

#include "designer/dialogs/note.h"
#include "designer/dialogs/query_run.h"
#include "designer/report_dialogs/shared_query_dialog.h"
#include "platform/contracts/runtime.h"

namespace designer {
namespace {

// "@Year (2025), @Region"
QString ParametersText(const std::vector<rdl::QueryValue>& parameters) {
    QStringList texts;
    for (const rdl::QueryValue& parameter : parameters) {
        const QString name = QString::fromStdString(parameter.name);
        texts += parameter.value.empty() ? name : name + " (" + QString::fromStdString(parameter.value) + ")";
    }
    return texts.join(", ");
}

}  // namespace

SharedSetForm::SharedSetForm(std::filesystem::path folder, QWidget* parent)
    : QWidget(parent),
      m_folder(std::move(folder)),
      m_reference(new QLineEdit(this)),
      m_contents(new QLabel(this)) {
    m_reference->setObjectName("sharedSet");
    m_note = new Note(*m_reference, this);
    m_reference->setPlaceholderText(tr("Name of a file NAME.rsd in the folder of the report"));
    m_contents->setObjectName("sharedContents");
    m_contents->setWordWrap(true);
    m_contents->setTextFormat(Qt::PlainText);
    auto* browse = new QPushButton(tr("&Browse..."), this);
    browse->setObjectName("browseSharedSet");
    browse->setAccessibleName(tr("Browse for the shared data set"));
    browse->setAutoDefault(false);
    auto* change = new QPushButton(tr("Chan&ge the query..."), this);
    change->setObjectName("changeSharedSet");
    change->setAutoDefault(false);
    setFocusProxy(m_reference);
    auto* line = new QHBoxLayout;
    line->addWidget(m_reference, 1);
    line->addWidget(browse);
    line->addWidget(change);
    auto* form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(tr("S&hared data set:"), line);
    static_cast<QLabel*>(form->labelForField(line))->setBuddy(m_reference);
    form->addRow(QString(), m_note);
    form->addRow(QString(), m_contents);
    connect(m_reference, &QLineEdit::textEdited, this, [this] {
        m_note->Clear();
        emit Edited();
    });
    connect(m_reference, &QLineEdit::editingFinished, this, [this] {
        if (Reference() != m_chosen) {
            m_chosen = Reference();
            emit Chosen();
        }
    });
    connect(browse, &QPushButton::clicked, this, &SharedSetForm::AskForFile);
    connect(change, &QPushButton::clicked, this, &SharedSetForm::ChangeQuery);
}

// The engine looks for the name in the folder of the report.
void SharedSetForm::AskForFile() {
    const QString file =
        QFileDialog::getOpenFileName(this, tr("Shared Data Set"), QString::fromStdString(m_folder.string()),
                                     tr("Shared data sets (*.rsd)"));
    if (!file.isEmpty()) {
        SetReference(QFileInfo(file).completeBaseName().toStdString());
        emit Edited();
        emit Chosen();
    }
}

// The file is written at once, also if the data set is not changed after all.
void SharedSetForm::ChangeQuery() {
    if (!IsComplete()) {
        return;
    }
    try {
        if (SharedQueryDialog(SharedSetOf(Reference(), m_folder).file, this).exec() == QDialog::Accepted) {
            emit Chosen();
        }
    } catch (const RuntimeError& error) {
        m_note->ShowError(QString::fromStdString(error.Description()));
    } catch (const SourceFlaw& flaw) {
        m_note->ShowError(QString::fromUtf8(flaw.what()));
    }
}

void SharedSetForm::SetReference(const std::string& reference) {
    m_reference->setText(QString::fromStdString(reference));
    m_chosen = Reference();
}

std::string SharedSetForm::Reference() const {
    return m_reference->text().trimmed().toStdString();
}

std::optional<rdl::SharedSetText> SharedSetForm::Read() {
    m_note->Clear();
    m_contents->clear();
    if (Reference().empty()) {
        return std::nullopt;
    }
    try {
        rdl::SharedSetText text = SharedSetOf(Reference(), m_folder);
        const QString source = tr("Data source: %1").arg(QString::fromStdString(text.source));
        const QString parameters = ParametersText(text.parameters);
        m_contents->setText(parameters.isEmpty() ? source : tr("%1. Parameters: %2").arg(source, parameters));
        return text;
    } catch (const RuntimeError& error) {
        m_note->ShowFault(QString::fromStdString(error.Description()));
        return std::nullopt;
    }
}

bool SharedSetForm::IsComplete() {
    if (Reference().empty()) {
        m_note->ShowError(tr("Type the name of the file with the data set"));
        return false;
    }
    return true;
}

}  // namespace designer
