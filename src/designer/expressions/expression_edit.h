// SPDX-License-Identifier: GPL-3.0-or-later
// An editor for an expression that offers the names which fit to what is typed, and knows the function whose
// arguments are typed.
#pragma once

#include <QPlainTextEdit>
#include <vector>

#include "designer/expressions/expression_names.h"

class QCompleter;
class QStandardItemModel;

namespace designer {

// The function around a place of an expression, and which of its arguments the place is in, from 0.
struct OpenCall {
    QString name;  // empty: the place is in none
    int argument = 0;
};
// Returns the innermost one; brackets and commas in texts do not count.
OpenCall CallBefore(QStringView text);
// Returns the beginning of a name at the end of `text`, with the names and marks before it: "Fields!Am".
// Empty if it ends otherwise, or within a text.
QString NameBefore(QStringView text);

class ExpressionEdit : public QPlainTextEdit {
    Q_OBJECT
 public:
    explicit ExpressionEdit(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    // The names that are offered, in this order.
    void SetNames(std::vector<ExpressionName> names);
    // Returns the signature of the function whose arguments are typed at the cursor, as rich text with this
    // argument in bold, and its help; empty if there is none.
    QString CallTip() const;
    // Puts a name at the cursor, in place of `typed` characters before it.
    void Insert(const QString& text, int cursor, int typed = 0);

 signals:
    void Done();  // Ctrl+Enter

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;

 private:
    QString TextBeforeCursor() const;
    enum class Trigger { Key, Typing };
    void Offer(Trigger trigger);
    void Take(int row);

    std::vector<ExpressionName> m_names;
    QStandardItemModel* m_model;
    QCompleter* m_completer;
};

}  // namespace designer
