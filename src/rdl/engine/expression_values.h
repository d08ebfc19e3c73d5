// SPDX-License-Identifier: GPL-3.0-or-later
// Values of single expressions of a report. The rows that one needs are kept for the next.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "rdl/api/failure.h"
#include "rdl/api/report.h"
#include "rdl/data/load.h"

namespace rdl::engine {

class ExpressionValues {
 public:
    // Returns a request with limits of its own, and with the values of the parameters if they are needed.
    using Request = std::function<data::LoadRequest(bool needsParameters)>;

    // `dataSet` is a name of the definition or empty. Raises Failure as Report::ValueOf.
    ExpressionValue ValueOf(const Definition& definition, const std::string& expression,
                            const std::string& dataSet, const Request& request);

 private:
    // Raises what `work` raises, and the same again when it is asked for once more: a logon that is refused
    // is not tried with each expression.
    void Once(const std::string& what, const std::function<void()>& work);

    data::LoadRequest RequestFor(bool needsParameters, const Request& request);

    std::optional<std::vector<data::ParameterInput>> m_parameters;
    std::map<std::string, Table> m_tables;
    std::map<std::string, Failure> m_failures;  // by the name of the data set; empty: the parameters
};

}  // namespace rdl::engine
