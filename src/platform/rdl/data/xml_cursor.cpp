#include "platform/rdl/data/xml_cursor.h"

#include <QByteArray>
#include <algorithm>

#include "platform/rdl/data/data_file.h"
#include "platform/rdl/data/element_path.h"
#include "platform/rdl/data/message.h"
#include "platform/rdl/data/xml_document.h"
#include "platform/rdl/error.h"

namespace rdl::data {
namespace {

constexpr std::size_t MostColumns = 4'096;
constexpr std::size_t MostCells = 50'000'000;

struct Column {
    std::size_t level;
    PathField field;
};

// The path to the first elements that hold nothing but leaves.
std::vector<PathLevel> DefaultPath(const XmlDocument& document, const XmlNode& root) {
    std::vector<PathLevel> levels;
    const XmlNode* node = &root;
    while (true) {
        levels.push_back({node->name, false, {}});
        const auto inner = std::find_if(node->children.begin(), node->children.end(),
                                        [&](std::size_t child) { return !document.nodes[child].IsLeaf(); });
        if (inner != node->children.end()) {
            node = &document.nodes[*inner];
        } else if (node == &root && !node->children.empty() && node->attributes.empty() &&
                   !document.nodes[node->children.front()].attributes.empty()) {
            node = &document.nodes[node->children.front()];  // rows that are nothing but attributes
        } else {
            return levels;
        }
    }
}

class RowReader {
 public:
    RowReader(const XmlDocument& document, const XmlNode& root, std::vector<PathLevel> levels)
        : m_document(document), m_root(root), m_levels(std::move(levels)), m_current(m_levels.size()) {}

    std::unique_ptr<Cursor> Run() {
        if (m_root.name != m_levels.front().element) {
            throw Error("the XML begins with the element \"" + CleanText(m_root.name) +
                        "\", but the element path with \"" + CleanText(m_levels.front().element) + "\"");
        }
        Visit(m_root, 0, &RowReader::CollectColumns);
        if (m_columns.size() > MostColumns) {
            throw Error("the XML gives more than " + std::to_string(MostColumns) + " columns");
        }
        Visit(m_root, 0, &RowReader::CollectRow);
        std::vector<std::string> names;
        for (const Column& column : m_columns) {
            names.push_back(column.field.name.empty() ? m_levels[column.level].element : column.field.name);
        }
        return std::make_unique<MemoryCursor>(std::move(names), std::move(m_cells));
    }

 private:
    // The path bounds how deep this goes.
    void Visit(const XmlNode& node, std::size_t level, void (RowReader::*what)(std::size_t)) {
        m_current[level] = &node;
        if (what == &RowReader::CollectColumns || level + 1 == m_levels.size()) {
            (this->*what)(level);
        }
        if (level + 1 == m_levels.size()) {
            return;
        }
        for (const std::size_t child : node.children) {
            if (m_document.nodes[child].name == m_levels[level + 1].element) {
                Visit(m_document.nodes[child], level + 1, what);
            }
        }
    }

    void AddColumn(std::size_t level, const PathField& field) {
        for (const Column& column : m_columns) {
            if (column.level == level && column.field.name == field.name &&
                column.field.attribute == field.attribute) {
                return;
            }
        }
        if (m_columns.size() <= MostColumns) {
            m_columns.push_back({level, field});
        }
    }

    void CollectColumns(std::size_t level) {
        if (m_levels[level].hasList) {
            for (const PathField& field : m_levels[level].fields) {
                AddColumn(level, field);
            }
            return;
        }
        const XmlNode& node = *m_current[level];
        for (const auto& attribute : node.attributes) {
            AddColumn(level, {attribute.first, true, FieldType::Text});
        }
        for (const std::size_t child : node.children) {
            const XmlNode& leaf = m_document.nodes[child];
            const bool next = level + 1 < m_levels.size() && leaf.name == m_levels[level + 1].element;
            if (leaf.IsLeaf() && !next) {
                AddColumn(level, {leaf.name, false, FieldType::Text});
            }
        }
        if (level + 1 == m_levels.size() && node.IsLeaf() && !Trimmed(node.text).empty()) {
            AddColumn(level, {"", false, FieldType::Text});
        }
    }

    void CollectRow(std::size_t) {
        if (m_cells.size() + m_columns.size() > MostCells) {
            throw Error("the XML gives more than " + std::to_string(MostCells) + " values");
        }
        for (const Column& column : m_columns) {
            m_cells.push_back(ConvertValue(Cell(*m_current[column.level], column.field), column.field.type));
        }
    }

    Value Cell(const XmlNode& node, const PathField& field) const {
        if (field.attribute) {
            for (const auto& [name, value] : node.attributes) {
                if (name == field.name) {
                    return Value::Text(value);
                }
            }
            return {};
        }
        const XmlNode* element = field.name.empty() ? &node : m_document.Child(node, field.name);
        return !element || element->nil ? Value() : Value::Text(element->text);
    }

    const XmlDocument& m_document;
    const XmlNode& m_root;
    std::vector<PathLevel> m_levels;
    std::vector<const XmlNode*> m_current;
    std::vector<Column> m_columns;
    std::vector<Value> m_cells;
};

// The document in an element's text becomes the element's only child. The reader has undone what HTML needs.
void Unpack(XmlDocument& document, std::size_t node, PathEncoding encoding) {
    std::string text(Trimmed(document.nodes[node].text));
    if (encoding == PathEncoding::Base64) {
        const auto bytes =
            QByteArray::fromBase64Encoding(QByteArray::fromStdString(text).simplified().replace(' ', ""),
                                           QByteArray::AbortOnBase64DecodingErrors);
        if (!bytes) {
            throw Error("the text of the element \"" + CleanText(document.nodes[node].name) +
                        "\" is not base64");
        }
        text = (*bytes).toStdString();
    }
    if (text.empty()) {
        return;
    }
    XmlDocument inner = ParseXml(text);
    const std::size_t first = document.nodes.size();
    for (XmlNode& one : inner.nodes) {
        for (std::size_t& child : one.children) {
            child += first;
        }
        document.nodes.push_back(std::move(one));
    }
    document.nodes[node].text.clear();
    document.nodes[node].children = {first};
}

// The path bounds how deep this goes.
void UnpackLevels(XmlDocument& document, std::size_t node, const std::vector<PathLevel>& levels,
                  std::size_t level) {
    if (level >= levels.size() || document.nodes[node].name != levels[level].element) {
        return;
    }
    if (levels[level].encoding != PathEncoding::None) {
        Unpack(document, node, levels[level].encoding);
    }
    const std::vector<std::size_t> children = document.nodes[node].children;
    for (const std::size_t child : children) {
        UnpackLevels(document, child, levels, level + 1);
    }
}

std::unique_ptr<Cursor> ReadRows(XmlDocument& document, std::size_t root, std::string_view path) {
    std::vector<PathLevel> levels = ParseElementPath(path);
    if (levels.empty()) {
        levels = DefaultPath(document, document.nodes[root]);
    } else if (std::any_of(levels.begin(), levels.end(),
                           [](const PathLevel& level) { return level.encoding != PathEncoding::None; })) {
        UnpackLevels(document, root, levels, 0);
    }
    return RowReader(document, document.nodes[root], std::move(levels)).Run();
}

std::unique_ptr<Cursor> ReadFile(const std::string& file, std::string_view path) {
    if (file.empty()) {
        throw Error("the query holds no data and the data source names no file");
    }
    XmlDocument document = ParseXml(ReadDataFile(file));
    return ReadRows(document, 0, path);
}

}  // namespace

std::unique_ptr<Cursor> OpenXml(std::string_view query, const std::string& file) {
    if (!Trimmed(query).starts_with('<')) {
        return ReadFile(file, query);
    }
    XmlDocument document = ParseXml(Trimmed(query));
    if (document.Root().name != "Query") {
        throw Error("the query is the element \"" + CleanText(document.Root().name) + "\" instead of Query");
    }
    if (document.Child(document.Root(), "Method") || document.Child(document.Root(), "SoapAction")) {
        throw Error("the query asks a web service, which is not read");
    }
    const std::string path = document.ChildText(document.Root(), "ElementPath");
    const XmlNode* data = document.Child(document.Root(), "XmlData");
    if (!data) {
        return ReadFile(file, path);
    }
    if (data->children.empty()) {
        throw Error("the XmlData of the query is empty");
    }
    return ReadRows(document, data->children.front(), path);
}

std::unique_ptr<Cursor> OpenXmlRows(const std::string& file) {
    const XmlDocument document = ParseXml(ReadDataFile(file));
    const XmlNode& root = document.Root();
    if (root.children.empty()) {
        return std::make_unique<MemoryCursor>(std::vector<std::string>(), std::vector<Value>());
    }
    const std::string& row = document.nodes[root.children.front()].name;
    return RowReader(document, root, {{root.name, true, {}}, {row, false, {}}}).Run();
}

}  // namespace rdl::data
