// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/shared_source.h"

#include <optional>
#include <utility>

#include "rdl/data/common/message.h"
#include "rdl/data/files/data_file.h"
#include "rdl/data/files/xml_document.h"
#include "rdl/definition/identifier.h"
#include "rdl/definition/placeholders.h"
#include "rdl/definition/query_words.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
#include "rdl/xml/flag.h"

namespace rdl::data {
namespace {

using xml::Element;

struct SharedFile {
    std::string path;
    xml::Document document;
};

SharedFile ReadBeside(const std::string& reference, const std::string& extension,
                      const std::vector<std::string>& folders) {
    std::string name = reference.substr(reference.find_last_of("/\\") + 1);
    if (!LowerAscii(name).ends_with(extension)) {
        name += extension;
    }
    try {
        std::string path = ResolveDataPath(name, folders);
        xml::Document document = ParseXml(ReadDataFile(path));
        return {std::move(path), std::move(document)};
    } catch (const Error& error) {
        throw Error("the shared file \"" + CleanText(name) + "\": " + error.what());
    }
}

Expr ExprOf(const std::string& text, const std::string& where) {
    return {.source = text, .where = where, .id = text.starts_with('=') ? 0 : -1};
}

const std::vector<Element>& ChildrenOf(const Element* element) {
    static const std::vector<Element> nothing;
    return element ? element->children : nothing;
}

std::vector<Field> FieldsOf(const Element& set) {
    std::vector<Field> fields;
    DistinctNames names;
    const Element* list = set.Child("Fields");
    for (const Element& node : ChildrenOf(list)) {
        Field field;
        field.name = node.AttributeOf("Name");
        if (!field.name.empty() && !IsIdentifier(field.name)) {
            throw Error(NotAnIdentifier("Field", field.name));
        }
        if (const std::string why = field.name.empty() ? "" : names.Add(field.name); !why.empty()) {
            throw Error("Field " + field.name + ": " + why);
        }
        field.dataField = node.ChildText("DataField");
        field.typeName = node.ChildText("TypeName");
        if (field.dataField.empty()) {
            field.value = ExprOf(node.ChildText("Value"), "Field " + field.name);
        }
        fields.push_back(std::move(field));
    }
    return fields;
}

std::vector<Filter> FiltersOf(const Element& set) {
    std::vector<Filter> filters;
    const Element* list = set.Child("Filters");
    for (const Element& node : ChildrenOf(list)) {
        Filter filter;
        filter.expression = ExprOf(node.ChildText("FilterExpression"), "Filter");
        filter.op = node.ChildText("Operator");
        const Element* values = node.Child("FilterValues");
        for (const Element& value : ChildrenOf(values)) {
            filter.values.push_back(ExprOf(std::string(Trimmed(value.text)), "Filter value"));
        }
        filters.push_back(std::move(filter));
    }
    return filters;
}

// An equals sign begins no expression here: the file is none of a report.
Expr ConnectStringOf(const std::string& text, const std::string& where) {
    const std::optional<std::string> expression = ExpressionOfText(text, nullptr);
    return {.source = expression.value_or(text), .where = where, .id = expression ? 0 : -1};
}

// `what` names the element in errors.
bool FlagAt(const Element& node, std::string_view name, const std::string& what) {
    const std::string text = node.ChildText(name);
    const std::optional<bool> flag = text.empty() ? false : xml::FlagOf(text);
    if (!flag) {
        throw Error(what + ", " + std::string(name) + ": " + xml::NotAFlag(CleanText(text)));
    }
    return *flag;
}

std::vector<SharedParameter> ParametersOf(const Element& query, const std::string& set) {
    std::vector<SharedParameter> parameters;
    const Element* list = query.Child("DataSetParameters");
    for (const Element& node : ChildrenOf(list)) {
        const std::string name(node.AttributeOf("Name"));
        const std::string where = "Parameter " + CleanText(name), what = set + ", " + where;
        const Element* value = node.Child("DefaultValue");
        parameters.push_back(
            {name, value && !value->IsNil() ? ExprOf(std::string(Trimmed(value->text)), where) : Expr(),
             FlagAt(node, "Nullable", what), FlagAt(node, "ReadOnly", what),
             FlagAt(node, "OmitFromQuery", what)});
    }
    return parameters;
}

// `what` names the data set in errors.
void ReadQuery(const Element& query, const std::string& what, DataSet& set) {
    set.dataSourceName = query.ChildText("DataSourceReference");
    set.commandText = ExprOf(query.ChildText("CommandText"), "CommandText");
    const std::string timeout = query.ChildText("Timeout");
    const std::optional<int> seconds = TimeoutOf(timeout);
    if (!seconds) {
        throw Error(what + ", Timeout: " + NotATimeout(CleanText(timeout)));
    }
    const std::string word = query.ChildText("CommandType");
    const std::optional<QueryKind> type = CommandTypeOf(word);
    if (!type) {
        throw Error(what + ", CommandType: " + NotACommandType(CleanText(word)));
    }
    set.timeoutSeconds = *seconds;
    set.commandType = *type;
}

}  // namespace

SharedSource ReadSharedSource(const std::string& reference, const std::vector<std::string>& folders) {
    const SharedFile file = ReadBeside(reference, ".rds", folders);
    const xml::Document& document = file.document;
    const Element* properties = document.root.Child("ConnectionProperties");
    const Element& holder = properties ? *properties : document.root;
    const std::string what = "the shared data source \"" + CleanText(reference) + "\"";
    SharedSource source{holder.ChildText("Extension"),
                        ConnectStringOf(holder.ChildText("ConnectString"), what + ", ConnectString"),
                        FlagAt(holder, "IntegratedSecurity", what), file.path};
    if (source.provider.empty()) {
        throw Error(what + " names no data provider");
    }
    return source;
}

SharedDataSet ReadSharedDataSet(const std::string& reference, const std::vector<std::string>& folders) {
    const SharedFile file = ReadBeside(reference, ".rsd", folders);
    const xml::Document& document = file.document;
    const Element* set = document.root.Child("DataSet");
    const Element* query = set ? set->Child("Query") : nullptr;
    const std::string what = "the shared data set \"" + CleanText(reference) + "\"";
    if (!query) {
        throw Error(what + " has no query");
    }
    SharedDataSet shared;
    shared.dataSet.name = set->AttributeOf("Name");
    ReadQuery(*query, what, shared.dataSet);
    shared.parameters = ParametersOf(*query, what);
    shared.dataSet.caseSensitive = EqualNoCase(set->ChildText("CaseSensitivity"), "True");
    shared.dataSet.fields = FieldsOf(*set);
    shared.dataSet.filters = FiltersOf(*set);
    shared.source.name = shared.dataSet.dataSourceName;
    shared.source.reference = shared.dataSet.dataSourceName;
    shared.file = file.path;
    return shared;
}

}  // namespace rdl::data
