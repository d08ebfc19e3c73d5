// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/window/xml_page.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QVBoxLayout>
#include <algorithm>

#include "designer/dialogs/fixed_font.h"
#include "designer/window/typed_change.h"
#include "designer/window/xml_colours.h"

namespace designer {
namespace {

// An editor of texts is slow with more.
constexpr std::size_t MostBytes = std::size_t{16} << 20;

// Takes a raw text, because toPlainText would make blanks of no-break spaces.
std::string Plain(QString raw) {
    return raw.replace(QChar::ParagraphSeparator, '\n').toStdString();
}

}  // namespace

XmlPage::XmlPage(DesignModel& model, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_text(new QPlainTextEdit(this)),
      m_colours(new XmlColours(m_text->document(), palette())),
      m_message(new QLabel(this)),
      m_find(new QLineEdit(this)),
      m_apply(new QPushButton(tr("Appl&y"), this)),
      m_revert(new QPushButton(tr("Rever&t"), this)) {
    BuildParts();
    connect(m_apply, &QPushButton::clicked, this, &XmlPage::Apply);
    connect(m_revert, &QPushButton::clicked, this, &XmlPage::Revert);
    connect(m_find, &QLineEdit::returnPressed, this, &XmlPage::Find);
    connect(m_text->document(), &QTextDocument::modificationChanged, this, [this] {
        ShowCommands();
        emit ModifiedChanged();
    });
    const auto on = [this](const QKeySequence& keys, auto work) {
        auto* action = new QAction(this);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(action, &QAction::triggered, this, work);
        addAction(action);
    };
    on(QKeySequence(Qt::CTRL | Qt::Key_Return), [this] { Apply(); });
    on(QKeySequence::Find, [this] {
        m_find->setFocus();
        m_find->selectAll();
    });
    on(QKeySequence(Qt::Key_F3), [this] { Find(); });
    ShowCommands();
}

void XmlPage::BuildParts() {
    m_text->setObjectName("txtXml");
    m_text->setAccessibleName(tr("XML text of the report"));
    m_text->setFont(FixedFont());
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_message->setObjectName("lblXmlFlaw");
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);
    m_apply->setObjectName("cmdApplyXml");
    m_apply->setToolTip(tr("Ctrl+Enter"));
    m_revert->setObjectName("cmdRevertXml");
    m_find->setObjectName("findXml");
    m_find->setPlaceholderText(tr("Find (Ctrl+F, F3)"));
    m_find->setAccessibleName(tr("Find in the XML text"));
    m_find->setClearButtonEnabled(true);
    auto* top = new QHBoxLayout;
    top->addWidget(m_message, 1);
    top->addWidget(m_find);
    top->addWidget(m_apply);
    top->addWidget(m_revert);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_text, 1);
    setFocusProxy(m_text);
}

void XmlPage::ShowCommands() {
    m_apply->setEnabled(IsModified());
    m_revert->setEnabled(IsModified());
}

bool XmlPage::IsModified() const {
    return m_text->document()->isModified();
}

std::string XmlPage::Typed() const {
    return Plain(m_text->document()->toRawText());
}

void XmlPage::Forget() {
    m_text->document()->setModified(false);
}

void XmlPage::Open() {
    const Document& document = m_model.Source();
    const bool isTooLong = document.Text().size() > MostBytes;
    m_text->setReadOnly(isTooLong);
    const std::string text = isTooLong ? std::string() : WithLineFeeds(document.Text());
    if (text != Typed()) {
        m_text->setPlainText(QString::fromStdString(text));
    }
    m_text->document()->setModified(false);
    m_text->setExtraSelections({});
    m_message->setText(isTooLong ? tr("The report is too long to be shown as a text") : QString());
    if (document.Has(m_model.Leader()) && !isTooLong) {
        const Position place = document.PlaceOf(m_model.Leader());
        GoTo(place.line, place.column);
    }
}

void XmlPage::GoTo(std::size_t line, std::size_t column) {
    const QTextBlock block = m_text->document()->findBlockByNumber(static_cast<int>(line) - 1);
    QTextCursor cursor(block.isValid() ? block : m_text->document()->lastBlock());
    const int inLine = std::min(static_cast<int>(column) - 1, cursor.block().length() - 1);
    cursor.setPosition(cursor.block().position() + std::max(0, inLine));
    m_text->setTextCursor(cursor);
    m_text->centerCursor();
}

bool XmlPage::Apply() {
    m_text->setExtraSelections({});
    m_message->clear();
    if (!IsModified()) {
        return true;
    }
    const Document& document = m_model.Source();
    const TypedChange change = ChangeOf(document.Text(), Typed(), document.LineEnd());
    try {
        std::string text = document.Text();
        const SourceTree tree(text.replace(change.offset, change.removed, change.inserted));
    } catch (const SourceFlaw& flaw) {
        m_message->setText(tr("Line %1, column %2: %3. The report is as it was")
                               .arg(flaw.Place().line)
                               .arg(flaw.Place().column)
                               .arg(QString::fromUtf8(flaw.what())));
        GoTo(flaw.Place().line, flaw.Place().column);
        QTextEdit::ExtraSelection mark;
        mark.cursor = m_text->textCursor();
        mark.format.setBackground(QColor(220, 60, 60, 90));
        mark.format.setProperty(QTextFormat::FullWidthSelection, true);
        m_text->setExtraSelections({mark});
        m_text->setFocus();
        return false;
    }
    if (!change.IsNone()) {
        m_model.Edit(tr("Edit XML"), [&](Document& changed) {
            changed.Apply("Edit XML", {{change.offset, change.removed, change.inserted, {}}});
        });
    }
    m_text->document()->setModified(false);
    return true;
}

void XmlPage::SelectAtCursor() {
    const Document& document = m_model.Source();
    const std::size_t offset = OffsetIn(
        document.Text(), Plain(m_text->document()->toRawText().left(m_text->textCursor().position())).size());
    for (ElementId id = document.IdAt(document.Tree().ElementAt(offset)); id != NoElement;
         id = document.Parent(id)) {
        if (m_model.Item(id) || m_model.Band(id)) {
            m_model.Select({id});
            return;
        }
    }
}

void XmlPage::Revert() {
    m_text->setPlainText(QString::fromStdString(WithLineFeeds(m_model.Source().Text())));
    m_text->document()->setModified(false);
    m_text->setExtraSelections({});
    m_message->clear();
    m_text->setFocus();
}

// From the cursor on, then from the beginning.
void XmlPage::Find() {
    const QString words = m_find->text();
    if (words.isEmpty() || m_text->find(words)) {
        return;
    }
    const QTextCursor before = m_text->textCursor();
    m_text->moveCursor(QTextCursor::Start);
    if (!m_text->find(words)) {
        m_text->setTextCursor(before);
        m_message->setText(tr("\"%1\" is not in the text").arg(words));
    }
}

void XmlPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        m_colours->SetPalette(palette());
    }
}

}  // namespace designer
