// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/report_arguments.h"

#include <charconv>
#include <system_error>

#include "platform/contracts/export_formats.h"
#include "rdl/values/ascii.h"

namespace tools {
namespace {

// Returns the words of all formats: with ", " between them and " or " before the last one, for example.
std::string FormatWords(std::string_view between, std::string_view last) {
    std::string words;
    for (const report::FormatRow& format : report::FormatTable) {
        const bool isLast = &format == &report::FormatTable.back();
        words += words.empty() ? "" : isLast ? last : between;
        words += format.word;
    }
    return words;
}

int FormatOf(const std::string& word) {
    const report::FormatRow* const format = report::FindFormat(word);
    if (format == nullptr) {
        throw UsageError("\"" + word + "\" is no format: " + FormatWords(", ", " or "));
    }
    return format->Code();
}

std::pair<std::string, std::string> Assignment(const std::string& option, const std::string& text) {
    const std::size_t sign = text.find('=');
    if (sign == std::string::npos || sign == 0) {
        throw UsageError(option + " needs NAME=VALUE, not \"" + text + "\"");
    }
    return {text.substr(0, sign), text.substr(sign + 1)};
}

DataSourceArgument DataSourceOf(const std::string& text) {
    const auto [name, value] = Assignment("--data-source", text);
    const std::size_t end = value.find(';');
    if (end == std::string::npos || end == 0) {
        throw UsageError("--data-source needs NAME=PROVIDER;CONNECT STRING");
    }
    return {name, value.substr(0, end), value.substr(end + 1)};
}

class Parser {
 public:
    explicit Parser(const std::vector<std::string>& arguments) : m_arguments(arguments) {}

    ReportArguments Parse() {
        const std::string command = m_arguments.empty() ? "" : m_arguments[m_next++];
        if (command == "--help" || command == "-h") {
            return m_result;
        }
        if (command == "--version") {
            m_result.command = Command::Version;
            return m_result;
        }
        if (command == "serve" && m_arguments.size() == 2) {
            m_result.command = Command::Serve;
            m_result.version = m_arguments[m_next++];
            return m_result;
        }
        if (!rdl::IsOneOf(command, {"info", "export", "new"})) {
            throw UsageError(command.empty() ? "no command is given" : "\"" + command + "\" is no command");
        }
        m_result.command = command == "info"     ? Command::Info
                           : command == "export" ? Command::Export
                                                 : Command::New;
        if (m_next < m_arguments.size() && rdl::IsOneOf(m_arguments[m_next], {"--help", "-h"})) {
            m_result.command = Command::Help;
            return m_result;
        }
        while (m_next < m_arguments.size()) {
            TakeOne(m_arguments[m_next++]);
        }
        Check();
        return m_result;
    }

 private:
    void TakeOne(const std::string& argument) {
        if (m_onlyFiles || argument.empty() || argument[0] != '-') {
            if (m_result.command == Command::New) {
                throw UsageError("new takes no file: \"" + argument + "\"");
            }
            if (!m_result.file.empty()) {
                throw UsageError("there is more than one file: \"" + argument + "\"");
            }
            m_result.file = argument;
        } else if (argument == "--") {
            m_onlyFiles = true;
        } else if (m_result.command == Command::Info && argument == "--fonts") {
            m_result.withFonts = true;
        } else if (m_result.command == Command::Info && argument == "--problems") {
            m_result.withProblems = true;
        } else if (m_result.command == Command::Info) {
            throw UsageError("info has no option \"" + argument + "\"");
        } else if (!TakeCommonOption(argument)) {
            m_result.command == Command::New ? TakeNew(argument) : TakeOption(argument);
        }
    }

    void TakeRows(std::pair<std::string, std::string> rows) {
        if (rows.second.empty()) {
            throw UsageError("--rows \"" + rows.first + "=\" names no file");
        }
        for (const auto& [dataSet, file] : m_result.rows) {
            if (rdl::EqualNoCase(dataSet, rows.first)) {
                throw UsageError("--rows gives the data set \"" + dataSet + "\" twice");
            }
        }
        m_result.rows.push_back(std::move(rows));
    }

    // Returns false for an option that export and new do not share.
    bool TakeCommonOption(const std::string& option) {
        if (option == "-o") {
            m_result.output = ValueOf(option);
        } else if (option == "--user") {
            m_result.user = ValueOf(option);
            m_hasUser = true;
        } else if (option == "--password") {
            m_result.password = ValueOf(option);
            TakePasswordFrom(PasswordSource::Argument);
        } else if (option == "--password-stdin") {
            TakePasswordFrom(PasswordSource::StandardInput);
        } else {
            return false;
        }
        return true;
    }

    void TakeNew(const std::string& option) {
        if (!TakeNewFlag(option, m_result.newReport)) {
            TakeNewOption(
                option, [&] { return ValueOf(option); }, m_result.newReport);
        }
    }

    void TakeOption(const std::string& option) {
        if (option == "-f") {
            m_result.format = FormatOf(ValueOf(option));
        } else if (option == "-p") {
            m_result.parameters.push_back(Assignment(option, ValueOf(option)));
        } else if (option == "--formula") {
            m_result.formula = ValueOf(option);
            m_result.hasFormula = true;
        } else if (option == "--data-source") {
            m_result.dataSources.push_back(DataSourceOf(ValueOf(option)));
        } else if (option == "--rows") {
            TakeRows(Assignment(option, ValueOf(option)));
        } else if (option == "--pdf-a") {
            m_result.options.forArchive = true;
        } else if (option == "--tagged") {
            m_result.options.tagged = true;
        } else if (option == "--unformatted") {
            m_result.options.unformatted = true;
        } else if (option == "--page") {
            m_result.options.page = NumberOf(option, ValueOf(option), MostPages);
            m_hasPage = true;
        } else if (option == "--dpi") {
            m_result.options.dotsPerInch = NumberOf(option, ValueOf(option), MostDots);
            m_hasPage = true;
        } else if (option == "--data-set") {
            m_result.options.dataSet = NonEmpty(option, ValueOf(option));
        } else {
            throw UsageError("there is no option \"" + option + "\"");
        }
    }

    static constexpr int MostPages = 1'000'000, MostDots = 2400;

    static int NumberOf(const std::string& option, const std::string& text, int most) {
        int number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size() || number < 1 || number > most) {
            throw UsageError(option + " needs a whole number from 1 to " + std::to_string(most) + ", not \"" +
                             text + "\"");
        }
        return number;
    }

    void TakePasswordFrom(PasswordSource source) {
        if (m_hasPassword && source != m_result.passwordSource) {
            throw UsageError("--password and --password-stdin exclude each other");
        }
        m_result.passwordSource = source;
        m_hasPassword = true;
    }

    const std::string& ValueOf(const std::string& option) {
        if (m_next >= m_arguments.size()) {
            throw UsageError(option + " needs a value");
        }
        return m_arguments[m_next++];
    }

    void Check() const {
        if (m_result.command != Command::New && m_result.file.empty()) {
            throw UsageError("no report file is given");
        }
        if (m_result.command == Command::Info) {
            return;
        }
        if (m_result.command == Command::Export && m_result.format == 0) {
            throw UsageError("no format is given (-f)");
        }
        if (m_result.output.empty()) {
            throw UsageError("no output file is given (-o)");
        }
        m_result.command == Command::New ? CheckNew(m_result.newReport) : CheckOptions();
        if (m_hasPassword && !m_hasUser) {
            throw UsageError("a password without --user");
        }
    }

    // An option that the format ignores would be a wish that is not met.
    void CheckOptions() const {
        const bool isCsv = m_result.format == report::CodeOf(report::DocumentFormat::Csv);
        if (!isCsv && (m_result.options.unformatted || !m_result.options.dataSet.empty())) {
            throw UsageError("--unformatted and --data-set are options of csv");
        }
        const bool isPdf = m_result.format == report::CodeOf(report::DocumentFormat::Pdf);
        if (!isPdf && (m_result.options.forArchive || m_result.options.tagged)) {
            throw UsageError("--pdf-a and --tagged are options of pdf");
        }
        if (m_hasPage && m_result.format != report::CodeOf(report::DocumentFormat::Png)) {
            throw UsageError("--page and --dpi are options of png");
        }
    }

    const std::vector<std::string>& m_arguments;
    std::size_t m_next = 0;
    bool m_onlyFiles = false, m_hasUser = false, m_hasPassword = false, m_hasPage = false;
    ReportArguments m_result;
};

}  // namespace

std::string Usage() {
    return "oxc-report info [--fonts] [--problems] FILE\n"
           "oxc-report export FILE -f " +
           FormatWords("|", "|") +
           " -o OUT [-p NAME=VALUE]... [--formula TEXT]\n"
           "           [--user U [--password-stdin | --password P]] [--data-source NAME=PROVIDER;CONNECT "
           "STRING]...\n"
           "           [--rows NAME=FILE.csv]...\n"
           "           pdf: [--pdf-a] [--tagged]\n"
           "           csv: [--unformatted] [--data-set NAME]   png: [--page N] [--dpi N]\n" +
           NewUsage() +
           "oxc-report --help | --version\n"
           "The password that belongs to --user is read from standard input (--password-stdin) or from the "
           "variable\n"
           "OXC_REPORT_PASSWORD. What stands on the command line itself is seen in lists of processes for a "
           "moment.\n";
}

ReportArguments ParseArguments(const std::vector<std::string>& arguments) {
    return Parser(arguments).Parse();
}

}  // namespace tools
