// The five output formats. Each writes to a sink of bytes in order, the same bytes for the same report and
// clock, and raises rdl::Error when the sink refuses.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "rdl/api/output.h"
#include "rdl/layout/model/instance.h"
#include "rdl/layout/model/page.h"

namespace rdl::writers {

struct Options {
    std::int64_t nowTicks = 0;  // creation date in documents: the run's moment, local time
};

void WritePdf(layout::ReportInstance& report, Output& output, const Options& options);

// What a document says about itself; what is empty is left out.
struct DocumentInfo {
    std::string title, author, description, language;
};
DocumentInfo InfoOf(const layout::ReportInstance& report);
// Pages that are laid out already, as `next` gives them; null after the last.
void WritePdf(const DocumentInfo& info, const std::function<std::shared_ptr<const layout::Page>()>& next,
              Output& output, const Options& options);

void WriteRtf(layout::ReportInstance& report, Output& output,
              const Options& options);  // .rtf, and .doc for Word
void WriteHtml(layout::ReportInstance& report, Output& output,
               const Options& options);  // one self-contained file
void WriteXls(layout::ReportInstance& report, Output& output, const Options& options);  // BIFF8

}  // namespace rdl::writers
