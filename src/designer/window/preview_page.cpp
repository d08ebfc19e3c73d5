// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/window/preview_page.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>

#include "designer/dialogs/busy_pointer.h"
#include "designer/dialogs/query_run.h"
#include "designer/dialogs/row_text.h"
#include "designer/model/query_details.h"
#include "designer/model/report_data.h"
#include "designer/window/parameter_bar.h"
#include "platform/base/ascii.h"
#include "platform/contracts/runtime.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/rdl_report.h"
#include "platform/viewer/report_viewer.h"

namespace designer {
namespace {

constexpr int Pause = 40;             // milliseconds between two looks at the run
constexpr int SecondsForChoices = 5;  // that a query of allowed values may take; the window waits

template <typename Part>
const Part* NamedIn(const std::vector<Part>& parts, const std::string& name) {
    const auto found = std::find_if(parts.begin(), parts.end(),
                                    [&](const Part& part) { return SameAscii(part.name, name); });
    return found == parts.end() ? nullptr : &*found;
}

// The parameters of the query are Null unless they are constants, or the report's own with constant defaults.
rdl::QueryRequest RequestOf(const DesignModel& model, const ReportSet& set, const ReportSource& source) {
    const Document& document = model.Source();
    const QueryDetails details = QueryDetailsOf(document, set.name);
    rdl::QueryRequest request{.provider = source.provider,
                              .connectString = source.connectString,
                              .query = set.query,
                              .folder = model.File().parent_path(),
                              .kind = KindOfType(details.type),
                              .seconds = SecondsForChoices};
    for (const QueryParameter& parameter : details.parameters) {
        const std::string first = FirstTestValue(document, parameter.value);
        request.parameters.push_back({parameter.name, TestValue(document, parameter.value, first)});
    }
    const Logons& logons = model.SourceLogons();
    if (const auto logon = logons.find(source.name); logon != logons.end()) {
        request.user = logon->second.user;
        request.password = logon->second.password;
    }
    return request;
}

// Returns the column of the rows that a field shows; nullopt if it shows none.
std::optional<std::size_t> ColumnOf(const rdl::QueryRows& rows, const ReportSet& set,
                                    const std::string& field) {
    const ReportField* named = NamedIn(set.fields, field);
    for (std::size_t column = 0; named && column < rows.columns.size(); ++column) {
        if (SameAscii(rows.columns[column], named->column)) {
            return column;
        }
    }
    return std::nullopt;
}

std::vector<AskedChoice> ChoicesIn(const rdl::QueryRows& rows, const ReportSet& set,
                                   const AskedParameter& parameter) {
    const auto value = ColumnOf(rows, set, parameter.valueField);
    const auto label = ColumnOf(rows, set, parameter.labelField);
    std::vector<AskedChoice> choices;
    for (std::size_t row = 0; value && row < rows.RowCount(); ++row) {
        AskedChoice choice{.value = TextOf(rows.At(row, *value)),
                           .label = TextOf(rows.At(row, label.value_or(*value)))};
        if (std::find(choices.begin(), choices.end(), choice) == choices.end()) {
            choices.push_back(std::move(choice));
        }
    }
    return choices;
}

}  // namespace

PreviewPage::PreviewPage(QWidget* parent)
    : QWidget(parent),
      m_parameters(new ParameterBar(this)),
      m_progress(new QWidget(this)),
      m_bar(new QProgressBar(m_progress)),
      m_state(new QLabel(m_progress)),
      m_stop(new QPushButton(tr("&Stop"), m_progress)),
      m_errors(new QListWidget(this)),
      m_viewer(new ReportViewer(this)) {
    BuildParts();
    m_timer.setInterval(Pause);
    connect(&m_timer, &QTimer::timeout, this, &PreviewPage::LookAtRun);
    connect(m_parameters, &ParameterBar::RunRequested, this, &PreviewPage::Run);
    connect(m_stop, &QPushButton::clicked, this, &PreviewPage::Stop);
    connect(m_errors, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem* item) { emit ErrorChosen(item->text()); });
    connect(m_errors, &QListWidget::itemClicked, this,
            [this](const QListWidgetItem* item) { emit ErrorChosen(item->text()); });
}

// The pages belong to the run, which goes first.
PreviewPage::~PreviewPage() {
    m_viewer->ShowNothing();
}

void PreviewPage::BuildParts() {
    m_errors->setObjectName("previewErrors");
    m_errors->setAccessibleName(tr("Errors of the preview"));
    m_errors->setToolTip(tr("A click shows the item in the design"));
    m_errors->setCursor(Qt::PointingHandCursor);
    m_errors->setWordWrap(true);
    m_viewer->setObjectName("preview");
    m_bar->setRange(0, 0);
    m_bar->setAccessibleName(tr("The report is running"));
    m_stop->setObjectName("cmdStop");
    m_state->setObjectName("previewState");
    auto* line = new QHBoxLayout(m_progress);
    line->addWidget(m_state, 1);
    line->addWidget(m_bar);
    line->addWidget(m_stop);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_parameters);
    layout->addWidget(m_progress);
    layout->addWidget(m_errors);
    layout->addWidget(m_viewer, 1);
    m_progress->hide();
    m_errors->hide();
    setFocusProxy(m_viewer);
}

void PreviewPage::Clear() {
    m_timer.stop();
    m_viewer->ShowNothing();
    m_run.reset();
    m_running.reset();
    m_saved.reset();
    m_shows = false;
    m_errors->hide();
    m_progress->hide();
    m_viewer->show();
}

void PreviewPage::OpenIfChanged(const DesignModel& model) {
    try {
        if (IsRunning() && m_bytes == model.Source().Bytes()) {
            return;
        }
    } catch (const SourceFlaw&) {
        // Open says so.
    }
    Open(model);
}

void PreviewPage::Open(const DesignModel& model) {
    Clear();
    m_open = {};
    try {
        m_bytes = model.Source().Bytes();
        m_open = [bytes = m_bytes, file = model.RunName(), logons = model.SourceLogons()] {
            const auto report = reports::OpenRdlText(bytes, file);
            for (const auto& [source, logon] : logons) {
                report->SetSourceLogon(source, logon.user, logon.password);
            }
            return report;
        };
        std::vector<AskedParameter> parameters = AskedParametersOf(model.Source());
        FillChoices(model, parameters);
        m_parameters->Show(parameters, *m_open());
        if (m_parameters->IsComplete()) {
            Run();
        } else {
            m_parameters->FocusFirst();
        }
    } catch (const RuntimeError& error) {
        m_open = {};
        ShowError(QString::fromStdString(error.Description()));
    } catch (const SourceFlaw& flaw) {
        m_open = {};
        ShowError(QString::fromUtf8(flaw.what()));
    }
}

// A list that cannot be read is no error yet: the run says what is wrong with its data set.
void PreviewPage::FillChoices(const DesignModel& model, std::vector<AskedParameter>& parameters) {
    const std::vector<ReportSet> sets = SetsOf(model.Source());
    const std::vector<ReportSource> sources = SourcesOf(model.Source());
    std::map<std::string, rdl::QueryRows> known;  // by data set: several parameters may use one
    const BusyPointer busy;
    for (AskedParameter& parameter : parameters) {
        const ReportSet* set = NamedIn(sets, parameter.choiceSet);
        const ReportSource* source = set ? NamedIn(sources, set->source) : nullptr;
        if (!source || set->isShared || source->isShared) {
            continue;
        }
        try {
            if (!known.contains(set->name)) {
                known[set->name];
                known[set->name] = RunQuery(RequestOf(model, *set, *source));
            }
            parameter.choices = ChoicesIn(known[set->name], *set, parameter);
        } catch (const RuntimeError&) {
            continue;
        }
    }
}

void PreviewPage::Run() {
    if (!m_open) {
        return;
    }
    Clear();
    try {
        m_running = m_open();
        m_saved = m_open();
        m_parameters->GiveTo(*m_running);
        m_parameters->GiveTo(*m_saved);
        m_run =
            std::make_unique<reports::BackgroundRun>([report = m_running] { return report->OpenPages(); });
        m_timer.start();
        ShowProgress();
    } catch (const RuntimeError& error) {
        ShowError(QString::fromStdString(error.Description()));
    }
}

void PreviewPage::Stop() {
    if (m_run) {
        m_run->Stop();
        m_stop->setEnabled(false);
        m_state->setText(tr("The run is being stopped"));
    }
}

void PreviewPage::LookAtRun() {
    if (!m_shows && m_run->PagesMade() > 0) {
        m_shows = true;
        const bool hadFocus = isAncestorOf(QApplication::focusWidget()) &&
                              !m_parameters->isAncestorOf(QApplication::focusWidget());
        m_viewer->ShowPages(m_saved, m_run->Pages());
        if (hadFocus) {
            m_viewer->setFocus();
        }
    }
    if (!m_run->HasEnded()) {
        ShowProgress();
        return;
    }
    m_timer.stop();
    m_progress->setVisible(m_run->IsStopped());
    if (m_run->IsStopped()) {
        m_bar->hide();
        m_stop->hide();
        m_state->setText(
            tr("Stopped after %n page(s). F5 runs the report again", nullptr, m_run->PagesMade()));
    } else if (const auto failure = m_run->Failure()) {
        ShowError(QString::fromStdString(failure->Description()));
    }
}

void PreviewPage::ShowProgress() {
    m_progress->show();
    m_bar->show();
    m_stop->show();
    m_stop->setEnabled(!m_run->IsStopped());
    if (!m_run->IsStopped()) {
        const int pages = m_run->PagesMade();
        m_state->setText(pages == 0 ? tr("The report is running") : tr("Pages: %1").arg(pages));
    }
}

// Pages that were made before the error stay below it.
void PreviewPage::ShowError(const QString& text) {
    m_errors->clear();
    m_errors->addItem(text);
    m_errors->setCurrentRow(0);
    m_errors->setMaximumHeight(m_shows ? m_errors->fontMetrics().height() * 4 : QWIDGETSIZE_MAX);
    m_errors->show();
    m_viewer->setVisible(m_shows);
}

}  // namespace designer
