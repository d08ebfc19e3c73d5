// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/wizards/fields_page.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <algorithm>

#include "designer/dialogs/note.h"
#include "platform/contracts/runtime.h"

namespace designer {
namespace {

QString WordOf(ColumnKind kind) {
    switch (kind) {
        case ColumnKind::Text:
            return FieldsPage::tr("text");
        case ColumnKind::Whole:
            return FieldsPage::tr("whole number");
        case ColumnKind::Code:
            return FieldsPage::tr("key or year");
        case ColumnKind::Number:
            return FieldsPage::tr("number");
        case ColumnKind::Date:
            return FieldsPage::tr("date");
        case ColumnKind::Moment:
            return FieldsPage::tr("date and time");
        case ColumnKind::Boolean:
            return FieldsPage::tr("yes or no");
        case ColumnKind::Bytes:
            break;
    }
    return {};
}

struct PartText {
    std::vector<std::string> NewReport::*member;
    const char *name, *label, *add;
};

const std::vector<PartText>& PartsOf(ReportLayout layout) {
    static const PartText Groups{&NewReport::groups, "groups",
                                 QT_TRANSLATE_NOOP("designer::FieldsPage", "Groups, the outermost first:"),
                                 QT_TRANSLATE_NOOP("designer::FieldsPage", "Add to &groups")};
    static const PartText Shown{&NewReport::shown, "columns",
                                QT_TRANSLATE_NOOP("designer::FieldsPage", "Columns that are shown:"),
                                QT_TRANSLATE_NOOP("designer::FieldsPage", "Add to &columns")};
    static const PartText Sums{&NewReport::sums, "totals",
                               QT_TRANSLATE_NOOP("designer::FieldsPage", "Totals:"),
                               QT_TRANSLATE_NOOP("designer::FieldsPage", "Add to &totals")};
    static const std::vector<PartText> Table = {Groups, Shown, Sums}, Labels = {Shown};
    static const std::vector<PartText> Matrix = {
        {&NewReport::rows, "rows", QT_TRANSLATE_NOOP("designer::FieldsPage", "Down the page:"),
         QT_TRANSLATE_NOOP("designer::FieldsPage", "Add to &rows")},
        {&NewReport::across, "across", QT_TRANSLATE_NOOP("designer::FieldsPage", "Across the page:"),
         QT_TRANSLATE_NOOP("designer::FieldsPage", "Add to &columns")},
        {&NewReport::values, "values", QT_TRANSLATE_NOOP("designer::FieldsPage", "Sums:"),
         QT_TRANSLATE_NOOP("designer::FieldsPage", "Add to &values")}};
    return layout == ReportLayout::Matrix ? Matrix : layout == ReportLayout::Labels ? Labels : Table;
}

bool IsSum(std::vector<std::string> NewReport::*member) {
    return member == &NewReport::sums || member == &NewReport::values;
}

}  // namespace

FieldsPage::FieldsPage(ReportDraft& draft) : m_draft(draft) {
    setObjectName("fieldsPage");
    setTitle(tr("Columns"));
    setSubTitle(tr("Drag columns of the query to the parts of the report, or press a button."));
    auto* layout = new QVBoxLayout(this);
    auto* keys = new QLabel(tr("In a part Delete removes, Ctrl+Up and Ctrl+Down move."), this);
    keys->setWordWrap(true);
    layout->addWidget(keys);
    auto* sides = new QHBoxLayout;
    auto* left = new QVBoxLayout;
    auto* label = new QLabel(tr("Columns of the &query:"), this);
    m_all = new ColumnList(ColumnList::Role::Offers, this);
    m_all->setObjectName("allColumns");
    m_all->setAccessibleName(tr("Columns of the query"));
    label->setBuddy(m_all);
    left->addWidget(label);
    left->addWidget(m_all);
    sides->addLayout(left, 2);
    auto* right = new QVBoxLayout;
    for (std::size_t index = 0; index < PartCount; ++index) {
        BuildPart(index);
        right->addWidget(m_parts[index].box);
    }
    sides->addLayout(right, 3);
    m_note = new Note(*m_all, this);
    layout->addLayout(sides, 1);
    layout->addWidget(m_note);
    setFocusProxy(m_all);
    connect(m_all, &ColumnList::Dropped, this,
            [](ColumnList* from, const std::vector<std::string>& columns) { from->Remove(columns); });
}

void FieldsPage::BuildPart(std::size_t index) {
    Part& part = m_parts[index];
    part.box = new QWidget(this);
    auto* layout = new QGridLayout(part.box);
    layout->setContentsMargins(0, 0, 0, 0);
    part.label = new QLabel(part.box);
    part.add = new QPushButton(part.box);
    part.list = new ColumnList(ColumnList::Role::Takes, part.box);
    layout->addWidget(part.label, 0, 1);
    layout->addWidget(part.add, 1, 0, 3, 1, Qt::AlignTop);
    layout->addWidget(part.list, 1, 1, 4, 1);
    const auto addTool = [&](int row, QStyle::StandardPixmap icon, const QString& text, auto work) {
        auto* tool = new QToolButton(part.box);
        tool->setIcon(style()->standardIcon(icon));
        tool->setToolTip(text);
        tool->setAccessibleName(text);
        tool->setAutoRaise(true);
        tool->setFocusPolicy(Qt::StrongFocus);
        connect(tool, &QToolButton::clicked, this, work);
        layout->addWidget(tool, row, 2);
    };
    ColumnList* const list = part.list;
    const auto remove = [list] { list->Remove(list->SelectedColumns()); };
    addTool(1, QStyle::SP_ArrowUp, tr("Move up"), [list] { list->MoveSelected(-1); });
    addTool(2, QStyle::SP_ArrowDown, tr("Move down"), [list] { list->MoveSelected(1); });
    addTool(3, QStyle::SP_DialogCancelButton, tr("Remove"), remove);
    layout->setRowStretch(4, 1);
    connect(part.add, &QPushButton::clicked, this,
            [this, index] { Take(index, m_all->SelectedColumns(), -1); });
    connect(list, &ColumnList::RemoveRequested, this, remove);
    connect(list, &ColumnList::MoveRequested, list, &ColumnList::MoveSelected);
    connect(list, &ColumnList::Dropped, this,
            [this, index](ColumnList* from, const std::vector<std::string>& columns, int row) {
                TakeDrop(index, from, columns, row);
            });
}

void FieldsPage::initializePage() {
    std::vector<std::string> columns;
    for (const ReportColumn& column : m_draft.report.columns) {
        columns.push_back(column.name);
    }
    m_note->Clear();
    if (columns == m_columns && m_layout == m_draft.report.layout) {
        return;
    }
    const bool areNew = columns != m_columns;
    m_columns = columns;
    m_layout = m_draft.report.layout;
    m_all->Clear();
    for (const ReportColumn& column : m_draft.report.columns) {
        if (column.kind != ColumnKind::Bytes) {
            m_all->Append(column.name, WordOf(column.kind));
        }
    }
    m_all->setCurrentRow(0);
    if (areNew) {
        KeepKnownColumns();
    }
    ShowLayout();
}

// What was chosen of another query stays if this one has it, too. At first all columns are shown.
void FieldsPage::KeepKnownColumns() {
    NewReport& report = m_draft.report;
    for (const auto member : {&NewReport::groups, &NewReport::shown, &NewReport::sums, &NewReport::rows,
                              &NewReport::across, &NewReport::values}) {
        std::erase_if(report.*member, [this](const std::string& name) { return !ColumnNamed(name); });
    }
    if (report.shown.empty()) {
        report.shown = m_all->Columns();
        std::erase_if(report.shown, [&](const std::string& name) {
            return std::find(report.groups.begin(), report.groups.end(), name) != report.groups.end();
        });
    }
}

void FieldsPage::ShowLayout() {
    const std::vector<PartText>& texts = PartsOf(m_layout);
    for (std::size_t index = 0; index < PartCount; ++index) {
        Part& part = m_parts[index];
        part.box->setVisible(index < texts.size());
        part.member = nullptr;
        if (index >= texts.size()) {
            continue;
        }
        const PartText& text = texts[index];
        part.member = text.member;
        part.label->setText(tr(text.label));
        part.add->setText(tr(text.add));
        part.add->setObjectName(QString("add_") + text.name);
        part.list->setObjectName(text.name);
        part.list->setAccessibleName(QString(tr(text.label)).remove(':'));
        part.list->Clear();
        for (const std::string& column : m_draft.report.*text.member) {
            part.list->Append(column);
        }
    }
    int widest = 0;  // the lists begin below each other
    for (const Part& part : m_parts) {
        widest = std::max(widest, part.member ? part.add->sizeHint().width() : 0);
    }
    for (const Part& part : m_parts) {
        part.add->setMinimumWidth(widest);
    }
}

const ReportColumn* FieldsPage::ColumnNamed(const std::string& name) const {
    const auto& columns = m_draft.report.columns;
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const ReportColumn& column) { return column.name == name; });
    return found == columns.end() || found->kind == ColumnKind::Bytes ? nullptr : &*found;
}

bool FieldsPage::MayTake(const Part& part, const std::string& name) {
    const ReportColumn* column = ColumnNamed(name);
    const bool isNumber = column && (column->IsNumeric() || column->kind == ColumnKind::Code);
    if (column && IsSum(part.member) && !isNumber) {
        m_note->ShowError(tr("The column \"%1\" cannot be summed: its values are no numbers")
                              .arg(QString::fromStdString(name)));
        return false;
    }
    return column != nullptr;
}

// A column of the first part, a group or the rows of a matrix, is in no other part.
void FieldsPage::Take(std::size_t index, const std::vector<std::string>& columns, int row) {
    m_note->Clear();
    m_all->EndSearch();
    const Part& part = m_parts[index];
    if (!std::all_of(columns.begin(), columns.end(),
                     [&](const std::string& column) { return MayTake(part, column); })) {
        return;
    }
    for (std::size_t other = 0; other < PartCount; ++other) {
        if (other != index && (index == 0 || other == 0)) {
            m_parts[other].list->Remove(columns);
        }
    }
    if (!columns.empty()) {
        part.list->Insert(columns, row);
    }
}

void FieldsPage::TakeDrop(std::size_t index, ColumnList* from, const std::vector<std::string>& columns,
                          int row) {
    ColumnList* const to = m_parts[index].list;
    Take(index, columns, row);
    const std::vector<std::string> taken = to->Columns();
    const bool came = std::all_of(columns.begin(), columns.end(), [&](const std::string& column) {
        return std::find(taken.begin(), taken.end(), column) != taken.end();
    });
    if (came && from != m_all && from != to) {
        from->Remove(columns);
    }
}

bool FieldsPage::validatePage() {
    for (const Part& part : m_parts) {
        if (part.member) {
            m_draft.report.*part.member = part.list->Columns();
        }
    }
    try {
        NewReport trial = m_draft.report;
        trial.chart = ReportChart::None;
        NewReportText(trial);
        m_note->Clear();
        return true;
    } catch (const RuntimeError& error) {
        m_note->ShowError(QString::fromStdString(error.Description()));
        return false;
    }
}

}  // namespace designer
