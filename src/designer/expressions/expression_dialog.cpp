// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/expressions/expression_dialog.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "designer/dialogs/ask_discard.h"
#include "designer/dialogs/fixed_font.h"
#include "designer/dialogs/note.h"
#include "designer/expressions/expression_edit.h"
#include "designer/expressions/value_line.h"
#include "platform/base/text.h"
#include "platform/controls/kit/plain_tip.h"

namespace designer {
namespace {

constexpr int CheckPause = 300;  // milliseconds after the last change
constexpr int TextRole = Qt::UserRole, CursorRole = Qt::UserRole + 1, HelpRole = Qt::UserRole + 2,
              RowRole = Qt::UserRole + 3;

QString NameOf(const PropertyRow& row) {
    return QString::fromUtf8(row.property->name);
}

// Returns whether something in the entry matches; hides it if not.
bool ShowMatch(QTreeWidgetItem& entry, const QString& filter) {
    const bool isName = !entry.data(0, TextRole).isNull();
    bool matches = isName && (entry.text(0).contains(filter, Qt::CaseInsensitive) ||
                              entry.data(0, HelpRole).toString().contains(filter, Qt::CaseInsensitive));
    for (int index = 0; index < entry.childCount(); ++index) {
        matches = ShowMatch(*entry.child(index), filter) || matches;
    }
    entry.setHidden(!matches && !filter.isEmpty());
    if (!isName && !filter.isEmpty()) {
        entry.setExpanded(matches);
    }
    return matches;
}

}  // namespace

std::optional<std::string> AskForExpression(const DesignModel& model, const ExpressionPlace& place,
                                            const std::string& value, QWidget* parent) {
    std::optional<std::string> typed;
    const auto take = [&](const std::string& text) {
        typed = text;
        return true;
    };
    ExpressionDialog(model, place, value, take, parent).exec();
    return typed;
}

ExpressionDialog::ExpressionDialog(DesignModel& model, std::vector<ElementId> ids, const PropertyRow& row,
                                   QWidget* parent)
    : ExpressionDialog(
          model,
          {NameOf(row),
           [&model, id = ids.front(), row](Document& copy, const std::string& value) {
               SetRow(copy, {copy.IdAt(model.Source().IndexOf(id))}, row, value);
           }},
          ValueOfRow(model.Source(), ids.front(), row).text,
          [&model, ids, row](const std::string& value) {
              const auto write = [&](Document& document) { SetRow(document, ids, row, value); };
              return model.Edit(StepName(model, tr("Change %1 of").arg(NameOf(row)), ids), write);
          },
          parent) {}

ExpressionDialog::ExpressionDialog(const DesignModel& model, const ExpressionPlace& place,
                                   const std::string& value, Take take, QWidget* parent)
    : QDialog(parent),
      m_model(model),
      m_check(model, place.write),
      m_old(value),
      m_take(std::move(take)),
      m_value(new ValueLine(model, place.write, this)) {
    setObjectName("expressionDialog");
    setWindowTitle(tr("Expression: %1").arg(place.title));
    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->setChildrenCollapsible(false);
    BuildEditor(*new QWidget(splitter));
    BuildNames(*new QWidget(splitter));
    splitter->setStretchFactor(1, 2);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &ExpressionDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ExpressionDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter, 1);
    layout->addWidget(buttons);
    m_pause.setSingleShot(true);
    m_pause.setInterval(CheckPause);
    connect(&m_pause, &QTimer::timeout, this, &ExpressionDialog::Check);
    m_text->setPlainText(QString::fromStdString(m_old));
    m_text->moveCursor(QTextCursor::End);
    m_text->setFocus();
    const QSize wanted(fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 34);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

void ExpressionDialog::BuildEditor(QWidget& side) {
    m_text = new ExpressionEdit(&side);
    m_text->setObjectName("expression");
    m_text->setTabChangesFocus(true);
    m_text->setFont(FixedFont());
    m_text->setToolTip(tr("Ctrl+Space offers names, Ctrl+Enter is OK"));
    m_text->SetNames(NamesToType(m_model.Source(), m_value->DataSet()));
    m_signature = new QLabel(&side);
    m_signature->setObjectName("signature");
    m_signature->setAccessibleName(tr("Arguments of the function"));
    m_signature->setTextFormat(Qt::RichText);
    m_signature->setWordWrap(true);
    m_signature->setMinimumHeight(fontMetrics().lineSpacing());
    m_note = new Note(*m_text, &side);
    auto* label = new QLabel(tr("&Value; an expression begins with ="), &side);
    label->setBuddy(m_text);
    auto* layout = new QVBoxLayout(&side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_signature);
    layout->addWidget(m_note);
    layout->addWidget(m_value);
    connect(m_text, &QPlainTextEdit::textChanged, this, [this] { m_pause.start(); });
    connect(m_text, &QPlainTextEdit::cursorPositionChanged, this,
            [this] { m_signature->setText(m_text->CallTip()); });
    connect(m_text, &ExpressionEdit::Done, this, &ExpressionDialog::accept);
}

void ExpressionDialog::BuildNames(QWidget& side) {
    m_filter = new QLineEdit(&side);
    m_filter->setObjectName("filter");
    m_filter->setPlaceholderText(tr("Find in names and help"));
    m_filter->setClearButtonEnabled(true);
    m_tree = new QTreeWidget(&side);
    m_tree->setObjectName("names");
    m_tree->setAccessibleName(tr("Names for expressions"));
    m_tree->setHeaderHidden(true);
    m_tree->setUniformRowHeights(true);
    m_tree->installEventFilter(this);
    m_filter->installEventFilter(this);
    m_help = new QLabel(&side);
    m_help->setObjectName("help");
    m_help->setWordWrap(true);
    m_help->setTextFormat(Qt::PlainText);
    m_help->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_help->setMinimumHeight(fontMetrics().lineSpacing() * 3);
    m_help->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    auto* label = new QLabel(tr("&Names:"), &side);
    label->setBuddy(m_filter);
    auto* insert = new QPushButton(tr("&Insert"), &side);
    insert->setObjectName("insert");
    insert->setAutoDefault(false);
    insert->setToolTip(tr("Enter or a double click in the list"));
    auto* top = new QHBoxLayout;
    top->addWidget(label);
    top->addWidget(m_filter, 1);
    top->addWidget(insert);
    auto* layout = new QVBoxLayout(&side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(top);
    layout->addWidget(m_tree, 1);
    layout->addWidget(m_help);
    FillTree(NamesOfReport(m_model.Source()), nullptr);
    FillTree(NamesOfGuide(), nullptr);
    connect(m_filter, &QLineEdit::textChanged, this, &ExpressionDialog::ShowMatches);
    connect(m_tree, &QTreeWidget::currentItemChanged, this, &ExpressionDialog::ShowHelp);
    connect(m_tree, &QTreeWidget::itemDoubleClicked, this, &ExpressionDialog::InsertName);
    connect(insert, &QPushButton::clicked, this, &ExpressionDialog::InsertName);
}

// A group without anything in it is left out.
void ExpressionDialog::FillTree(const std::vector<ExpressionGroup>& groups, QTreeWidgetItem* parent) {
    for (const ExpressionGroup& group : groups) {
        if (group.names.empty() && group.groups.empty()) {
            continue;
        }
        auto* entry =
            parent ? new QTreeWidgetItem(parent, {group.title}) : new QTreeWidgetItem(m_tree, {group.title});
        FillTree(group.groups, entry);
        for (const ExpressionName& name : group.names) {
            auto* own = new QTreeWidgetItem(entry, {name.shown});
            own->setData(0, TextRole, name.text);
            own->setData(0, CursorRole, name.cursor);
            own->setData(0, HelpRole, name.help);
            own->setData(0, RowRole, name.row);
            own->setToolTip(0, PlainTip(name.help));
            own->setData(0, Qt::AccessibleDescriptionRole, name.help);
        }
    }
}

void ExpressionDialog::ShowMatches(const QString& filter) {
    for (int index = 0; index < m_tree->topLevelItemCount(); ++index) {
        ShowMatch(*m_tree->topLevelItem(index), filter.trimmed());
    }
    for (QTreeWidgetItemIterator entry(m_tree, QTreeWidgetItemIterator::NotHidden); *entry; ++entry) {
        if (!(*entry)->data(0, TextRole).isNull()) {
            m_tree->setCurrentItem(*entry);
            return;
        }
    }
}

void ExpressionDialog::ShowHelp() {
    const QTreeWidgetItem* entry = m_tree->currentItem();
    const bool isName = entry && !entry->data(0, TextRole).isNull();
    m_help->setText(isName ? entry->data(0, RowRole).toString() + "\n" + entry->data(0, HelpRole).toString()
                           : QString());
}

void ExpressionDialog::InsertName() {
    const QTreeWidgetItem* entry = m_tree->currentItem();
    if (!entry || entry->data(0, TextRole).isNull()) {
        return;
    }
    const QString before = m_text->toPlainText().trimmed().isEmpty() ? "=" : "";
    m_text->Insert(before + entry->data(0, TextRole).toString(),
                   static_cast<int>(before.size()) + entry->data(0, CursorRole).toInt());
    m_text->setFocus();
}

// Enter in the names inserts; the arrows go from the line to the tree.
bool ExpressionDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return QDialog::eventFilter(watched, event);
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (isEnter) {
        InsertName();
        return true;
    }
    if (watched == m_filter && key == Qt::Key_Down) {
        m_tree->setFocus();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

std::string ExpressionDialog::Value() const {
    const QString text = m_text->toPlainText();
    return (text.trimmed().startsWith('=') ? text.trimmed() : text).toStdString();
}

void ExpressionDialog::MarkPlace(int position) {
    QList<QTextEdit::ExtraSelection> marks;
    if (position >= 0) {
        const std::string value = Value();
        const std::string_view before = FirstCharacters(value, static_cast<std::size_t>(position));
        QTextEdit::ExtraSelection mark;
        mark.cursor = m_text->textCursor();
        mark.cursor.setPosition(static_cast<int>(QString::fromUtf8(before).size()));
        mark.cursor.movePosition(
            mark.cursor.atEnd() ? QTextCursor::PreviousCharacter : QTextCursor::NextCharacter,
            QTextCursor::KeepAnchor);
        mark.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        mark.format.setUnderlineColor(Qt::red);
        mark.format.setBackground(QColor(255, 80, 80, 70));
        marks.append(mark);
    }
    m_text->setExtraSelections(marks);
}

void ExpressionDialog::Compute() {
    const std::string value = Value();
    if (value.starts_with('=')) {
        m_value->Compute(value);
    } else {
        m_value->Clear();
    }
}

bool ExpressionDialog::Check() {
    m_pause.stop();
    if (!m_check.OtherFault().empty()) {
        m_note->ShowText(tr("Not checked, as the report has another fault: %1")
                             .arg(QString::fromStdString(m_check.OtherFault())));
        return true;
    }
    const std::optional<ExpressionFault> fault = m_check.FaultOf(Value());
    MarkPlace(fault ? fault->position : -1);
    if (fault) {
        m_note->ShowFault(QString::fromStdString(fault->text));
        m_value->Clear();
    } else {
        m_note->Clear();
        Compute();
    }
    return !fault;
}

// The first Escape closes the help for the arguments; they are shown again when the cursor moves.
void ExpressionDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && m_text->hasFocus() && !m_signature->text().isEmpty()) {
        m_signature->clear();
        return;
    }
    QDialog::keyPressEvent(event);
}

void ExpressionDialog::reject() {
    if (!isVisible() || Value() == m_old || AskToDiscard(*this)) {
        QDialog::reject();
    }
}

void ExpressionDialog::accept() {
    const std::string value = Value();
    if (value != m_old && !Check()) {
        m_text->setFocus();
        return;
    }
    if (value == m_old || m_take(value)) {
        QDialog::accept();
    }
}

}  // namespace designer
