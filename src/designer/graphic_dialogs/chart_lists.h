// SPDX-License-Identifier: GPL-3.0-or-later
// The fields of a data set, which are dragged, and the lists of a chart that take them.
#pragma once

#include <QGroupBox>
#include <QListWidget>

#include "designer/model/field_drag.h"

class QPushButton;

namespace designer {

class FieldList : public QListWidget {
    Q_OBJECT
 public:
    explicit FieldList(QWidget* parent = nullptr);
    void ShowSet(const Document& document, const std::string& dataSet);
    // The current field; nullopt if there is none.
    std::optional<DraggedField> Current() const;

 protected:
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QList<QListWidgetItem*>& items) const override;

 private:
    std::string m_set;
};

// A list with the buttons that change it. It shows what its owner gives it.
class ChartList : public QGroupBox {
    Q_OBJECT
 public:
    // The buttons are below the list, so many in a row.
    ChartList(const QString& title, const QString& name, int columns, QWidget* parent = nullptr);
    void Show(const QStringList& entries, int current);
    int Current() const { return m_list->currentRow(); }
    void SetAddText(const QString& text);
    QListWidget& List() { return *m_list; }

 signals:
    void AddRequested();
    void Dropped(const designer::DraggedField& field);
    // Rows count from 0.
    void RemoveRequested(int row);
    void MoveRequested(int row, int to);
    void Chosen();  // another entry is current, or the list has the focus

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void ShowButtons();
    QListWidget* m_list;
    QPushButton *m_add, *m_remove, *m_up, *m_down;
};

}  // namespace designer
