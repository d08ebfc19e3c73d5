// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/files/csv_cursor.h"

#include <QStringDecoder>
#include <algorithm>
#include <set>

#include "rdl/data/common/field_type.h"
#include "rdl/data/common/message.h"
#include "rdl/data/files/limits.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
#include "rdl/values/utf8.h"

namespace rdl::data {
namespace {

// What Windows has between 0x80 and 0x9F, where Latin-1 has control characters only.
constexpr char16_t WindowsMarks[] =
    u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D\u008F"
    u"\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D\u017E\u0178";

std::string FromWindows(std::string_view bytes) {
    QString text = QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
    for (QChar& c : text) {
        if (c.unicode() >= 0x80 && c.unicode() <= 0x9F) {
            c = QChar(WindowsMarks[c.unicode() - 0x80]);
        }
    }
    return text.toStdString();
}

// Many programs write Windows-1252 without declaring it: invalid UTF-8 is read as that.
std::string AsUtf8(std::string_view bytes, bool latin1) {
    const auto size = static_cast<qsizetype>(bytes.size());
    const auto marked = QStringConverter::encodingForData(bytes.substr(0, 4));
    if (marked && *marked != QStringConverter::Utf8) {
        return QString(QStringDecoder(*marked)(QByteArrayView(bytes.data(), size))).toStdString();
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.remove_prefix(3);
    } else if (latin1 || !QByteArrayView(bytes).isValidUtf8()) {
        return FromWindows(bytes);
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

// The line sep=; that some programs write in front of all others. NUL when there is none.
char TakeSeparatorLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
    if (line.size() != 5 || LowerAscii(line.substr(0, 4)) != "sep=") {
        return '\0';
    }
    text.remove_prefix(line.size());
    return line.back();
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
        m_begin = m_at;
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

    // How the line that was read last begins: what an error shows of it.
    std::string Beginning() const {
        const std::size_t end = std::min(m_text.find_first_of("\r\n", m_begin), m_text.size());
        return CleanText(WholeCharacters(m_text.substr(m_begin, end - m_begin), 40));
    }

 private:
    // What stands between two quotes. Without the second one the rest of the file would be a single value.
    void TakeQuoted(std::string& value) {
        for (++m_at; m_at < m_text.size(); ++m_at) {
            if (m_text[m_at] != '"') {
                value.push_back(m_text[m_at]);
            } else if (m_at + 1 < m_text.size() && m_text[m_at + 1] == '"') {
                value.push_back(m_text[m_at++]);
            } else {
                ++m_at;
                return;
            }
        }
        throw Error("the file has a text in quotes that does not end, in the line that begins \"" +
                    Beginning() + "\"");
    }

    std::string OneValue() {
        std::string value;
        if (m_at < m_text.size() && m_text[m_at] == '"') {
            TakeQuoted(value);
        }
        while (m_at < m_text.size() && m_text[m_at] != m_separator && m_text[m_at] != '\n' &&
               m_text[m_at] != '\r') {
            value.push_back(m_text[m_at++]);
        }
        return value;
    }

    std::string_view m_text;
    char m_separator;
    std::size_t m_at = 0, m_begin = 0;
};

// A line may be short, and may end in separators; but values without a column would be lost, and what
// stands in the others is most likely not theirs.
void FitLine(std::vector<std::string>& values, std::size_t columns, const LineReader& lines) {
    const auto isLost = [](const std::string& value) { return !Trimmed(value).empty(); };
    if (values.size() > columns &&
        std::any_of(values.begin() + static_cast<std::ptrdiff_t>(columns), values.end(), isLost)) {
        throw Error("the file has " + std::to_string(columns) + " columns, but " +
                    std::to_string(values.size()) + " values in the line that begins \"" + lines.Beginning() +
                    "\"");
    }
    values.resize(columns);
}

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

// A second column of a name could not be asked for: it gets the next number, as in Amount_2.
void MakeDifferent(std::vector<std::string>& names) {
    std::set<std::string> known;
    for (const std::string& name : names) {
        known.insert(LowerAscii(name));
    }
    std::set<std::string> met;
    for (std::string& name : names) {
        if (name.empty() || met.insert(LowerAscii(name)).second) {
            continue;
        }
        int number = 2;
        while (known.contains(LowerAscii(name + "_" + std::to_string(number)))) {
            ++number;
        }
        name += "_" + std::to_string(number);
        known.insert(LowerAscii(name));
        met.insert(LowerAscii(name));
    }
}

}  // namespace

std::unique_ptr<Cursor> OpenCsv(std::string_view bytes, const CsvForm& form) {
    const std::string decoded = AsUtf8(bytes, form.latin1);
    std::string_view text = decoded;
    const char told = TakeSeparatorLine(text);
    const char separator = form.separator ? form.separator : told;
    LineReader lines(text, separator ? separator : GuessSeparator(text));
    std::vector<std::string> names, values;
    bool pending = lines.Next(values);
    for (std::size_t i = 0; i < values.size(); ++i) {
        names.push_back(form.header ? std::string(Trimmed(values[i])) : "Column" + std::to_string(i + 1));
    }
    MakeDifferent(names);
    pending = pending && (!form.header || lines.Next(values));
    std::vector<Value> cells;
    for (; pending; pending = lines.Next(values)) {
        FitLine(values, names.size(), lines);
        if (cells.size() + names.size() > MostCells) {
            throw Error("the file has more than " + std::to_string(MostCells) + " values");
        }
        for (const std::string& value : values) {
            cells.push_back(value.empty() ? Value() : Value::Text(value));
        }
    }
    for (std::size_t column = 0; column < names.size(); ++column) {
        const auto isSame = [&](const std::string& name) { return EqualNoCase(name, names[column]); };
        if (std::none_of(form.texts.begin(), form.texts.end(), isSame)) {
            TypeColumn(cells, column, names.size());
        }
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
