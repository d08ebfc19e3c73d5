// A text box whose text keeps the shape of a mask, such as "##:##" for a time of day.
#pragma once

#include <QLineEdit>
#include <string>

#include "platform/controls/editable_text.h"

// In the mask # stands for a digit, all else for itself. A place that holds no digit shows the prompt
// character. With a format, such as "hh:mm", the arrow keys up and down count the part that the cursor is in:
// h to 23, m and s to 59.
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

    // As it is shown, prompt characters and all: "__:__" when nothing has been typed.
    std::string Text() const override { return displayText().toStdString(); }
    // Empty clears it. Parts that are too short get leading zeros, and what is longer than the mask is cut
    // off. 380 "Invalid property value" for a text of another shape, which changes nothing.
    void Text(const std::string& text) override;

 signals:
    void LostFocus();  // see FocusHasLeft

 protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    // The places from `first` up to `end` that the cursor's part takes.
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
