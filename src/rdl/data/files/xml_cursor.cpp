// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/files/xml_cursor.h"

#include <algorithm>

#include "rdl/data/common/message.h"
#include "rdl/data/files/data_file.h"
#include "rdl/data/files/element_path.h"
#include "rdl/data/files/xml_document.h"
#include "rdl/data/files/xml_rows.h"
#include "rdl/values/ascii.h"
#include "rdl/values/base64.h"
#include "rdl/values/error.h"

namespace rdl::data {
namespace {

using xml::Document;
using xml::Element;

std::unique_ptr<Cursor> MemoryRows(const Element& root, std::vector<PathLevel> levels) {
    XmlRows rows(std::move(levels));
    rows.CheckRoot(root);
    rows.CollectColumns(root);
    rows.CheckColumns();
    std::vector<Value> cells;
    rows.CollectRows(root, cells);
    return std::make_unique<MemoryCursor>(rows.ColumnNames(), std::move(cells));
}

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
    return MemoryRows(root, std::move(levels));
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
    return MemoryRows(
        root, {{std::string(root.name), true, {}}, {std::string(root.children.front().name), false, {}}});
}

}  // namespace rdl::data
