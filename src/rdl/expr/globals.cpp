// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/globals.h"

namespace rdl::expr {

Value GlobalOf(const RunFacts& facts, GlobalName name) {
    switch (name) {
        case GlobalName::ExecutionTime:
            return Value::DateTime(facts.nowTicks);
        case GlobalName::ReportName:
            return Value::Text(facts.reportName);
        case GlobalName::ReportFolder:
            return Value::Text(facts.reportFolder);
        case GlobalName::ReportServerUrl:
            return Value::Text("");
        case GlobalName::RenderFormatName:
            return Value::Text(facts.renderFormat);
        case GlobalName::RenderFormatIsInteractive:
            return Value::Boolean(false);
        case GlobalName::UserID:
            return Value::Text(facts.userName);
        case GlobalName::Language:
            return Value::Text(facts.language);
        default:
            return {};
    }
}

}  // namespace rdl::expr
