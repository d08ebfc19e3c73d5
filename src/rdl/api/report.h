// SPDX-License-Identifier: GPL-3.0-or-later
// A report file: open it, set its values, then write a document or show its pages.
//
// Every function raises rdl::Failure with the stage that failed, or std::bad_alloc. Errors of the host and of
// an output pass through unchanged. A report is not thread-safe.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/api/export_options.h"
#include "rdl/api/formats.h"
#include "rdl/api/output.h"
#include "rdl/api/pages.h"
#include "rdl/values/run_watch.h"
#include "rdl/values/value.h"

namespace rdl {

enum class ParameterKind { Boolean, Integer, Float, DateTime, String };

class Parameter {
 public:
    virtual ~Parameter() = default;
    virtual std::string Name() const = 0;
    virtual std::string Prompt() const = 0;  // shown to the user who enters a value; may be empty
    virtual ParameterKind Kind() const = 0;
    virtual bool TakesSeveral() const = 0;
    // As typed by a user. Only constants of the report; values from a query are known when the report runs.
    virtual std::vector<std::string> DefaultValues() const = 0;
    virtual std::vector<std::string> ValidValues() const = 0;
    virtual void Clear() = 0;
    // Converts `value` to the parameter's kind and adds it. A single-value parameter keeps the last value.
    // For a multi-value parameter a text is split at semicolons and line feeds and, unless the kind is
    // String, at commas. Raises Failure (Stage::Parameter) naming the parameter if the value does not fit.
    virtual void Add(const Value& value) = 0;
};

// A font family that a report names, and the family of this machine that its texts get.
struct FontUse {
    std::string name, family;
};

// What an expression is worth for the first row of a data set. Aggregates, also of a group, are over all rows
// of their data set; running ones and Previous stand at the first row.
struct ExpressionValue {
    Value value;            // of kind Error if the expression fails
    bool needsRun = false;  // there is no value: pages, other items or instances of groups decide it
    bool isOfRows = false;  // it depends on the rows of the data set
    std::size_t rows = 0;   // that the data set then has
};

class Report {
 public:
    virtual ~Report() = default;

    // Returns the custom property Title, or the file name without its extension.
    virtual std::string Title() const = 0;
    virtual std::string Description() const = 0;
    // Returns the fonts that the report names as constants, sorted by name.
    virtual std::vector<FontUse> Fonts() const = 0;
    // Reads the file again. Returns a line for each constant of a style that means nothing, such as
    // FontWeight Boldd, with file, line, item, property and value: the report runs, with the default in its
    // place.
    virtual std::vector<std::string> Problems() const = 0;

    virtual std::size_t ParameterCount() const = 0;
    virtual Parameter& ParameterAt(std::size_t index) = 0;  // below ParameterCount()

    // Tables are the data sets that run a query.
    virtual std::size_t TableCount() const = 0;
    virtual std::string TableName(std::size_t table) const = 0;   // below TableCount()
    virtual std::string SourceName(std::size_t table) const = 0;  // the name of the table's data source
    virtual void SetLogon(std::size_t table, const std::string& user, const std::string& password) = 0;
    // Replaces provider and connect string of a data source. Returns false if the report has no source
    // `name`.
    virtual bool SetDataSource(const std::string& name, const std::string& provider,
                               const std::string& connectString) = 0;

    // Replaces the query of a data set by the rows of a CSV file, whose columns have the names of the fields.
    // Returns false if the report has no data set of the name.
    virtual bool SetRows(const std::string& dataSet, const std::filesystem::path& file) = 0;

    // The record selection formula. It is compiled when the report runs.
    virtual std::string Formula() const = 0;
    virtual void SetFormula(const std::string& text) = 0;

    // Limits on time and memory of one run.
    virtual void SetBounds(const RunBounds& bounds) = 0;
    virtual void SetExportOptions(const ExportOptions& options) = 0;
    // Returns the value of an expression that begins with =, in the scope of a data set. An empty name is the
    // report's only data set, if it has one. Raises Failure: Stage::Open, with the position, for an
    // expression that does not compile; Stage::Parameter if it needs a parameter that has no value;
    // Stage::Data. Only data sets that the expression reads are loaded, and kept for the next expression,
    // as are failures to load them: give values and logons before.
    virtual ExpressionValue ValueOf(const std::string& expression, const std::string& dataSet) = 0;

    // Runs the report and writes the document to `output`.
    virtual void Write(DocumentFormat format, Output& output) = 0;
    // Runs the report for the screen. The pages do not depend on the report's lifetime.
    virtual std::unique_ptr<Pages> OpenPages() = 0;
};

// Opens an existing file; relative names in the report start at its folder. Raises Failure (Stage::Open) that
// says what the file is if it is not a report, or names the element that cannot be drawn.
std::shared_ptr<Report> OpenReport(const std::filesystem::path& file);

// Opens these bytes as if the file had them, which need not exist: what an editor has not saved yet.
std::shared_ptr<Report> OpenReportText(std::string_view bytes, const std::filesystem::path& file);

}  // namespace rdl
