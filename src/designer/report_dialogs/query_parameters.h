// SPDX-License-Identifier: GPL-3.0-or-later
// The parameters of a query, with their values in a run and for a test, as a page of the dialog for data
// sets. What the query asks for is added.
#pragma once

#include <QWidget>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "designer/expressions/row_table.h"
#include "designer/model/query_details.h"
#include "rdl/api/query_rows.h"

namespace designer {

class Note;

class QueryParameters : public QWidget {
    Q_OBJECT
 public:
    // Writes the parameters to where they are going to stand, in a copy of the report.
    using Write = std::function<void(Document&, const std::vector<QueryParameter>&)>;

    // The model must live as long as this.
    QueryParameters(const DesignModel& model, const Write& write, QWidget* parent = nullptr);

    void Show(const std::vector<QueryParameter>& parameters);
    // What is typed is taken first.
    std::vector<QueryParameter> Parameters();
    // The values for a test of what is shown.
    std::vector<rdl::QueryValue> TestValues() const;

    // Adds those of these names (@Year; a ? for one without a name) that are not shown, and removes those
    // that were added so, were not changed, and are asked for no more. What the user has removed does not
    // come again. A parameter that is added has the value of the report's parameter of this name. Returns
    // whether something has changed.
    bool Offer(const std::vector<std::string>& names);
    // Adds the parameters that the report does not have yet to a document with these ones. An edit of the
    // step that is open.
    void AddToReport(Document& document) const;

    // Looks whether all have a name of their own; says why not, and puts the focus there.
    bool IsComplete();

 signals:
    void Edited();  // by the user

 private:
    struct Offered {
        RowTable::Row row;
        std::string newParameter;  // of the report; empty: it has it, or cannot have it
    };
    Offered OfferOf(const std::string& name) const;
    bool RemoveUnasked(std::vector<RowTable::Row>& rows, const std::vector<std::string>& names);
    void ShowNewParameters();
    bool Complain(std::size_t row, const QString& text);
    std::vector<std::string> NewParameters() const;  // of the report

    const DesignModel& m_model;
    RowTable* m_table;
    Note* m_note;
    std::vector<Offered> m_offered;   // that are shown, unless the user has removed them
    std::set<std::string> m_refused;  // names that the user has removed, in lower case
};

}  // namespace designer
