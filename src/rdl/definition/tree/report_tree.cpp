// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/tree/report_tree.h"

#include <charconv>

#include "rdl/values/ascii.h"

namespace rdl {
namespace {

constexpr char MarkBegin = '\x01';

// Rows stand in a data set or its query, or are the text of the query.
class RowsApart : public xml::PartHandler {
 public:
    explicit RowsApart(ReportTree& tree) : m_tree(tree) {}

    Part PartOf(const std::vector<std::string>& path) override {
        if (path.size() < 4 || path[1] != "DataSets" || path[2] != "DataSet") {
            return Part::None;
        }
        const bool isInQuery = path.size() == 5 && path[3] == "Query";
        const bool isText = isInQuery && path[4] == "CommandText";
        const bool isRows = path.back() == "Rows" && (isInQuery || path.size() == 4);
        m_rows = nullptr;
        m_text = nullptr;
        return isText ? Part::Text : isRows ? Part::Children : Part::None;
    }

    void TakeChildren(xml::Document& piece, const XmlElement& parent) override {
        if (parent.children.empty()) {
            return;
        }
        if (!m_rows) {
            m_rows = std::make_shared<InlineRows>();
        }
        DropBlanks(piece.root);
        AddRows(parent, *m_rows);
    }

    // Other texts, expressions among them, are never so long that they need it.
    bool TakeText(std::string_view text) override {
        if (!m_text) {
            if (!Trimmed(text).starts_with('<')) {
                return false;
            }
            m_text = std::make_shared<Spool>(RowsMemory);
        }
        m_text->Append(text);
        return true;
    }

    std::string Mark() override {
        m_tree.rows.push_back(std::move(m_rows));
        m_tree.texts.push_back(std::move(m_text));
        return MarkBegin + std::to_string(m_tree.rows.size() - 1);
    }

 private:
    ReportTree& m_tree;

    std::shared_ptr<InlineRows> m_rows;
    std::shared_ptr<Spool> m_text;
};

template <typename Entry>
Entry Marked(const std::vector<Entry>& entries, const XmlElement& element) {
    if (!element.text.starts_with(MarkBegin)) {
        return nullptr;
    }
    std::size_t index = 0;
    std::from_chars(element.text.data() + 1, element.text.data() + element.text.size(), index);
    return entries.at(index);
}

}  // namespace

std::shared_ptr<InlineRows> ReportTree::RowsOf(const XmlElement& element) const {
    return Marked(rows, element);
}

std::shared_ptr<Spool> ReportTree::TextOf(const XmlElement& element) const {
    return Marked(texts, element);
}

void AddRows(const XmlElement& parent, InlineRows& rows) {
    InlineRows::Row values;
    for (const XmlElement& row : parent.children) {
        values.clear();
        for (const XmlElement& value : row.children) {
            if (!IsNull(value)) {
                values.emplace_back(value.name, value.text);
            }
        }
        rows.Add(values);
    }
}

std::optional<ReportTree> ReadReportApart(const xml::NextBytes& next, const std::string& fileName,
                                          const DefinitionLimits& limits) {
    std::size_t size = 0;
    const auto counted = [&](std::string& bytes) {
        const bool isMore = next(bytes);
        if (size == 0) {
            CheckIsXml(isMore ? bytes : std::string(), fileName);
        }
        size += isMore ? bytes.size() : 0;
        if (size > limits.bytes) {
            throw xml::Flaw(1, "it is too large");
        }
        return isMore;
    };
    try {
        ReportTree tree;
        RowsApart apart(tree);
        xml::PieceReader reader(counted, {limits.depth, limits.elements, limits.attributes}, apart);
        while (reader.Read()) {
        }
        tree.document = reader.Tree();
        KeepReport(tree.document, fileName);
        return tree;
    } catch (const xml::Flaw&) {
        return std::nullopt;
    }
}

}  // namespace rdl
