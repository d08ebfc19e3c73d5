// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/canvas/text_editor.h"

#include <QAbstractTextDocumentLayout>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QTextBlock>
#include <QTextObjectInterface>
#include <QtMath>
#include <algorithm>
#include <vector>

#include "designer/document/placeholder_text.h"
#include "platform/base/convert.h"
#include "rdl/api/text_literal.h"

namespace designer {
namespace {

constexpr int PlaceholderType = QTextFormat::UserObject + 1;
// Properties of characters: the expression, and the run of the report that they belong to.
constexpr int ExpressionProperty = QTextFormat::UserProperty + 1, ParagraphProperty = ExpressionProperty + 1,
              RunProperty = ExpressionProperty + 2,
              SizeProperty = ExpressionProperty + 3;  // points on paper
constexpr int FrameWidth = 1, LeastWidth = 80;        // pixels

// A placeholder is drawn on a background of its own, in the font of the text around it.
class PlaceholderPainter : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
 public:
    using QObject::QObject;

    QSizeF intrinsicSize(QTextDocument*, int, const QTextFormat& format) override {
        const QFontMetricsF metrics(FontOf(format));
        return {metrics.horizontalAdvance(TextOf(format)) + 2, metrics.ascent()};
    }
    void drawObject(QPainter* painter, const QRectF& place, QTextDocument*, int,
                    const QTextFormat& format) override {
        painter->save();
        painter->setFont(FontOf(format));
        painter->fillRect(place, QColor(128, 128, 128, 60));
        painter->setPen(format.foreground().color());
        painter->drawText(place.bottomLeft() + QPointF(1, 0), TextOf(format));
        painter->restore();
    }

 private:
    static QFont FontOf(const QTextFormat& format) { return format.toCharFormat().font(); }
    static QString TextOf(const QTextFormat& format) {
        return QString::fromStdString(
            PlaceholderOf(format.property(ExpressionProperty).toString().toStdString()));
    }
};

bool HasOneRun(const RichText& text) {
    return text.size() == 1 && text.front().runs.size() <= 1;
}

// A text that begins with = would be read as an expression.
std::string Literal(const std::string& text) {
    return "=" + Replace(rdl::TextLiteral(text), "\n", "\" & vbLf & \"");
}

// The run without its text.
RichRun RunOf(const QTextCharFormat& format) {
    RichRun run;
    run.paragraph = format.hasProperty(ParagraphProperty) ? format.intProperty(ParagraphProperty) : -1;
    run.run = format.hasProperty(RunProperty) ? format.intProperty(RunProperty) : -1;
    run.isBold = format.fontWeight() > QFont::Normal;
    run.isItalic = format.fontItalic();
    run.isUnderlined = format.fontUnderline();
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

TextEditor::TextEditor(const RichText& text, const TextLook& look, double scale, QWidget* parent)
    : QTextEdit(parent), m_look(look), m_scale(scale) {
    setAcceptRichText(false);
    setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain));
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, look.paper);
    colours.setColor(QPalette::Text, LookOfRun(look, 0, 0).colour);
    setPalette(colours);
    document()->setDocumentMargin(0);
    document()->documentLayout()->registerHandler(PlaceholderType, new PlaceholderPainter(this));
    Fill(text);
    connect(document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
            &TextEditor::PlaceText);
}

QTextCharFormat TextEditor::FormatOf(const RichRun& run) const {
    const RunLook& look = LookOfRun(m_look, run.paragraph, run.run);
    QTextCharFormat format;
    format.setFontFamilies({look.font.family()});
    format.setProperty(SizeProperty, look.font.pointSizeF());
    format.setFontPointSize(look.font.pointSizeF() * m_scale);
    format.setForeground(look.colour);
    format.setFontWeight(run.isBold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(run.isItalic);
    format.setFontUnderline(run.isUnderlined);
    format.setProperty(ParagraphProperty, run.paragraph);
    format.setProperty(RunProperty, run.run);
    return format;
}

// What was typed before cannot be undone afterwards.
void TextEditor::SetScale(double scale) {
    if (scale == m_scale) {
        return;
    }
    m_scale = scale;
    struct Stretch {
        int begin, end;
        double size;
    };
    std::vector<Stretch> stretches;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextFragment fragment = part.fragment();
            stretches.push_back({fragment.position(), fragment.position() + fragment.length(),
                                 fragment.charFormat().doubleProperty(SizeProperty)});
        }
    }
    document()->setUndoRedoEnabled(false);
    QTextCharFormat format;
    QTextCursor cursor(document());
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        cursor.setPosition(block.position());
        format.setFontPointSize(block.charFormat().doubleProperty(SizeProperty) * scale);
        cursor.mergeBlockCharFormat(format);
    }
    for (const Stretch& stretch : stretches) {
        cursor.setPosition(stretch.begin);
        cursor.setPosition(stretch.end, QTextCursor::KeepAnchor);
        format.setFontPointSize(stretch.size * scale);
        cursor.mergeCharFormat(format);
    }
    document()->setUndoRedoEnabled(true);
    PlaceText();
}

void TextEditor::SetArea(const QRect& area) {
    QFont font = LookOfRun(m_look, 0, 0).font;
    font.setPointSizeF(font.pointSizeF() * m_scale);
    const int line = QFontMetrics(font, this).height() + 2 * FrameWidth;
    m_area = {area.topLeft(), area.size().expandedTo({LeastWidth, line})};
    PlaceText();
}

void TextEditor::PlaceText() {
    if (!m_placing) {
        m_placing = true;
        PlaceWithin(m_area);
        m_placing = false;
    }
}

// With the padding of the text box, and what is free above a text in the middle or at the bottom.
void TextEditor::PlaceWithin(const QRect& area) {
    const QMarginsF padding = m_look.padding * (m_scale * logicalDpiY() / 72) - FrameWidth;
    const auto whole = [](double margin) { return std::max(0, qRound(margin)); };
    QMargins margins(whole(padding.left()), 0, whole(padding.right()), 0);
    // The width first: the height of the text follows from it.
    setViewportMargins(margins);
    resize(area.width(), height());
    margins.setTop(whole(padding.top()));
    margins.setBottom(whole(padding.bottom()));
    const int needed = qCeil(document()->size().height()) + margins.top() + margins.bottom() + 2 * FrameWidth;
    const int most = std::max(area.height(), parentWidget()->height() - area.top());
    setGeometry(QRect(area.topLeft(), QSize(area.width(), std::clamp(needed, area.height(), most))));
    const int room = std::max(0, height() - needed);
    margins.setTop(margins.top() + (m_look.vertical == Qt::AlignBottom    ? room
                                    : m_look.vertical == Qt::AlignVCenter ? room / 2
                                                                          : 0));
    setViewportMargins(margins);
}

void TextEditor::Fill(const RichText& text) {
    QTextCursor cursor(document());
    for (std::size_t number = 0; number < text.size(); ++number) {
        QTextBlockFormat block;
        block.setProperty(ParagraphProperty, text[number].like);
        block.setAlignment(AlignmentOfParagraph(m_look, text[number].like));
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
