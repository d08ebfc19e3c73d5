// SPDX-License-Identifier: GPL-3.0-or-later
// A report on the screen: its pages, with navigation, search, printing and saving. It runs the report once;
// pages are made while the user looks at them.
#pragma once

#include <QWidget>
#include <memory>

#include "platform/contracts/report_engine.h"
#include "platform/viewer/finder.h"
#include "platform/viewer/page_canvas.h"
#include "platform/viewer/page_document.h"

class QSplitter;

namespace viewer {
class DocumentMap;
class FindBar;
class MessageBar;
struct PrintJob;
class ViewerBar;
}  // namespace viewer

class ReportViewer : public QWidget {
    Q_OBJECT
 public:
    explicit ReportViewer(QWidget* parent = nullptr);
    ~ReportViewer() override;

    // Sets the report and shares its ownership. The screen does not change until ViewReport.
    void ReportSource(std::shared_ptr<report::Report> report);
    // If true, the document map of a report that has one is open from the start. If false, the default, its
    // button opens it.
    void DisplayOption(bool showMap) { m_showMap = showMap; }
    // Runs the report and shows its first page. Raises RuntimeError 91 without a report, and the errors of
    // the engine; then no page is shown. Errors in later pages appear in a bar above the pages.
    void ViewReport();
    // Shows pages of a run that somebody else has begun; the first one is made. The report is for saving: it
    // is not the one that makes the pages if they are made in a thread.
    void ShowPages(std::shared_ptr<report::Report> report, std::unique_ptr<report::PageView> pages);
    // Shows no page, and lets go of the report and its pages.
    void ShowNothing();
    // Sets the zoom in percent of the size on paper, limited to 1 to 400. The default is 81.
    void Zoom(int percent) { m_canvas->SetZoom(percent); }

    int CurrentPage() const { return m_canvas->CurrentPage(); }  // from 1; 0 without pages
    // Writes a file as the report's export does, in the format of its extension. Raises the errors of the
    // export.
    void SaveAs(const std::string& machinePath);
    // Prints pages `first` to `last` of the shown report: their PDF document goes to the printer or to the
    // file of the job. Returns the number of pages, or 0 after a cancel.
    int Print(const viewer::PrintJob& job, int first, int last);

 protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void BuildParts();
    void ConnectBar();
    void ConnectFind();
    void AddShortcuts();
    void ShowState();
    void ShowMap();
    void ShowMessage(const QString& text);
    void CloseMessage();

    void GoToPage(int page);
    void OpenFind();
    void CloseFind();
    // Where a search begins: at the current match, which may match again, or beside it.
    enum class SearchFrom { Here, Beside };
    void Find(viewer::Direction direction, SearchFrom from);
    void OnFound(int page, const viewer::CharacterRange& range, bool wrapped);
    void FollowLink(const report::Link& link);
    void AskAndPrint();
    void AskAndSave();

    // the next report, and the shown one, which must outlive its pages
    std::shared_ptr<report::Report> m_source, m_report;
    std::unique_ptr<viewer::PageDocument> m_document;
    bool m_showMap = false;
    int m_wantedPage = 0;  // the page to show once it is made; 0: none

    viewer::ViewerBar* m_bar = nullptr;
    viewer::MessageBar* m_message = nullptr;
    QSplitter* m_splitter = nullptr;
    viewer::DocumentMap* m_map = nullptr;
    viewer::PageCanvas* m_canvas = nullptr;
    viewer::FindBar* m_findBar = nullptr;
    viewer::Finder m_finder;
};
