// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/expressions/expression_edit.h"
#include "platform/controls/kit/plain_tip.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStandardItemModel>
#include <algorithm>

namespace designer {
namespace {

constexpr int MatchRole = Qt::UserRole + 1, PlaceRole = Qt::UserRole + 2;
constexpr int FewCharacters = 2;  // of a name before it is offered without being asked for
constexpr int MostWidth = 60;     // of the list, in characters
constexpr int MostShown = 10, FewLines = 6;

bool IsNameCharacter(QChar c) {
    return c.isLetterOrNumber() || c == '_';
}

// A text in an expression ends at the next ", of which two are one of its characters.
bool EndsInText(QStringView text) {
    return text.count(u'"') % 2 == 1;
}

// What is typed to find the name: without brackets.
QString MatchOf(const ExpressionName& name) {
    return name.text.left(name.text.indexOf('('));
}

// The signature with one argument in bold: "Mid(text, <b>start</b>[, count])".
QString Marked(const QString& signature, int argument) {
    const qsizetype open = signature.indexOf('('), close = signature.lastIndexOf(')');
    const QStringList parts = signature.mid(open + 1, close - open - 1).split(',');
    QStringList shown;
    for (int part = 0; part < parts.size(); ++part) {
        const bool isLast = part == parts.size() - 1;
        const bool isIt = part == argument || (isLast && argument > part && parts[part].contains(u'…'));
        static const QRegularExpression Word("^([ \\[]*)(.*?)([ \\[\\]]*)$");
        const QRegularExpressionMatch word = Word.match(parts[part]);
        shown += isIt
                     ? word.captured(1) + "<b>" + word.captured(2).toHtmlEscaped() + "</b>" + word.captured(3)
                     : parts[part].toHtmlEscaped();
    }
    return signature.left(open + 1).toHtmlEscaped() + shown.join(',') + signature.mid(close).toHtmlEscaped();
}

}  // namespace

OpenCall CallBefore(QStringView text) {
    std::vector<OpenCall> open;
    bool isText = false;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar c = text[at];
        isText = isText != (c == '"');
        if (isText) {
            continue;
        }
        if (c == '(') {
            qsizetype begin = at;
            while (begin > 0 && (IsNameCharacter(text[begin - 1]) || text[begin - 1] == '.')) {
                --begin;
            }
            open.push_back({text.mid(begin, at - begin).toString()});
        } else if (c == ')' && !open.empty()) {
            open.pop_back();
        } else if (c == ',' && !open.empty()) {
            ++open.back().argument;
        }
    }
    // Brackets without a name only put terms together.
    while (!open.empty() && open.back().name.isEmpty()) {
        open.pop_back();
    }
    return open.empty() ? OpenCall() : open.back();
}

QString NameBefore(QStringView text) {
    if (EndsInText(text)) {
        return {};
    }
    qsizetype begin = text.size();
    while (begin > 0 &&
           (IsNameCharacter(text[begin - 1]) || text[begin - 1] == '!' || text[begin - 1] == '.')) {
        --begin;
    }
    const QStringView name = text.mid(begin);
    return name.isEmpty() || !(name[0].isLetter() || name[0] == '_') ? QString() : name.toString();
}

ExpressionEdit::ExpressionEdit(QWidget* parent)
    : QPlainTextEdit(parent), m_model(new QStandardItemModel(this)), m_completer(new QCompleter(this)) {
    m_completer->setModel(m_model);
    m_completer->setWidget(this);
    m_completer->setCompletionRole(MatchRole);
    m_completer->setCaseSensitivity(Qt::CaseInsensitive);
    m_completer->setMaxVisibleItems(MostShown);
    m_completer->popup()->setObjectName("completions");
    m_completer->popup()->setAccessibleName(tr("Names that fit"));
    connect(m_completer, qOverload<const QModelIndex&>(&QCompleter::activated), this,
            [this](const QModelIndex& index) { Take(index.data(PlaceRole).toInt()); });
}

QSize ExpressionEdit::sizeHint() const {
    return {QPlainTextEdit::sizeHint().width(), fontMetrics().lineSpacing() * FewLines};
}

void ExpressionEdit::SetNames(std::vector<ExpressionName> names) {
    m_names = std::move(names);
    m_model->clear();
    for (std::size_t place = 0; place < m_names.size(); ++place) {
        auto* item = new QStandardItem(m_names[place].shown);
        item->setData(MatchOf(m_names[place]), MatchRole);
        item->setData(static_cast<int>(place), PlaceRole);
        item->setToolTip(PlainTip(m_names[place].help));
        item->setAccessibleDescription(m_names[place].help);
        m_model->appendRow(item);
    }
}

QString ExpressionEdit::TextBeforeCursor() const {
    return toPlainText().left(textCursor().position());
}

QString ExpressionEdit::CallTip() const {
    const OpenCall call = CallBefore(TextBeforeCursor());
    const auto found = std::find_if(m_names.begin(), m_names.end(), [&](const ExpressionName& name) {
        return name.shown.contains('(') && MatchOf(name).compare(call.name, Qt::CaseInsensitive) == 0;
    });
    return call.name.isEmpty() || found == m_names.end()
               ? QString()
               : Marked(found->shown, call.argument) + " - " + found->help.toHtmlEscaped();
}

void ExpressionEdit::Insert(const QString& text, int cursor, int typed) {
    QTextCursor at = textCursor();
    if (typed > 0) {
        at.clearSelection();
        at.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor, typed);
    }
    const int begin = at.selectionStart();
    const bool hasBracket = text.endsWith("()") && toPlainText().mid(at.selectionEnd(), 1) == "(";
    at.insertText(hasBracket ? text.chopped(2) : text);
    at.setPosition(begin + (hasBracket ? static_cast<int>(text.size()) - 1 : cursor));
    setTextCursor(at);
}

void ExpressionEdit::Take(int row) {
    const ExpressionName& name = m_names.at(static_cast<std::size_t>(row));
    Insert(name.text, name.cursor, static_cast<int>(NameBefore(TextBeforeCursor()).size()));
}

// Shows the names that begin with what stands before the cursor. One that stands there as a whole is not
// offered again.
void ExpressionEdit::Offer(Trigger trigger) {
    const bool isAsked = trigger == Trigger::Key;
    const QString before = TextBeforeCursor(), typed = NameBefore(before);
    const bool isExpression = before.trimmed().startsWith('=') && !EndsInText(before);
    const bool isEnough =
        typed.size() >= FewCharacters || (isAsked && !(typed.isEmpty() && before.back().isDigit()));
    m_completer->setCompletionPrefix(typed);
    const int first = m_completer->currentIndex().data(PlaceRole).toInt();
    const bool isWhole =
        m_completer->completionCount() == 1 &&
        m_names.at(static_cast<std::size_t>(first)).text.compare(typed, Qt::CaseInsensitive) == 0;
    if (!isExpression || !isEnough || m_completer->completionCount() == 0 || (isWhole && !isAsked)) {
        m_completer->popup()->hide();
        return;
    }
    QAbstractItemView& list = *m_completer->popup();
    list.setCurrentIndex(m_completer->completionModel()->index(0, 0));
    QRect place = cursorRect();
    place.translate(viewport()->pos());
    place.setWidth(std::min(list.sizeHintForColumn(0), fontMetrics().averageCharWidth() * MostWidth) +
                   list.verticalScrollBar()->sizeHint().width());
    m_completer->complete(place);
}

// Tab takes a name while names are offered.
bool ExpressionEdit::focusNextPrevChild(bool next) {
    return !m_completer->popup()->isVisible() && QPlainTextEdit::focusNextPrevChild(next);
}

// While names are offered the keys that take one belong to the list.
void ExpressionEdit::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    const bool isControl = event->modifiers() & Qt::ControlModifier;
    QWidget& list = *m_completer->popup();
    if (isEnter && isControl) {
        list.hide();
        emit Done();
        return;
    }
    if (key == Qt::Key_Space && isControl) {
        Offer(Trigger::Key);
        return;
    }
    if (list.isVisible() && (isEnter || key == Qt::Key_Tab || key == Qt::Key_Escape)) {
        event->ignore();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
    const bool isTyped = !event->text().isEmpty() && event->text().front().isPrint();
    if (isTyped || (key == Qt::Key_Backspace && list.isVisible())) {
        Offer(Trigger::Typing);
    } else if (list.isVisible() && key != Qt::Key_Shift) {
        list.hide();
    }
}

}  // namespace designer
