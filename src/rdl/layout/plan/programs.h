// SPDX-License-Identifier: GPL-3.0-or-later
// All expressions of a report, compiled in the data set of their place.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "rdl/data/common/table.h"
#include "rdl/definition/model.h"
#include "rdl/expr/language/expression.h"

namespace rdl::layout {

class Programs {
 public:
    // Field slots are those of `tables`. Null checks a report that is opened: field slots are those of the
    // definition, and what other stages evaluate (parameters, queries, calculated fields) is compiled too.
    // Raises rdl::Error naming item and property. `definition` must outlive this.
    Programs(const Definition& definition, const std::map<std::string, Table>* tables);
    ~Programs();
    Programs(const Programs&) = delete;
    Programs& operator=(const Programs&) = delete;

    // Returns null for a constant.
    const expr::Program* Of(const Expr& source) const {
        return source.id >= 0 && static_cast<std::size_t>(source.id) < m_programs.size()
                   ? m_programs[static_cast<std::size_t>(source.id)].get()
                   : nullptr;
    }
    // Compiles an expression that no item has, in a data set, which may be empty: the report's only one then.
    // Raises rdl::Error, which begins with `where`. The result must not outlive this.
    std::shared_ptr<expr::Program> Compile(const std::string& source, const std::string& where,
                                           const std::string& dataSet) const;
    // Returns the data set of a region's, group's or data set's rows; empty if there is no such scope.
    std::string DataSetOfScope(const std::string& scope) const;
    // Returns the data set of a region's rows.
    const std::string& DataSetOf(const Tablix& tablix) const { return m_dataSets.at(&tablix); }
    // Returns the report's only data set; empty if there is none or several.
    const std::string& OnlyDataSet() const { return m_onlyDataSet; }

 private:
    class Context;
    class Walker;
    std::unique_ptr<Context> m_context;
    std::vector<std::shared_ptr<expr::Program>> m_programs;  // by Expr::id
    std::unordered_map<const Tablix*, std::string> m_dataSets;
    std::string m_onlyDataSet;
};

}  // namespace rdl::layout
