// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/report_dialogs/data_set_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>
#include <QShortcut>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <algorithm>

#include "designer/dialogs/note.h"
#include "designer/dialogs/part_form.h"
#include "designer/dialogs/query_form.h"
#include "designer/document/names.h"
#include "designer/document/properties/properties.h"
#include "designer/expressions/filter_list.h"
#include "designer/report_dialogs/query_parameters.h"
#include "designer/report_dialogs/shared_set_form.h"
#include "platform/base/ascii.h"
#include "platform/base/text.h"
#include "platform/contracts/runtime.h"
#include "rdl/api/identifier.h"

namespace designer {
namespace {

std::vector<std::string> NamesOfSets(const Document& document) {
    std::vector<std::string> names;
    for (const ReportSet& set : SetsOf(document)) {
        names.push_back(set.name);
    }
    return names;
}

// Shared data sets came with the schema of 2010.
bool CanShareSets(const Document& document) {
    const std::string& space = document.Tree().SpaceOf(0);
    return !IsOlderSchema(document) && space.find("/2008/") == std::string::npos;
}

// Fields that the report may compute with: all of the set.
std::vector<std::string> NamesOf(const std::vector<ReportField>& fields) {
    std::vector<std::string> names;
    std::transform(fields.begin(), fields.end(), std::back_inserter(names),
                   [](const ReportField& field) { return field.name; });
    return names;
}

}  // namespace

DataSetDialog::DataSetDialog(DesignModel& model, QWidget* parent)
    : QDialog(parent),
      m_model(model),
      m_sources(SourcesOf(model.Source())),
      m_part(new PartForm(model.Source(), DataPart::Set, NamesOfSets(model.Source()), this)),
      m_tabs(new QTabWidget(this)) {
    setObjectName("dataSetDialog");
    setWindowTitle(tr("Data Set"));
    m_tabs->setObjectName("setTabs");
    m_tabs->setAccessibleName(tr("Parts of the data set"));
    m_tabs->addTab(BuildQueryPage(), tr("Quer&y"));
    BuildTables();
    m_note = new Note(*m_query, this);
    m_note->setObjectName("setNote");
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &DataSetDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &DataSetDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_part);
    layout->addWidget(m_tabs, 1);
    layout->addWidget(m_note);
    layout->addWidget(buttons);
    Connect();
    ShowSet();
    const QSize wanted(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 40);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

QWidget* DataSetDialog::PageOf(RowTable& table, Note& note, const QString& help) {
    auto* page = new QWidget(m_tabs);
    page->setFocusProxy(&table);
    auto* label = new QLabel(help, page);
    label->setWordWrap(true);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(label);
    layout->addWidget(&table, 1);
    layout->addWidget(&note);
    return page;
}

void DataSetDialog::BuildTables() {
    m_parameters = new QueryParameters(
        m_model,
        [this](Document& copy, const std::vector<QueryParameter>& parameters) {
            QueryDetails details = m_oldDetails;
            details.parameters = parameters;
            PutTrial(copy, details, Computed());
        },
        this);
    m_tabs->addTab(m_parameters, tr("&Parameters"));
    m_computed = new RowTable(
        m_model, "computed", tr("Computed fields"),
        {{.title = tr("Name")}, {.title = tr("Value"), .takesExpressions = true}},
        [this](Document& copy, const std::vector<RowTable::Row>& rows) {
            std::vector<ReportField> computed;
            computed.reserve(rows.size());
            for (const RowTable::Row& row : rows) {
                computed.push_back({.name = row.cells[0], .value = row.cells[1]});
            }
            PutTrial(copy, m_oldDetails, computed);
        },
        this);
    m_computedNote = new Note(m_computed->Table(), this);
    m_tabs->addTab(
        PageOf(*m_computed, *m_computedNote, tr("Fields that an expression computes for each row.")),
        tr("&Computed fields"));
    m_filters = new FilterList(m_model, this);
    auto* page = new QWidget(m_tabs);
    page->setFocusProxy(m_filters);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(new QLabel(tr("Only rows that meet all filters are in the data set."), page));
    layout->addWidget(m_filters, 1);
    m_tabs->addTab(page, tr("Fi&lters"));
}

void DataSetDialog::Connect() {
    connect(m_tabs, &QTabWidget::currentChanged, this, [this] {
        if (m_tabs->currentWidget() == m_parameters) {
            TakeParameters();
        }
        if (!m_tabs->tabBar()->hasFocus()) {
            m_tabs->currentWidget()->setFocus();
        }
    });
    connect(m_part, &PartForm::Chosen, this, &DataSetDialog::ShowSet);
    connect(m_part, &PartForm::Changed, m_part, &PartForm::LockChoice);
    connect(m_source, &QComboBox::currentIndexChanged, this, [this] {
        if (!m_isShowing) {
            Lock();
            ShowSource();
        }
    });
    connect(m_isShared, &QCheckBox::toggled, this, [this] {
        if (!m_isShowing) {
            Lock();
            ShowKind();
            ShowSource();
        }
    });
    connect(m_shared, &SharedSetForm::Edited, this, &DataSetDialog::Lock);
    connect(m_shared, &SharedSetForm::Chosen, this, &DataSetDialog::ShowSource);
    connect(m_query, &QueryForm::Edited, this, [this] {
        m_types.clear();
        Lock();
    });
    connect(m_query, &QueryForm::Ran, this, &DataSetDialog::KeepTypes);
    connect(m_seconds, &QSpinBox::valueChanged, this, &DataSetDialog::Lock);
    connect(m_type, &QComboBox::currentIndexChanged, this, [this] {
        Lock();
        ShowRun();
    });
    connect(m_parameters, &QueryParameters::Edited, this, [this] {
        Lock();
        ShowRun();
    });
    connect(m_query, &QueryForm::AboutToRun, this, &DataSetDialog::TakeParameters);
    connect(m_computed, &RowTable::Edited, this, [this] {
        m_computedNote->Clear();
        Lock();
    });
    connect(m_filters, &FilterList::Edited, this, &DataSetDialog::Lock);
    for (const QKeySequence& key : {QKeySequence(Qt::Key_F5), QKeySequence(Qt::CTRL | Qt::Key_Return),
                                    QKeySequence(Qt::CTRL | Qt::Key_Enter)}) {
        connect(new QShortcut(key, this), &QShortcut::activated, this, &DataSetDialog::RunQuery);
    }
}

// The keys work on all pages; the rows are on the first one. A value that is being typed is taken before.
void DataSetDialog::RunQuery() {
    TakeParameters();
    if (m_tabs->currentIndex() != 0) {
        m_tabs->setCurrentIndex(0);
        m_query->setFocus();
    }
    m_query->RunAgain();
}

void DataSetDialog::Lock() {
    if (!m_isShowing) {
        m_part->LockChoice();
        m_note->Clear();
    }
}

void DataSetDialog::Choose(const std::string& name) {
    m_part->Choose(name);
}

void DataSetDialog::ShowSet() {
    m_isShowing = true;
    m_old = {};
    for (ReportSet& set : SetsOf(m_model.Source())) {
        if (set.name == m_part->Old()) {
            m_old = std::move(set);
        }
    }
    m_oldDetails = QueryDetailsOf(m_model.Source(), m_old.name);
    m_isShared->setChecked(m_old.isShared);
    m_isShared->setEnabled(m_old.isShared || CanShareSets(m_model.Source()));
    m_shared->SetReference(m_old.reference);
    m_ownQuery = m_old.query;
    m_source->setCurrentIndex(m_old.name.empty() ? std::min(0, m_source->count() - 1)
                                                 : m_source->findText(QString::fromStdString(m_old.source)));
    m_type->setCurrentIndex(m_type->findData(QString::fromStdString(m_oldDetails.type)));
    m_seconds->setValue(m_oldDetails.seconds);
    m_parameters->Show(m_oldDetails.parameters);
    std::vector<RowTable::Row> rows;
    for (const ReportField& field : m_old.fields) {
        if (field.column.empty()) {
            rows.push_back({static_cast<int>(rows.size()), {field.name, field.value}});
        }
    }
    m_computed->SetRows(std::move(rows));
    m_filters->ShowFilters(m_oldDetails.filters, NamesOf(m_old.fields),
                           [this](Document& copy, const std::vector<RowFilter>& filters) {
                               QueryDetails details = m_oldDetails;
                               details.filters = filters;
                               PutTrial(copy, details, Computed());
                           });
    ShowKind();
    ShowSource();
    m_isShowing = false;
}

// The query may have got names since.
void DataSetDialog::TakeParameters() {
    if (!m_isShowing && m_parameters->Offer(m_query->ParametersAskedFor())) {
        Lock();
        ShowRun();
    }
}

QueryDetails DataSetDialog::Details() {
    QueryDetails details{.type = m_oldDetails.type, .seconds = m_seconds->value()};
    if (m_type->currentIndex() >= 0) {
        details.type = m_type->currentData().toString().toStdString();
    }
    details.parameters = m_parameters->Parameters();
    details.filters = m_filters->Filters();
    return details;
}

// A field that stays keeps its type.
std::vector<ReportField> DataSetDialog::Computed() {
    std::vector<ReportField> computed;
    std::vector<ReportField> old = m_old.fields;
    std::erase_if(old, [](const ReportField& field) { return !field.column.empty(); });
    for (const RowTable::Row& row : m_computed->Rows()) {
        ReportField field;
        if (row.place != NewRow) {
            field = old[static_cast<std::size_t>(row.place)];
        }
        field.name = row.cells[0];
        field.value = row.cells[1];
        computed.push_back(std::move(field));
    }
    return computed;
}

// What belongs to a query of the report goes with it.
void DataSetDialog::Put(Document& document, const ReportSet& set, QueryDetails details) const {
    if (set.isShared) {
        details.type = "Text";
        details.seconds = 0;
    }
    if (set.isShared != m_old.isShared) {
        for (QueryParameter& parameter : details.parameters) {
            parameter.place = NewRow;
        }
    }
    PutSet(document, m_part->Old(), set);
    PutQueryDetails(document, set.name, details);
    m_parameters->AddToReport(document);
}

// A set that is new is one of its source without a query.
void DataSetDialog::PutTrial(Document& copy, const QueryDetails& details,
                             const std::vector<ReportField>& computed) {
    ReportSet set = m_old;
    if (set.name.empty()) {
        set.name = NewNameOf(copy, DataPart::Set);
        set.source = m_source->currentText().toStdString();
        set.query = m_query->Query();
        set.isShared = m_isShared->isChecked();
        set.reference = m_shared->Reference();
    }
    std::erase_if(set.fields, [](const ReportField& field) { return field.column.empty(); });
    set.fields.insert(set.fields.end(), computed.begin(), computed.end());
    PutSet(copy, m_old.name, set);
    PutQueryDetails(copy, set.name, details);
}

void DataSetDialog::KeepTypes() {
    try {
        for (const ReportColumn& column : ColumnsOf(*m_query->Rows())) {
            if (m_query->Rows()->RowCount() > 0 && column.isTypeKnown) {
                m_types[column.name] = column.typeName;
            }
        }
    } catch (const RuntimeError&) {  // OK says what is wrong with the columns
        m_types.clear();
    }
}

// A run without values for the parameters may have no rows: what one before it has shown still counts.
void DataSetDialog::TakeTypes(std::vector<ReportColumn>& columns) const {
    const bool hasRows = m_query->Rows()->RowCount() > 0;
    for (ReportColumn& column : columns) {
        const auto kept = m_types.find(column.name);
        if (kept != m_types.end() && !(hasRows && column.isTypeKnown)) {
            column.typeName = kept->second;
        } else if (!column.isTypeKnown) {
            column.typeName.clear();
        }
    }
}

bool DataSetDialog::TakeFields(ReportSet& set) {
    if (!m_query->Run()) {
        m_tabs->setCurrentIndex(0);
        return false;
    }
    try {
        std::vector<ReportColumn> columns = ColumnsOf(*m_query->Rows());
        TakeTypes(columns);
        set.fields = FieldsFor(columns, set.fields);
        return true;
    } catch (const RuntimeError& error) {
        m_tabs->setCurrentIndex(0);
        m_query->ShowError(QString::fromStdString(error.Description()));
        return false;
    }
}

bool DataSetDialog::Complain(Note& note, RowTable& table, std::size_t row, std::size_t column,
                             const QString& text) {
    m_tabs->setCurrentWidget(table.parentWidget());
    table.ShowCell(row, column);
    note.ShowError(text);
    return false;
}

bool DataSetDialog::AreComputedComplete(const ReportSet& set) {
    const std::vector<RowTable::Row>& rows = m_computed->Rows();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const std::string& name = rows[row].cells[0];
        const QString shown = QString::fromStdString(name);
        if (!rdl::IsIdentifier(name)) {
            return Complain(
                *m_computedNote, *m_computed, row, 0,
                name.empty() ? tr("Type a name for the field") : QString::fromStdString(NotAName(name)));
        }
        const auto isSame = [&](const ReportField& other) { return SameText(other.name, name); };
        if (std::count_if(set.fields.begin(), set.fields.end(), isSame) > 1) {
            return Complain(*m_computedNote, *m_computed, row, 0,
                            tr("Another field has the name %1").arg(shown));
        }
        if (Trim(rows[row].cells[1]).empty()) {
            return Complain(*m_computedNote, *m_computed, row, 1, tr("Type what %1 is").arg(shown));
        }
    }
    return true;
}

void DataSetDialog::accept() {
    if (!m_part->IsComplete() || !HasSource()) {
        return;
    }
    TakeParameters();
    ReportSet set{.name = m_part->Name(),
                  .source = m_source->currentText().toStdString(),
                  .query = m_query->Query(),
                  .fields = m_old.fields,
                  .isShared = m_isShared->isChecked(),
                  .reference = m_shared->Reference()};
    const std::vector<ReportField> computed = Computed();
    std::erase_if(set.fields, [](const ReportField& field) { return field.column.empty(); });
    set.fields.insert(set.fields.end(), computed.begin(), computed.end());
    const bool changes = set.fields != m_old.fields;
    const bool isOther = Details().parameters != m_oldDetails.parameters;
    if (changes && !AreComputedComplete(set)) {
        return;
    }
    if (isOther && !m_parameters->IsComplete()) {
        m_tabs->setCurrentWidget(m_parameters);
        m_parameters->IsComplete();  // again, as the focus goes to what can be seen
        return;
    }
    if (!m_filters->IsComplete()) {
        m_tabs->setCurrentWidget(m_filters->parentWidget());
        m_filters->IsComplete();  // again, as the focus goes to what can be seen
        return;
    }
    const QueryDetails details = Details();
    if (m_takesFields->isChecked() && !TakeFields(set)) {
        return;
    }
    if (const std::string fault = FaultOfEdit(m_model, [&](Document& copy) { Put(copy, set, details); });
        !fault.empty()) {
        m_note->ShowFault(QString::fromStdString(fault));
        return;
    }
    const QString step = m_part->Old().empty() ? tr("Add Data Set %1") : tr("Change Data Set %1");
    if (m_model.Edit(step.arg(QString::fromStdString(set.name)),
                     [&](Document& document) { Put(document, set, details); })) {
        QDialog::accept();
    }
}

}  // namespace designer
