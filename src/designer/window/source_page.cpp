// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/window/source_page.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QVBoxLayout>

#include "designer/dialogs/fixed_font.h"

namespace designer {

SourcePage::SourcePage(QWidget* parent)
    : QWidget(parent), m_message(new QLabel(this)), m_text(new QPlainTextEdit(this)) {
    m_message->setObjectName("lblFlaw");
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);
    m_text->setObjectName("txtSource");
    m_text->setAccessibleName(tr("Text of the report file"));
    m_text->setFont(FixedFont());
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    auto* open = new QPushButton(tr("Open in the &Designer"), this);
    open->setObjectName("cmdOpenDesign");
    auto* top = new QHBoxLayout;
    top->addWidget(m_message, 1);
    top->addWidget(open, 0, Qt::AlignTop);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_text, 1);
    setFocusProxy(m_text);
    connect(open, &QPushButton::clicked, this, &SourcePage::DesignRequested);
    connect(m_text, &QPlainTextEdit::textChanged, this, &SourcePage::Edited);
    connect(m_text, &QPlainTextEdit::modificationChanged, this, &SourcePage::ModifiedChanged);
}

void SourcePage::Show(std::string_view bytes, const SourceFlaw& flaw) {
    m_form = PlainTextOf(bytes);
    m_text->setPlainText(QString::fromStdString(m_form.text));
    m_text->document()->setModified(false);
    ShowFlaw(flaw);
}

void SourcePage::ShowFlaw(const SourceFlaw& flaw) {
    const Position place = flaw.Place();
    m_message->setText(tr("The file cannot be designed. Line %1, column %2: %3")
                           .arg(place.line)
                           .arg(place.column)
                           .arg(QString::fromUtf8(flaw.what())));
    const QTextBlock line = m_text->document()->findBlockByNumber(static_cast<int>(place.line) - 1);
    QTextCursor cursor(line.isValid() ? line : m_text->document()->lastBlock());
    QTextEdit::ExtraSelection mark;
    mark.cursor = cursor;
    mark.format.setBackground(QColor(220, 60, 60, 90));
    mark.format.setProperty(QTextFormat::FullWidthSelection, true);
    m_text->setExtraSelections({mark});
    const int column = std::min(static_cast<int>(place.column) - 1, cursor.block().length() - 1);
    cursor.setPosition(cursor.block().position() + std::max(0, column));
    m_text->setTextCursor(cursor);
    m_text->centerCursor();
}

std::string SourcePage::Bytes() const {
    PlainText plain = m_form;
    // Not toPlainText, which makes blanks of no-break spaces.
    plain.text = m_text->document()->toRawText().replace(QChar::ParagraphSeparator, '\n').toStdString();
    return BytesOf(plain);
}

bool SourcePage::IsModified() const {
    return m_text->document()->isModified();
}

void SourcePage::SetModified(bool modified) {
    m_text->document()->setModified(modified);
}

}  // namespace designer
