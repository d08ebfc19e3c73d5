// An error of the engine with the stage of a report that it ended.
#pragma once

#include <string>

#include "rdl/values/error.h"

namespace rdl {

enum class Stage {
    Open,       // the file is no report, or cannot be drawn
    Parameter,  // a value is missing or does not fit
    Formula,    // the record selection formula
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
