// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/report_dialogs/shared_query_dialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <utility>

#include "designer/dialogs/fixed_font.h"
#include "designer/dialogs/note.h"
#include "designer/dialogs/sql_colours.h"
#include "platform/contracts/runtime.h"

namespace designer {
namespace {

constexpr const char* QueryText = "DataSet/Query/CommandText";

}  // namespace

SharedQueryDialog::SharedQueryDialog(std::filesystem::path file, QWidget* parent)
    : QDialog(parent), m_file(std::move(file)), m_query(new QPlainTextEdit(this)) {
    setObjectName("sharedQueryDialog");
    setWindowTitle(tr("Shared Data Set %1").arg(QString::fromStdString(m_file.Path().stem().string())));
    m_query->setObjectName("sharedQuery");
    m_query->setTabChangesFocus(true);
    m_query->setFont(FixedFont());
    m_query->setPlainText(QString::fromStdString(m_file.TextAt(QueryText)));
    new SqlColours(m_query->document(), m_query->palette());
    m_note = new Note(*m_query, this);
    auto* name = new QLabel(QString::fromStdString(m_file.Path().string()), this);
    name->setTextFormat(Qt::PlainText);
    name->setWordWrap(true);
    auto* label = new QLabel(tr("&Query:"), this);
    label->setBuddy(m_query);
    auto* warning = new QLabel(tr("The change holds for all reports that share the file."), this);
    warning->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &SharedQueryDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SharedQueryDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(name);
    layout->addWidget(label);
    layout->addWidget(m_query, 1);
    layout->addWidget(warning);
    layout->addWidget(m_note);
    layout->addWidget(buttons);
    m_query->setFocus();
    resize(fontMetrics().averageCharWidth() * 80, fontMetrics().height() * 20);
}

void SharedQueryDialog::accept() {
    try {
        if (m_query->document()->isModified()) {
            m_file.Write({{QueryText, m_query->toPlainText().toStdString()}});
        }
        QDialog::accept();
    } catch (const RuntimeError& error) {
        m_note->ShowFault(QString::fromStdString(error.Description()));
    } catch (const std::runtime_error& error) {  // EditError, SourceFlaw
        m_note->ShowFault(QString::fromUtf8(error.what()));
    }
}

}  // namespace designer
