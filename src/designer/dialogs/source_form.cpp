// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/source_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "designer/dialogs/busy_pointer.h"
#include "designer/dialogs/form_row.h"
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
        m_kind->addItem(QString::fromUtf8(kind.title));
    }
    m_form->addRow(tr("&Kind of data:"), m_kind);
    m_provider = AddLine(tr("Pro&vider:"), "providerName");
    BuildFileRow();
    BuildServerRows();
    BuildLogonRows();
    m_test = new QPushButton(tr("Test the &connection"), this);
    m_test->setObjectName("test");
    m_test->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(m_test, &QPushButton::clicked, this, &SourceForm::Works);
    m_form->addRow(QString(), m_test);
    m_result = new Note(*m_test, this);
    m_form->addRow(QString(), m_result);
    connect(m_kind, &QComboBox::currentIndexChanged, this, [this] {
        m_asText->setChecked(false);
        ShowKind();
        ClearNotes();
        emit Changed();
    });
    ShowKind();
    setFocusProxy(m_kind);
}

void SourceForm::BuildServerRows() {
    m_server = AddLine(tr("&Server:"), "server");
    m_port = AddLine(tr("P&ort:"), "port");
    m_port->setValidator(new QIntValidator(1, 65535, m_port));
    m_port->setPlaceholderText(tr("the usual one"));
    m_database = AddLine(tr("&Database:"), "database");
    m_text = AddLine(tr("Connect s&tring:"), "connectString");
    m_asText = new QCheckBox(tr("T&ype the connect string"), this);
    m_asText->setObjectName("asText");
    m_form->addRow(QString(), m_asText);
    connect(m_asText, &QCheckBox::clicked, this, &SourceForm::ShowAsText);
}

QLineEdit* SourceForm::AddLine(const QString& label, const char* name, Beside beside) {
    auto* line = new QLineEdit(this);
    line->setObjectName(name);
    QWidget* field = line;
    if (beside == Beside::Button) {
        field = new QWidget(this);
        field->setFocusProxy(line);
        auto* layout = new QHBoxLayout(field);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(line, 1);
    }
    AddFieldRow(*m_form, label, field);
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
    m_file = AddLine(tr("F&ile:"), "file", Beside::Button);
    m_fileRow = m_file->parentWidget();
    // Made after the line: Tab goes there next.
    auto* browse = new QPushButton(tr("B&rowse..."), m_fileRow);
    browse->setObjectName("browse");
    browse->setAccessibleName(tr("Browse for the file"));
    connect(browse, &QPushButton::clicked, this, &SourceForm::AskForFile);
    m_fileRow->layout()->addWidget(browse);
}

void SourceForm::BuildLogonRows() {
    m_user = AddLine(tr("&User:"), "user");
    m_password = AddLine(tr("Pass&word:"), "password");
    m_password->setEchoMode(QLineEdit::Password);
    m_keeps = new QCheckBox(tr("Keep user and password in the file, &as readable text"), this);
    m_keeps->setObjectName("keepLogon");
    m_form->addRow(QString(), m_keeps);
    connect(m_keeps, &QCheckBox::toggled, this, &SourceForm::Changed);
}

SourceShape SourceForm::Shape() const {
    return m_asText->isChecked() ? SourceShape::Text : Kind().shape;
}

void SourceForm::ShowKind() {
    const SourceKind& kind = Kind();
    m_form->setRowVisible(m_provider, kind.provider.empty());
    m_form->setRowVisible(m_fileRow, Shape() == SourceShape::File);
    for (QLineEdit* line : {m_server, m_port, m_database}) {
        m_form->setRowVisible(line, Shape() == SourceShape::Server);
    }
    m_form->setRowVisible(m_text, Shape() == SourceShape::Text);
    m_text->setPlaceholderText(kind.shape == SourceShape::Text ? "DSN=sales" : QString());
    m_form->setRowVisible(m_asText, kind.shape != SourceShape::Text);
    m_form->setRowVisible(m_user, kind.HasLogon());
    m_form->setRowVisible(m_password, kind.HasLogon());
    m_form->setRowVisible(m_keeps, kind.HasLogon());
}

const SourceKind& SourceForm::Kind() const {
    return SourceKinds()[static_cast<std::size_t>(m_kind->currentIndex())];
}

std::string SourceForm::Provider() const {
    const std::string_view known = Kind().provider;
    return known.empty() ? m_provider->text().trimmed().toStdString() : std::string(known);
}

void SourceForm::SetFolder(const std::filesystem::path& folder) {
    m_folder = folder;
}

void SourceForm::SetSource(const std::string& provider, const std::string& connectString) {
    const SourceKind& kind = KindOf(provider);
    m_kind->setCurrentIndex(static_cast<int>(&kind - SourceKinds().data()));
    m_provider->setText(QString::fromStdString(provider));
    std::optional<SourceFields> fields = FieldsOf(kind, connectString);
    m_asText->setChecked(!fields);
    if (!fields) {
        fields = SourceFields{.text = connectString};
    }
    const std::pair<QLineEdit*, const std::string&> lines[] = {
        {m_file, fields->file},         {m_server, fields->server}, {m_port, fields->port},
        {m_database, fields->database}, {m_text, fields->text},     {m_user, fields->user},
        {m_password, fields->password}};
    for (const auto& [line, text] : lines) {
        line->setText(QString::fromStdString(text));
    }
    m_keeps->setChecked(fields->keepsLogon);
    ShowKind();
    ClearNotes();
}

void SourceForm::SetLogon(const std::string& user, const std::string& password) {
    m_user->setText(QString::fromStdString(user));
    m_password->setText(QString::fromStdString(password));
}

// Back from the text only if the lines show all of it.
void SourceForm::ShowAsText(bool isText) {
    const std::string provider = Provider(), text = m_text->text().trimmed().toStdString();
    ClearNotes();
    if (isText) {
        m_asText->setChecked(false);
        SourceFields fields = Fields();
        fields.keepsLogon = false;  // the lines of the logon stay
        m_text->setText(QString::fromStdString(ConnectStringOf(Kind(), fields)));
        m_asText->setChecked(true);
    } else if (const auto fields = FieldsOf(Kind(), text)) {
        const std::string user = m_user->text().toStdString(), password = m_password->text().toStdString();
        SetSource(provider, text);
        if (fields->user.empty()) {
            SetLogon(user, password);
        }
    } else {
        m_asText->setChecked(true);
        Complain(*m_text, tr("The lines cannot show all of this connect string"));
    }
    ShowKind();
    emit Changed();
}

std::filesystem::path SourceForm::WholeFile() const {
    const std::filesystem::path file = m_file->text().trimmed().toStdString();
    return file.empty()                     ? file
           : m_folder && !m_folder->empty() ? (*m_folder / file).lexically_normal()
                                            : std::filesystem::absolute(file).lexically_normal();
}

SourceFields SourceForm::Fields() const {
    const std::filesystem::path whole = WholeFile();
    std::error_code error;
    const bool isNear = m_folder && !m_folder->empty();
    const std::string file = !isNear                                 ? whole.string()
                             : std::filesystem::exists(whole, error) ? FileNameFrom(*m_folder, whole)
                                                                     : m_file->text().trimmed().toStdString();
    return {.file = file,
            .server = m_server->text().trimmed().toStdString(),
            .port = m_port->text().toStdString(),
            .database = m_database->text().trimmed().toStdString(),
            .text = m_text->text().trimmed().toStdString(),
            .user = m_user->text().toStdString(),
            .password = m_password->text().toStdString(),
            .keepsLogon = m_keeps->isChecked(),
            .isText = m_asText->isChecked()};
}

rdl::QueryRequest SourceForm::Request() const {
    SourceFields fields = Fields();
    fields.keepsLogon = false;
    rdl::QueryRequest request{.provider = Provider(), .connectString = ConnectStringOf(Kind(), fields)};
    request.folder = m_folder.value_or(std::filesystem::path());
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
    if (Provider().empty()) {
        return Complain(*m_provider, tr("Type the name of the provider, for example OLEDB"));
    }
    switch (Shape()) {
        case SourceShape::File: {
            const QFileInfo file(QString::fromStdString(WholeFile().string()));
            return fields.file.empty() ? Complain(*m_file, tr("Pick the file with the data"))
                   : file.isDir()      ? Complain(*m_file, tr("\"%1\" is no file").arg(file.filePath()))
                   : m_folder || file.exists()
                       ? true
                       : Complain(*m_file, tr("There is no file \"%1\"").arg(file.filePath()));
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
    if (!provider.empty()) {
        m_kind->setCurrentIndex(static_cast<int>(&KindOf(provider) - kinds.data()));
    }
    m_file->setText(file);
}

void SourceForm::AskForFile() {
    const std::string_view filter = Kind().filter;
    const QString file =
        QFileDialog::getOpenFileName(this, tr("File With Data"), m_file->text(), QString::fromUtf8(filter));
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
        m_result->ShowText(TestOf(Kind(), Request()));
        return true;
    } catch (const RuntimeError& error) {
        m_result->ShowError(QString::fromStdString(error.Description()));
        return false;
    }
}

}  // namespace designer
