// A report on the screen: its pages under each other, with what a reader needs to go about in them, to look
// for words, to print and to save. Runs the report once; pages are made while they are looked at.
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

    // The report to show; the viewer keeps it. What is on the screen stays until ViewReport.
    void ReportSource(std::shared_ptr<report::Report> report);
    // True: the document map, when the report has one, is open beside the pages from the start. False, as at
    // first: it opens by its button.
    void DisplayOption(bool showMap) { m_showMap = showMap; }
    // Runs the report and shows its first page. Raises RuntimeError 91 without a report, and what the engine
    // raises; nothing is shown then. Errors in later pages are told by a line above the pages.
    void ViewReport();
    // Percent of the size on paper, 1 to 400; what is beyond is brought within. 81 at first.
    void Zoom(int percent) { m_canvas->SetZoom(percent); }

    int CurrentPage() const { return m_canvas->CurrentPage(); }  // from 1; 0: nothing is shown
    // Writes a file as the report's export does, by its extension. Raises what the export raises.
    void SaveAs(const std::string& machinePath);
    // Prints pages of what is shown: the PDF document of them goes to the printer, or is the file that is
    // printed to. The number of pages; 0 when it was given up.
    int Print(const viewer::PrintJob& job, int first, int last);

 protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void BuildParts();
    void ConnectBar();
    void ConnectFind();
    void AddShortcuts();
    void ShowNothing();
    void ShowState();
    void ShowMap();
    void ShowMessage(const QString& text);
    void CloseMessage();

    void GoToPage(int page);
    void OpenFind();
    void CloseFind();
    void Find(bool forwards, bool fromHere);
    void OnFound(int page, const viewer::LetterRange& range, bool wrapped);
    void FollowLink(const report::Link& link);
    void AskAndPrint();
    void AskAndSave();

    std::shared_ptr<report::Report> m_source, m_report;  // to show, and shown: it outlives its pages
    std::unique_ptr<viewer::PageDocument> m_document;
    bool m_showMap = false;
    int m_wantedPage = 0;  // asked for before it was made; 0: none

    viewer::ViewerBar* m_bar = nullptr;
    viewer::MessageBar* m_message = nullptr;
    QSplitter* m_splitter = nullptr;
    viewer::DocumentMap* m_map = nullptr;
    viewer::PageCanvas* m_canvas = nullptr;
    viewer::FindBar* m_findBar = nullptr;
    viewer::Finder m_finder;
};
