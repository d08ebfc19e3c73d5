#include "platform/rdl/data/csv_cursor.h"

#include <QStringDecoder>
#include <algorithm>

#include "platform/rdl/data/field_type.h"
#include "platform/rdl/data/message.h"
#include "platform/rdl/error.h"

namespace rdl::data {
namespace {

constexpr std::size_t MostCells = 50'000'000;
constexpr std::size_t MostColumns = 4'096;

std::string AsUtf8(std::string_view bytes, bool latin1) {
    const auto size = static_cast<qsizetype>(bytes.size());
    const auto marked = QStringConverter::encodingForData(bytes.substr(0, 4));
    if (marked && *marked != QStringConverter::Utf8) {
        return QString(QStringDecoder(*marked)(QByteArrayView(bytes.data(), size))).toStdString();
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.remove_prefix(3);
    } else if (latin1) {
        return QString::fromLatin1(bytes.data(), size).toStdString();
    }
    return std::string(bytes);
}

char GuessSeparator(std::string_view text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    char best = ',';
    for (const char candidate : {';', '\t', '|'}) {
        if (std::count(line.begin(), line.end(), candidate) > std::count(line.begin(), line.end(), best)) {
            best = candidate;
        }
    }
    return best;
}

class LineReader {
 public:
    LineReader(std::string_view text, char separator) : m_text(text), m_separator(separator) {}

    // The values of the next line that is not empty; false at the end.
    bool Next(std::vector<std::string>& values) {
        values.clear();
        while (m_at < m_text.size() && (m_text[m_at] == '\n' || m_text[m_at] == '\r')) {
            ++m_at;
        }
        if (m_at >= m_text.size()) {
            return false;
        }
        while (true) {
            values.push_back(OneValue());
            if (values.size() > MostColumns) {
                throw Error("the file has a line with more than " + std::to_string(MostColumns) + " values");
            }
            if (m_at >= m_text.size() || m_text[m_at] != m_separator) {
                return true;
            }
            ++m_at;
        }
    }

 private:
    std::string OneValue() {
        std::string value;
        if (m_at < m_text.size() && m_text[m_at] == '"') {
            for (++m_at; m_at < m_text.size(); ++m_at) {
                if (m_text[m_at] != '"') {
                    value.push_back(m_text[m_at]);
                } else if (m_at + 1 < m_text.size() && m_text[m_at + 1] == '"') {
                    value.push_back(m_text[m_at++]);
                } else {
                    ++m_at;
                    break;
                }
            }
        }
        while (m_at < m_text.size() && m_text[m_at] != m_separator && m_text[m_at] != '\n' &&
               m_text[m_at] != '\r') {
            value.push_back(m_text[m_at++]);
        }
        return value;
    }

    std::string_view m_text;
    char m_separator;
    std::size_t m_at = 0;
};

bool IsPlainNumber(const Value& cell) {
    std::string_view digits = cell.AsText();
    if (digits.starts_with('-')) {
        digits.remove_prefix(1);
    }
    const bool code = digits.size() > 1 && digits[0] == '0' && digits[1] != '.';
    return !digits.empty() && digits.size() <= 15 && !code && digits.front() != '.' && digits.back() != '.' &&
           std::count(digits.begin(), digits.end(), '.') <= 1 &&
           digits.find_first_not_of("0123456789.") == std::string_view::npos;
}

void TypeColumn(std::vector<Value>& cells, std::size_t column, std::size_t columns) {
    bool numbers = true, whole = true;
    for (std::size_t at = column; at < cells.size() && numbers; at += columns) {
        if (!cells[at].IsNull()) {
            numbers = IsPlainNumber(cells[at]);
            whole = whole && cells[at].AsText().find('.') == std::string_view::npos;
        }
    }
    for (std::size_t at = column; at < cells.size() && numbers; at += columns) {
        cells[at] = ConvertValue(cells[at], whole ? FieldType::Integer : FieldType::Real);
    }
}

}  // namespace

std::unique_ptr<Cursor> OpenCsv(std::string_view bytes, const CsvForm& form) {
    const std::string text = AsUtf8(bytes, form.latin1);
    LineReader lines(text, form.separator ? form.separator : GuessSeparator(text));
    std::vector<std::string> names, values;
    bool pending = lines.Next(values);
    for (std::size_t i = 0; i < values.size(); ++i) {
        names.push_back(form.header ? std::string(Trimmed(values[i])) : "Column" + std::to_string(i + 1));
    }
    pending = pending && (!form.header || lines.Next(values));
    std::vector<Value> cells;
    for (; pending; pending = lines.Next(values)) {
        values.resize(names.size());
        if (cells.size() + names.size() > MostCells) {
            throw Error("the file has more than " + std::to_string(MostCells) + " values");
        }
        for (const std::string& value : values) {
            cells.push_back(value.empty() ? Value() : Value::Text(value));
        }
    }
    for (std::size_t column = 0; column < names.size(); ++column) {
        TypeColumn(cells, column, names.size());
    }
    return std::make_unique<MemoryCursor>(std::move(names), std::move(cells));
}

std::string CsvFileOfQuery(std::string_view query) {
    query = Trimmed(query);
    while (query.ends_with(';')) {
        query = Trimmed(query.substr(0, query.size() - 1));
    }
    const std::string lower = LowerAscii(query);
    const std::size_t from = lower.find("from");
    if (lower.starts_with("select") && from != std::string::npos) {
        query = Trimmed(query.substr(from + 4));
    }
    if (query.size() > 1 && std::string_view("[\"`'").find(query.front()) != std::string_view::npos) {
        query = query.substr(1, query.size() - 2);
    }
    return std::string(query);
}

}  // namespace rdl::data
