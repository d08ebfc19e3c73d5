// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/files/json_cursor.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <charconv>
#include <map>
#include <optional>

#include "rdl/data/common/message.h"
#include "rdl/data/files/json_numbers.h"
#include "rdl/data/files/limits.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
#include "rdl/values/utf8.h"

namespace rdl::data {
namespace {

constexpr std::size_t MostNodes = 5'000'000;
constexpr int DeepestObject = 16;

struct Step {
    enum class Kind { Name, Index, All, Descend } kind;
    QString name;
    int index = 0;
};

class PathParser {
 public:
    explicit PathParser(std::string_view text) : m_text(Trimmed(text)) {}

    std::vector<Step> Run() {
        std::vector<Step> steps;
        if (m_text.starts_with('$')) {
            ++m_at;
        }
        while (m_at < m_text.size()) {
            if (m_text[m_at] == '[') {
                steps.push_back(Bracket());
            } else if (m_text.substr(m_at).starts_with("..")) {
                m_at += 2;
                steps.push_back({Step::Kind::Descend, Name(), 0});
            } else {
                m_at += m_text[m_at] == '.' ? 1 : 0;
                const QString name = Name();
                steps.push_back({name == QLatin1String("*") ? Step::Kind::All : Step::Kind::Name, name, 0});
            }
        }
        return steps;
    }

 private:
    QString Name() {
        const std::size_t end = std::min(m_text.find_first_of(".[", m_at), m_text.size());
        if (end == m_at) {
            Fail("lacks a name");
        }
        const std::string_view name = m_text.substr(m_at, end - m_at);
        m_at = end;
        return QString::fromUtf8(name);
    }

    Step Bracket() {
        const std::size_t end = m_text.find(']', m_at);
        if (end == std::string_view::npos) {
            Fail("lacks a closing bracket");
        }
        std::string_view inner = Trimmed(m_text.substr(m_at + 1, end - m_at - 1));
        if (inner == "*") {
            m_at = end + 1;
            return {Step::Kind::All, {}, 0};
        }
        if (inner.size() > 1 && (inner.front() == '"' || inner.front() == '\'') &&
            inner.back() == inner.front()) {
            m_at = end + 1;
            inner = inner.substr(1, inner.size() - 2);
            return {Step::Kind::Name, QString::fromUtf8(inner), 0};
        }
        Step step{Step::Kind::Index, {}, 0};
        const auto [last, failure] = std::from_chars(inner.data(), inner.data() + inner.size(), step.index);
        if (failure != std::errc() || last != inner.data() + inner.size()) {
            Fail("has brackets around neither a number, a name nor *");
        }
        m_at = end + 1;
        return step;
    }

    [[noreturn]] void Fail(const char* what) const {
        throw Error("the JSON path \"" + CleanText(m_text) + "\" " + what + ", at character " +
                    std::to_string(CharacterCount(m_text.substr(0, m_at)) + 1));
    }

    std::string_view m_text;
    std::size_t m_at = 0;
};

void Check(const std::vector<QJsonValue>& nodes) {
    if (nodes.size() > MostNodes) {
        throw Error("the JSON path gives more than " + std::to_string(MostNodes) + " values");
    }
}

void AddChildren(const QJsonValue& node, std::vector<QJsonValue>& found) {
    if (node.isArray()) {
        for (const QJsonValue& element : node.toArray()) {
            found.push_back(element);
        }
    } else if (node.isObject()) {
        for (const QJsonValue& member : node.toObject()) {
            found.push_back(member);
        }
    }
    Check(found);
}

// Everything of that name at any depth, in reading order, without calling itself.
void AddDescendants(const QJsonValue& node, const QString& name, std::vector<QJsonValue>& found) {
    std::vector<QJsonValue> open{node};
    while (!open.empty()) {
        const QJsonValue current = open.back();
        open.pop_back();
        if (current.isObject() && current.toObject().contains(name)) {
            found.push_back(current.toObject().value(name));
        }
        std::vector<QJsonValue> children;
        AddChildren(current, children);
        open.insert(open.end(), children.rbegin(), children.rend());
        Check(found);
        Check(open);
    }
}

void Follow(const Step& step, const QJsonValue& node, std::vector<QJsonValue>& found) {
    switch (step.kind) {
        case Step::Kind::All:
            AddChildren(node, found);
            return;
        case Step::Kind::Descend:
            AddDescendants(node, step.name, found);
            return;
        case Step::Kind::Index: {
            const QJsonArray array = node.toArray();
            const qsizetype index = step.index < 0 ? array.size() + step.index : step.index;
            if (index >= 0 && index < array.size()) {
                found.push_back(array.at(index));
            }
            return;
        }
        case Step::Kind::Name:
            if (node.toObject().contains(step.name)) {
                found.push_back(node.toObject().value(step.name));
            }
    }
}

bool IsEmpty(const QJsonValue& node) {
    return node.isNull()    ? true
           : node.isArray() ? node.toArray().isEmpty()
                            : node.isObject() && node.toObject().isEmpty();
}

// The values at the end of the path. Without any where there is something to choose from, the path is another
// document's: a report without rows would not say so.
std::vector<QJsonValue> Select(const QJsonValue& root, std::string_view path) {
    std::vector<QJsonValue> nodes{root};
    for (const Step& step : PathParser(path).Run()) {
        std::vector<QJsonValue> found;
        for (const QJsonValue& node : nodes) {
            Follow(step, node, found);
            Check(found);
        }
        if (found.empty() && !std::all_of(nodes.begin(), nodes.end(), IsEmpty)) {
            const std::string name = step.name.toStdString();
            const std::string what = step.kind == Step::Kind::All ? "element"
                                     : step.kind == Step::Kind::Index
                                         ? "element " + std::to_string(step.index)
                                         : "\"" + CleanText(name) + "\"";
            throw Error("the JSON path \"" + CleanText(path) + "\" finds nothing: there is no " + what);
        }
        nodes = std::move(found);
    }
    return nodes;
}

Value ScalarOf(const QJsonValue& node) {
    switch (node.type()) {
        case QJsonValue::Bool:
            return Value::Boolean(node.toBool());
        case QJsonValue::Double: {
            const QVariant number = node.toVariant();
            return number.typeId() == QMetaType::LongLong ? Value::Integer(number.toLongLong())
                                                          : Value::Real(node.toDouble());
        }
        case QJsonValue::String:
            return Value::Text(node.toString().toStdString());
        case QJsonValue::Array:  // a list inside a row is shown as it is written
            return Value::Text(QJsonDocument(node.toArray()).toJson(QJsonDocument::Compact).toStdString());
        default:
            return {};
    }
}

class RowCollector {
 public:
    // Without numbers the values are those of the parser. Both must outlive it.
    RowCollector(const JsonNumbers* numbers, const std::vector<std::string>& decimals)
        : m_numbers(numbers), m_decimals(decimals) {}

    void Add(const QJsonValue& node) {
        m_rows.emplace_back();
        if (node.isObject()) {
            AddObject(node.toObject(), "", 0);
        } else {
            Put("value", node);
        }
    }

    std::unique_ptr<Cursor> Finish() {
        std::vector<std::string> names(m_columns.size());
        for (const auto& [name, column] : m_columns) {
            names[column] = name;
        }
        std::vector<Value> cells;
        cells.reserve(names.size() * m_rows.size());
        for (std::vector<Value>& row : m_rows) {
            row.resize(names.size());
            std::move(row.begin(), row.end(), std::back_inserter(cells));
        }
        return std::make_unique<MemoryCursor>(std::move(names), std::move(cells));
    }

 private:
    void AddObject(const QJsonObject& object, const std::string& prefix, int depth) {
        for (auto member = object.begin(); member != object.end(); ++member) {
            const std::string name = prefix + member.key().toStdString();
            if (member.value().isObject() && depth < DeepestObject) {
                AddObject(member.value().toObject(), name + ".", depth + 1);
            } else {
                Put(name, member.value());
            }
        }
    }

    void Put(const std::string& name, const QJsonValue& node) {
        const auto [entry, isNew] = m_columns.emplace(name, m_columns.size());
        const std::size_t column = entry->second;
        if (column >= MostColumns) {
            throw Error("the JSON gives more than " + std::to_string(MostColumns) + " columns");
        }
        if (isNew) {
            m_isDecimal.push_back(
                std::any_of(m_decimals.begin(), m_decimals.end(),
                            [&](const std::string& decimal) { return EqualNoCase(decimal, name); }));
        }
        std::vector<Value>& row = m_rows.back();
        row.resize(std::max(row.size(), column + 1));
        row[column] = ValueOf(node, m_isDecimal[column]);
    }

    Value ValueOf(const QJsonValue& node, bool isDecimal) const {
        if (!m_numbers) {
            return ScalarOf(node);
        }
        if (isDecimal && node.isDouble()) {
            if (const std::optional<Decimal> number = Decimal::OfText(m_numbers->Text(node))) {
                return Value::Decimal(*number);
            }
        }
        return ScalarOf(m_numbers->Parsed(node));
    }

    const JsonNumbers* const m_numbers;
    const std::vector<std::string>& m_decimals;
    std::vector<bool> m_isDecimal;  // by column
    std::map<std::string, std::size_t> m_columns;
    std::vector<std::vector<Value>> m_rows;
};

QJsonDocument Parse(std::string_view bytes, QJsonParseError& failure) {
    return QJsonDocument::fromJson(
        QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())), &failure);
}

}  // namespace

std::unique_ptr<Cursor> OpenJson(std::string_view bytes, std::string_view path,
                                 const std::vector<std::string>& decimals) {
    QJsonParseError failure;
    QJsonDocument document;
    std::optional<JsonNumbers> numbers;
    if (!decimals.empty()) {
        numbers = JsonNumbers::Of(bytes);
    }
    if (numbers) {
        document = Parse(numbers->Indexed(), failure);
    }
    if (!numbers || failure.error != QJsonParseError::NoError) {
        numbers.reset();
        document = Parse(bytes, failure);  // where it is damaged
    }
    if (failure.error != QJsonParseError::NoError) {
        throw Error("the JSON is not usable at byte " + std::to_string(failure.offset) + ": " +
                    CleanText(failure.errorString().toStdString()));
    }
    const QJsonValue root = document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
    RowCollector rows(numbers ? &*numbers : nullptr, decimals);
    for (const QJsonValue& node : Select(root, path)) {
        if (!node.isArray()) {
            rows.Add(node);
            continue;
        }
        for (const QJsonValue& element : node.toArray()) {
            rows.Add(element);
        }
    }
    return rows.Finish();
}

}  // namespace rdl::data
