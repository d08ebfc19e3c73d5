// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/problems_pane.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <algorithm>
#include <optional>
#include <set>

#include "designer/document/design_copy.h"
#include "designer/document/editing.h"
#include "designer/document/item_size.h"
#include "designer/document/xml_text.h"
#include "designer/model/report_hints.h"
#include "platform/contracts/runtime.h"
#include "platform/reports/rdl_engine.h"

namespace designer {
namespace {

constexpr int Pause = 400;  // milliseconds after the last change
constexpr int MostProblems = 20;
constexpr qint64 MostTime = 300;  // milliseconds for finding more than the first

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

// What the engine says against the document; empty: it can run.
std::string ProblemOf(const DesignModel& model, const Document& document) {
    try {
        reports::OpenRdlText(document.Bytes(), model.RunName());
        return {};
    } catch (const RuntimeError& error) {
        return error.Description();
    }
}

// Takes away what the item shows. Its name stays, so that what refers to it is no problem, and its place but
// for sizes that the engine refuses.
// Returns false for an item that others could depend on.
bool Neutralise(Document& document, ElementId item) {
    constexpr std::string_view Kinds[] = {"Textbox", "Image", "CustomReportItem", "BarCode"};
    if (item == NoElement ||
        std::find(std::begin(Kinds), std::end(Kinds), document.Name(item)) == std::end(Kinds)) {
        return false;
    }
    const SourceTree& tree = document.Tree();
    std::string kept;
    for (const int child : tree.Children(document.IndexOf(item))) {
        const std::string_view name = tree.LocalName(child);
        const bool isPlace = name == "Left" || name == "Top" || name == "Width" || name == "Height";
        kept += isPlace && IsReportSize(tree.TextOf(child)) ? XmlOf(document, document.IdAt(child))
                                                            : std::string();
    }
    const std::string name = document.Attribute(item, "Name").value_or("");
    InsertXml(document, document.Parent(item),
              "<Textbox Name=\"" + EscapedValue(name, '"') + "\">" + kept + "</Textbox>", item);
    Remove(document, item);
    return true;
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
        m_timer.start();
        if (!m_refusal.isEmpty()) {
            m_refusal.clear();
            ShowAll();
        }
    });
    connect(this, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* entry) { SelectItemOf(entry->text()); });
    connect(this, &QListWidget::itemActivated, this, [this](QListWidgetItem* entry) {
        SelectItemOf(entry->text());
        emit Chosen();
    });
    m_timer.start();
}

void ProblemsPane::ShowRefusal(const QString& text) {
    m_refusal = text;
    ShowAll();
}

void ProblemsPane::SetDrawingFailures(const std::vector<std::string>& texts) {
    m_drawing.clear();
    for (const std::string& text : texts) {
        m_drawing.append(QString::fromStdString(text));
    }
    ShowAll();
}

// Those of items of which nothing is said yet. One that names no item can be of what is found already.
QStringList ProblemsPane::DrawingFailures() const {
    std::set<ElementId> told;
    for (const QString& text : m_found) {
        told.insert(ItemNamedIn(m_model.Source(), text.toStdString()));
    }
    QStringList shown;
    for (const QString& text : m_drawing) {
        const ElementId item = ItemNamedIn(m_model.Source(), text.toStdString());
        const bool isNew = item == NoElement ? m_found.isEmpty() : told.insert(item).second;
        if (isNew && shown.size() < MostProblems) {
            shown.append(text);
        }
    }
    return shown;
}

void ProblemsPane::CheckNow() {
    m_timer.stop();
    FindProblems();
    m_hints.clear();
    for (const std::string& hint : HintsOf(m_model.Source())) {
        m_hints.append(QString::fromStdString(hint));
    }
    ShowAll();
}

void ProblemsPane::FindProblems() {
    m_found.clear();
    QElapsedTimer time;
    time.start();
    try {
        std::optional<Document> copy;
        for (;;) {
            const Document& now = copy ? *copy : m_model.Source();
            const std::string problem = ProblemOf(m_model, now);
            if (problem.empty() || m_found.contains(QString::fromStdString(problem))) {
                return;
            }
            m_found.append(QString::fromStdString(problem));
            if (m_found.size() >= MostProblems || time.elapsed() > MostTime) {
                return;
            }
            if (!copy) {
                copy.emplace(now.Copy());
            }
            if (!Neutralise(*copy, ItemNamedIn(*copy, problem))) {
                return;
            }
        }
    } catch (const std::runtime_error& flaw) {  // SourceFlaw, EditError
        m_found.append(QString::fromUtf8(flaw.what()));
    }
}

void ProblemsPane::ShowAll() {
    clear();
    QStringList all = m_found + DrawingFailures() + m_hints;
    if (!m_refusal.isEmpty()) {
        all.prepend(m_refusal);
    }
    addItems(all);
    m_count = count();
    if (m_count == 0) {
        auto* none = new QListWidgetItem(tr("No problems"), this);
        none->setFlags(Qt::ItemIsEnabled);
    }
    emit Checked();
}

void ProblemsPane::SelectItemOf(const QString& message) {
    ElementId id = ItemNamedIn(m_model.Source(), message.toStdString());
    if (id == NoElement) {
        id = ElementAtLine(m_model, message);
    }
    if (id != NoElement) {
        m_model.Select({id});
    }
}

}  // namespace designer
