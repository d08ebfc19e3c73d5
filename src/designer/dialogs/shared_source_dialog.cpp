// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/shared_source_dialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>
#include <utility>
#include <vector>

#include "designer/dialogs/note.h"
#include "designer/dialogs/source_form.h"
#include "designer/document/editing.h"
#include "platform/base/ascii.h"
#include "platform/contracts/runtime.h"

namespace designer {

SharedSourceDialog::SharedSourceDialog(std::filesystem::path file, const std::filesystem::path& folder,
                                       QWidget* parent)
    : QDialog(parent),
      m_file(std::move(file)),
      m_stamp(StampOf(m_file)),
      m_document(ReadReportFile(m_file)),
      m_form(new SourceForm(this)),
      m_note(new Note(*m_form, this)) {
    setObjectName("sharedSourceDialog");
    setWindowTitle(tr("Shared Data Source %1").arg(QString::fromStdString(m_file.stem().string())));
    m_note->setObjectName("note");
    auto* name = new QLabel(QString::fromStdString(m_file.string()), this);
    name->setTextFormat(Qt::PlainText);
    name->setWordWrap(true);
    auto* warning = new QLabel(tr("The change holds for all reports that share the file."), this);
    warning->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &SharedSourceDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SharedSourceDialog::reject);
    auto* layout = new QVBoxLayout(this);
    for (QWidget* part : {static_cast<QWidget*>(name), static_cast<QWidget*>(m_form),
                          static_cast<QWidget*>(warning), static_cast<QWidget*>(m_note)}) {
        layout->addWidget(part);
    }
    layout->addStretch(1);
    layout->addWidget(buttons);
    m_form->SetFolder(folder);
    m_form->SetSource(TextAt("Extension"), TextAt("ConnectString"));
    m_shown = Typed();
    resize(sizeHint().expandedTo({fontMetrics().averageCharWidth() * 80, 0}));
}

// Some files have the properties in the root.
std::string SharedSourceDialog::PathOf(const char* element) const {
    const bool isInner = m_document.Find(m_document.Root(), "ConnectionProperties") != NoElement;
    return (isInner ? "ConnectionProperties/" : "") + std::string(element);
}

std::string SharedSourceDialog::TextAt(const char* element) const {
    return m_document.TextAt(m_document.Root(), PathOf(element)).value_or("");
}

std::string SharedSourceDialog::Typed() const {
    return ConnectStringOf(m_form->Kind(), m_form->Fields());
}

// A connect string that nobody has changed stays as it is written, and so does a provider in other capitals.
void SharedSourceDialog::accept() {
    if (!m_form->IsComplete()) {
        return;
    }
    try {
        const SourceFields fields = m_form->Fields();
        std::vector<TextChange> changes;
        if (!SameAscii(Trim(TextAt("Extension")), m_form->Provider())) {
            changes.push_back({m_document.Root(), PathOf("Extension"), m_form->Provider()});
        }
        if (Typed() != m_shown) {
            changes.push_back({m_document.Root(), PathOf("ConnectString"), Typed()});
        }
        SetTexts(m_document, changes, "Change");
        if (m_document.IsModified()) {
            if (StampOf(m_file) != m_stamp) {
                m_note->ShowFault(tr("Another program has changed the file; open the dialog again"));
                return;
            }
            WriteReportFile(m_file, m_document.Bytes());
        }
        m_logon = fields.keepsLogon ? Logon{} : Logon{fields.user, fields.password};
        QDialog::accept();
    } catch (const RuntimeError& error) {
        m_note->ShowFault(QString::fromStdString(error.Description()));
    } catch (const std::runtime_error& error) {  // EditError, SourceFlaw
        m_note->ShowFault(QString::fromUtf8(error.what()));
    }
}

}  // namespace designer
