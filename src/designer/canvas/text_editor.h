// SPDX-License-Identifier: GPL-3.0-or-later
// The editor in which a text box is typed on the page, in the look that it has there. A run that is an
// expression is one character, which shows its placeholder; the expression of a text box with one run is
// typed as a text.
#pragma once

#include <QTextEdit>
#include <functional>

#include "designer/canvas/text_look.h"
#include "designer/model/field_drag.h"
#include "designer/model/rich_text.h"
#include "designer/model/text_parts.h"

namespace designer {

class TextEditor : public QTextEdit {
    Q_OBJECT
 public:
    // `scale` is the zoom: 1 for the size on paper.
    TextEditor(const RichText& text, const TextLook& look, double scale, QWidget* parent);
    void SetScale(double scale);
    // The place of the text box. The editor is wide enough to type in, and becomes higher with its text.
    void SetArea(const QRect& area);

    RichText Text() const;

    void ToggleBold();
    void ToggleItalic();
    void ToggleUnderline();
    void BeginLine();  // another paragraph if the text has several, else a line of its only one
    void InsertExpression(const std::string& expression);
    // Returns where the selection is, also an empty one.
    TextPart Selection() const;
    // Returns the part that is marked; nullopt if it is all of the text or no character, or if the text is an
    // expression.
    std::optional<TextPart> MarkedPart() const;
    void Mark(const TextPart& part);
    // Returns the expression that is typed, or that of the placeholder at the cursor, which is marked then;
    // "" if there is none. PutExpression replaces the selection by an expression.
    std::string ExpressionAtCursor();
    void PutExpression(const std::string& expression);
    // Says which expression a field that is dropped here becomes.
    using FieldNamer = std::function<std::string(const DraggedField& field)>;
    void SetFieldNamer(FieldNamer namer) { m_namer = std::move(namer); }

 signals:
    void ExpressionOpened();  // a double click on a placeholder, which is marked

 protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

 private:
    void Fill(const RichText& text);
    QTextCharFormat FormatOf(const RichRun& run) const;
    void PlaceText();
    void PlaceWithin(const QRect& area);
    bool IsExpressionTyped() const { return toPlainText().startsWith('='); }
    bool MarkPlaceholder(int position);
    RichParagraph ParagraphAt(const QTextBlock& block) const;

    FieldNamer m_namer;
    const TextLook m_look;
    double m_scale;
    QRect m_area;
    bool m_placing = false;
};

}  // namespace designer
