// SPDX-License-Identifier: GPL-3.0-or-later
// A text box whose text has the form of a mask, such as "##:##" for a time of day.
#pragma once

#include <QLineEdit>
#include <string>

#include "platform/controls/editable_text.h"

// In the mask # stands for a digit and any other character for itself. A place without a digit shows the
// prompt character. With a format such as "hh:mm", the up and down arrow keys count the part at the cursor: h
// up to 23, m and s up to 59.
class MaskEdBox : public QLineEdit, public EditableText {
    Q_OBJECT
    Q_PROPERTY(QString Mask READ Mask WRITE Mask)
    Q_PROPERTY(QString Format READ Format WRITE Format)
    Q_PROPERTY(QString PromptChar READ PromptChar WRITE PromptChar)
 public:
    explicit MaskEdBox(QWidget* parent = nullptr);

    QString Mask() const { return m_mask; }
    void Mask(const QString& mask);
    QString Format() const { return m_format; }
    void Format(const QString& format) { m_format = format; }
    QString PromptChar() const { return m_prompt; }
    void PromptChar(const QString& prompt);  // one character

    // Returns the text as it is shown, with prompt characters: "__:__" if nothing was typed.
    std::string Text() const override { return displayText().toStdString(); }
    // An empty text clears the box. Parts that are too short get leading zeros; text beyond the mask is cut
    // off. Raises 380 "Invalid property value" for a text of another form and then changes nothing.
    void Text(const std::string& text) override;

 signals:
    void LostFocus();  // see FocusHasLeft

 protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    // The part at the cursor: the positions from `first` up to, but not including, `end`.
    struct Part {
        int first, end;
    };
    void UseMask();
    QString Shaped(const QString& text) const;
    Part PartAt(int cursor) const;
    bool ClosePart(const QString& typed);
    bool Step(int by);

    QString m_mask, m_format, m_prompt = "_";
    bool m_selectOnRelease = false;
};
