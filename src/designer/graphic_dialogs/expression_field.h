// SPDX-License-Identifier: GPL-3.0-or-later
// A line for a value that may be an expression, with values to choose from and the button that opens the
// dialog for expressions.
#pragma once

#include <QComboBox>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QToolButton;

namespace designer {

class ExpressionField : public QWidget {
    Q_OBJECT
 public:
    // `title` is the name of the line for those who do not see its label.
    explicit ExpressionField(const QString& title, QWidget* parent = nullptr);

    void SetChoices(const std::vector<std::string>& choices);
    std::string Value() const;  // without blanks around it
    void SetValue(const std::string& value);
    // Opens the dialog for expressions on the current value, and returns the new one; nothing: it stays.
    using Opener = std::function<std::optional<std::string>()>;
    void SetOpener(Opener opener) { m_opener = std::move(opener); }
    QComboBox& Line() { return *m_line; }

 signals:
    void Edited();  // by the user

 private:
    QComboBox* m_line;
    QToolButton* m_button;
    Opener m_opener;
};

}  // namespace designer
