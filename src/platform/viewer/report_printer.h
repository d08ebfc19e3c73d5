// Pages on paper.
#pragma once

#include <functional>

#include "platform/viewer/page_document.h"

class QPrinter;

namespace viewer {

// Whether pages choose their paper, or are brought onto the printer's: turned where that fits better, and
// made smaller, never larger.
enum class Paper { OfThePage, OfThePrinter };

// Gives the printer the paper of page n.
void SetPaper(QPrinter& printer, QSizeF points);

// Prints pages `first` to `last` as they are drawn, as vectors; they are made as they are needed, and there
// may be fewer, but not none. `goOn` is asked before each page; false stops and gives the job up. Returns the
// number of pages. Raises RuntimeError when the first does not come, a page cannot be drawn or the printer
// does not take the job.
int PrintPages(PageDocument& document, QPrinter& printer, int first, int last, Paper paper,
               const std::function<bool(int page)>& goOn);

}  // namespace viewer
