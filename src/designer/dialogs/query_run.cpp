// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/query_run.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <chrono>
#include <future>
#include <thread>

#include "designer/dialogs/row_text.h"
#include "platform/contracts/runtime.h"
#include "platform/reports/failure.h"
#include "platform/reports/machine_host.h"

namespace designer {
namespace {

constexpr std::size_t MostTables = 5000;
constexpr int MostSeconds = 120;  // that the window waits for a query
constexpr auto Moment = std::chrono::milliseconds(300);
constexpr int LookPause = 30;  // milliseconds between two looks whether the query is done
constexpr auto Patience = std::chrono::seconds(5);  // for a query that is to end

QString Tr(const char* text) {
    return QCoreApplication::translate("QueryRun", text);
}

// The query has a thread of its own, and is left to it when nobody waits any more: it ends by itself.
std::future<rdl::QueryRows> Started(rdl::QueryRequest request) {
    std::packaged_task<rdl::QueryRows()> task(
        [request = std::move(request)] { return rdl::ReadQueryRows(request); });
    std::future<rdl::QueryRows> rows = task.get_future();
    std::thread(std::move(task)).detach();
    return rows;
}

// Closes when the query is done. Stop, or Escape, ends the query.
class StopBox : public QDialog {
 public:
    StopBox(const std::future<rdl::QueryRows>& rows, rdl::StopSignal& stop)
        : QDialog(QApplication::activeWindow()), m_rows(rows), m_stop(stop) {
        setObjectName("queryRun");
        setWindowTitle(Tr("Query"));
        m_text = new QLabel(Tr("The query is running..."), this);
        auto* buttons = new QDialogButtonBox(this);
        m_button = buttons->addButton(Tr("&Stop"), QDialogButtonBox::RejectRole);
        m_button->setObjectName("stop");
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(m_text);
        layout->addWidget(buttons);
        connect(buttons, &QDialogButtonBox::rejected, this, &StopBox::reject);
        auto* look = new QTimer(this);
        connect(look, &QTimer::timeout, this, [this] { Look(); });
        look->start(LookPause);
    }
    void reject() override {
        if (!m_stop.IsGiven()) {
            m_stop.Give();
            m_stopped = std::chrono::steady_clock::now();
            m_text->setText(Tr("The query is being stopped..."));
            m_button->setEnabled(false);
        }
    }

 private:
    void Look() {
        const bool isDone = m_rows.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
        if (isDone || (m_stop.IsGiven() && std::chrono::steady_clock::now() - m_stopped > Patience)) {
            accept();
        }
    }

    const std::future<rdl::QueryRows>& m_rows;
    rdl::StopSignal& m_stop;
    std::chrono::steady_clock::time_point m_stopped;
    QLabel* m_text;
    QPushButton* m_button;
};

}  // namespace

rdl::QueryRows RunQuery(rdl::QueryRequest request) {
    request.seconds = request.seconds > 0 ? request.seconds : MostSeconds;
    const auto stop = std::make_shared<rdl::StopSignal>();
    request.stop = stop;
    reports::UseMachineHost();
    std::future<rdl::QueryRows> rows = Started(std::move(request));
    if (rows.wait_for(Moment) != std::future_status::ready) {
        StopBox(rows, *stop).exec();
    }
    if (stop->IsGiven()) {
        throw RuntimeError(reports::DataFailed, Tr("The query was stopped").toStdString());
    }
    return reports::Translated([&] { return rows.get(); });
}

rdl::SharedSourceText SharedSourceOf(const std::string& reference, const std::filesystem::path& folder) {
    reports::UseMachineHost();
    return reports::Translated([&] { return rdl::ReadSharedSource(reference, folder); });
}

rdl::SharedSetText SharedSetOf(const std::string& reference, const std::filesystem::path& folder) {
    reports::UseMachineHost();
    return reports::Translated([&] { return rdl::ReadSharedSet(reference, folder); });
}

QString TestOf(const SourceKind& kind, rdl::QueryRequest request) {
    if (!kind.IsSql()) {
        const auto columns = RunQuery(request).columns.size();
        return QCoreApplication::translate("SourceForm", "The file can be read; it has %1 columns.")
            .arg(columns);
    }
    if (kind.tables.empty()) {
        request.query = "select 1";
        RunQuery(request);
        return QCoreApplication::translate("SourceForm", "The connection works.");
    }
    return QCoreApplication::translate("SourceForm", "The connection works; the number of tables is %1.")
        .arg(TablesOf(kind, request).size());
}

std::vector<TableName> TablesOf(const SourceKind& kind, rdl::QueryRequest request) {
    request.query = kind.tables;
    request.mostRows = MostTables;
    const rdl::QueryRows rows = RunQuery(request);
    std::vector<TableName> tables;
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
        tables.push_back({TextOf(rows.At(row, 0)), TextOf(rows.At(row, 1))});
    }
    return tables;
}

}  // namespace designer
