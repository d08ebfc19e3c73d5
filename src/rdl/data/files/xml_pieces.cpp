// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/files/xml_pieces.h"

#include <algorithm>
#include <optional>

#include "rdl/data/files/xml_document.h"
#include "rdl/data/files/xml_rows.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
#include "rdl/xml/pieces.h"

namespace rdl::data {
namespace {

constexpr std::size_t PieceOfBytes = std::size_t{1} << 20;

// The elements in the first element of the first XmlData of a query.
class DataApart : public xml::PartHandler {
 public:
    // Takes the document's first element with some of its children.
    using Take = std::function<void(const xml::Element& data)>;

    explicit DataApart(Take take) : m_take(std::move(take)) {}

    Part PartOf(const std::vector<std::string>& path) override {
        if (path.size() == 2 && path[1] == "XmlData") {
            ++m_xmlDatas;
        }
        const bool isData = path.size() == 3 && path[1] == "XmlData" && m_xmlDatas == 1;
        return isData && m_datas++ == 0 ? Part::Children : Part::None;
    }
    bool SkipsChildren() const override { return !m_take; }
    void TakeChildren(xml::Document&, const xml::Element& parent) override { m_take(parent); }
    bool TakeText(std::string_view) override { return false; }
    std::string Mark() override { return {}; }

 private:
    const Take m_take;
    int m_xmlDatas = 0, m_datas = 0;
};

// One pass over the query.
class Pass {
 public:
    Pass(Spool& query, DataApart::Take take)
        : m_bytes(query),
          m_apart(std::move(take)),
          m_reader([this](std::string& bytes) { return Next(bytes); }, DataLimits, m_apart) {}

    bool Read() { return m_reader.Read(); }
    void ReadAll() {
        while (Read()) {
        }
    }
    xml::Document Rest() {
        ReadAll();
        return m_reader.Tree();
    }

 private:
    // Without the blanks before the first element, which a declaration must not have before it.
    bool Next(std::string& bytes) {
        do {
            bytes = m_bytes.Next(PieceOfBytes);
            if (bytes.empty()) {
                return false;
            }
            const auto begin =
                std::find_if(bytes.begin(), bytes.end(), [](char c) { return !IsAsciiSpace(c); });
            bytes.erase(bytes.begin(), m_isBegun ? bytes.begin() : begin);
        } while (bytes.empty());
        m_isBegun = true;
        return true;
    }

    SpoolReader m_bytes;
    bool m_isBegun = false;
    DataApart m_apart;
    xml::PieceReader m_reader;
};

XmlRows WithColumns(Spool& query, std::vector<PathLevel> levels) {
    XmlRows rows(std::move(levels));
    Pass(query, [&rows](const xml::Element& data) { rows.CollectColumns(data); }).ReadAll();
    return rows;
}

// Where the query gives no path the first element that is no leaf decides. Until there is one the rows are
// taken for leaves.
std::optional<XmlRows> WithUsualPath(Spool& query) {
    std::optional<XmlRows> rows;
    bool isDecided = false;
    std::vector<PathLevel> other;
    Pass pass(query, [&](const xml::Element& data) {
        const bool decides =
            !isDecided && std::any_of(data.children.begin(), data.children.end(),
                                      [](const xml::Element& child) { return !child.IsLeaf(); });
        isDecided = isDecided || decides;
        if (!rows) {
            rows.emplace(DefaultPath(data));
        } else if (decides) {
            other = DefaultPath(data);
            return;
        }
        rows->CollectColumns(data);
    });
    while (other.empty() && pass.Read()) {
    }
    return other.empty() ? std::move(rows) : WithColumns(query, std::move(other));
}

class PieceCursor : public Cursor {
 public:
    PieceCursor(Spool& query, XmlRows rows)
        : m_rows(std::move(rows)),
          m_pass(query, [this](const xml::Element& data) { m_rows.CollectRows(data, m_cells); }) {
        m_columns = m_rows.ColumnNames();
    }

    std::size_t RowCount() const override { return m_rows.Count(); }
    bool Next() override {
        m_at += m_isStarted ? m_columns.size() : 0;
        m_isStarted = true;
        while (m_at >= m_cells.size()) {
            m_cells.clear();
            m_at = 0;
            if (m_columns.empty() || !m_pass.Read()) {
                m_isStarted = false;
                return false;
            }
        }
        return true;
    }
    Value Cell(std::size_t column) override { return m_cells[m_at + column]; }

 private:
    XmlRows m_rows;
    Pass m_pass;
    std::vector<Value> m_cells;  // of the rows of one piece
    std::size_t m_at = 0;        // of the current row
    bool m_isStarted = false;
};

std::unique_ptr<Cursor> Open(Spool& query) {
    const xml::Document rest = Pass(query, {}).Rest();
    const xml::Element& root = rest.root;
    const xml::Element* data = root.Child("XmlData");
    if (root.name != "Query" || root.Child("Method") || root.Child("SoapAction") || !data ||
        data->children.empty()) {
        return nullptr;
    }
    std::vector<PathLevel> levels = ParseElementPath(root.ChildText("ElementPath"));
    const bool isPacked = std::any_of(levels.begin(), levels.end(), [](const PathLevel& level) {
        return level.encoding != PathEncoding::None;
    });
    if (isPacked) {
        return nullptr;
    }
    std::optional<XmlRows> rows =
        levels.empty() ? WithUsualPath(query) : WithColumns(query, std::move(levels));
    if (!rows || rows->NeedsWholeRoot()) {
        return nullptr;
    }
    rows->CheckRoot(data->children.front());
    rows->CheckColumns();
    return std::make_unique<PieceCursor>(query, std::move(*rows));
}

}  // namespace

std::unique_ptr<Cursor> OpenLongXml(Spool& query) {
    try {
        return Open(query);
    } catch (const Error&) {
        return nullptr;  // the caller then reads the whole, which says what is wrong and where
    }
}

}  // namespace rdl::data
