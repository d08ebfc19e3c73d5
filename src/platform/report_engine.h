// What the system asks of a report engine: its operations, each named by its role. All fail by raising
// RuntimeError, and none ever asks a person anything. Paths are the system's (platform/paths.h).
#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "platform/dates.h"
#include "platform/report_view.h"
#include "platform/runtime.h"

namespace report {

// A value for a parameter, typed by the field's value type; Variant is handed over unconverted.
using ParameterValue = std::variant<double, bool, std::string, DateValue, Variant>;

// Value type codes of parameter fields.
inline constexpr int NumberField = 7;
inline constexpr int BooleanField = 9;
inline constexpr int StringField = 12;
inline constexpr int DateTimeField = 16;
inline constexpr int OtherField = 22;

inline constexpr int DestinationDisk = 1;
inline constexpr int DestinationMail = 2;

inline constexpr int FormatWord = 14;
inline constexpr int FormatExcel = 27;
inline constexpr int FormatPdf = 31;
inline constexpr int FormatHtml = 32;
inline constexpr int FormatRtf = 35;

class ParameterField {
 public:
    virtual ~ParameterField() = default;
    virtual int ValueType() const = 0;
    // Of a NumberField: a value with a fraction is refused.
    virtual bool IsWholeNumber() const = 0;
    virtual std::string Name() const = 0;
    virtual std::string Prompt() const = 0;
    virtual std::vector<std::string> DefaultValues() const = 0;  // as texts; empty when there are none
    // The values that the report allows, as texts; empty when it allows any, or when a query gives them.
    virtual std::vector<std::string> ValidValues() const = 0;
    virtual void ClearCurrentValueAndRange() = 0;
    virtual void AddCurrentValue(const ParameterValue& value) = 0;
};

class Report {
 public:
    virtual ~Report() = default;

    virtual int TableCount() const = 0;
    // Table n from 1. Server and database empty: as the report has them.
    virtual void SetTableLogon(int n, const std::string& server, const std::string& database,
                               const std::string& user, const std::string& password) = 0;

    virtual int ParameterFieldCount() const = 0;
    virtual ParameterField& Parameter(int n) = 0;  // from 1; 9 "Subscript out of range"

    virtual void SetRunSwitches(bool first, bool second) = 0;
    virtual std::string RecordSelectionFormula() const = 0;
    virtual void SetRecordSelectionFormula(const std::string& text) = 0;  // checked when the report runs
    virtual std::string Title() const = 0;
    virtual std::string Description() const = 0;  // what the file says about itself; may be empty

    virtual void SetExportDestination(int code) = 0;
    virtual void SetExportFormat(int code) = 0;
    virtual void SetDiskFileName(const std::string& path) = 0;
    virtual void SetHtmlFileName(const std::string& path) = 0;
    // Used with DestinationMail: the engine mails the export itself, named by the title.
    virtual void SetMail(const std::string& toList, const std::string& subject,
                         const std::string& message) = 0;
    // Excel: whether fields keep their types and widths, page headers, page breaks, gridlines, base area.
    virtual void SetExcelOptions(bool o1, bool o2, bool o3, bool o4, int o5) = 0;
    virtual void SetHtmlOptions(bool o1, bool o2) = 0;
    // Runs the report and writes or mails it; returns when done. A file appears whole or not at all.
    virtual void Export(bool prompt) = 0;
    // Runs the report for the screen, with its parameters, logon and formula as they are now. The report
    // outlives its pages.
    virtual std::unique_ptr<PageView> OpenPages() = 0;
};

class Engine {
 public:
    virtual ~Engine() = default;
    // Raises 53 when the file is missing, and an error that says what the file is when it is no report.
    virtual std::shared_ptr<Report> OpenReport(const std::string& path) = 0;
};

// Makes the engine; set by the program that links one, or by a test.
std::shared_ptr<Engine> CreateEngine();
void SetEngineFactory(std::shared_ptr<Engine> (*factory)());

}  // namespace report
