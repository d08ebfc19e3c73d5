// SPDX-License-Identifier: GPL-3.0-or-later
// What a program asks of its report process: the table of operations that both sides share. Each operation of
// platform/contracts/report_engine.h that needs the report file is one; the program itself keeps the export's
// settings, and opens, completes and mails the document. The server does not compile without a function for
// each of them.
#pragma once

#include <string>
#include <tuple>
#include <variant>
#include <vector>

#include "platform/contracts/report_engine.h"
#include "platform/reports/worker/codec.h"

namespace reports::worker {

// Changes with every change of a message. A program refuses a report process of another number.
inline constexpr int Protocol = 1;

// The answer of an operation that returns nothing.
struct Done {
    template <typename Self>
    static auto Parts(Self&) {
        return std::tuple<>();
    }
};

struct Begun {
    std::string lacking;  // what the kernel does not offer to confine the process; may be empty
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.lacking);
    }
};

// Comes first, and once. The process limits itself before it answers.
struct Begin {
    using Answer = Begun;
    static constexpr const char* Words = "started";
    std::string appFolder;              // AppPath of the program
    std::int64_t beatMilliseconds = 0;  // how often a process that works shows that it lives
    std::int64_t megabytes = 0;         // address space
    std::vector<std::string> readable;  // the only folders that reports may read; empty: any
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.appFolder, self.beatMilliseconds, self.megabytes, self.readable);
    }
};

struct Field {
    int valueType = 0;
    bool isWholeNumber = false;
    std::string name, prompt;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.valueType, self.isWholeNumber, self.name, self.prompt);
    }
};

struct Opened {
    int report = 0;  // its number in all later messages
    int tables = 0;
    std::string title, description, formula;
    std::vector<Field> fields;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.report, self.tables, self.title, self.description, self.formula, self.fields);
    }
};

struct Open {
    using Answer = Opened;
    static constexpr const char* Words = "opened";
    std::string path;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.path);
    }
};

// Nobody waits for the end of a report: its answer is read before the next operation (Worker::Post).
struct Close {
    using Answer = Done;
    static constexpr const char* Words = "closed";
    int report = 0;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.report);
    }
};

struct LogOn {
    using Answer = Done;
    static constexpr const char* Words = "prepared";
    int report = 0, table = 0;
    std::string server, database, user, password;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.report, self.table, self.server, self.database, self.user, self.password);
    }
};

struct Texts {
    std::vector<std::string> texts;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.texts);
    }
};

struct DefaultValues {
    using Answer = Texts;
    static constexpr const char* Words = "prepared";
    int report = 0, field = 0;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.report, self.field);
    }
};

struct ValidValues {
    using Answer = Texts;
    static constexpr const char* Words = "prepared";
    int report = 0, field = 0;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.report, self.field);
    }
};

struct ClearField {
    using Answer = Done;
    static constexpr const char* Words = "prepared";
    int report = 0, field = 0;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.report, self.field);
    }
};

struct AddValue {
    using Answer = Done;
    static constexpr const char* Words = "prepared";
    int report = 0, field = 0;
    report::ParameterValue value;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.report, self.field, self.value);
    }
};

struct SetSwitches {
    using Answer = Done;
    static constexpr const char* Words = "prepared";
    int report = 0;
    bool prompts = false, progress = false;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.report, self.prompts, self.progress);
    }
};

struct SetFormula {
    using Answer = Done;
    static constexpr const char* Words = "prepared";
    int report = 0;
    std::string text;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.report, self.text);
    }
};

struct SetExcelOptions {
    using Answer = Done;
    static constexpr const char* Words = "prepared";
    int report = 0;
    bool keepsTypes = false, pageHeaders = false, pageBreaks = false, gridlines = false;
    int baseArea = 0;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.report, self.keepsTypes, self.pageHeaders, self.pageBreaks, self.gridlines,
                        self.baseArea);
    }
};

struct SetHtmlOptions {
    using Answer = Done;
    static constexpr const char* Words = "prepared";
    int report = 0;
    bool firstSwitch = false, secondSwitch = false;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.report, self.firstSwitch, self.secondSwitch);
    }
};

// Writes the document to the open file that comes with the message.
struct Write {
    using Answer = Done;
    static constexpr const char* Words = "ran";
    int report = 0, format = 0;
    std::string target;  // the final name, for errors; a path of the machine
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.report, self.format, self.target);
    }
};

using Operation = std::variant<Begin, Open, Close, LogOn, DefaultValues, ValidValues, ClearField, AddValue,
                               SetSwitches, SetFormula, SetExcelOptions, SetHtmlOptions, Write>;

// A run-time error of an operation.
struct Failed {
    std::int32_t number = 0;
    std::string description;
    template <typename Self>
    static auto Parts(Self& self) {
        return std::tie(self.number, self.description);
    }
};

}  // namespace reports::worker
