// SPDX-License-Identifier: GPL-3.0-or-later
// A query with the tables that it can be made of, and its first rows.
#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "designer/dialogs/query_run.h"

class QLabel;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QSplitter;

namespace designer {

class Note;
class RowsTable;
class SqlColours;

class QueryForm : public QWidget {
    Q_OBJECT
 public:
    explicit QueryForm(QWidget* parent = nullptr);

    // The query has no parameters: one that fails for them says so.
    void HasNoParameters() { m_takesParameters = false; }
    // Shows the tables of a source. The query stays if it is of the same source.
    void SetSource(const SourceKind& kind, const rdl::QueryRequest& request);
    // Shows a query of a source, or that of a shared data set, which is not changed here. A source
    // that cannot run is not read at all.
    enum class CanRun { No, Yes };
    void ShowQuery(const SourceKind& kind, const rdl::QueryRequest& request, const std::string& query,
                   CanRun canRun);
    void SetQuery(const std::string& query);
    // How the query is meant, and the values of its parameters, when it is run.
    void SetRun(rdl::QueryKind kind, const std::vector<rdl::QueryValue>& parameters);
    std::string Query() const;  // trimmed
    // Returns the parameters that the query asks for, with their marks; a ? for each that has no name.
    std::vector<std::string> ParametersAskedFor() const;
    // The table that the query was made from; empty if it was typed.
    std::string TableOfQuery() const;

    // Runs the query unless its rows are shown already. Returns false after a message below the query.
    bool Run();
    // Runs the query even if its rows are shown. Does nothing without a query that can be run.
    void RunAgain();
    // The rows of Run; null before.
    const rdl::QueryRows* Rows() const { return m_rows ? &*m_rows : nullptr; }
    void ShowError(const QString& text);

 signals:
    void Edited();  // the query
    void AboutToRun();
    void Ran();

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    bool IsShared() const { return !m_request.sharedSet.empty(); }
    void BuildTables(QSplitter& splitter);
    void BuildQuery(QSplitter& splitter);
    void ListTables(bool hasTables);
    enum class TypedQuery { Stays, IsReplaced };
    void TakeTable(int row, TypedQuery typed);
    void ForgetRows();
    QString FaultOfQuery(const QString& fault) const;

    const SourceKind* m_kind = nullptr;
    rdl::QueryRequest m_request;
    std::vector<TableName> m_tables;
    std::optional<rdl::QueryRows> m_rows;
    bool m_canRun = false, m_takesParameters = true;
    std::string m_lastQuery;
    std::string m_ownQuery, m_ownTable;  // the query that was made from a table
    QWidget* m_tableSide = nullptr;
    QListWidget* m_tableList = nullptr;
    Note* m_tableNote = nullptr;
    QLabel* m_queryLabel = nullptr;
    QPlainTextEdit* m_query = nullptr;
    SqlColours* m_colours = nullptr;
    QPushButton* m_run = nullptr;
    Note* m_note = nullptr;
    RowsTable* m_table = nullptr;
};

}  // namespace designer
