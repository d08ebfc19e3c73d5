// SPDX-License-Identifier: GPL-3.0-or-later
// The operations that the system needs from a report engine. All raise RuntimeError on a failure, and none
// asks the user. Paths are those of the system (platform/base/paths.h).
#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "platform/contracts/dates.h"
#include "platform/contracts/report_view.h"
#include "platform/contracts/runtime.h"

namespace report {

// The value of a parameter, in the field's value type. A Variant is passed without a conversion.
using ParameterValue = std::variant<double, bool, std::string, DateValue, Variant>;

// Value type codes of parameter fields.
inline constexpr int NumberField = 7;
inline constexpr int BooleanField = 9;
inline constexpr int StringField = 12;
inline constexpr int DateTimeField = 16;
inline constexpr int OtherField = 22;

inline constexpr int DestinationDisk = 1;
inline constexpr int DestinationMail = 2;

class ParameterField {
 public:
    virtual ~ParameterField() = default;
    virtual int ValueType() const = 0;
    // Of a NumberField: a value with a fraction is refused.
    virtual bool IsWholeNumber() const = 0;
    virtual std::string Name() const = 0;
    virtual std::string Prompt() const = 0;
    virtual std::vector<std::string> DefaultValues() const = 0;  // as texts; may be empty
    // Returns the values that the report allows, as texts. Empty if it allows any value, or if a query gives
    // them.
    virtual std::vector<std::string> ValidValues() const = 0;
    virtual void ClearCurrentValueAndRange() = 0;
    virtual void AddCurrentValue(const ParameterValue& value) = 0;
};

class Report {
 public:
    virtual ~Report() = default;

    virtual int TableCount() const = 0;
    // `n` counts from 1. Empty server and database: as the report has them.
    virtual void SetTableLogon(int n, const std::string& server, const std::string& database,
                               const std::string& user, const std::string& password) = 0;

    virtual int ParameterFieldCount() const = 0;
    virtual ParameterField& Parameter(int n) = 0;  // from 1; raises 9 "Subscript out of range"

    // Two switches for prompts and progress. Every runner passes false; an engine may ignore them.
    virtual void SetRunSwitches(bool prompts, bool progress) = 0;
    virtual std::string RecordSelectionFormula() const = 0;
    virtual void SetRecordSelectionFormula(const std::string& text) = 0;  // is checked when the report runs
    virtual std::string Title() const = 0;
    virtual std::string Description() const = 0;  // the description in the file; may be empty

    // `code` is DestinationDisk or DestinationMail. Export raises 5 for an unknown code.
    virtual void SetExportDestination(int code) = 0;
    // `code` is one of platform/contracts/export_formats.h. Export raises 5 for an unknown code.
    virtual void SetExportFormat(int code) = 0;
    virtual void SetDiskFileName(const std::string& path) = 0;
    // The file of an HTML export; SetDiskFileName sets that of the other formats.
    virtual void SetHtmlFileName(const std::string& path) = 0;
    // For DestinationMail: the engine mails the export itself; the report's title names the attachment.
    virtual void SetMail(const std::string& toList, const std::string& subject,
                         const std::string& message) = 0;
    // For Excel. `keepsTypes`: fields keep their types and widths. `baseArea` is a code. An engine may ignore
    // all of them.
    virtual void SetExcelOptions(bool keepsTypes, bool pageHeaders, bool pageBreaks, bool gridlines,
                                 int baseArea) = 0;
    // Two switches for HTML, without a meaning of their own here. Every runner passes false; an engine may
    // ignore them.
    virtual void SetHtmlOptions(bool firstSwitch, bool secondSwitch) = 0;
    // Runs the report and writes or mails it; returns when this is done. A file appears complete or not at
    // all. `prompt` would ask for the options on the screen; every runner passes false.
    virtual void Export(bool prompt) = 0;
    // Runs the report for the screen with its current parameters, logon and formula. The caller owns the
    // pages; the report must outlive them.
    virtual std::unique_ptr<PageView> OpenPages() = 0;
};

class Engine {
 public:
    virtual ~Engine() = default;
    // Raises 53 if the file is missing, and an error that describes the file if it is not a report.
    virtual std::shared_ptr<Report> OpenReport(const std::string& path) = 0;
};

// Makes the engine through the factory that a program or a test has set. Raises 91 without a factory.
std::shared_ptr<Engine> CreateEngine();
void SetEngineFactory(std::shared_ptr<Engine> (*factory)());

// The same for the engine of runs: schedules and packages, due or on demand. Nobody watches a run, so a
// program may give it an engine that survives what a report does to its process. Without a factory of its own
// it is made by the one above.
std::shared_ptr<Engine> CreateRunEngine();
void SetRunEngineFactory(std::shared_ptr<Engine> (*factory)());

}  // namespace report
