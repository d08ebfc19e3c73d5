// A report file as a program uses it: open it, give it values, write a document or show its pages.
//
// Every function raises rdl::Failure with the stage that failed, std::bad_alloc without memory, and passes on
// what the host or an output raises. One thread at a time works with a report.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "rdl/api/output.h"
#include "rdl/api/pages.h"
#include "rdl/values/run_watch.h"
#include "rdl/values/value.h"

namespace rdl {

enum class DocumentFormat { Pdf, Rtf, Excel, Html, Word };

enum class ParameterKind { Boolean, Integer, Float, DateTime, String };

class Parameter {
 public:
    virtual ~Parameter() = default;
    virtual std::string Name() const = 0;
    virtual std::string Prompt() const = 0;  // for the person who is asked for a value; may be empty
    virtual ParameterKind Kind() const = 0;
    virtual bool TakesSeveral() const = 0;
    // As a person types them. Only those that stand in the report: what a query gives is known when it runs.
    virtual std::vector<std::string> DefaultValues() const = 0;
    virtual std::vector<std::string> ValidValues() const = 0;
    virtual void Clear() = 0;
    // Converts the value to the parameter's kind. A parameter of one value keeps the last one; a text gives a
    // parameter of several values each of its parts between semicolons, line feeds and, but for texts,
    // commas. Raises Failure (Stage::Parameter), which names the parameter, for a value that does not fit.
    virtual void Add(const Value& value) = 0;
};

class Report {
 public:
    virtual ~Report() = default;

    // The custom property Title, else the name of the file without its extension.
    virtual std::string Title() const = 0;
    virtual std::string Description() const = 0;

    virtual std::size_t ParameterCount() const = 0;
    virtual Parameter& ParameterAt(std::size_t index) = 0;  // below ParameterCount()

    // The tables are the data sets that run a query.
    virtual std::size_t TableCount() const = 0;
    virtual std::string TableName(std::size_t table) const = 0;   // below TableCount()
    virtual std::string SourceName(std::size_t table) const = 0;  // of its data source
    virtual void SetLogon(std::size_t table, const std::string& user, const std::string& password) = 0;
    // Replaces provider and connect string of a data source. False when the report has none of that name.
    virtual bool SetDataSource(const std::string& name, const std::string& provider,
                               const std::string& connectString) = 0;

    // The record selection formula; it is compiled when the report runs.
    virtual std::string Formula() const = 0;
    virtual void SetFormula(const std::string& text) = 0;

    // What one run may take of the machine.
    virtual void SetBounds(const RunBounds& bounds) = 0;
    // Runs the report and writes it.
    virtual void Write(DocumentFormat format, Output& output) = 0;
    // Runs the report for the screen. The pages do not need the report any more.
    virtual std::unique_ptr<Pages> OpenPages() = 0;
};

// `file` is an existing file; relative names in the report start at its folder. Raises Failure (Stage::Open)
// that says what the file is when it is no report, and names the element that cannot be drawn.
std::shared_ptr<Report> OpenReport(const std::filesystem::path& file);

}  // namespace rdl
