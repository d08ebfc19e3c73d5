// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog that changes a data set of the report, or makes one: its query, the first rows, the fields that
// are taken from the columns, those that are computed, the parameters of the query, and filters. OK is one
// step of the document.
#pragma once

#include <QDialog>
#include <map>
#include <string>
#include <vector>

#include "designer/model/design_model.h"
#include "designer/model/query_details.h"
#include "designer/model/report_data.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QSpinBox;
class QTabWidget;

namespace designer {

class FilterList;
class Note;
class PartForm;
class QueryForm;
class QueryParameters;
class RowTable;
class SharedSetForm;

class DataSetDialog : public QDialog {
    Q_OBJECT
 public:
    // The model must live as long as the dialog.
    explicit DataSetDialog(DesignModel& model, QWidget* parent = nullptr);
    // Shows the part of this name; a new one if the name is empty. Without it the first one is shown.
    void Choose(const std::string& name);
    void accept() override;

 private:
    QWidget* BuildQueryPage();
    void BuildSource(QWidget& page);
    void BuildTables();
    QWidget* PageOf(RowTable& table, Note& note, const QString& help);
    void Connect();
    void ShowSet();
    void ShowKind();
    void ShowSource();
    void SetSource(rdl::QueryRequest& request, const ReportSource& source);
    void ShowShared(rdl::QueryRequest request);
    void ShowRun();
    void TakeParameters();
    void RunQuery();
    void Lock();
    bool TakeFields(ReportSet& set);
    bool HasSource();
    bool AreComputedComplete(const ReportSet& set);
    bool Complain(Note& note, RowTable& table, std::size_t row, std::size_t column, const QString& text);
    QueryDetails Details();
    std::vector<ReportField> Computed();
    void KeepTypes();
    void TakeTypes(std::vector<ReportColumn>& columns) const;
    void Put(Document& document, const ReportSet& set, QueryDetails details) const;
    void PutTrial(Document& copy, const QueryDetails& details, const std::vector<ReportField>& computed);

    DesignModel& m_model;
    const std::vector<ReportSource> m_sources;
    PartForm* m_part;
    QTabWidget* m_tabs;
    QComboBox *m_source = nullptr, *m_type = nullptr;
    QSpinBox* m_seconds = nullptr;
    Note* m_sourceNote = nullptr;
    QCheckBox* m_isShared = nullptr;
    SharedSetForm* m_shared = nullptr;
    QFormLayout* m_sourceForm = nullptr;
    bool m_showsShared = false;  // the query of a shared data set
    std::string m_ownQuery;      // that was typed, meanwhile
    QueryForm* m_query = nullptr;
    QCheckBox* m_takesFields = nullptr;
    QueryParameters* m_parameters = nullptr;
    RowTable* m_computed = nullptr;
    Note* m_computedNote = nullptr;
    FilterList* m_filters = nullptr;
    Note* m_note = nullptr;
    ReportSet m_old;  // what is shown, as it is in the report
    QueryDetails m_oldDetails;
    // The types of the columns of the query, by the last run that had rows.
    std::map<std::string, std::string> m_types;
    bool m_isShowing = false;
};

}  // namespace designer
