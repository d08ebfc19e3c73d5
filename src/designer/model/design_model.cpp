// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/design_model.h"

#include <algorithm>
#include <utility>

#include "designer/model/report_body.h"

namespace designer {
namespace {

// Returns the key of the steps that begin with what SelectMade makes.
std::string MadeKey(int number) {
    return "made " + std::to_string(number);
}

// The text box that all of them are runs or paragraphs of; null if they are not of one.
const ReportItem* TextBoxAround(const DesignModel& model, const std::vector<ElementId>& ids) {
    const Document& document = model.Source();
    const ReportItem* box = nullptr;
    for (const ElementId id : ids) {
        const std::string name = document.Has(id) ? document.Name(id) : std::string();
        if (name != "TextRun" && name != "Paragraph") {
            return nullptr;  // also a body that is not there yet
        }
        ElementId around = document.Parent(id);
        while (around != NoElement && !model.Item(around)) {
            around = document.Parent(around);
        }
        if (box && box->id != around) {
            return nullptr;
        }
        box = model.Item(around);
    }
    return box;
}

}  // namespace

DesignModel::DesignModel(Document document, QObject* parent)
    : QObject(parent), m_document(std::move(document)) {
    ReadItems();
}

void DesignModel::ReadItems() {
    m_read = m_document.Revision();
    m_items = ReadReportItems(m_document);
    AddMissingBodies(m_document, m_items);
    m_places.clear();
    for (std::size_t index = 0; index < m_items.items.size(); ++index) {
        m_places.emplace(m_items.items[index].id, index);
    }
}

void DesignModel::SetFile(std::filesystem::path file) {
    m_file = std::move(file);
    emit FileChanged();
}

void DesignModel::SetDocument(Document document) {
    m_document = std::move(document);
    ReadItems();
    m_selection.clear();
    emit Changed();
    emit SelectionChanged();
}

const ReportItem* DesignModel::Item(ElementId id) const {
    const auto found = m_places.find(id);
    return found == m_places.end() ? nullptr : &m_items.items[found->second];
}

const ReportBand* DesignModel::Band(ElementId id) const {
    const auto found = std::find_if(m_items.bands.begin(), m_items.bands.end(),
                                    [id](const ReportBand& band) { return band.element == id; });
    return id == NoElement || found == m_items.bands.end() ? nullptr : &*found;
}

bool DesignModel::IsSelected(ElementId id) const {
    return std::find(m_selection.begin(), m_selection.end(), id) != m_selection.end();
}

void DesignModel::Select(std::vector<ElementId> ids) {
    std::erase(ids, NoElement);  // a body that is not there yet
    if (ids != m_selection) {
        TakeBackMade(ids);
        m_selection = std::move(ids);
        TakeChange();
        emit SelectionChanged();
    }
}

void DesignModel::SelectMade(const QString& step,
                             const std::function<std::vector<ElementId>(Document&)>& make) {
    std::vector<ElementId> ids;
    const std::uint64_t before = m_document.Revision();
    ++m_makings;
    if (!Edit(
            step, [&](Document& document) { ids = make(document); }, MadeKey(m_makings)) ||
        ids.empty()) {
        return;
    }
    Select(std::move(ids));
    m_made = m_document.Revision() == before ? 0 : m_document.Revision();
}

// What is selected now may be made itself: then it stays, as a step of its own.
void DesignModel::TakeBackMade(const std::vector<ElementId>& selected) {
    if (IsMadeLast() && m_document.Undo()) {
        const bool areThere = std::all_of(selected.begin(), selected.end(), [this](ElementId id) {
            return id == NoElement || m_document.Has(id);
        });
        areThere ? m_document.ForgetUndone() : static_cast<void>(m_document.Redo());
    }
    m_made = 0;
}

void DesignModel::Toggle(ElementId id) {
    std::vector<ElementId> ids;
    // A band or the report is selected alone.
    std::copy_if(m_selection.begin(), m_selection.end(), std::back_inserter(ids),
                 [&](ElementId other) { return other != id && Item(other); });
    if (!IsSelected(id)) {
        ids.push_back(id);
    }
    Select(std::move(ids));
}

std::vector<ElementId> DesignModel::SelectedItems() const {
    std::vector<ElementId> ids;
    for (const ReportItem& item : m_items.items) {
        if (IsSelected(item.id)) {
            ids.push_back(item.id);
        }
    }
    return ids;
}

bool DesignModel::Edit(const QString& step, const std::function<void(Document&)>& work,
                       const std::string& mergeKey) {
    QString refusal;
    const bool joins = IsMadeLast();
    try {
        const StepGroup group(m_document, step.toStdString(), joins ? MadeKey(m_makings) : mergeKey);
        work(m_document);
    } catch (const EditError& error) {
        refusal = QString::fromUtf8(error.what());
    } catch (const SourceFlaw& flaw) {
        refusal = QString::fromUtf8(flaw.what());
    }
    m_made = joins && !refusal.isEmpty() ? m_document.Revision() : m_made;
    TakeChange();
    if (!refusal.isEmpty()) {
        emit Refused(refusal);
    }
    return refusal.isEmpty();
}

void DesignModel::Undo() {
    if (m_document.Undo()) {
        TakeChange();
    }
}

void DesignModel::Redo() {
    if (m_document.Redo()) {
        TakeChange();
    }
}

void DesignModel::MarkSaved() {
    m_document.MarkSaved();
    emit Changed();
}

void DesignModel::TakeChange() {
    if (m_read == m_document.Revision()) {
        return;
    }
    ReadItems();
    const std::size_t before = m_selection.size();
    std::erase_if(m_selection, [this](ElementId id) { return !m_document.Has(id); });
    emit Changed();
    if (m_selection.size() != before) {
        emit SelectionChanged();
    }
}

QString StepName(const DesignModel& model, const QString& verb, const std::vector<ElementId>& ids) {
    if (const ReportItem* box = TextBoxAround(model, ids)) {
        return QString("%1 part of %2").arg(verb, QString::fromStdString(box->name));
    }
    if (ids.size() != 1) {
        return QString("%1 %2 items").arg(verb).arg(ids.size());
    }
    if (ids.front() == NoElement) {
        return verb + " Body";  // one that is not there yet
    }
    const ReportItem* item = model.Item(ids.front());
    const QString name = item ? QString::fromStdString(item->name.empty() ? item->kind : item->name)
                              : QString::fromStdString(model.Source().Name(ids.front()));
    return verb + " " + name;
}

}  // namespace designer
