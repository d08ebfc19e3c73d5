// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/files/xml_cursor.h"

#include <algorithm>

#include "rdl/data/common/message.h"
#include "rdl/data/files/data_file.h"
#include "rdl/data/files/element_path.h"
#include "rdl/data/files/xml_document.h"
#include "rdl/values/ascii.h"
#include "rdl/values/base64.h"
#include "rdl/values/error.h"

namespace rdl::data {
namespace {

constexpr std::size_t MostColumns = 4'096;
constexpr std::size_t MostCells = 50'000'000;

using xml::Document;
using xml::Element;

struct Column {
    std::size_t level;
    PathField field;
};

// xsi:nil says something of the element and is no value of it.
bool IsNilMark(const xml::Attribute& attribute) {
    return attribute.name == "nil" && attribute.space != xml::NoSpace;
}

// The path to the first elements that hold nothing but leaves.
std::vector<PathLevel> DefaultPath(const Element& root) {
    std::vector<PathLevel> levels;
    const Element* node = &root;
    while (true) {
        levels.push_back({std::string(node->name), false, {}});
        const auto inner = std::find_if(node->children.begin(), node->children.end(),
                                        [](const Element& child) { return !child.IsLeaf(); });
        if (inner != node->children.end()) {
            node = &*inner;
        } else if (node == &root && !node->children.empty() && node->attributes.empty() &&
                   !node->children.front().attributes.empty()) {
            node = &node->children.front();  // rows that are nothing but attributes
        } else {
            return levels;
        }
    }
}

class RowReader {
 public:
    RowReader(const Element& root, std::vector<PathLevel> levels)
        : m_root(root), m_levels(std::move(levels)), m_current(m_levels.size()) {}

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
    void Visit(const Element& node, std::size_t level, void (RowReader::*what)(std::size_t)) {
        m_current[level] = &node;
        if (what == &RowReader::CollectColumns || level + 1 == m_levels.size()) {
            (this->*what)(level);
        }
        if (level + 1 == m_levels.size()) {
            return;
        }
        for (const Element& child : node.children) {
            if (child.name == m_levels[level + 1].element) {
                Visit(child, level + 1, what);
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
        const Element& node = *m_current[level];
        for (const xml::Attribute& attribute : node.attributes) {
            if (!IsNilMark(attribute)) {
                AddColumn(level, {std::string(attribute.name), true, FieldType::Text});
            }
        }
        for (const Element& leaf : node.children) {
            const bool next = level + 1 < m_levels.size() && leaf.name == m_levels[level + 1].element;
            if (leaf.IsLeaf() && !next) {
                AddColumn(level, {std::string(leaf.name), false, FieldType::Text});
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

    static Value Cell(const Element& node, const PathField& field) {
        if (field.attribute) {
            for (const xml::Attribute& attribute : node.attributes) {
                if (attribute.name == field.name && !IsNilMark(attribute)) {
                    return Value::Text(std::string(attribute.value));
                }
            }
            return {};
        }
        const Element* element = field.name.empty() ? &node : node.Child(field.name);
        return !element || element->IsNil() ? Value() : Value::Text(std::string(element->text));
    }

    const Element& m_root;
    std::vector<PathLevel> m_levels;
    std::vector<const Element*> m_current;
    std::vector<Column> m_columns;
    std::vector<Value> m_cells;
};

// The document in an element's text becomes the element's only child. The reader has undone what HTML needs.
void Unpack(Document& document, Element& node, PathEncoding encoding) {
    std::string text(Trimmed(node.text));
    if (encoding == PathEncoding::Base64) {
        std::optional<std::string> bytes = FromBase64(text);
        if (!bytes) {
            throw Error("the text of the element \"" + CleanText(node.name) + "\" is not base64");
        }
        text = std::move(*bytes);
    }
    if (text.empty()) {
        return;
    }
    Element root = document.Adopt(ParseXml(text));
    node.text = {};
    node.children.clear();
    node.children.push_back(std::move(root));
}

// The path bounds how deep this goes.
void UnpackLevels(Document& document, Element& node, const std::vector<PathLevel>& levels,
                  std::size_t level) {
    if (level >= levels.size() || node.name != levels[level].element) {
        return;
    }
    if (levels[level].encoding != PathEncoding::None) {
        Unpack(document, node, levels[level].encoding);
    }
    for (Element& child : node.children) {
        UnpackLevels(document, child, levels, level + 1);
    }
}

std::unique_ptr<Cursor> ReadRows(Document& document, Element& root, std::string_view path) {
    std::vector<PathLevel> levels = ParseElementPath(path);
    if (levels.empty()) {
        levels = DefaultPath(root);
    } else if (std::any_of(levels.begin(), levels.end(),
                           [](const PathLevel& level) { return level.encoding != PathEncoding::None; })) {
        UnpackLevels(document, root, levels, 0);
    }
    return RowReader(root, std::move(levels)).Run();
}

std::unique_ptr<Cursor> ReadFile(const std::string& file, std::string_view path) {
    if (file.empty()) {
        throw Error("the query holds no data and the data source names no file");
    }
    Document document = ParseXml(ReadDataFile(file));
    return ReadRows(document, document.root, path);
}

}  // namespace

std::unique_ptr<Cursor> OpenXml(std::string_view query, const std::string& file) {
    if (!Trimmed(query).starts_with('<')) {
        return ReadFile(file, query);
    }
    Document document = ParseXml(Trimmed(query));
    Element& root = document.root;
    if (root.name != "Query") {
        throw Error("the query is the element \"" + CleanText(root.name) + "\" instead of Query");
    }
    if (root.Child("Method") || root.Child("SoapAction")) {
        throw Error("the query asks a web service, which is not read");
    }
    const std::string path = root.ChildText("ElementPath");
    const auto data = std::find_if(root.children.begin(), root.children.end(),
                                   [](const Element& child) { return child.name == "XmlData"; });
    if (data == root.children.end()) {
        return ReadFile(file, path);
    }
    if (data->children.empty()) {
        throw Error("the XmlData of the query is empty");
    }
    return ReadRows(document, data->children.front(), path);
}

std::unique_ptr<Cursor> OpenXmlRows(const std::string& file) {
    const Document document = ParseXml(ReadDataFile(file));
    const Element& root = document.root;
    if (root.children.empty()) {
        return std::make_unique<MemoryCursor>(std::vector<std::string>(), std::vector<Value>());
    }
    return RowReader(root, {{std::string(root.name), true, {}},
                            {std::string(root.children.front().name), false, {}}})
        .Run();
}

}  // namespace rdl::data
