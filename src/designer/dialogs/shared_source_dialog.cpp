// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/shared_source_dialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>
#include <utility>
#include <vector>

#include "designer/dialogs/note.h"
#include "designer/dialogs/source_form.h"
#include "platform/base/ascii.h"
#include "platform/contracts/runtime.h"

namespace designer {

SharedSourceDialog::SharedSourceDialog(std::filesystem::path file, const std::filesystem::path& folder,
                                       QWidget* parent)
    : QDialog(parent),
      m_file(std::move(file)),
      m_form(new SourceForm(this)),
      m_note(new Note(*m_form, this)) {
    setObjectName("sharedSourceDialog");
    setWindowTitle(tr("Shared Data Source %1").arg(QString::fromStdString(m_file.Path().stem().string())));
    m_note->setObjectName("note");
    auto* name = new QLabel(QString::fromStdString(m_file.Path().string()), this);
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
    m_form->SetSource(m_file.TextAt(PathOf("Extension")), m_file.TextAt(PathOf("ConnectString")));
    m_shown = Typed();
    resize(sizeHint().expandedTo({fontMetrics().averageCharWidth() * 80, 0}));
}

// Some files have the properties in the root.
std::string SharedSourceDialog::PathOf(const char* element) const {
    return (m_file.Has("ConnectionProperties") ? "ConnectionProperties/" : "") + std::string(element);
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
        std::vector<SharedFile::Change> changes;
        if (!SameAscii(Trim(m_file.TextAt(PathOf("Extension"))), m_form->Provider())) {
            changes.push_back({PathOf("Extension"), m_form->Provider()});
        }
        if (Typed() != m_shown) {
            changes.push_back({PathOf("ConnectString"), Typed()});
        }
        m_file.Write(changes);
        m_logon = fields.keepsLogon ? Logon{} : Logon{fields.user, fields.password};
        QDialog::accept();
    } catch (const RuntimeError& error) {
        m_note->ShowFault(QString::fromStdString(error.Description()));
    } catch (const std::runtime_error& error) {  // EditError, SourceFlaw
        m_note->ShowFault(QString::fromUtf8(error.what()));
    }
}

}  // namespace designer
