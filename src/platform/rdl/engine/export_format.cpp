#include "platform/rdl/engine/export_format.h"

#include "platform/rdl/engine/failure.h"
#include "platform/report_engine.h"

namespace rdl::engine {
namespace {

// Word opens RTF content under its own extension.
constexpr ExportFormat Formats[] = {
    {report::FormatPdf, ".pdf", "PDF", true, writers::WritePdf},
    {report::FormatRtf, ".rtf", "RTF", false, writers::WriteRtf},
    {report::FormatExcel, ".xls", "EXCEL", false, writers::WriteXls},
    {report::FormatHtml, ".htm", "HTML", false, writers::WriteHtml},
    {report::FormatWord, ".doc", "WORD", false, writers::WriteRtf},
};

}  // namespace

const ExportFormat& FindFormat(int code) {
    for (const ExportFormat& format : Formats) {
        if (format.code == code) {
            return format;
        }
    }
    throw RuntimeError(InvalidOption, "There is no export format " + std::to_string(code));
}

}  // namespace rdl::engine
