// SPDX-License-Identifier: GPL-3.0-or-later
// Members of frmViewer: they fill its trees of schedules and packages.
#include "desktop/HistoryNodes.h"
#include "desktop/frmViewer.h"
#include "platform/contracts/adodb.h"
#include "shared/Global.h"

namespace {

using history::ReportNode;

// Lets a tree be drawn once, after all its nodes are added.
class Filling {
 public:
    explicit Filling(TreeView& tree) : m_tree(tree) { m_tree.setUpdatesEnabled(false); }
    ~Filling() { m_tree.setUpdatesEnabled(true); }
    Filling(const Filling&) = delete;
    Filling& operator=(const Filling&) = delete;

 private:
    TreeView& m_tree;
};

void AddFrequency(Nodes& nodes, const std::string& key, const std::string& frequency) {
    nodes.Add("", key, frequency, history::FrequencyNode, history::SelectedFrequency);
}

// Adds the packages of one frequency after another. Each key ends in a number of its own.
class PackageTree {
 public:
    explicit PackageTree(Nodes& nodes) : m_nodes(nodes) {}

    void AddGroup(const std::string& frequency) {
        const std::string group = Key(frequency);
        AddFrequency(m_nodes, group, frequency);
        ADODB::Recordset packages;
        packages.Open(
            "select reportid, nextrundate, batchname, runtime from reportbatch where frequency = '" +
                frequency + "'",
            Global::ConnectionString);
        for (; !packages.EOF_(); packages.MoveNext()) {
            AddPackage(group, packages);
        }
        packages.Close();
    }

 private:
    std::string Key(const std::string& text) { return text + "^" + std::to_string(++m_number); }

    void AddPackage(const std::string& group, const ADODB::Recordset& package) {
        const std::string id = package.Fields("reportid").Value.Text();
        const std::string text = id + ":" + package.Fields("batchname").Value;
        const std::string key = Key(text);
        m_nodes.Add(group, key, text, history::PackageNode, history::PackageNode);
        ADODB::Recordset reports;
        reports.Open("select Reporttitle from Reportbatchdtls where ReportID = " + id,
                     Global::ConnectionString);
        const std::string nextRun =
            "Reccuring " + package.Fields("nextrundate").Value + ", " + package.Fields("runtime").Value;
        m_nodes.Add(key, Key(nextRun), nextRun, history::NextRunNode, history::NextRunNode);
        for (; !reports.EOF_(); reports.MoveNext()) {
            const std::string title = reports.Fields("Reporttitle").Value.Text();
            m_nodes.Add(key, Key(title), title, ReportNode, ReportNode);
        }
        reports.Close();
    }

    Nodes& m_nodes;
    int m_number = 0;
};

}  // namespace

void frmViewer::FillReports() {
    ADODB::Recordset frequencies;
    frequencies.CacheSize = 10;
    frequencies.CursorLocation = ADODB::adUseClient;
    frequencies.Open("select distinct frequency from reportscheduler", Global::ConnectionString);
    const Filling filling(*tvReports);
    tvReports->Nodes().Clear();
    for (int counter = 1; !frequencies.EOF_(); frequencies.MoveNext(), ++counter) {
        const std::string frequency = frequencies.Fields("frequency").Value.Text();
        const std::string key = frequency + std::to_string(counter);
        AddFrequency(tvReports->Nodes(), key, frequency);
        AddSchedules(frequency, key);
    }
    frequencies.Close();
}

void frmViewer::AddSchedules(const std::string& frequency, const std::string& groupKey) {
    ADODB::Recordset schedules;
    schedules.Open(
        "select ReportTitle, ReportID, ReportPath, NextRun from ReportScheduler where Frequency = '" +
            frequency + "'",
        Global::ConnectionString);
    for (int counter = 1; !schedules.EOF_(); schedules.MoveNext(), ++counter) {
        const std::string id = schedules.Fields("ReportID").Value.Text();
        const std::string text = id + ": " + schedules.Fields("ReportTitle").Value;
        const std::string key = text + std::to_string(counter);
        tvReports->Nodes().Add(groupKey, key, text, ReportNode, ReportNode);
        AddRuns(id, key);
    }
    schedules.Close();
}

void frmViewer::AddRuns(const std::string& reportID, const std::string& scheduleKey) {
    ADODB::Recordset runs;
    runs.Open(
        "select top 10 runat, nextrun, lastrun, status, ErrMsg from ReportHistory r inner join "
        "reportscheduler x on r.reportid = x.reportid where r.ReportID = " +
            reportID + " order by lastrun desc",
        Global::ConnectionString);
    const auto add = [&](const std::string& text, const std::string& number, int image) {
        tvReports->Nodes().Add(scheduleKey, reportID + "^" + text + "^" + number, text, image, image);
    };
    for (int row = 1; !runs.EOF_(); runs.MoveNext(), ++row) {
        if (row == 1) {
            add("Reccurring " + runs.Fields("nextrun").Value + " " + runs.Fields("runat").Value, "",
                history::NextRunNode);
        }
        const std::string status = runs.Fields("status").Value.Text();
        const bool failed = status == "Failure";
        const std::string detail = failed ? status + " - " + runs.Fields("ErrMsg").Value : status;
        add(runs.Fields("lastrun").Value + " [" + detail + "]", std::to_string(row),
            failed ? history::FailedRunNode : history::RunNode);
    }
    runs.Close();
}

void frmViewer::FillBatch() {
    const Filling filling(*tvBatch);
    tvBatch->Nodes().Clear();
    ADODB::Recordset frequencies;
    frequencies.Open("select distinct Frequency from Reportbatch", Global::ConnectionString);
    PackageTree tree(tvBatch->Nodes());
    for (; !frequencies.EOF_(); frequencies.MoveNext()) {
        tree.AddGroup(frequencies.Fields("Frequency").Value.Text());
    }
    frequencies.Close();
}
