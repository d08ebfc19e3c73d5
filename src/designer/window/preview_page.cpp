// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/window/preview_page.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "designer/dialogs/busy_pointer.h"
#include "platform/contracts/runtime.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/rdl_report.h"
#include "platform/viewer/report_viewer.h"

namespace designer {
namespace {

constexpr int MostFormLines = 6;  // of parameters; more are scrolled to

}  // namespace

PreviewPage::PreviewPage(QWidget* parent)
    : QWidget(parent),
      m_parameters(new QWidget(this)),
      m_scroll(new QScrollArea(m_parameters)),
      m_run(new QPushButton(tr("&View Report"), m_parameters)),
      m_errors(new QListWidget(this)),
      m_viewer(new ReportViewer(this)) {
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_run->setObjectName("cmdViewReport");
    m_errors->setObjectName("previewErrors");
    m_errors->setAccessibleName(tr("Errors of the preview"));
    m_errors->setWordWrap(true);
    m_viewer->setObjectName("preview");
    auto* top = new QHBoxLayout(m_parameters);
    top->addWidget(m_scroll, 1);
    top->addWidget(m_run, 0, Qt::AlignTop);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_parameters);
    layout->addWidget(m_errors);
    layout->addWidget(m_viewer, 1);
    m_parameters->hide();
    m_errors->hide();
    setFocusProxy(m_viewer);
    connect(m_run, &QPushButton::clicked, this, &PreviewPage::Run);
}

PreviewPage::~PreviewPage() = default;

void PreviewPage::Open(const DesignModel& model, const Logons& logons) {
    for (const Field& field : m_fields) {
        std::erase_if(m_typed, [&](const auto& typed) { return typed.first == field.name; });
        m_typed.emplace_back(field.name, field.text());
    }
    m_fields.clear();
    m_report.reset();
    m_errors->hide();
    m_parameters->hide();
    m_viewer->ReportSource(nullptr);
    try {
        const std::filesystem::path file = model.File().empty() ? "report.rdl" : model.File();
        const auto report = reports::OpenRdlText(model.Source().Bytes(), file);
        for (const auto& [source, logon] : logons) {
            report->SetSourceLogon(source, logon.user, logon.password);
        }
        m_report = report;
        AskForParameters();
        if (m_fields.empty()) {
            Run();
        }
    } catch (const RuntimeError& error) {
        ShowError(QString::fromStdString(error.Description()));
    } catch (const SourceFlaw& flaw) {
        ShowError(QString::fromUtf8(flaw.what()));
    }
}

void PreviewPage::AskForParameters() {
    auto* page = new QWidget;
    m_form = new QFormLayout(page);
    m_form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    for (int n = 1; n <= m_report->ParameterFieldCount(); ++n) {
        const report::ParameterField& parameter = m_report->Parameter(n);
        if (parameter.Prompt().empty()) {
            continue;  // hidden: it has its default
        }
        Field field{parameter.Name(), nullptr, {}};
        field.editor = MakeEditor(parameter, field);
        const QString prompt = QString::fromStdString(parameter.Prompt());
        field.editor->setObjectName("parameter" + QString::fromStdString(parameter.Name()));
        field.editor->setAccessibleName(prompt);
        m_form->addRow(prompt, field.editor);
        m_fields.push_back(std::move(field));
    }
    m_scroll->setWidget(page);
    m_parameters->setVisible(!m_fields.empty());
    if (!m_fields.empty()) {
        const int most = MostFormLines * (m_run->sizeHint().height() + 4);
        m_parameters->setMaximumHeight(std::min(page->sizeHint().height() + 24, most));
        m_fields.front().editor->setFocus();
    }
}

QWidget* PreviewPage::MakeEditor(const report::ParameterField& parameter, Field& field) {
    const auto typed = std::find_if(m_typed.begin(), m_typed.end(),
                                    [&](const auto& entry) { return entry.first == parameter.Name(); });
    const std::vector<std::string> defaults = parameter.DefaultValues();
    QString value;
    for (const std::string& text : defaults) {
        value += (value.isEmpty() ? "" : "; ") + QString::fromStdString(text);
    }
    if (typed != m_typed.end()) {
        value = typed->second;
    }
    const std::vector<std::string> valid = parameter.ValidValues();
    if (parameter.ValueType() == report::BooleanField) {
        auto* box = new QComboBox;
        box->addItems({"True", "False"});
        box->setCurrentIndex(value.compare("True", Qt::CaseInsensitive) == 0 ? 0 : 1);
        field.text = [box] { return box->currentText(); };
        return box;
    }
    if (!valid.empty() && parameter.ValueType() != report::OtherField) {
        auto* box = new QComboBox;
        for (const std::string& text : valid) {
            box->addItem(QString::fromStdString(text));
        }
        box->setCurrentIndex(std::max(0, box->findText(value)));
        field.text = [box] { return box->currentText(); };
        return box;
    }
    auto* line = new QLineEdit(value);
    if (parameter.ValueType() == report::OtherField) {
        line->setPlaceholderText(tr("Values, separated by ;"));
    }
    connect(line, &QLineEdit::returnPressed, this, &PreviewPage::Run);
    field.text = [line] { return line->text(); };
    return line;
}

// An empty entry leaves the parameter its default.
void PreviewPage::Run() {
    if (!m_report) {
        return;
    }
    m_errors->hide();
    try {
        const BusyPointer busy;
        for (int n = 1; n <= m_report->ParameterFieldCount(); ++n) {
            report::ParameterField& parameter = m_report->Parameter(n);
            const auto field = std::find_if(m_fields.begin(), m_fields.end(),
                                            [&](const Field& one) { return one.name == parameter.Name(); });
            if (field == m_fields.end()) {
                continue;
            }
            parameter.ClearCurrentValueAndRange();
            if (!field->text().isEmpty()) {
                parameter.AddCurrentValue(field->text().toStdString());
            }
        }
        m_viewer->show();
        m_viewer->ReportSource(m_report);
        m_viewer->ViewReport();
        m_viewer->setFocus();
    } catch (const RuntimeError& error) {
        ShowError(QString::fromStdString(error.Description()));
    }
}

void PreviewPage::ShowError(const QString& text) {
    m_errors->clear();
    m_errors->addItem(text);
    m_errors->setMaximumHeight(m_report ? m_errors->fontMetrics().height() * 4 : QWIDGETSIZE_MAX);
    m_errors->show();
    m_viewer->setVisible(m_report != nullptr);
}

void PreviewPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange && m_form) {
        m_parameters->setMaximumHeight(MostFormLines * (m_run->sizeHint().height() + 4));
    }
}

}  // namespace designer
