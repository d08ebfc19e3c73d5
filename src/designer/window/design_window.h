// SPDX-License-Identifier: GPL-3.0-or-later
// One report in a window of the designer: canvas and preview as tabs, the panes around them, and the commands
// in its menus. A file that is not well-formed is a text in the same window until it is mended.
#pragma once

#include <QMainWindow>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <optional>

#include "designer/canvas/design_canvas.h"
#include "designer/document/report_file.h"
#include "designer/model/arranging.h"
#include "designer/model/design_model.h"
#include "designer/model/report_data.h"
#include "designer/panes/property_rows.h"
#include "designer/window/file_claim.h"
#include "designer/window/recovery.h"

class QLabel;
class QStackedWidget;
class QTabWidget;

namespace designer {

class DataPane;
class FormatMenu;
class GroupsPane;
class OutlinePane;
class PreviewPage;
class ProblemsPane;
class PropertyPane;
class PropertyPanel;
class SourcePage;
class TableMenu;
class ToolboxPane;
class XmlPage;

class DesignWindow : public QMainWindow {
    Q_OBJECT
 public:
    // Shows a blank report.
    explicit DesignWindow(QWidget* parent = nullptr);
    ~DesignWindow() override;

    // Replaces what the window shows by a file. Returns false after a message if the file cannot be read.
    bool OpenFile(const std::filesystem::path& file);
    // Shows a report that no file has yet. The logon is for its first data source; it may be empty.
    void ShowNew(const std::string& bytes, const Logon& logon);
    // Shows what was not saved when a designer was ended by force.
    void ShowLost(const LostReport& lost);
    // Whether the window shows a blank report that nobody has changed.
    bool IsUntouched() const;
    // Asks about changes that are not saved. Returns false if the user stays; else the next close asks
    // nothing, until Stay is called.
    bool AskToLeave();
    void Stay() { m_mayLeave = false; }
    const std::filesystem::path& File() const { return m_model->File(); }
    DesignModel& Model() { return *m_model; }
    DesignCanvas& Canvas() { return *m_canvas; }

 signals:
    void WindowRequested(const QString& file);  // another window; with a blank report if `file` is empty
    void QuitRequested();                       // all windows are to be closed
    void ReportMade(const std::string& bytes, const Logon& logon);  // is to be shown, without a file

 protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    struct Command;
    void BuildParts();
    void BuildDocks();
    void Connect();
    void ConnectPanes();

    // design_menus.cpp
    void BuildMenus();
    void BuildFileMenu();
    void BuildEditMenu();
    void BuildArrangeMenu();
    void BuildInsertMenu();
    void BuildViewMenu();
    void BuildReportMenu();
    QAction* AddCommand(QMenu& menu, const char* name, const QString& text, const QKeySequence& keys,
                        const std::function<void()>& work);
    void ShowRecentFiles();

    // command_reasons.cpp
    void ShowCommands();  // enables and names what depends on the report
    void ShowUndoCommands(const QString& off);
    void Allow(const char* name, const QString& reason);  // enables a command without a reason against it
    QString ReasonWithoutCanvas() const;

    // design_files.cpp
    void ShowBytes(const std::string& bytes, const std::filesystem::path& file);
    void AskAndOpen();
    void MakeFromData();
    void FinishTyping();  // takes what is being typed on the page or into a property
    bool Save();
    bool AskAndSaveAs();
    bool TakeXml();  // what was typed as XML; false: it is not well-formed, and shown
    bool WriteTo(const std::filesystem::path& file);
    bool MayLeave();  // asks whether changes are saved; false: the user stays
    bool IsChanged() const;
    void OpenMendedText();
    void KeepCopySoon();
    void KeepCopy();
    std::string Bytes() const;  // of what is shown, as it would be saved
    void ShowTitle();
    void Complain(const QString& text);
    static QString NameOf(const std::filesystem::path& file);

    // file_changes.cpp
    enum class Overwriting { Allowed, Elsewhere, Refused };
    bool ClaimToShow(const std::filesystem::path& file);
    bool IsFileAsKnown() const;
    Overwriting AskToOverwrite();
    void LookAtFile();
    void AskToReload(bool isThere);

    // schedule_commands.cpp
    void AddScheduleCommand(QMenu& menu);
    bool IsSavedForSchedule();  // asks for what is missing; false: the user stays
    void ScheduleReport();

    // help_commands.cpp
    void BuildHelpMenu();
    void OpenHelpBook();

    // design_commands.cpp
    void DeleteSelection();
    void DuplicateSelection();
    void CopySelection();
    void CutSelection();
    void Paste();
    void SelectAll();
    void ArrangeSelection(Arrangement arrangement, const QString& verb);
    void SelectionToFront();
    void SelectionToBack();
    void AskForPicture(ElementId image);
    void EditExpression();
    // Asks for an expression in the text of a text box; nullopt if the user cancels.
    std::optional<std::string> AskForValueOf(ElementId box, const std::string& value);
    std::optional<PropertyRow> ValueRowOf(ElementId box) const;
    // The property whose expression is edited: the current one of the pane, else what a text box shows.
    std::optional<PropertyRow> ExpressionRow() const;
    void TogglePageBand(BandKind kind);

    // data_commands.cpp
    void BuildDataCommands(QMenu& menu);
    void ShowDataCommands(const QString& off);
    // Opens the dialog for a part of the report; for a new one without a name.
    void OpenPart(DataPart part, const std::string& name);
    void RemoveDataPart(DataPart part, const std::string& name);
    // What the dialog for links is of: the item that was selected last, else the selected runs of a text.
    std::vector<ElementId> LinkedElements() const;

    // arrange_commands.cpp
    void GroupSelection();
    void UngroupSelection();
    bool HasRectangle() const;  // in the selection
    static QString ReasonOfCells();

    // graphic_commands.cpp
    void ConnectGraphics();
    // Asks what a new item shows; false: the user does not want one.
    bool AskFor(NewItem kind, GraphicChoice& choice);
    ElementId WithDialog(ElementId id) const;
    bool HasDialog(ElementId part) const;
    void DesignItem(ElementId part);  // opens the dialog of the item, if it has one
    QString AskForSubreport();        // returns the file as the report names it; empty: none

    void ShowProblemCount();
    void ShowPage();
    bool IsText() const;  // a file that is not well-formed

    std::unique_ptr<DesignModel> m_model;
    QStackedWidget* m_stack = nullptr;
    QTabWidget* m_tabs = nullptr;
    DesignCanvas* m_canvas = nullptr;
    PreviewPage* m_preview = nullptr;
    XmlPage* m_xml = nullptr;
    QWidget* m_page = nullptr;  // of the tabs: the one that is shown
    SourcePage* m_source = nullptr;
    OutlinePane* m_outline = nullptr;
    PropertyPanel* m_propertyPanel = nullptr;
    PropertyPane* m_properties = nullptr;  // the rows of the panel
    ProblemsPane* m_problems = nullptr;
    ToolboxPane* m_toolbox = nullptr;
    DataPane* m_data = nullptr;
    GroupsPane* m_groups = nullptr;
    TableMenu* m_table = nullptr;
    FormatMenu* m_format = nullptr;
    QDockWidget* m_problemsDock = nullptr;
    QMenu* m_recent = nullptr;
    QString m_reason;  // of the grey command under the pointer
    QLabel *m_place = nullptr, *m_zoomLabel = nullptr;
    std::optional<FileStamp> m_stamp;  // of the file when it was read or written
    std::string m_digest;              // SHA-256 of its bytes then; empty: not known
    FileClaim m_claim;
    bool m_isReadOnly = false;  // a window of another process has the file
    RecoveryFile m_recovery;
    QTimer m_copyTimer, m_lookTimer;
    bool m_isLost = false;    // recovered, and not saved yet
    bool m_mayLeave = false;  // the user has been asked
    bool m_asking = false;    // about a file that another program has changed
};

}  // namespace designer
