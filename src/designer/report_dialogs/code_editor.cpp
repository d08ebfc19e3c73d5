// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/report_dialogs/code_editor.h"

#include <Qsci/qscilexercustom.h>

#include <QKeyEvent>
#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "designer/dialogs/fixed_font.h"
#include "platform/base/ascii.h"
#include "rdl/api/identifier.h"

namespace designer {
namespace {

constexpr int FaultMark = 8;    // a background
constexpr int LineNumbers = 0;  // margin
constexpr int TabWidth = 4;

constexpr std::array<std::string_view, 88> Words = {
    "and",      "andalso",   "as",        "boolean",    "byref",    "byte",     "byval",     "call",
    "case",     "catch",     "cbool",     "cdate",      "cdbl",     "cdec",     "char",      "cint",
    "clng",     "const",     "continue",  "cstr",       "ctype",    "date",     "decimal",   "dim",
    "do",       "double",    "each",      "else",       "elseif",   "end",      "endif",     "exit",
    "false",    "finally",   "for",       "friend",     "from",     "function", "if",        "in",
    "integer",  "is",        "isnot",     "like",       "long",     "loop",     "me",        "mod",
    "new",      "next",      "not",       "nothing",    "object",   "of",       "optional",  "or",
    "orelse",   "overloads", "overrides", "paramarray", "preserve", "private",  "protected", "public",
    "readonly", "redim",     "rem",       "return",     "select",   "shared",   "short",     "single",
    "static",   "step",      "string",    "sub",        "then",     "throw",    "to",        "true",
    "try",      "typeof",    "until",     "wend",       "when",     "while",    "with",      "xor"};
static_assert(std::is_sorted(Words.begin(), Words.end()));

// Colours words, texts, numbers and comments of Visual Basic. A piece never goes over the end of its line.
class BasicLexer : public QsciLexerCustom {
 public:
    enum Style { Plain, Word, Text, Number, Comment };
    using QsciLexerCustom::QsciLexerCustom;

    const char* language() const override { return "Visual Basic"; }
    QString description(int style) const override {
        constexpr const char* Names[] = {"Plain", "Word", "Text", "Number", "Comment"};
        return style >= Plain && style <= Comment ? Names[style] : QString();
    }
    void styleText(int start, int end) override {
        const long first = editor()->SendScintilla(QsciScintilla::SCI_LINEFROMPOSITION, start);
        start = static_cast<int>(editor()->SendScintilla(QsciScintilla::SCI_POSITIONFROMLINE, first));
        std::string text(static_cast<std::size_t>(std::max(0, end - start)) + 1, '\0');
        editor()->SendScintilla(QsciScintilla::SCI_GETTEXTRANGE, start, end, text.data());
        text.pop_back();
        startStyling(start);
        for (std::string_view rest = text; !rest.empty();) {
            const auto [length, style] = PieceOf(rest);
            setStyling(static_cast<int>(length), style);
            rest.remove_prefix(length);
        }
    }

 private:
    static std::pair<std::size_t, Style> PieceOf(std::string_view text) {
        const char first = text.front();
        const std::string_view line = text.substr(0, text.find('\n'));
        if (first == '\'') {
            return {line.size(), Comment};
        }
        if (first == '"') {
            const std::size_t end = line.find('"', 1);
            return {end == std::string_view::npos ? line.size() : end + 1, Text};
        }
        if (!rdl::IsNameByte(first)) {
            return {1, Plain};
        }
        std::size_t end = 1;
        while (end < line.size() &&
               (rdl::IsNameByte(line[end]) || (IsAsciiDigit(first) && line[end] == '.'))) {
            ++end;
        }
        if (IsAsciiDigit(first)) {
            return {end, Number};
        }
        const bool isWord = std::binary_search(Words.begin(), Words.end(), ToLower(line.substr(0, end)));
        return {end, isWord ? Word : Plain};
    }
};

}  // namespace

CodeEditor::CodeEditor(QWidget* parent) : QsciScintilla(parent) {
    setUtf8(true);
    setEolMode(EolUnix);
    setTabWidth(TabWidth);
    setIndentationsUseTabs(false);
    setAutoIndent(true);
    setBraceMatching(SloppyBraceMatch);
    setMarginType(LineNumbers, NumberMargin);
    setMarginWidth(LineNumbers, "00000");
    for (int margin = 1; margin < 3; ++margin) {
        setMarginWidth(margin, 0);
    }
    // As wide as the longest line.
    SendScintilla(SCI_SETSCROLLWIDTH, 1UL);
    SendScintilla(SCI_SETSCROLLWIDTHTRACKING, 1UL);
    setLexer(new BasicLexer(this));
    markerDefine(Background, FaultMark);
    TakeColours();
}

void CodeEditor::TakeColours() {
    const QPalette& colours = palette();
    const bool isDark = colours.color(QPalette::Base).lightness() < 128;
    QsciLexer& lexer = *this->lexer();
    const QFont font = FixedFont().resolve(this->font());
    lexer.setDefaultFont(font);
    lexer.setFont(font);
    lexer.setDefaultPaper(colours.color(QPalette::Base));
    lexer.setPaper(colours.color(QPalette::Base));
    lexer.setDefaultColor(colours.color(QPalette::Text));
    lexer.setColor(colours.color(QPalette::Text));
    lexer.setColor(isDark ? QColor(130, 180, 255) : QColor(20, 70, 160), BasicLexer::Word);
    lexer.setColor(isDark ? QColor(150, 210, 130) : QColor(40, 110, 30), BasicLexer::Text);
    lexer.setColor(isDark ? QColor(230, 170, 110) : QColor(150, 70, 0), BasicLexer::Number);
    lexer.setColor(isDark ? QColor(165, 165, 165) : QColor(105, 105, 105), BasicLexer::Comment);
    setCaretForegroundColor(colours.color(QPalette::Text));
    setSelectionBackgroundColor(colours.color(QPalette::Highlight));
    setSelectionForegroundColor(colours.color(QPalette::HighlightedText));
    setMarginsBackgroundColor(colours.color(QPalette::Window));
    setMarginsForegroundColor(colours.color(QPalette::WindowText));
    setMarginsFont(font);
    setMarkerBackgroundColor(isDark ? QColor(110, 40, 40) : QColor(255, 205, 200), FaultMark);
}

void CodeEditor::changeEvent(QEvent* event) {
    QsciScintilla::changeEvent(event);
    if ((event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) && lexer()) {
        TakeColours();
    }
}

void CodeEditor::MarkLine(int line) {
    markerDeleteAll(FaultMark);
    if (line > 0 && line <= lines()) {
        markerAdd(line - 1, FaultMark);
    }
}

int CodeEditor::MarkedLine() const {
    return markerFindNext(0, 1U << FaultMark) + 1;
}

void CodeEditor::GoToLine(int line) {
    setCursorPosition(std::max(0, line - 1), 0);
    ensureCursorVisible();
}

// Escape belongs to the dialog; so does Ctrl+Enter.
void CodeEditor::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && (event->modifiers() & Qt::ControlModifier)) {
        emit Done();
    } else if (event->key() == Qt::Key_Escape) {
        event->ignore();
    } else {
        QsciScintilla::keyPressEvent(event);
    }
}

}  // namespace designer
