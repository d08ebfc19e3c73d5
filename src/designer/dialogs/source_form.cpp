// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/source_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLineEdit>
#include <QPushButton>

#include "designer/dialogs/busy_pointer.h"
#include "designer/dialogs/note.h"
#include "designer/dialogs/query_run.h"
#include "designer/new_report/source_text.h"
#include "platform/contracts/runtime.h"

namespace designer {

SourceForm::SourceForm(QWidget* parent) : QWidget(parent), m_form(new QFormLayout(this)) {
    m_form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    m_form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    m_form->setContentsMargins(0, 0, 0, 0);
    m_kind = new QComboBox(this);
    m_kind->setObjectName("provider");
    for (const SourceKind& kind : SourceKinds()) {
        m_kind->addItem(QString::fromUtf8(kind.title.data(), static_cast<qsizetype>(kind.title.size())));
    }
    m_form->addRow(tr("&Kind of data:"), m_kind);
    BuildFileRow();
    m_server = AddLine(tr("&Server:"), "server");
    m_port = AddLine(tr("P&ort:"), "port");
    m_port->setValidator(new QIntValidator(1, 65535, m_port));
    m_port->setPlaceholderText(tr("the usual one"));
    m_database = AddLine(tr("&Database:"), "database");
    m_text = AddLine(tr("Connect s&tring:"), "connectString");
    m_text->setPlaceholderText("DSN=sales");
    BuildLogonRows();
    m_test = new QPushButton(tr("Test the &connection"), this);
    m_test->setObjectName("test");
    m_test->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(m_test, &QPushButton::clicked, this, &SourceForm::Works);
    m_form->addRow(QString(), m_test);
    m_result = new Note(*m_test, this);
    m_form->addRow(QString(), m_result);
    connect(m_kind, &QComboBox::currentIndexChanged, this, [this] {
        ShowKind();
        ClearNotes();
        emit Changed();
    });
    ShowKind();
    setFocusProxy(m_kind);
}

QLineEdit* SourceForm::AddLine(const QString& label, const char* name, QWidget* beside) {
    auto* line = new QLineEdit(this);
    line->setObjectName(name);
    QWidget* field = line;
    if (beside) {
        field = new QWidget(this);
        field->setFocusProxy(line);
        auto* layout = new QHBoxLayout(field);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(line, 1);
        layout->addWidget(beside);
    }
    m_form->addRow(label, field);
    line->setAccessibleName(QString(label).remove('&').remove(':'));
    auto* note = new Note(*line, this);
    m_form->addRow(QString(), note);
    m_notes.emplace_back(line, note);
    connect(line, &QLineEdit::textChanged, this, [this] {
        ClearNotes();
        emit Changed();
    });
    return line;
}

void SourceForm::BuildFileRow() {
    auto* browse = new QPushButton(tr("B&rowse..."), this);
    browse->setObjectName("browse");
    browse->setAccessibleName(tr("Browse for the file"));
    connect(browse, &QPushButton::clicked, this, &SourceForm::AskForFile);
    m_file = AddLine(tr("F&ile:"), "file", browse);
    m_fileRow = browse->parentWidget();
}

void SourceForm::BuildLogonRows() {
    m_user = AddLine(tr("&User:"), "user");
    m_password = AddLine(tr("Pass&word:"), "password");
    m_password->setEchoMode(QLineEdit::Password);
    m_keeps = new QCheckBox(tr("Keep user and password in the report file, &as readable text"), this);
    m_keeps->setObjectName("keepLogon");
    m_form->addRow(QString(), m_keeps);
    connect(m_keeps, &QCheckBox::toggled, this, &SourceForm::Changed);
}

void SourceForm::ShowKind() {
    const SourceKind& kind = Kind();
    m_form->setRowVisible(m_fileRow, kind.shape == SourceShape::File);
    for (QLineEdit* line : {m_server, m_port, m_database}) {
        m_form->setRowVisible(line, kind.shape == SourceShape::Server);
    }
    m_form->setRowVisible(m_text, kind.shape == SourceShape::Text);
    m_form->setRowVisible(m_user, kind.HasLogon());
    m_form->setRowVisible(m_password, kind.HasLogon());
    m_form->setRowVisible(m_keeps, kind.HasLogon());
}

const SourceKind& SourceForm::Kind() const {
    return SourceKinds()[static_cast<std::size_t>(m_kind->currentIndex())];
}

SourceFields SourceForm::Fields() const {
    const QString file = m_file->text().trimmed();
    return {.file = file.isEmpty() ? std::string() : QFileInfo(file).absoluteFilePath().toStdString(),
            .server = m_server->text().trimmed().toStdString(),
            .port = m_port->text().toStdString(),
            .database = m_database->text().trimmed().toStdString(),
            .text = m_text->text().trimmed().toStdString(),
            .user = m_user->text().toStdString(),
            .password = m_password->text().toStdString(),
            .keepsLogon = m_keeps->isChecked()};
}

rdl::QueryRequest SourceForm::Request() const {
    SourceFields fields = Fields();
    fields.keepsLogon = false;
    rdl::QueryRequest request{.provider = std::string(Kind().provider),
                              .connectString = ConnectStringOf(Kind(), fields)};
    if (Kind().HasLogon()) {
        request.user = fields.user;
        request.password = fields.password;
    }
    return request;
}

bool SourceForm::Complain(QLineEdit& line, const QString& text) {
    for (const auto& [own, note] : m_notes) {
        if (own == &line) {
            note->ShowError(text);
        }
    }
    return false;
}

bool SourceForm::IsComplete() {
    ClearNotes();
    const SourceFields fields = Fields();
    switch (Kind().shape) {
        case SourceShape::File: {
            const QFileInfo file(QString::fromStdString(fields.file));
            return fields.file.empty() ? Complain(*m_file, tr("Pick the file with the data"))
                   : !file.exists()    ? Complain(*m_file, tr("There is no file \"%1\"").arg(file.filePath()))
                   : !file.isFile()    ? Complain(*m_file, tr("\"%1\" is no file").arg(file.filePath()))
                                       : true;
        }
        case SourceShape::Server:
            return fields.server.empty()     ? Complain(*m_server, tr("Type the name of the server"))
                   : fields.database.empty() ? Complain(*m_database, tr("Type the name of the database"))
                                             : true;
        case SourceShape::Text:
            break;
    }
    return !fields.text.empty() || Complain(*m_text, tr("Type where the data is, for example DSN=sales"));
}

void SourceForm::SetFile(const QString& file) {
    const std::string_view provider = ProviderOfFile(file.toStdString());
    const auto kinds = SourceKinds();
    for (std::size_t index = 0; index < kinds.size() && !provider.empty(); ++index) {
        if (kinds[index].provider == provider) {
            m_kind->setCurrentIndex(static_cast<int>(index));
        }
    }
    m_file->setText(file);
}

void SourceForm::AskForFile() {
    const std::string_view filter = Kind().filter;
    const QString file =
        QFileDialog::getOpenFileName(this, tr("File With Data"), m_file->text(),
                                     QString::fromUtf8(filter.data(), static_cast<qsizetype>(filter.size())));
    if (!file.isEmpty()) {
        SetFile(file);
        m_file->setFocus();
    }
}

void SourceForm::ClearNotes() {
    for (const auto& [line, note] : m_notes) {
        note->Clear();
    }
    m_result->Clear();
}

bool SourceForm::Works() {
    if (!IsComplete()) {
        return false;
    }
    try {
        const BusyPointer busy;
        if (!Kind().IsSql()) {
            const auto rows = RunQuery(Request());
            m_result->ShowText(tr("The file can be read; it has %1 columns.").arg(rows.columns.size()));
        } else if (Kind().tables.empty()) {
            rdl::QueryRequest request = Request();
            request.query = "select 1";
            RunQuery(request);
            m_result->ShowText(tr("The connection works."));
        } else {
            m_result->ShowText(tr("The connection works; the number of tables is %1.")
                                   .arg(TablesOf(Kind(), Request()).size()));
        }
        return true;
    } catch (const RuntimeError& error) {
        m_result->ShowError(QString::fromStdString(error.Description()));
        return false;
    }
}

}  // namespace designer
