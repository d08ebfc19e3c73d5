// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/load.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>

#include "rdl/data/common/field_type.h"
#include "rdl/data/common/message.h"
#include "rdl/data/data_set_filter.h"
#include "rdl/data/files/csv_cursor.h"
#include "rdl/data/files/data_file.h"
#include "rdl/data/open_cursor.h"
#include "rdl/data/record_selection.h"
#include "rdl/data/row_environment.h"
#include "rdl/data/shared_source.h"
#include "rdl/values/ascii.h"

namespace rdl::data {
namespace {

const DataSource* FindSource(const Definition& definition, const std::string& name) {
    for (const DataSource& source : definition.dataSources) {
        if (EqualNoCase(source.name, name)) {
            return &source;
        }
    }
    // A data set that names none means the report's only one.
    return name.empty() && definition.dataSources.size() == 1 ? &definition.dataSources.front() : nullptr;
}

bool IsCalculated(const Field& field) {
    return field.dataField.empty() && field.value.IsSet();
}

// A field of a query: where its value stands in a row and what it becomes.
struct Slot {
    std::ptrdiff_t column = -1;  // -1: the query does not give it
    FieldType type = FieldType::Untyped;
};

std::ptrdiff_t FindColumn(const std::vector<std::string>& columns, const std::string& name) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (EqualNoCase(columns[i], name)) {
            return static_cast<std::ptrdiff_t>(i);
        }
    }
    return -1;
}

std::vector<Slot> MakeSlots(const DataSet& dataSet, const Cursor& cursor, Table& table) {
    std::vector<Slot> slots;
    for (const Field* field : FieldOrder(dataSet)) {
        Slot slot;
        if (!IsCalculated(*field)) {
            slot.column =
                FindColumn(cursor.Columns(), field->dataField.empty() ? field->name : field->dataField);
            slot.type = FieldTypeOfName(field->typeName);
        }
        table.fieldNames.push_back(field->name);
        table.missing.push_back(slot.column < 0 && !IsCalculated(*field));
        slots.push_back(slot);
    }
    if (slots.empty()) {  // a data set without fields has those of its query
        for (std::size_t i = 0; i < cursor.Columns().size(); ++i) {
            table.fieldNames.push_back(cursor.Columns()[i]);
            table.missing.push_back(false);
            slots.push_back({static_cast<std::ptrdiff_t>(i), FieldType::Untyped});
        }
    }
    return slots;
}

std::string ListOf(const std::vector<std::string>& columns) {
    constexpr std::size_t Enough = 200;
    std::string list;
    for (const std::string& column : columns) {
        if (list.size() > Enough) {
            return list + " ...";
        }
        list += (list.empty() ? "\"" : ", \"") + CleanText(column) + "\"";
    }
    return list.empty() ? "none" : list;
}

// Fields may be missing, but where not one is found the rows are those of something else, and would go out
// as blank lines.
void CheckSlots(const std::vector<Slot>& slots, const DataSet& dataSet, const Cursor& cursor) {
    const bool asksForColumns = std::any_of(dataSet.fields.begin(), dataSet.fields.end(),
                                            [](const Field& field) { return !IsCalculated(field); });
    const bool hasOne =
        std::any_of(slots.begin(), slots.end(), [](const Slot& slot) { return slot.column >= 0; });
    if (!asksForColumns || hasOne || cursor.Columns().empty()) {
        return;
    }
    throw Error("the query gives none of the fields; it gives " + ListOf(cursor.Columns()));
}

// The author of a file for a data set writes all of its fields: a missing one is mistyped.
void CheckColumns(const DataSet& dataSet, const Cursor& cursor) {
    for (const Field& field : dataSet.fields) {
        if (!IsCalculated(field) && FindColumn(cursor.Columns(), field.dataField) < 0) {
            throw Error("the file has no column for the field \"" + CleanText(field.name) + "\"; it has " +
                        ListOf(cursor.Columns()));
        }
    }
}

constexpr std::size_t MostSharing = 256;  // columns whose equal texts share their memory

class Budget {
 public:
    explicit Budget(const Limits& limits) : m_limits(limits) {}
    void AddRow(std::size_t fields) {
        m_bytes += fields * sizeof(Value);
        if (++m_rows > m_limits.rows) {
            throw Error("the query gives more than " + std::to_string(m_limits.rows) + " rows");
        }
    }
    void AddCell(const Value& value) {
        if (value.kind() == Kind::Text || value.kind() == Kind::Bytes) {
            m_bytes += value.AsText().size() + 16;
        }
        if (m_bytes > m_limits.bytes) {
            throw Error("the query gives more than " + std::to_string(m_limits.bytes >> 20) + " MB of data");
        }
    }

 private:
    Limits m_limits;
    std::size_t m_rows = 0, m_bytes = 0;
};

// The texts of a column that were read last. Equal ones share their memory.
class RecentTexts {
 public:
    void Share(Value& value) {
        if (value.IsText()) {
            Value& known = m_texts[std::hash<std::string_view>()(value.AsText()) % m_texts.size()];
            if (known.IsText() && known.AsText() == value.AsText()) {
                value = Value(known);
            } else {
                known = Value(value);
            }
        }
    }

 private:
    std::array<Value, 256> m_texts;
};

Table ReadRows(const LoadRequest& request, const DataSet& dataSet, Cursor& cursor) {
    Table table;
    table.caseSensitive = dataSet.caseSensitive;
    const std::vector<Slot> slots = MakeSlots(dataSet, cursor, table);
    Budget budget(request.limits);
    std::vector<RecentTexts> recent(std::min(slots.size(), MostSharing));
    const std::size_t most = std::min(
        request.limits.rows, request.limits.bytes / sizeof(Value) / std::max<std::size_t>(1, slots.size()));
    table.cells.reserve(std::min(cursor.RowCount(), most) * slots.size());
    for (bool first = true; cursor.Next(); first = false) {
        if (first) {
            CheckSlots(slots, dataSet, cursor);
        }
        request.CheckBounds();
        budget.AddRow(slots.size());
        for (std::size_t i = 0; i < slots.size(); ++i) {
            const Slot& slot = slots[i];
            if (slot.column < 0) {
                table.cells.emplace_back();
                continue;
            }
            Value value = cursor.Cell(static_cast<std::size_t>(slot.column));
            budget.AddCell(value);
            if (slot.type != FieldType::Untyped) {
                value = ConvertValue(value, slot.type);
            }
            if (i < recent.size()) {
                recent[i].Share(value);
            }
            table.cells.push_back(std::move(value));
        }
    }
    return table;
}

void Calculate(const LoadRequest& request, const DataSet& dataSet, Table& table) {
    const std::vector<const Field*> fields = FieldOrder(dataSet);
    DataContext context(*request.definition, dataSet.name, &table);
    RowEnvironment environment(request, &table);
    bool any = false;
    for (std::size_t slot = 0; slot < fields.size(); ++slot) {
        if (!IsCalculated(*fields[slot])) {
            continue;
        }
        const Expr& source = fields[slot]->value;
        if (source.IsExpression()) {
            environment.SetCalculation(slot, expr::Compile(source.source, source.where, context));
            any = true;
            continue;
        }
        for (std::size_t at = slot; at < table.cells.size(); at += fields.size()) {
            table.cells[at] = Value::Text(source.source);
        }
    }
    for (std::size_t row = 0; any && row < table.RowCount(); ++row) {
        environment.SetRow(row);
        environment.CalculateRow();
    }
}

// Rows with their calculated fields, before any filter.
Table ReadCalculated(const LoadRequest& request, const DataSet& dataSet, const DataSource* source) {
    const std::unique_ptr<Cursor> cursor = OpenCursor(request, dataSet, source);
    Table table = ReadRows(request, dataSet, *cursor);
    Calculate(request, dataSet, table);
    return table;
}

// What a shared data set's parameter is in this report: what the report gives, else its own default.
Value SharedValue(const LoadRequest& request, const DataSet& dataSet, const SharedParameter& own) {
    for (const QueryParameter& given : dataSet.parameters) {
        if (!own.readOnly && EqualNoCase(own.name, given.name)) {
            return EvaluateAlone(request, given.value);
        }
    }
    if (!own.defaultValue.IsSet() && !own.nullable) {
        throw Error("the parameter \"" + CleanText(own.name) + "\" of the shared data set has no value");
    }
    return EvaluateAlone(request, own.defaultValue);
}

// Parameters of drivers that count them may be called ? and cannot be asked for by that.
std::string NameInExpressions(const SharedParameter& parameter, std::size_t index) {
    const std::string name = parameter.name.substr(parameter.name.starts_with('@') ? 1 : 0);
    const bool isName = !name.empty() && std::all_of(name.begin(), name.end(), IsNameByte);
    return isName ? name : "Parameter" + std::to_string(index + 1);
}

// Its expressions know its own parameters and nothing of the report's.
Table ReadSharedFile(const LoadRequest& request, const DataSet& dataSet) {
    SharedDataSet shared = ReadSharedDataSet(dataSet.sharedDataSet, request.SearchFolders());
    Definition definition;
    definition.language = request.definition->language;
    LoadRequest own = request;
    own.report = &request;
    own.definition = &definition;
    own.parameters.clear();
    for (const SharedParameter& parameter : shared.parameters) {
        const std::string name = NameInExpressions(parameter, own.parameters.size());
        const Value value = SharedValue(request, dataSet, parameter);
        if (value.IsError()) {
            throw Error("the parameter \"" + CleanText(parameter.name) +
                        "\" fails: " + CleanText(value.AsText()));
        }
        definition.parameters.emplace_back().name = name;
        own.parameters.push_back({value, value});
        if (!parameter.omitFromQuery) {
            shared.dataSet.parameters.push_back(
                {parameter.name,
                 {.source = "=Parameters!" + name + ".Value", .where = "Parameter " + name, .id = 0}});
        }
    }
    const DataSource* named = FindSource(*request.definition, shared.source.name);
    Table inner = ReadCalculated(own, shared.dataSet, named ? named : &shared.source);
    ApplyFilters(own, shared.dataSet, inner);
    return inner;
}

// The shared data set's own rows are the source of the report's data set.
Table ReadShared(const LoadRequest& request, const DataSet& dataSet) {
    Table inner = ReadSharedFile(request, dataSet);
    MemoryCursor cursor(std::move(inner.fieldNames), std::move(inner.cells));
    Table table = ReadRows(request, dataSet, cursor);
    Calculate(request, dataSet, table);
    return table;
}

std::string Place(const LoadRequest& request, const DataSet& dataSet) {
    std::string place = "Data set \"" + CleanText(dataSet.name) + "\"";
    if (request.rowFiles.contains(dataSet.name)) {
        return place + ", rows given for it";
    }
    if (!dataSet.dataSourceName.empty() && !dataSet.inlineRows && dataSet.rowsFile.empty()) {
        place += ", data source \"" + CleanText(dataSet.dataSourceName) + "\"";
    }
    return place;
}

// The rows of a file that the run gives in place of the query. Its columns have the names of the fields.
Table ReadFileRows(const LoadRequest& request, const DataSet& dataSet, const std::string& file) {
    DataSet named = dataSet;
    for (Field& field : named.fields) {
        if (!IsCalculated(field)) {
            field.dataField = field.name;
        }
    }
    CsvForm form;
    form.texts = ColumnsReadAsTexts(named);
    const std::unique_ptr<Cursor> cursor = OpenCsv(ReadDataFile(file), form);
    CheckColumns(named, *cursor);
    Table table = ReadRows(request, named, *cursor);
    Calculate(request, named, table);
    return table;
}

Table ReadSet(const LoadRequest& request, const DataSet& dataSet) {
    if (const auto given = request.rowFiles.find(dataSet.name); given != request.rowFiles.end()) {
        return ReadFileRows(request, dataSet, given->second);
    }
    return dataSet.sharedDataSet.empty()
               ? ReadCalculated(request, dataSet, FindSource(*request.definition, dataSet.dataSourceName))
               : ReadShared(request, dataSet);
}

// Raises with the data set's name, and counts as the part of the run that waits for data.
template <typename Work>
auto Named(const LoadRequest& request, const DataSet& dataSet, Work work) {
    const RunWatch::Data waiting(request.watch);
    try {
        request.CheckBounds();
        return work();
    } catch (const Error& error) {
        throw Error(Place(request, dataSet) + ": " + error.what());
    }
}

Table ReadSelected(const LoadRequest& request, const DataSet& dataSet, const RecordSelection& selection) {
    return Named(request, dataSet, [&] {
        Table table = ReadSet(request, dataSet);
        selection.Apply(request, dataSet, table);
        ApplyFilters(request, dataSet, table);
        return table;
    });
}

}  // namespace

std::vector<const Field*> FieldOrder(const DataSet& dataSet) {
    std::vector<const Field*> order;
    for (const bool calculated : {false, true}) {
        for (const Field& field : dataSet.fields) {
            if (IsCalculated(field) == calculated) {
                order.push_back(&field);
            }
        }
    }
    return order;
}

std::map<std::string, Table> LoadTables(const LoadRequest& request) {
    const RecordSelection selection(*request.definition, request.formula);
    std::map<std::string, Table> tables;
    for (const DataSet& dataSet : request.definition->dataSets) {
        tables[dataSet.name] = ReadSelected(request, dataSet, selection);
    }
    return tables;
}

Table LoadSelectedTable(const LoadRequest& request, const DataSet& dataSet) {
    return ReadSelected(request, dataSet, RecordSelection(*request.definition, request.formula));
}

Table LoadSharedTable(const LoadRequest& request, const DataSet& dataSet) {
    const RunWatch::Data waiting(request.watch);
    request.CheckBounds();
    return ReadSharedFile(request, dataSet);
}

Table LoadTable(const LoadRequest& request, const std::string& dataSet) {
    const DataSet* found = request.definition->FindDataSet(dataSet);
    if (!found) {
        throw Error("The report has no data set \"" + CleanText(dataSet) + "\"");
    }
    return Named(request, *found, [&] {
        Table table = ReadSet(request, *found);
        ApplyFilters(request, *found, table);
        return table;
    });
}

void CheckFormula(const Definition& definition, const std::string& formula) {
    const RecordSelection checked(definition, formula);
}

}  // namespace rdl::data
