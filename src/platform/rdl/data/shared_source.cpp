#include "platform/rdl/data/shared_source.h"

#include <cstdlib>

#include "platform/rdl/data/data_file.h"
#include "platform/rdl/data/message.h"
#include "platform/rdl/data/xml_document.h"
#include "platform/rdl/error.h"

namespace rdl::data {
namespace {

XmlDocument ReadBeside(const std::string& reference, const std::string& extension,
                       const std::vector<std::string>& folders) {
    std::string name = reference.substr(reference.find_last_of("/\\") + 1);
    if (!LowerAscii(name).ends_with(extension)) {
        name += extension;
    }
    try {
        return ParseXml(ReadDataFile(ResolveDataPath(name, folders)));
    } catch (const Error& error) {
        throw Error("the shared file \"" + CleanText(name) + "\": " + error.what());
    }
}

Expr ExprOf(const std::string& text, const std::string& where) {
    return {.source = text, .where = where, .id = text.starts_with('=') ? 0 : -1};
}

std::string AttributeOf(const XmlNode& node, std::string_view name) {
    for (const auto& [key, value] : node.attributes) {
        if (key == name) {
            return value;
        }
    }
    return {};
}

std::vector<Field> FieldsOf(const XmlDocument& document, const XmlNode& set) {
    std::vector<Field> fields;
    const XmlNode* list = document.Child(set, "Fields");
    for (const std::size_t child : list ? list->children : std::vector<std::size_t>()) {
        const XmlNode& node = document.nodes[child];
        Field field;
        field.name = AttributeOf(node, "Name");
        field.dataField = document.ChildText(node, "DataField");
        field.typeName = document.ChildText(node, "TypeName");
        if (field.dataField.empty()) {
            field.value = ExprOf(document.ChildText(node, "Value"), "Field " + field.name);
        }
        fields.push_back(std::move(field));
    }
    return fields;
}

std::vector<Filter> FiltersOf(const XmlDocument& document, const XmlNode& set) {
    std::vector<Filter> filters;
    const XmlNode* list = document.Child(set, "Filters");
    for (const std::size_t child : list ? list->children : std::vector<std::size_t>()) {
        const XmlNode& node = document.nodes[child];
        Filter filter;
        filter.expression = ExprOf(document.ChildText(node, "FilterExpression"), "Filter");
        filter.op = document.ChildText(node, "Operator");
        const XmlNode* values = document.Child(node, "FilterValues");
        for (const std::size_t value : values ? values->children : std::vector<std::size_t>()) {
            filter.values.push_back(ExprOf(std::string(Trimmed(document.nodes[value].text)), "Filter value"));
        }
        filters.push_back(std::move(filter));
    }
    return filters;
}

bool FlagOf(const XmlDocument& document, const XmlNode& node, std::string_view name) {
    return EqualNoCase(document.ChildText(node, name), "true");
}

std::vector<SharedParameter> ParametersOf(const XmlDocument& document, const XmlNode& query) {
    std::vector<SharedParameter> parameters;
    const XmlNode* list = document.Child(query, "DataSetParameters");
    for (const std::size_t child : list ? list->children : std::vector<std::size_t>()) {
        const XmlNode& node = document.nodes[child];
        const std::string name = AttributeOf(node, "Name");
        const XmlNode* value = document.Child(node, "DefaultValue");
        parameters.push_back(
            {name,
             value && !value->nil ? ExprOf(std::string(Trimmed(value->text)), "Parameter " + name) : Expr(),
             FlagOf(document, node, "Nullable"), FlagOf(document, node, "ReadOnly"),
             FlagOf(document, node, "OmitFromQuery")});
    }
    return parameters;
}

void ReadQuery(const XmlDocument& document, const XmlNode& query, DataSet& set) {
    set.dataSourceName = document.ChildText(query, "DataSourceReference");
    set.commandText = ExprOf(document.ChildText(query, "CommandText"), "CommandText");
    set.timeoutSeconds = std::atoi(document.ChildText(query, "Timeout").c_str());
    const std::string type = document.ChildText(query, "CommandType");
    if (EqualNoCase(type, "StoredProcedure")) {
        set.commandType = DataSet::CommandType::StoredProcedure;
    } else if (EqualNoCase(type, "TableDirect")) {
        set.commandType = DataSet::CommandType::TableDirect;
    }
}

}  // namespace

SharedSource ReadSharedSource(const std::string& reference, const std::vector<std::string>& folders) {
    const XmlDocument document = ReadBeside(reference, ".rds", folders);
    const XmlNode* properties = document.Child(document.Root(), "ConnectionProperties");
    const XmlNode& holder = properties ? *properties : document.Root();
    SharedSource source{document.ChildText(holder, "Extension"), document.ChildText(holder, "ConnectString"),
                        FlagOf(document, holder, "IntegratedSecurity")};
    if (source.provider.empty()) {
        throw Error("the shared data source \"" + CleanText(reference) + "\" names no data provider");
    }
    return source;
}

SharedDataSet ReadSharedDataSet(const std::string& reference, const std::vector<std::string>& folders) {
    const XmlDocument document = ReadBeside(reference, ".rsd", folders);
    const XmlNode* set = document.Child(document.Root(), "DataSet");
    const XmlNode* query = set ? document.Child(*set, "Query") : nullptr;
    if (!query) {
        throw Error("the shared data set \"" + CleanText(reference) + "\" has no query");
    }
    SharedDataSet shared;
    shared.dataSet.name = AttributeOf(*set, "Name");
    ReadQuery(document, *query, shared.dataSet);
    shared.parameters = ParametersOf(document, *query);
    shared.dataSet.caseSensitive = FlagOf(document, *set, "CaseSensitivity");
    shared.dataSet.fields = FieldsOf(document, *set);
    shared.dataSet.filters = FiltersOf(document, *set);
    shared.source.name = shared.dataSet.dataSourceName;
    shared.source.reference = shared.dataSet.dataSourceName;
    return shared;
}

}  // namespace rdl::data
