// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/data_reader.h"

#include "rdl/definition/group_reader.h"
#include "rdl/definition/identifier.h"
#include "rdl/definition/query_words.h"
#include "rdl/definition/tree/report_tree.h"
#include "rdl/values/ascii.h"

namespace rdl {
namespace {

void RefuseSecond(Context& context, const XmlElement& element, DistinctNames& names,
                  const std::string& name) {
    if (const std::string why = names.Add(name); !why.empty()) {
        context.Fail(element, PlaceOf(element), why);
    }
}

// Reads each child of the collection `name`; a name that stands twice is an error.
template <typename Entry, typename ReadOne>
std::vector<Entry> ReadCollection(Context& context, const XmlElement& report, std::string_view name,
                                  ReadOne readOne) {
    std::vector<Entry> entries;
    DistinctNames names;
    const XmlElement* collection = report.Child(name);
    if (!collection) {
        return entries;
    }
    for (const XmlElement& element : collection->children) {
        const std::string entryName = context.NameOf(element);
        if (entryName.empty()) {
            context.Fail(element, PlaceOf(element), "it has no name");
        }
        RefuseSecond(context, element, names, entryName);
        entries.push_back(readOne(context, element));
        entries.back().name = entryName;
    }
    return entries;
}

DataSource ReadDataSource(Context& context, const XmlElement& element) {
    DataSource source;
    source.reference = element.ChildText("DataSourceReference");
    if (const XmlElement* connection = element.Child("ConnectionProperties")) {
        source.provider = connection->ChildText("DataProvider");
        source.connectString = context.ChildConnection(*connection, "ConnectString", PlaceOf(element));
        source.integratedSecurity = context.Flag(*connection, "IntegratedSecurity", PlaceOf(element));
    } else if (source.reference.empty()) {
        context.Fail(element, PlaceOf(element), "it has neither a connection nor a reference");
    }
    return source;
}

std::vector<QueryParameter> ReadQueryParameters(Context& context, const XmlElement& query,
                                                const std::string& where) {
    std::vector<QueryParameter> parameters;
    if (const XmlElement* collection = query.Child("QueryParameters")) {
        for (const XmlElement& element : collection->children) {
            parameters.push_back({std::string(element.AttributeOf("Name")),
                                  context.ChildExpr(element, "Value", where + ", " + PlaceOf(element))});
        }
    }
    return parameters;
}

QueryKind ReadCommandType(Context& context, const XmlElement& query, const std::string& where) {
    const std::string word = query.ChildText("CommandType");
    const std::optional<QueryKind> type = CommandTypeOf(word);
    if (!type) {
        context.Fail(query, where + ", CommandType", NotACommandType(word));
    }
    return type.value_or(QueryKind::Text);
}

int ReadTimeout(Context& context, const XmlElement& query, const std::string& where) {
    const XmlElement* element = query.Child("Timeout");
    const std::optional<int> seconds = element ? TimeoutOf(element->text) : 0;
    if (!seconds) {
        context.Fail(*element, PropertyOf(where, "Timeout"), NotATimeout(element->text));
    }
    return seconds.value_or(0);
}

void ReadQuery(Context& context, const XmlElement& element, DataSet& set) {
    const std::string where = PlaceOf(element);
    if (const XmlElement* query = element.Child("Query")) {
        set.dataSourceName = query->ChildText("DataSourceName");
        const XmlElement* command = query->Child("CommandText");
        set.longCommand = command ? context.Tree().TextOf(*command) : nullptr;
        if (!set.longCommand) {
            set.commandText = context.ChildExpr(*query, "CommandText", where);
        }
        set.commandType = ReadCommandType(context, *query, where);
        set.parameters = ReadQueryParameters(context, *query, where);
        set.timeoutSeconds = ReadTimeout(context, *query, where);
    }
    if (const XmlElement* shared = element.Child("SharedDataSet")) {
        set.sharedDataSet = shared->ChildText("SharedDataSetReference");
        set.parameters = ReadQueryParameters(context, *shared, where);
    }
}

std::vector<Field> ReadFields(Context& context, const XmlElement& element) {
    std::vector<Field> fields;
    DistinctNames names;
    const XmlElement* collection = element.Child("Fields");
    if (!collection) {
        return fields;
    }
    for (const XmlElement& child : collection->children) {
        Field& field = fields.emplace_back();
        field.name = context.NameOf(child);
        if (!field.name.empty()) {
            RefuseSecond(context, child, names, field.name);
        }
        field.dataField = child.ChildText("DataField");
        field.value = context.ChildExpr(child, "Value", PlaceOf(element) + ", " + PlaceOf(child));
        field.typeName = child.ChildText("TypeName");
    }
    return fields;
}

// Rows that stand in the report itself: a Row element each, with an element for each value; or in a file of
// that form. They stand beside the query or, from some tools, within it.
void ReadRows(Context& context, const XmlElement& element, DataSet& set) {
    const XmlElement* beside = element.Child("Rows");
    const XmlElement* rows = beside ? beside : element.Find({"Query", "Rows"});
    if (!rows) {
        return;
    }
    set.inlineRows = context.Tree().RowsOf(*rows);
    if (!set.inlineRows && !rows->children.empty()) {
        set.inlineRows = std::make_shared<InlineRows>();
        AddRows(*rows, *set.inlineRows);
    }
    if (!set.inlineRows) {
        set.rowsFile = Trimmed(rows->AttributeOf("File"));
        // Beside a query they are what a tool left there; alone they are a table without rows.
        if (set.rowsFile.empty() && Trimmed(set.commandText.source).empty()) {
            set.inlineRows = std::make_shared<InlineRows>();
        }
    }
}

DataSet ReadDataSet(Context& context, const XmlElement& element) {
    DataSet set;
    ReadQuery(context, element, set);
    set.fields = ReadFields(context, element);
    set.filters = ReadFilters(context, element, PlaceOf(element));
    set.caseSensitive = EqualNoCase(element.ChildText("CaseSensitivity"), "True");
    ReadRows(context, element, set);
    return set;
}

struct TypeWord {
    std::string_view name;
    ParameterType type;
};
constexpr TypeWord TypeWords[] = {
    {"String", ParameterType::String},     {"Boolean", ParameterType::Boolean},
    {"DateTime", ParameterType::DateTime}, {"Integer", ParameterType::Integer},
    {"Float", ParameterType::Float},
};

ParameterType ReadType(Context& context, const XmlElement& element) {
    const std::string word = element.ChildText("DataType");
    for (const TypeWord& row : TypeWords) {
        if (EqualNoCase(row.name, word)) {
            return row.type;
        }
    }
    if (word.empty()) {
        return ParameterType::String;
    }
    context.Fail(element, PlaceOf(element) + ", DataType", "\"" + word + "\" is no type of a parameter");
}

std::optional<DataSetReference> ReadReference(const XmlElement& owner) {
    const XmlElement* element = owner.Child("DataSetReference");
    if (!element) {
        return std::nullopt;
    }
    return DataSetReference{element->ChildText("DataSetName"), element->ChildText("ValueField"),
                            element->ChildText("LabelField")};
}

void ReadDefaults(Context& context, const XmlElement& element, ReportParameter& parameter) {
    const XmlElement* defaults = element.Child("DefaultValue");
    if (!defaults) {
        return;
    }
    parameter.defaultQuery = ReadReference(*defaults);
    if (const XmlElement* values = defaults->Child("Values")) {
        for (const XmlElement& value : values->children) {
            parameter.defaultValues.push_back(context.MakeExpr(value, PlaceOf(element) + ", DefaultValue"));
            parameter.defaultIsNull.push_back(IsNull(value));
        }
    }
}

void ReadValidValues(Context& context, const XmlElement& element, ReportParameter& parameter) {
    const XmlElement* valid = element.Child("ValidValues");
    if (!valid) {
        return;
    }
    parameter.validQuery = ReadReference(*valid);
    if (const XmlElement* values = valid->Child("ParameterValues")) {
        const std::string where = PlaceOf(element) + ", ValidValues";
        for (const XmlElement& value : values->children) {
            parameter.validValues.push_back(
                {context.ChildExpr(value, "Value", where), context.ChildExpr(value, "Label", where)});
        }
    }
}

ReportParameter ReadParameter(Context& context, const XmlElement& element) {
    ReportParameter parameter;
    const std::string where = PlaceOf(element);
    parameter.type = ReadType(context, element);
    parameter.nullable = context.Flag(element, "Nullable", where);
    parameter.allowBlank = context.Flag(element, "AllowBlank", where);
    parameter.multiValue = context.Flag(element, "MultiValue", where);
    parameter.hidden = context.Flag(element, "Hidden", where);
    parameter.prompt = context.ChildExpr(element, "Prompt", where);
    ReadDefaults(context, element, parameter);
    ReadValidValues(context, element, parameter);
    return parameter;
}

}  // namespace

std::vector<DataSource> ReadDataSources(Context& context, const XmlElement& report) {
    return ReadCollection<DataSource>(context, report, "DataSources", ReadDataSource);
}

std::vector<DataSet> ReadDataSets(Context& context, const XmlElement& report) {
    return ReadCollection<DataSet>(context, report, "DataSets", ReadDataSet);
}

std::vector<ReportParameter> ReadParameters(Context& context, const XmlElement& report) {
    return ReadCollection<ReportParameter>(context, report, "ReportParameters", ReadParameter);
}

}  // namespace rdl
