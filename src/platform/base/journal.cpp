// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/journal.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>

#include "platform/base/moment_text.h"
#include "platform/base/one_line.h"
#include "platform/base/text.h"
#include "platform/contracts/clock.h"

namespace journal {
namespace {

struct Settings {
    std::mutex mutex;
    Form form = Form::Text;
    bool hasEvents = false;
    std::vector<Fact> context;
};

Settings& TheSettings() {
    static Settings settings;
    return settings;
}

// RFC 3339, section 5.6.
std::string StampWithOffset() {
    constexpr int Minute = 60, Hour = 60 * Minute;
    const ZonedMoment moment = TheClock().Moment();
    const std::int64_t local = moment.seconds + moment.offset;
    const int distance = moment.offset < 0 ? -moment.offset : moment.offset;
    std::array<char, 32> offset{};
    std::snprintf(offset.data(), offset.size(), "%c%02d:%02d", moment.offset < 0 ? '-' : '+', distance / Hour,
                  distance % Hour / Minute);
    return MomentText(DateValue::FromSeconds(DateSerial(1970, 1, 1).Seconds() + local), 'T') + offset.data();
}

std::string_view WordOf(Level level) {
    switch (level) {
        case Level::Error:
            return "error";
        case Level::Warning:
            return "warning";
        case Level::Notice:
            return "notice";
        case Level::Info:
            break;
    }
    return "info";
}

// Bytes of one text in a line. Longer lines would be split by the machine's journal, and the pieces be taken
// for lines with a severity of their own.
constexpr std::size_t LongestText = 8192;

std::string Shown(std::string_view text) {
    return OnOneLine(CutText(text, LongestText)) + (text.size() > LongestText ? "..." : "");
}

// RFC 8259, section 7. What could break a line is escaped too where the standard does not ask for it.
std::string JsonText(std::string_view text) {
    std::string quoted = "\"";
    for (std::size_t at = 0; at < text.size();) {
        const Character character = CharacterAt(text, at);
        if (character.code == '"' || character.code == '\\') {
            quoted += '\\';
            quoted += text[at];
        } else if (BreaksLine(character.code)) {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(character.code));
            quoted += escape.data();
        } else {
            AppendCharacter(quoted, character.code >= NoCharacter ? ReplacementCharacter : character.code);
        }
        at += character.length;
        if (quoted.size() > LongestText && at < text.size()) {
            quoted += "...";
            break;
        }
    }
    return quoted + '"';
}

// A value that a reader would not see as one word stands in quotes.
std::string Word(const Fact& fact) {
    std::string value = Shown(fact.value);
    if (fact.isNumber || (!value.empty() && value.find_first_of(" \"=\\") == std::string::npos)) {
        return value;
    }
    std::string quoted = "\"";
    for (const char character : value) {
        quoted += character == '"' || character == '\\' ? "\\" : "";
        quoted += character;
    }
    return quoted + '"';
}

std::string TextLine(const Event& event, const std::vector<Fact>& context) {
    std::string line = MomentText(Now()) + ' ';
    if (!event.sentence.empty()) {
        return line + Shown(event.sentence);
    }
    line.append(WordOf(event.level)).append(1, ' ').append(event.name);
    for (const auto* facts : {&context, &event.facts}) {
        for (const Fact& fact : *facts) {
            line.append(1, ' ').append(fact.name).append(1, '=').append(Word(fact));
        }
    }
    return line;
}

std::string JsonLine(const Event& event, const std::vector<Fact>& context) {
    std::string line = "{\"time\":" + JsonText(StampWithOffset()) +
                       ",\"level\":" + JsonText(WordOf(event.level)) + ",\"event\":" + JsonText(event.name);
    for (const auto* facts : {&context, &event.facts}) {
        for (const Fact& fact : *facts) {
            line += ',' + JsonText(fact.name) + ':' + (fact.isNumber ? fact.value : JsonText(fact.value));
        }
    }
    return line + (event.sentence.empty() ? "" : ",\"text\":" + JsonText(event.sentence)) + '}';
}

// The variable names device and inode of the stream: a program that sends its standard error elsewhere
// inherits the variable all the same.
bool IsJournalStream() {
    const char* const stream = std::getenv("JOURNAL_STREAM");
    struct stat own {};
    return stream != nullptr && fstat(STDERR_FILENO, &own) == 0 &&
           std::to_string(own.st_dev) + ':' + std::to_string(own.st_ino) == stream;
}

}  // namespace

Fact Text(const char* name, std::string value) {
    return {name, std::move(value), false};
}

Fact Number(const char* name, std::int64_t value) {
    return {name, std::to_string(value), true};
}

Fact Seconds(const char* name, std::chrono::milliseconds value) {
    constexpr std::int64_t Thousand = 1000;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%lld.%03d", static_cast<long long>(value.count() / Thousand),
                  static_cast<int>(value.count() % Thousand));
    return {name, text.data(), true};
}

void Write(const Event& event) {
    Settings& settings = TheSettings();
    const std::lock_guard lock(settings.mutex);
    if (event.sentence.empty() && !settings.hasEvents) {
        return;
    }
    std::string line =
        settings.form == Form::Json ? JsonLine(event, settings.context) : TextLine(event, settings.context);
    static const bool isPrefixed = IsJournalStream();
    if (isPrefixed) {
        line.insert(0, '<' + std::to_string(static_cast<int>(event.level)) + '>');
    }
    line += '\n';
    // A closed standard error cannot be reported.
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, line.data(), line.size());
}

void UseForm(Form form) {
    const std::lock_guard lock(TheSettings().mutex);
    TheSettings().form = form;
}

void WriteEvents(bool isOn) {
    const std::lock_guard lock(TheSettings().mutex);
    TheSettings().hasEvents = isOn;
}

void SetContext(std::vector<Fact> facts) {
    const std::lock_guard lock(TheSettings().mutex);
    TheSettings().context = std::move(facts);
}

}  // namespace journal

void Journal(std::string_view text) {
    journal::Write({journal::Level::Warning, "message", {}, std::string(text)});
}
