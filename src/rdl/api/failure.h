// SPDX-License-Identifier: GPL-3.0-or-later
// An engine error together with the stage that failed.
#pragma once

#include <string>

#include "rdl/values/error.h"

namespace rdl {

enum class Stage {
    Open,       // the file is not a report, or contains something that cannot be drawn
    Parameter,  // a value is missing or does not fit
    Formula,    // compiling or evaluating the record selection formula
    Data,       // a data source or query
    Run,        // layout and writing
};

class Failure : public Error {
 public:
    Failure(Stage stage, const std::string& text) : Error(text), m_stage(stage) {}
    Stage stage() const { return m_stage; }

 private:
    Stage m_stage;
};

}  // namespace rdl
