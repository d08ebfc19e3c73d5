// SPDX-License-Identifier: GPL-3.0-or-later
// The report that a designer's window shows: its document, what is selected in it, and word of every change.
// The canvas and the panes change the document through it only, so that all of them follow.
#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "designer/document/document.h"
#include "designer/document/report_items.h"
#include "designer/model/logons.h"

namespace designer {

class DesignModel : public QObject {
    Q_OBJECT
 public:
    explicit DesignModel(Document document, QObject* parent = nullptr);

    const Document& Source() const { return m_document; }
    // The file that the report has or will have. Relative names in the report start at its folder.
    const std::filesystem::path& File() const { return m_file; }
    void SetFile(std::filesystem::path file);
    // The file, or what the engine calls a report that has none yet.
    std::filesystem::path RunName() const { return m_file.empty() ? "report.rdl" : m_file; }
    // Replaces the document; the steps and the selection are gone. A file that was read again is not
    // modified.
    void SetDocument(Document document);

    // Users and passwords that were typed for the data sources of this report.
    const Logons& SourceLogons() const { return m_logons; }
    Logons& SourceLogons() { return m_logons; }

    // The items as of now, with bands for bodies that are missing: AddMissingBodies. A pointer to one is
    // valid until the next change.
    const ReportItems& Items() const { return m_items; }
    const ReportItem* Item(ElementId id) const;  // null if it is no report item
    const ReportBand* Band(ElementId id) const;  // null if it is no band

    // What is selected: items, or one band, or the report. The last one is the leader: others are aligned to
    // it.
    const std::vector<ElementId>& Selection() const { return m_selection; }
    bool IsSelected(ElementId id) const;
    ElementId Leader() const { return m_selection.empty() ? NoElement : m_selection.back(); }
    void Select(std::vector<ElementId> ids);
    // Selects what `make` returns, which it may have to make. The next Edit then belongs to that step and
    // gives it its name; if something else is selected before, what was made is taken back.
    void SelectMade(const QString& step, const std::function<std::vector<ElementId>(Document&)>& make);
    void Toggle(ElementId id);
    // The selected report items in document order.
    std::vector<ElementId> SelectedItems() const;

    // Runs `work` as one step. An edit that is refused leaves the document as it was: Refused says why, and
    // the result is false. StepGroup says what the merge key is.
    bool Edit(const QString& step, const std::function<void(Document&)>& work,
              const std::string& mergeKey = {});
    // Says why a command cannot act on what is selected.
    void Refuse(const QString& reason) { emit Refused(reason); }
    void Undo();
    void Redo();
    void MarkSaved();

 signals:
    void Changed();           // of the text, or of whether it is modified
    void SelectionChanged();  // also follows a change that has removed what was selected
    void FileChanged();
    void Refused(const QString& text);

 private:
    void ReadItems();
    void TakeChange();
    bool IsMadeLast() const { return m_made != 0 && m_made == m_document.Revision(); }
    void TakeBackMade(const std::vector<ElementId>& selected);

    Document m_document;
    std::filesystem::path m_file;
    Logons m_logons;
    ReportItems m_items;
    std::unordered_map<ElementId, std::size_t> m_places;  // in m_items.items
    std::uint64_t m_read = 0;                             // revision of m_items
    std::vector<ElementId> m_selection;
    std::uint64_t m_made = 0;  // the revision that SelectMade has left
    int m_makings = 0;
};

// Returns "Move Textbox1" for one item and "Move 3 items" for several.
QString StepName(const DesignModel& model, const QString& verb, const std::vector<ElementId>& ids);

}  // namespace designer
