// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/report_dialogs/code_dialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>
#include <charconv>

#include "designer/dialogs/ask_discard.h"
#include "designer/dialogs/note.h"
#include "designer/document/editing.h"
#include "designer/expressions/expression_check.h"
#include "designer/report_dialogs/code_editor.h"

namespace designer {
namespace {

constexpr int CheckPause = 300;  // milliseconds after the last change

// Returns the line of the code that the engine's message names; 0 if it names none.
int LineIn(const std::string& message) {
    constexpr std::string_view Mark = "Code, line ";
    const std::size_t found = message.find(Mark);
    int line = 0;
    if (found != std::string::npos) {
        std::from_chars(message.data() + found + Mark.size(), message.data() + message.size(), line);
    }
    return line;
}

}  // namespace

CodeDialog::CodeDialog(DesignModel& model, QWidget* parent)
    : QDialog(parent),
      m_model(model),
      m_old(model.Source().TextAt(model.Source().Root(), "Code").value_or("")),
      m_editor(new CodeEditor(this)) {
    setObjectName("codeDialog");
    setWindowTitle(tr("Code"));
    m_editor->setObjectName("code");
    m_editor->setAccessibleName(tr("Functions of the report"));
    m_editor->setText(QString::fromStdString(m_old));
    m_editor->setModified(false);
    m_note = new Note(*m_editor, this);
    auto* label = new QLabel(
        tr("&Functions in Visual Basic, which expressions call as Code.Name(). Ctrl+Enter is OK."), this);
    label->setWordWrap(true);
    label->setBuddy(m_editor);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &CodeDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CodeDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_editor, 1);
    layout->addWidget(m_note);
    layout->addWidget(buttons);
    m_pause.setSingleShot(true);
    m_pause.setInterval(CheckPause);
    connect(&m_pause, &QTimer::timeout, this, &CodeDialog::Check);
    connect(m_editor, &QsciScintilla::textChanged, &m_pause, qOverload<>(&QTimer::start));
    connect(m_editor, &CodeEditor::Done, this, &CodeDialog::accept);
    m_editor->setFocus();
    const QSize wanted(fontMetrics().averageCharWidth() * 100, fontMetrics().height() * 34);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

std::string CodeDialog::Text() const {
    return m_editor->isModified() ? m_editor->text().toStdString() : m_old;
}

void CodeDialog::Write(Document& document, const std::string& text) {
    SetOrRemove(document, document.Root(), "Code", text);
}

// A fault without a line of the code is its own only if the report had none before.
bool CodeDialog::Check() {
    m_pause.stop();
    Document copy = m_model.Source().Copy();
    Write(copy, Text());
    const std::string fault = FaultOfReport(m_model, copy);
    const int line = LineIn(fault);
    m_editor->MarkLine(line);
    if (fault.empty()) {
        m_note->Clear();
        return true;
    }
    const bool isOwn = line > 0 || FaultOfReport(m_model, m_model.Source()).empty();
    if (isOwn) {
        m_note->ShowFault(QString::fromStdString(fault));
    } else {
        m_note->ShowText(
            tr("Not checked, as the report has another fault: %1").arg(QString::fromStdString(fault)));
    }
    return !isOwn;
}

void CodeDialog::reject() {
    if (!isVisible() || Text() == m_old || AskToDiscard(*this)) {
        QDialog::reject();
    }
}

void CodeDialog::accept() {
    const std::string text = Text();
    if (text == m_old) {
        QDialog::accept();
        return;
    }
    if (!Check()) {
        if (m_editor->MarkedLine() > 0) {
            m_editor->GoToLine(m_editor->MarkedLine());
        }
        m_editor->setFocus();
        return;
    }
    if (m_model.Edit(tr("Change Code"), [&](Document& document) { Write(document, text); })) {
        QDialog::accept();
    }
}

}  // namespace designer
