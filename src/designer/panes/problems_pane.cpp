// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/problems_pane.h"

#include <QRegularExpression>

#include "designer/document/design_copy.h"
#include "platform/contracts/runtime.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/rdl_report.h"

namespace designer {
namespace {

constexpr int Pause = 400;  // milliseconds after the last change

// Returns the innermost item or band whose element begins at the line or before it, of a message that names a
// line.
ElementId ElementAtLine(const DesignModel& model, const QString& message) {
    const QRegularExpressionMatch line = QRegularExpression("\\bline (\\d+)").match(message);
    if (!line.hasMatch()) {
        return NoElement;
    }
    const Document& document = model.Source();
    const std::string& text = document.Text();
    std::size_t offset = 0;
    for (qulonglong left = line.captured(1).toULongLong(); left > 1 && offset < text.size(); --left) {
        const std::size_t end = text.find('\n', offset);
        offset = end == std::string::npos ? text.size() : end + 1;
    }
    offset = text.find_first_not_of(" \t", offset);
    const int index = offset == std::string::npos ? NoIndex : document.Tree().ElementAt(offset);
    for (ElementId id = document.IdAt(index); id != NoElement; id = document.Parent(id)) {
        if (model.Item(id) || model.Band(id)) {
            return id;
        }
    }
    return NoElement;
}

}  // namespace

ProblemsPane::ProblemsPane(DesignModel& model, QWidget* parent) : QListWidget(parent), m_model(model) {
    setObjectName("problems");
    setAccessibleName(tr("Problems of the report"));
    setWordWrap(true);
    m_timer.setSingleShot(true);
    m_timer.setInterval(Pause);
    connect(&m_timer, &QTimer::timeout, this, &ProblemsPane::CheckNow);
    connect(&m_model, &DesignModel::Changed, this, [this] {
        m_refusal.clear();
        m_timer.start();
    });
    connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* entry) { Choose(*entry); });
    connect(this, &QListWidget::itemActivated, this, [this](QListWidgetItem* entry) {
        Choose(*entry);
        emit Chosen();
    });
    m_timer.start();
}

void ProblemsPane::ShowRefusal(const QString& text) {
    m_refusal = text;
    ShowAll();
}

void ProblemsPane::SetDrawingFailure(const QString& text) {
    m_drawing = text;
    ShowAll();
}

void ProblemsPane::CheckNow() {
    m_timer.stop();
    m_found.clear();
    try {
        const std::filesystem::path file = m_model.File().empty() ? "report.rdl" : m_model.File();
        reports::OpenRdlText(m_model.Source().Bytes(), file);
    } catch (const RuntimeError& error) {
        m_found = QString::fromStdString(error.Description());
    } catch (const SourceFlaw& flaw) {
        m_found = QString::fromUtf8(flaw.what());
    }
    ShowAll();
}

void ProblemsPane::ShowAll() {
    clear();
    for (const QString& text : {m_refusal, m_found, m_found.isEmpty() ? m_drawing : QString()}) {
        if (!text.isEmpty()) {
            addItem(text);
        }
    }
    m_count = count();
    if (m_count == 0) {
        auto* none = new QListWidgetItem(tr("No problems"), this);
        none->setFlags(Qt::ItemIsEnabled);
    }
    emit Checked();
}

void ProblemsPane::Choose(const QListWidgetItem& entry) {
    ElementId id = ItemNamedIn(m_model.Source(), entry.text().toStdString());
    if (id == NoElement) {
        id = ElementAtLine(m_model, entry.text());
    }
    if (id != NoElement) {
        m_model.Select({id});
    }
}

}  // namespace designer
