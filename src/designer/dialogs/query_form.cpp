// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/query_form.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "designer/dialogs/busy_pointer.h"
#include "designer/dialogs/fixed_font.h"
#include "designer/dialogs/note.h"
#include "designer/dialogs/rows_table.h"
#include "designer/dialogs/sql_colours.h"
#include "platform/contracts/runtime.h"

namespace designer {
namespace {

bool IsSameSource(const rdl::QueryRequest& one, const rdl::QueryRequest& other) {
    return one.provider == other.provider && one.connectString == other.connectString &&
           one.user == other.user && one.password == other.password;
}

QString NameOf(const TableName& table) {
    return QString::fromStdString(table.schema.empty() ? table.name : table.schema + "." + table.name);
}

}  // namespace

QueryForm::QueryForm(QWidget* parent) : QWidget(parent) {
    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setChildrenCollapsible(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    BuildTables(*splitter);
    BuildQuery(*splitter);
    splitter->setStretchFactor(1, 3);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
}

void QueryForm::BuildTables(QSplitter& splitter) {
    m_tableSide = new QWidget(&splitter);
    auto* layout = new QVBoxLayout(m_tableSide);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(tr("&Tables:"), m_tableSide);
    m_tableList = new QListWidget(m_tableSide);
    m_tableList->setObjectName("tables");
    m_tableList->setToolTip(tr("Enter or a double click makes a query for the rows of the table"));
    label->setBuddy(m_tableList);
    m_tableNote = new Note(*m_tableList, m_tableSide);
    layout->addWidget(label);
    layout->addWidget(m_tableList, 1);
    layout->addWidget(m_tableNote);
    connect(m_tableList, &QListWidget::itemSelectionChanged, this, [this] {
        if (!m_tableList->selectedItems().isEmpty()) {
            TakeTable(m_tableList->currentRow(), TypedQuery::Stays);
        }
    });
    connect(m_tableList, &QListWidget::itemActivated, this, [this] {
        TakeTable(m_tableList->currentRow(), TypedQuery::IsReplaced);
        Run();
    });
}

void QueryForm::BuildQuery(QSplitter& splitter) {
    auto* side = new QWidget(&splitter);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    m_queryLabel = new QLabel(tr("&Query:"), side);
    m_query = new QPlainTextEdit(side);
    m_query->setObjectName("query");
    m_query->setTabChangesFocus(true);
    m_query->setFont(FixedFont());
    m_query->setMaximumHeight(m_query->fontMetrics().lineSpacing() * 8);
    m_queryLabel->setBuddy(m_query);
    m_colours = new SqlColours(m_query->document(), m_query->palette());
    m_note = new Note(*m_query, side);
    m_run = new QPushButton(tr("&Run the query"), side);
    m_run->setObjectName("run");
    m_run->setToolTip(tr("Ctrl+Enter in the query"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_note, 1);
    buttons->addWidget(m_run, 0, Qt::AlignTop | Qt::AlignRight);
    m_table = new RowsTable(side);
    layout->addWidget(m_queryLabel);
    layout->addWidget(m_query);
    layout->addLayout(buttons);
    layout->addWidget(m_table, 1);
    // The signal also comes when colours change.
    connect(m_query, &QPlainTextEdit::textChanged, this, [this] {
        if (Query() != m_lastQuery) {
            m_lastQuery = Query();
            ForgetRows();
            emit Edited();
        }
    });
    connect(m_run, &QPushButton::clicked, this, &QueryForm::RunAgain);
}

void QueryForm::SetSource(const SourceKind& kind, const rdl::QueryRequest& request) {
    if (m_kind != &kind || !IsSameSource(m_request, request)) {
        ShowQuery(kind, request, {}, CanRun::Yes);
    }
}

void QueryForm::ShowQuery(const SourceKind& kind, const rdl::QueryRequest& request, const std::string& query,
                          CanRun canRun) {
    m_kind = &kind;
    m_request = request;
    m_canRun = canRun == CanRun::Yes;
    const bool isShared = IsShared();
    m_query->setReadOnly(isShared);
    SetQuery(query);
    m_ownQuery.clear();
    ForgetRows();
    m_colours->setDocument(kind.IsSql() ? m_query->document() : nullptr);
    const bool hasQuery = isShared || !kind.IsRows();
    m_queryLabel->setVisible(hasQuery);
    m_query->setVisible(hasQuery);
    m_run->setVisible(hasQuery && m_canRun);
    m_query->setPlaceholderText(
        kind.IsSql() ? "select * from orders"
                     : tr("For example %1; empty for all rows").arg(QString::fromUtf8(kind.queryHint)));
    const bool hasTables = m_canRun && !isShared && !kind.tables.empty();
    m_tableSide->setVisible(hasTables);
    ListTables(hasTables);
    setFocusProxy(hasTables   ? static_cast<QWidget*>(m_tableList)
                  : !hasQuery ? static_cast<QWidget*>(m_table)
                              : m_query);
    if (m_canRun && !isShared && !kind.IsSql()) {
        Run();
    }
}

void QueryForm::ListTables(bool hasTables) {
    m_tableList->clear();
    m_tables.clear();
    m_tableNote->Clear();
    if (!hasTables) {
        return;
    }
    try {
        const BusyPointer busy;
        m_tables = TablesOf(*m_kind, m_request);
        const QSignalBlocker quiet(m_tableList);  // the query is made from a table that the user picks
        for (const TableName& table : m_tables) {
            m_tableList->addItem(NameOf(table));
        }
        // The list has a current row when it gets the focus; none is picked by that.
        m_tableList->setCurrentRow(0, QItemSelectionModel::NoUpdate);
        if (m_tables.empty()) {
            m_tableNote->ShowText(tr("The database has no tables"));
        }
    } catch (const RuntimeError& error) {
        m_tableNote->ShowError(QString::fromStdString(error.Description()));
    }
}

// A query that the user has typed is replaced only if the table is picked with Enter or a double click. Undo
// brings it back.
void QueryForm::TakeTable(int row, TypedQuery typed) {
    if (row < 0 || (typed == TypedQuery::Stays && !Query().empty() && Query() != m_ownQuery)) {
        return;
    }
    const TableName& table = m_tables[static_cast<std::size_t>(row)];
    const std::string query = QueryOfTable(*m_kind, table.schema, table.name);
    if (query != Query()) {
        SetQuery(query);
    }
    m_ownQuery = query;
    m_ownTable = table.name;
}

void QueryForm::SetQuery(const std::string& query) {
    QTextCursor cursor(m_query->document());
    cursor.select(QTextCursor::Document);
    cursor.insertText(QString::fromStdString(query));
}

void QueryForm::SetRun(rdl::QueryKind kind, const std::vector<rdl::QueryValue>& parameters) {
    const auto isSame = [](const rdl::QueryValue& one, const rdl::QueryValue& other) {
        return one.name == other.name && one.value == other.value;
    };
    const auto& old = m_request.parameters;
    if (kind != m_request.kind ||
        !std::equal(old.begin(), old.end(), parameters.begin(), parameters.end(), isSame)) {
        m_request.kind = kind;
        m_request.parameters = parameters;
        ForgetRows();
    }
}

std::string QueryForm::Query() const {
    return m_query->toPlainText().trimmed().toStdString();
}

std::vector<std::string> QueryForm::ParametersAskedFor() const {
    const bool isText = m_kind && m_request.kind == rdl::QueryKind::Text;
    return isText ? rdl::ParametersOfQuery(m_request.provider, m_request.connectString, Query())
                  : std::vector<std::string>();
}

std::string QueryForm::TableOfQuery() const {
    return !m_ownQuery.empty() && Query() == m_ownQuery ? m_ownTable : std::string();
}

void QueryForm::ForgetRows() {
    m_rows.reset();
    m_note->Clear();
    m_table->setRowCount(0);
    m_table->setColumnCount(0);
}

bool QueryForm::Run() {
    emit AboutToRun();
    if (m_rows) {
        return true;
    }
    if (!IsShared() && m_kind->IsSql() && Query().empty()) {
        ShowError(m_tables.empty() ? tr("Type a query") : tr("Pick a table, or type a query"));
        return false;
    }
    try {
        const BusyPointer busy;
        rdl::QueryRequest request = m_request;
        request.query = Query();
        m_rows = RunQuery(request);
    } catch (const RuntimeError& error) {
        ForgetRows();
        ShowError(FaultOfQuery(QString::fromStdString(error.Description())));
        return false;
    }
    m_table->ShowRows(*m_rows);
    const std::size_t count = m_rows->RowCount();
    const auto& parameters = m_request.parameters;
    const bool hasNull = std::any_of(parameters.begin(), parameters.end(),
                                     [](const rdl::QueryValue& one) { return one.value.empty(); });
    const QString values = hasNull ? tr("; parameters without a test value are Null") : QString();
    constexpr std::size_t Shown = RowsTable::MostRows;
    m_note->ShowText(count <= Shown ? tr("Rows: %1").arg(count) + values
                                    : tr("The first %1 rows").arg(Shown) + values);
    emit Ran();
    return true;
}

// Some databases have variables that are written like parameters: only a query that fails is judged.
QString QueryForm::FaultOfQuery(const QString& fault) const {
    QStringList names;
    for (const std::string& name : m_takesParameters ? std::vector<std::string>() : ParametersAskedFor()) {
        names.append(QString::fromStdString(name));
    }
    return names.isEmpty() ? fault
                           : tr("The wizard's query cannot have parameters (%1): put a value in its place "
                                "now, and add the parameter later in Report, Data Set")
                                 .arg(names.join(", "));
}

void QueryForm::RunAgain() {
    if (m_canRun && isEnabled()) {
        m_rows.reset();
        Run();
    }
}

void QueryForm::ShowError(const QString& text) {
    m_note->ShowError(text);
}

void QueryForm::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_F5 || (isEnter && (event->modifiers() & Qt::ControlModifier))) {
        RunAgain();
    } else if (!isEnter || !m_tableList->hasFocus()) {  // Enter picks a table, and does not leave the page
        QWidget::keyPressEvent(event);
    }
}

}  // namespace designer
