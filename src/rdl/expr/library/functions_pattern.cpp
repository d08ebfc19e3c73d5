// SPDX-License-Identifier: GPL-3.0-or-later
// Regular expressions: System.Text.RegularExpressions.Regex. The library gives up on a pattern that takes too
// long; the result is then an error.
#include <QRegularExpression>
#include <QString>
#include <string>

#include "rdl/expr/library/objects.h"
#include "rdl/expr/operations/convert.h"

namespace rdl::expr {
namespace {

constexpr std::size_t MaxSubject = 1u << 18;
constexpr int MaxMatches = 100'000;

std::string Narrow(QStringView text) {
    return text.toString().toStdString();
}

// One match, or a group of one.
class MatchObject final : public ScriptObject {
 public:
    explicit MatchObject(QRegularExpressionMatch match) : m_match(std::move(match)) {}
    std::string_view TypeName() const override { return "System.Text.RegularExpressions.Match"; }
    Value Invoke(std::string_view member, const Call& call) override {
        if (member == ".success") {
            return Value::Boolean(m_match.hasMatch());
        }
        if (member == ".value" || member == ".tostring") {
            return MakeText(Narrow(m_match.captured(0)));
        }
        if (member == ".index" || member == ".length") {
            const qsizetype index = m_match.hasMatch() ? m_match.capturedStart(0) : 0;
            return Value::Integer(member == ".index" ? index : m_match.capturedLength(0));
        }
        if (member == ".groups" && call.count() == 2) {
            return Group(call);
        }
        return NoMember(member);
    }

 private:
    // The text of a group: its .Value is itself.
    Value Group(const Call& call) const {
        std::int64_t number = 0;
        if (call[1].IsText()) {
            return MakeText(Narrow(m_match.captured(QString::fromUtf8(call[1].AsText()))));
        }
        if (!call.Integer(1, number)) {
            return call.error;
        }
        return number >= 0 && number <= 1000 ? MakeText(Narrow(m_match.captured(static_cast<int>(number))))
                                             : Value::Text("");
    }

    QRegularExpressionMatch m_match;
};

// The arguments that all functions have: a subject, a pattern and, at `options`, RegexOptions as a number.
bool Prepare(const Call& call, int options, QRegularExpression& pattern, QString& subject) {
    std::int64_t flags = 0;
    if (!call.Integer(options, flags)) {
        return false;
    }
    const std::string text = call.Text(0);
    if (text.size() > MaxSubject) {
        call.error = Value::Error("A text is too long for a regular expression");
        return false;
    }
    QRegularExpression::PatternOptions set = QRegularExpression::NoPatternOption;
    set.setFlag(QRegularExpression::CaseInsensitiveOption, (flags & 1) != 0);
    set.setFlag(QRegularExpression::MultilineOption, (flags & 2) != 0);
    set.setFlag(QRegularExpression::DotMatchesEverythingOption, (flags & 16) != 0);
    set.setFlag(QRegularExpression::ExtendedPatternSyntaxOption, (flags & 32) != 0);
    // As in .NET, \w and \d match letters and digits of every language.
    set.setFlag(QRegularExpression::UseUnicodePropertiesOption);
    // Every row asks for the same few.
    thread_local QRegularExpression last;
    const QString source = QString::fromUtf8(call.Text(1));
    if (last.pattern() != source || last.patternOptions() != set) {
        last = QRegularExpression(source, set);
    }
    if (!last.isValid()) {
        call.error = Value::Error("The regular expression is faulty: " + last.errorString().toStdString());
        return false;
    }
    pattern = last;
    subject = QString::fromUtf8(text);
    return true;
}

// Goes over all matches; false with the error when there are too many or one takes too long.
template <typename Found>
bool ForEachMatch(const Call& call, const QRegularExpression& pattern, const QString& subject, Found found) {
    qsizetype from = 0;
    for (int count = 0; from <= subject.size(); ++count) {
        const QRegularExpressionMatch match = pattern.match(subject, from);
        if (!match.isValid() || count >= MaxMatches) {
            call.error = Value::Error("The regular expression takes too long");
            return false;
        }
        if (!match.hasMatch()) {
            return true;
        }
        found(match);
        from = match.capturedLength() > 0 ? match.capturedEnd() : match.capturedEnd() + 1;
    }
    return true;
}

// $1, ${1}, ${name}, $&, $$ of a replacement; other marks stand for themselves.
void AppendReplacement(const QString& with, const QRegularExpressionMatch& match, QString& result) {
    for (qsizetype i = 0; i < with.size(); ++i) {
        const QChar next = i + 1 < with.size() ? with[i + 1] : QChar();
        if (with[i] != QLatin1Char('$') || next.isNull()) {
            result += with[i];
        } else if (next == QLatin1Char('$')) {
            result += next;
            ++i;
        } else if (next == QLatin1Char('&')) {
            result += match.captured(0);
            ++i;
        } else if (next.isDigit()) {
            int group = 0;
            for (++i; i < with.size() && with[i].isDigit() && group < 100; ++i) {
                group = group * 10 + with[i].digitValue();
            }
            --i;
            result += group <= match.regularExpression().captureCount() ? match.captured(group)
                                                                        : QStringLiteral("$%1").arg(group);
        } else if (const qsizetype close = with.indexOf(QLatin1Char('}'), i);
                   next == QLatin1Char('{') && close > 0) {
            const QString name = with.mid(i + 2, close - i - 2);
            bool number = false;
            const int group = name.toInt(&number);
            result += number ? match.captured(group) : match.captured(name);
            i = close;
        } else {
            result += with[i];
        }
    }
}

Value Replace(const Call& call) {
    QRegularExpression pattern;
    QString subject;
    if (!Prepare(call, 3, pattern, subject)) {
        return call.error;
    }
    const QString with = QString::fromUtf8(call.Text(2));
    QString result;
    qsizetype done = 0;
    const bool complete = ForEachMatch(call, pattern, subject, [&](const QRegularExpressionMatch& match) {
        if (static_cast<std::size_t>(result.size()) <= MaxText) {
            result += QStringView(subject).mid(done, match.capturedStart() - done);
            AppendReplacement(with, match, result);
        }
        done = match.capturedEnd();
    });
    result += QStringView(subject).mid(done);
    return complete ? MakeText(result.toStdString()) : call.error;
}

Value IsMatch(const Call& call) {
    QRegularExpression pattern;
    QString subject;
    if (!Prepare(call, 2, pattern, subject)) {
        return call.error;
    }
    const QRegularExpressionMatch match = pattern.match(subject);
    return match.isValid() ? Value::Boolean(match.hasMatch())
                           : Value::Error("The regular expression takes too long");
}

Value Match(const Call& call) {
    QRegularExpression pattern;
    QString subject;
    if (!Prepare(call, 2, pattern, subject)) {
        return call.error;
    }
    QRegularExpressionMatch match = pattern.match(subject);
    return match.isValid() ? Value::Of(new MatchObject(std::move(match)))
                           : Value::Error("The regular expression takes too long");
}

// The texts of all matches, as a list.
Value Matches(const Call& call) {
    QRegularExpression pattern;
    QString subject;
    ValueList found;
    if (!Prepare(call, 2, pattern, subject)) {
        return call.error;
    }
    const bool complete = ForEachMatch(call, pattern, subject, [&](const QRegularExpressionMatch& match) {
        found.push_back(Value::Text(Narrow(match.captured(0))));
    });
    return complete ? Value::List(std::move(found)) : call.error;
}

// What stands between the matches, and the groups of each match.
Value Split(const Call& call) {
    QRegularExpression pattern;
    QString subject;
    ValueList parts;
    if (!Prepare(call, 2, pattern, subject)) {
        return call.error;
    }
    qsizetype done = 0;
    const bool complete = ForEachMatch(call, pattern, subject, [&](const QRegularExpressionMatch& match) {
        parts.push_back(Value::Text(Narrow(QStringView(subject).mid(done, match.capturedStart() - done))));
        for (int group = 1; group <= match.lastCapturedIndex(); ++group) {
            parts.push_back(Value::Text(Narrow(match.captured(group))));
        }
        done = match.capturedEnd();
    });
    parts.push_back(Value::Text(Narrow(QStringView(subject).mid(done))));
    return complete ? Value::List(std::move(parts)) : call.error;
}

Value Escape(const Call& call) {
    std::string text;
    for (const char c : call.Text(0)) {
        text +=
            std::string_view("\\*+?|{[()^$.# ").find(c) != std::string_view::npos && c != '\0' ? "\\" : "";
        text += c;
    }
    return MakeText(text);
}

constexpr FunctionInfo functions[] = {
    {"regex.replace", 3, 4, Replace}, {"regex.ismatch", 2, 3, IsMatch}, {"regex.match", 2, 3, Match},
    {"regex.matches", 2, 3, Matches}, {"regex.split", 2, 3, Split},     {"regex.escape", 1, 1, Escape},
};
static_assert(NamesDiffer(functions));

}  // namespace

std::span<const FunctionInfo> PatternFunctions() {
    return functions;
}

}  // namespace rdl::expr
