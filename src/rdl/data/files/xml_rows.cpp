// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/files/xml_rows.h"

#include <algorithm>

#include "rdl/data/common/message.h"
#include "rdl/data/files/limits.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"

namespace rdl::data {
namespace {

using xml::Element;

// xsi:nil says something of the element and is no value of it.
bool IsNilMark(const xml::Attribute& attribute) {
    return attribute.name == "nil" && attribute.space != xml::NoSpace;
}

Value Cell(const Element& node, const PathField& field) {
    if (field.attribute) {
        for (const xml::Attribute& attribute : node.attributes) {
            if (attribute.name == field.name && !IsNilMark(attribute)) {
                return Value::Text(attribute.value);
            }
        }
        return {};
    }
    const Element* element = field.name.empty() ? &node : node.Child(field.name);
    return !element || element->IsNil() ? Value() : Value::Text(element->text);
}

}  // namespace

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

void XmlRows::CheckRoot(const Element& root) const {
    if (root.name != m_levels.front().element) {
        throw Error("the XML begins with the element \"" + CleanText(root.name) +
                    "\", but the element path with \"" + CleanText(m_levels.front().element) + "\"");
    }
}

void XmlRows::CollectColumns(const Element& root) {
    Visit(root, 0, Pass::Columns, nullptr);
}

void XmlRows::CheckColumns() const {
    if (m_columns.size() > MostColumns) {
        throw Error("the XML gives more than " + std::to_string(MostColumns) + " columns");
    }
}

std::vector<std::string> XmlRows::ColumnNames() const {
    std::vector<std::string> names;
    for (const Column& column : m_columns) {
        names.push_back(column.field.name.empty() ? m_levels[column.level].element : column.field.name);
    }
    return names;
}

bool XmlRows::NeedsWholeRoot() const {
    return m_levels.size() == 1 || std::any_of(m_columns.begin(), m_columns.end(), [](const Column& column) {
               return column.level == 0 && !column.field.attribute;
           });
}

void XmlRows::CollectRows(const Element& root, std::vector<Value>& cells) {
    Visit(root, 0, Pass::Rows, &cells);
}

// The path bounds how deep this goes.
void XmlRows::Visit(const Element& node, std::size_t level, Pass pass, std::vector<Value>* cells) {
    m_current[level] = &node;
    const bool isLast = level + 1 == m_levels.size();
    if (pass == Pass::Columns) {
        CollectColumnsOf(level);
        m_count += isLast ? 1 : 0;
    } else if (isLast) {
        CollectRow(*cells);
    }
    if (isLast) {
        return;
    }
    for (const Element& child : node.children) {
        if (child.name == m_levels[level + 1].element) {
            Visit(child, level + 1, pass, cells);
        }
    }
}

void XmlRows::AddColumn(std::size_t level, const PathField& field) {
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

void XmlRows::CollectColumnsOf(std::size_t level) {
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

void XmlRows::CollectRow(std::vector<Value>& cells) {
    m_cells += m_columns.size();
    if (m_cells > MostCells) {
        throw Error("the XML gives more than " + std::to_string(MostCells) + " values");
    }
    for (const Column& column : m_columns) {
        cells.push_back(ConvertValue(Cell(*m_current[column.level], column.field), column.field.type));
    }
}

}  // namespace rdl::data
