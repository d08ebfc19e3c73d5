// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/canvas/text_editor.h"

#include <QAbstractTextDocumentLayout>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QTextBlock>
#include <QTextObjectInterface>
#include <algorithm>

#include "designer/document/placeholder_text.h"
#include "rdl/api/style_values.h"

namespace designer {
namespace {

constexpr int PlaceholderType = QTextFormat::UserObject + 1;
// Of characters: the expression, and the run of the report that they belong to.
constexpr int ExpressionProperty = QTextFormat::UserProperty + 1, ParagraphProperty = ExpressionProperty + 1,
              RunProperty = ExpressionProperty + 2, FontProperty = ExpressionProperty + 3,
              ColourProperty = ExpressionProperty + 4;

// A placeholder is drawn on a background of its own, in the font of the text around it.
class PlaceholderPainter : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
 public:
    explicit PlaceholderPainter(QTextEdit* editor) : QObject(editor), m_editor(*editor) {}

    QSizeF intrinsicSize(QTextDocument*, int, const QTextFormat& format) override {
        const QFontMetricsF metrics(FontOf(format));
        return {metrics.horizontalAdvance(TextOf(format)) + 2, metrics.ascent()};
    }
    void drawObject(QPainter* painter, const QRectF& place, QTextDocument*, int,
                    const QTextFormat& format) override {
        const QPalette& colours = m_editor.palette();
        painter->save();
        painter->setFont(FontOf(format));
        painter->fillRect(place, colours.color(QPalette::AlternateBase).darker(108));
        painter->setPen(format.hasProperty(QTextFormat::ForegroundBrush) ? format.foreground().color()
                                                                         : colours.color(QPalette::Text));
        painter->drawText(place.bottomLeft() + QPointF(1, 0), TextOf(format));
        painter->restore();
    }

 private:
    QFont FontOf(const QTextFormat& format) const {
        QFont font = m_editor.font();
        const QTextCharFormat letters = format.toCharFormat();
        font.setBold(letters.fontWeight() > QFont::Normal);
        font.setItalic(letters.fontItalic());
        font.setUnderline(letters.fontUnderline());
        return font;
    }
    static QString TextOf(const QTextFormat& format) {
        return QString::fromStdString(
            PlaceholderOf(format.property(ExpressionProperty).toString().toStdString()));
    }

    const QTextEdit& m_editor;
};

QTextCharFormat FormatOf(const RichRun& run) {
    QTextCharFormat format;
    format.setFontWeight(run.isBold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(run.isItalic);
    format.setFontUnderline(run.isUnderlined);
    format.setProperty(ParagraphProperty, run.paragraph);
    format.setProperty(RunProperty, run.run);
    format.setProperty(FontProperty, QString::fromStdString(run.font));
    format.setProperty(ColourProperty, QString::fromStdString(run.colour));
    if (!run.font.empty() && !IsExpression(run.font)) {
        format.setFontFamilies({QString::fromStdString(run.font)});
    }
    if (const auto colour = rdl::ColorOf(run.colour); colour && !run.colour.empty()) {
        format.setForeground(QColor::fromRgba(*colour));
    }
    return format;
}

bool HasOneRun(const RichText& text) {
    return text.size() == 1 && text.front().runs.size() <= 1;
}

// A text that begins with = would be read as an expression.
std::string Literal(const std::string& text) {
    std::string literal = "=\"";
    for (const char c : text) {
        literal += c == '"' ? "\"\"" : c == '\n' ? "\" & vbLf & \"" : std::string(1, c);
    }
    return literal + "\"";
}

// The run without its text.
RichRun RunOf(const QTextCharFormat& format) {
    RichRun run;
    run.paragraph = format.hasProperty(ParagraphProperty) ? format.intProperty(ParagraphProperty) : -1;
    run.run = format.hasProperty(RunProperty) ? format.intProperty(RunProperty) : -1;
    run.isBold = format.fontWeight() > QFont::Normal;
    run.isItalic = format.fontItalic();
    run.isUnderlined = format.fontUnderline();
    run.font = format.stringProperty(FontProperty).toStdString();
    run.colour = format.stringProperty(ColourProperty).toStdString();
    return run;
}

RichRun RunAt(const QTextFragment& fragment) {
    const QTextCharFormat format = fragment.charFormat();
    const bool isPlaceholder = format.objectType() == PlaceholderType;
    RichRun run = RunOf(format);
    run.text = isPlaceholder ? format.property(ExpressionProperty).toString().toStdString()
                             : QString(fragment.text())
                                   .replace(QChar::LineSeparator, '\n')
                                   .remove(QChar::ObjectReplacementCharacter)
                                   .toStdString();
    return run;
}

}  // namespace

TextEditor::TextEditor(const RichText& text, QWidget* parent) : QTextEdit(parent) {
    setAcceptRichText(false);
    document()->setDocumentMargin(2);
    document()->documentLayout()->registerHandler(PlaceholderType, new PlaceholderPainter(this));
    Fill(text);
}

void TextEditor::Fill(const RichText& text) {
    QTextCursor cursor(document());
    for (std::size_t number = 0; number < text.size(); ++number) {
        QTextBlockFormat block;
        block.setProperty(ParagraphProperty, text[number].like);
        number == 0 ? cursor.setBlockFormat(block) : cursor.insertBlock(block);
        if (!text[number].runs.empty()) {
            cursor.setBlockCharFormat(FormatOf(text[number].runs.front()));
        }
        for (const RichRun& run : text[number].runs) {
            QTextCharFormat format = FormatOf(run);
            if (IsExpression(run.text) && !HasOneRun(text)) {
                format.setObjectType(PlaceholderType);
                format.setProperty(ExpressionProperty, QString::fromStdString(run.text));
                cursor.insertText(QString(QChar::ObjectReplacementCharacter), format);
            } else {
                cursor.insertText(QString::fromStdString(run.text).replace('\n', QChar::LineSeparator),
                                  format);
            }
        }
    }
    document()->clearUndoRedoStacks();
}

RichParagraph TextEditor::ParagraphAt(const QTextBlock& block) const {
    RichParagraph paragraph;
    const QTextBlockFormat format = block.blockFormat();
    paragraph.like = format.hasProperty(ParagraphProperty) ? format.intProperty(ParagraphProperty) : -1;
    for (auto part = block.begin(); !part.atEnd(); ++part) {
        RichRun run = RunAt(part.fragment());
        const int placeholders =
            part.fragment().charFormat().objectType() == PlaceholderType ? part.fragment().length() : 1;
        // Placeholders of one expression beside each other are one fragment.
        for (int index = 0; index < placeholders; ++index) {
            paragraph.runs.push_back(run);
        }
    }
    if (paragraph.runs.empty()) {
        paragraph.runs.push_back(RunOf(block.charFormat()));
    }
    return paragraph;
}

RichText TextEditor::Text() const {
    RichText text;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        text.push_back(ParagraphAt(block));
    }
    if (HasOneRun(text)) {
        return text;
    }
    std::size_t number = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next(), ++number) {
        std::size_t run = 0;
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const bool isPlaceholder = part.fragment().charFormat().objectType() == PlaceholderType;
            std::string& own = text[number].runs[run].text;
            own = !isPlaceholder && own.starts_with('=') ? Literal(own) : own;
            run += isPlaceholder ? static_cast<std::size_t>(part.fragment().length()) : 1;
        }
    }
    return text;
}

void TextEditor::ToggleBold() {
    QTextCharFormat format;
    format.setFontWeight(currentCharFormat().fontWeight() > QFont::Normal ? QFont::Normal : QFont::Bold);
    mergeCurrentCharFormat(format);
}

void TextEditor::ToggleItalic() {
    QTextCharFormat format;
    format.setFontItalic(!currentCharFormat().fontItalic());
    mergeCurrentCharFormat(format);
}

void TextEditor::ToggleUnderline() {
    QTextCharFormat format;
    format.setFontUnderline(!currentCharFormat().fontUnderline());
    mergeCurrentCharFormat(format);
}

void TextEditor::BeginLine() {
    QTextCursor cursor = textCursor();
    document()->blockCount() > 1 ? cursor.insertBlock() : cursor.insertText(QString(QChar::LineSeparator));
    setTextCursor(cursor);
}

// Into an expression that is being typed it is typed, too.
void TextEditor::InsertExpression(const std::string& expression) {
    QTextCursor cursor = textCursor();
    if (IsExpressionTyped()) {
        cursor.insertText(QString::fromStdString(expression).mid(1));
        return;
    }
    QTextCharFormat format = cursor.charFormat();
    format.setObjectType(PlaceholderType);
    format.setProperty(ExpressionProperty, QString::fromStdString(expression));
    cursor.insertText(QString(QChar::ObjectReplacementCharacter), format);
    format.setObjectType(QTextFormat::NoObject);
    format.clearProperty(ExpressionProperty);
    cursor.setCharFormat(format);
    setTextCursor(cursor);
    setCurrentCharFormat(format);
}

TextPart TextEditor::Selection() const {
    const QTextCursor cursor = textCursor();
    const QTextBlock first = document()->findBlock(cursor.selectionStart()),
                     last = document()->findBlock(cursor.selectionEnd());
    return {first.blockNumber(), cursor.selectionStart() - first.position(), last.blockNumber(),
            cursor.selectionEnd() - last.position()};
}

std::optional<TextPart> TextEditor::MarkedPart() const {
    const QTextCursor cursor = textCursor();
    const int begin = cursor.selectionStart(), end = cursor.selectionEnd();
    const bool isAll = begin == 0 && end == document()->characterCount() - 1;
    return begin == end || isAll || IsExpressionTyped() ? std::nullopt : std::optional(Selection());
}

void TextEditor::Mark(const TextPart& part) {
    const QTextBlock first = document()->findBlockByNumber(part.paragraph),
                     last = document()->findBlockByNumber(part.lastParagraph);
    if (first.isValid() && last.isValid()) {
        QTextCursor cursor = textCursor();
        cursor.setPosition(first.position() + std::min(part.from, first.length() - 1));
        cursor.setPosition(last.position() + std::min(part.to, last.length() - 1), QTextCursor::KeepAnchor);
        setTextCursor(cursor);
    }
}

// Marks the placeholder after the position; returns false if there is none.
bool TextEditor::MarkPlaceholder(int position) {
    QTextCursor cursor(document());
    if (position < 0 || position + 1 >= document()->characterCount()) {
        return false;
    }
    cursor.setPosition(position);
    cursor.setPosition(position + 1, QTextCursor::KeepAnchor);
    if (cursor.charFormat().objectType() != PlaceholderType) {
        return false;
    }
    setTextCursor(cursor);
    return true;
}

std::string TextEditor::ExpressionAtCursor() {
    if (IsExpressionTyped()) {
        selectAll();
        return toPlainText().toStdString();
    }
    const QTextCursor cursor = textCursor();
    const int begin = cursor.selectionStart(), end = cursor.selectionEnd();
    const bool isMarked =
        end - begin <= 1 && (MarkPlaceholder(begin) || (begin == end && MarkPlaceholder(begin - 1)));
    return isMarked ? textCursor().charFormat().property(ExpressionProperty).toString().toStdString()
                    : std::string();
}

void TextEditor::PutExpression(const std::string& expression) {
    if (IsExpression(expression) && !IsExpressionTyped()) {
        InsertExpression(expression);
        return;
    }
    QTextCursor cursor = textCursor();
    QTextCharFormat format = cursor.charFormat();
    format.setObjectType(QTextFormat::NoObject);
    format.clearProperty(ExpressionProperty);
    cursor.insertText(QString::fromStdString(expression).replace('\n', QChar::LineSeparator), format);
    setTextCursor(cursor);
}

void TextEditor::mouseDoubleClickEvent(QMouseEvent* event) {
    const int position = cursorForPosition(event->pos()).position();
    for (const int at : {position - 1, position}) {
        QTextCursor cursor(document());
        cursor.setPosition(std::max(at, 0));
        const QRect begin = cursorRect(cursor);
        cursor.setPosition(std::min(at + 1, document()->characterCount() - 1));
        const QRect end = cursorRect(cursor);
        const bool isWithin =
            begin.left() <= event->pos().x() && event->pos().x() <= end.right() && begin.top() == end.top();
        if (isWithin && MarkPlaceholder(at)) {
            event->accept();
            emit ExpressionOpened();
            return;
        }
    }
    QTextEdit::mouseDoubleClickEvent(event);
}

bool TextEditor::canInsertFromMimeData(const QMimeData* source) const {
    const auto value = ValueIn(*source);
    return FieldIn(*source) || (value && !value->expression.empty()) ||
           QTextEdit::canInsertFromMimeData(source);
}

void TextEditor::insertFromMimeData(const QMimeData* source) {
    if (const auto field = FieldIn(*source); field && m_namer) {
        InsertExpression(m_namer(*field));
        return;
    }
    if (const auto value = ValueIn(*source); value && !value->expression.empty()) {
        InsertExpression(value->expression);
        return;
    }
    // What comes from elsewhere is text of the run at the cursor.
    textCursor().insertText(source->text().replace("\r\n", "\n").replace('\n', QChar::LineSeparator));
}

}  // namespace designer

#include "text_editor.moc"
