// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignWindow: its parts and what connects them. The menus are in design_menus.cpp, files in
// design_files.cpp, what the commands do in design_commands.cpp.
#include "designer/window/design_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QLabel>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>

#include "designer/panes/data_pane.h"
#include "designer/panes/groups_pane.h"
#include "designer/panes/outline_pane.h"
#include "designer/panes/problems_pane.h"
#include "designer/panes/property_panel.h"
#include "designer/panes/toolbox_pane.h"
#include "designer/window/designer_settings.h"
#include "designer/window/placeholder_colour.h"
#include "designer/window/preview_page.h"
#include "designer/window/source_page.h"
#include "designer/window/xml_page.h"

namespace designer {
namespace {

constexpr int CopyPause = 2000;  // milliseconds after the first change that is in no copy
constexpr int LookPause = 2000;  // milliseconds between two looks at the file

}  // namespace

DesignWindow::DesignWindow(QWidget* parent)
    : QMainWindow(parent), m_model(std::make_unique<DesignModel>(Document(BlankReport()))) {
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName("designWindow");
    MendPlaceholderColour();
    BuildParts();
    BuildDocks();
    BuildMenus();
    Connect();
    const WindowLook look = LastWindowLook();
    if (look.geometry.isEmpty() || !restoreGeometry(look.geometry)) {
        const QFontMetrics metrics = fontMetrics();
        resize(metrics.averageCharWidth() * 170, metrics.height() * 50);
    }
    restoreState(look.state);
    m_propertyPanel->SetLook(look.properties);
    ShowTitle();
    ShowCommands();
    m_canvas->setFocus();
}

DesignWindow::~DesignWindow() = default;

void DesignWindow::BuildParts() {
    m_stack = new QStackedWidget(this);
    m_tabs = new QTabWidget(m_stack);
    m_tabs->setObjectName("tabs");
    m_tabs->setDocumentMode(true);
    m_tabs->setAccessibleName(tr("Views of the report"));
    m_canvas = new DesignCanvas(*m_model, m_tabs);
    m_preview = new PreviewPage(m_tabs);
    m_tabs->addTab(m_canvas, tr("Design"));
    m_tabs->addTab(m_preview, tr("Preview"));
    m_xml = new XmlPage(*m_model, m_tabs);
    m_tabs->addTab(m_xml, tr("XML"));
    m_page = m_canvas;
    m_source = new SourcePage(m_stack);
    m_stack->addWidget(m_tabs);
    m_stack->addWidget(m_source);
    setCentralWidget(m_stack);
    m_place = new QLabel(this);
    m_zoomLabel = new QLabel(this);
    m_zoomLabel->setObjectName("lblZoom");
    statusBar()->addPermanentWidget(m_place);
    statusBar()->addPermanentWidget(m_zoomLabel);
}

void DesignWindow::BuildDocks() {
    m_outline = new OutlinePane(*m_model, this);
    m_propertyPanel = new PropertyPanel(*m_model, this);
    m_canvas->SetPartPane(m_propertyPanel);
    m_properties = &m_propertyPanel->Rows();
    connect(m_propertyPanel, &PropertyPanel::ExpressionRequested, this, &DesignWindow::EditExpression);
    m_problems = new ProblemsPane(*m_model, this);
    m_toolbox = new ToolboxPane(this);
    m_data = new DataPane(*m_model, this);
    m_groups = new GroupsPane(*m_model, this);
    const auto add = [this](const char* name, const QString& title, QWidget* pane, Qt::DockWidgetArea area) {
        auto* dock = new QDockWidget(title, this);
        dock->setObjectName(name);
        dock->setWidget(pane);
        addDockWidget(area, dock);
        return dock;
    };
    auto* toolbox = add("dockToolbox", tr("Toolbox"), m_toolbox, Qt::LeftDockWidgetArea);
    add("dockReportData", tr("Report Data"), m_data, Qt::LeftDockWidgetArea);
    auto* outline = add("dockOutline", tr("Outline"), m_outline, Qt::LeftDockWidgetArea);
    auto* properties = add("dockProperties", tr("Properties"), m_propertyPanel, Qt::RightDockWidgetArea);
    add("dockGroups", tr("Groups"), m_groups, Qt::RightDockWidgetArea);
    m_problemsDock = add("dockProblems", tr("Problems"), m_problems, Qt::BottomDockWidgetArea);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    const int characterWidth = fontMetrics().averageCharWidth();
    resizeDocks({outline, properties}, {characterWidth * 28, characterWidth * 44}, Qt::Horizontal);
    resizeDocks({toolbox, outline}, {m_toolbox->sizeHint().height(), fontMetrics().height() * 40},
                Qt::Vertical);
    resizeDocks({m_problemsDock}, {fontMetrics().height() * 5}, Qt::Vertical);
}

void DesignWindow::Connect() {
    connect(m_model.get(), &DesignModel::Changed, this, [this] {
        ShowTitle();
        ShowCommands();
        statusBar()->clearMessage();  // of a command that was refused
        KeepCopySoon();
    });
    connect(m_model.get(), &DesignModel::FileChanged, this, &DesignWindow::ShowTitle);
    connect(m_model.get(), &DesignModel::SelectionChanged, this, &DesignWindow::ShowCommands);
    connect(m_properties, &PropertyPane::currentItemChanged, this, &DesignWindow::ShowCommands);
    connect(m_model.get(), &DesignModel::Refused, this, [this](const QString& text) {
        m_problems->ShowRefusal(text);
        statusBar()->showMessage(text);
        QApplication::beep();
    });
    connect(m_canvas, &DesignCanvas::ToolChanged, this, [this] { m_toolbox->ShowTool(m_canvas->Tool()); });
    connect(m_canvas, &DesignCanvas::ZoomChanged, this, &DesignWindow::ShowCommands);
    connect(m_canvas, &DesignCanvas::StatusTextChanged, this,
            [this](const QString& text) { statusBar()->showMessage(text); });
    connect(m_canvas, &DesignCanvas::PointerMoved, m_place, &QLabel::setText);
    connect(m_canvas, &DesignCanvas::LaidOut, this,
            [this] { m_problems->SetDrawingFailures(m_canvas->Failures()); });
    connect(m_canvas, &DesignCanvas::ItemInserted, this, [this](ElementId id, NewItem kind) {
        if (kind == NewItem::Image) {
            AskForPicture(id);
        }
    });
    ConnectGraphics();
    ConnectPanes();
    connect(m_preview, &PreviewPage::ErrorChosen, this, [this](const QString& text) {
        m_tabs->setCurrentWidget(m_canvas);
        m_problems->SelectItemOf(text);
        m_canvas->setFocus();
        m_canvas->RevealSelection();
    });
    connect(m_tabs, &QTabWidget::currentChanged, this, &DesignWindow::ShowPage);
    connect(m_xml, &XmlPage::ModifiedChanged, this, &DesignWindow::ShowTitle);
    connect(m_source, &SourcePage::ModifiedChanged, this, &DesignWindow::ShowTitle);
    connect(m_source, &SourcePage::Edited, this, &DesignWindow::KeepCopySoon);
    connect(m_source, &SourcePage::DesignRequested, this, &DesignWindow::OpenMendedText);
    m_copyTimer.setSingleShot(true);
    m_copyTimer.setInterval(CopyPause);
    connect(&m_copyTimer, &QTimer::timeout, this, &DesignWindow::KeepCopy);
    m_lookTimer.setInterval(LookPause);
    connect(&m_lookTimer, &QTimer::timeout, this, &DesignWindow::LookAtFile);
    m_lookTimer.start();
}

void DesignWindow::ConnectPanes() {
    connect(m_toolbox, &ToolboxPane::ToolPicked, m_canvas, &DesignCanvas::SetTool);
    connect(m_toolbox, &ToolboxPane::InsertRequested, this, [this](NewItem kind) {
        m_canvas->SetTool(std::nullopt);
        m_canvas->InsertAtMiddle(kind);
        m_canvas->setFocus();
    });
    connect(m_data, &DataPane::Pointed, m_properties, &PropertyPane::ShowPart);
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget*, const QWidget* now) {
        if (now == m_canvas || now == m_outline || now == m_groups) {
            m_properties->ShowPart(NoElement);
        }
    });
    m_canvas->SetTextSource(m_data);
    m_canvas->SetExpressionAsker(
        [this](ElementId box, const std::string& value) { return AskForValueOf(box, value); });
    m_data->SetTaker([this](const std::optional<DraggedField>& field, const std::string& expression) {
        return field ? m_canvas->InsertIntoText(*field) : m_canvas->InsertIntoText(expression);
    });
    connect(m_data, &DataPane::Placed, m_canvas, qOverload<>(&QWidget::setFocus));
    connect(m_outline, &OutlinePane::DeleteRequested, this, &DesignWindow::DeleteSelection);
    connect(m_outline, &OutlinePane::Chosen, m_canvas, qOverload<>(&QWidget::setFocus));
    connect(m_problems, &ProblemsPane::Chosen, m_canvas, qOverload<>(&QWidget::setFocus));
    connect(m_problems, &ProblemsPane::Checked, this, &DesignWindow::ShowProblemCount);
    connect(m_model.get(), &DesignModel::SelectionChanged, m_canvas, [this] {
        if (!m_canvas->hasFocus()) {
            m_canvas->RevealSelection();
        }
    });
}

bool DesignWindow::IsText() const {
    return m_stack->currentWidget() == m_source;
}

bool DesignWindow::IsUntouched() const {
    return m_model->File().empty() && !IsText() && !IsChanged() && m_model->Source().RedoCount() == 0;
}

void DesignWindow::ShowProblemCount() {
    const int count = m_problems->Count();
    m_problemsDock->setWindowTitle(count == 0 ? tr("Problems") : tr("Problems (%1)").arg(count));
}

// The preview runs the report whenever its tab is opened. A text that is not well-formed keeps its page.
void DesignWindow::ShowPage() {
    const QWidget* const before = m_page;
    if (m_tabs->currentWidget() == before || (before == m_xml && !TakeXml())) {
        return;
    }
    m_page = m_tabs->currentWidget();
    if (before == m_xml) {
        m_xml->SelectAtCursor();
    }
    FinishTyping();
    if (m_tabs->currentWidget() == m_preview) {
        m_preview->OpenIfChanged(*m_model);
    } else if (m_tabs->currentWidget() == m_xml) {
        m_xml->Open();
        m_xml->setFocus();
    } else {
        m_canvas->setFocus();
    }
    ShowCommands();
}

void DesignWindow::closeEvent(QCloseEvent* event) {
    if (!m_mayLeave && !MayLeave()) {
        event->ignore();
        return;
    }
    KeepWindowLook({saveGeometry(), saveState(), m_propertyPanel->Look()});
    m_lookTimer.stop();
    m_copyTimer.stop();
    m_recovery.Remove();
    m_claim.Release();
    event->accept();
}

void DesignWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        // Not within the event: a box would take the activation away again.
        QTimer::singleShot(0, this, &DesignWindow::LookAtFile);
    } else if (event->type() == QEvent::PaletteChange) {
        QTimer::singleShot(0, this, &MendPlaceholderColour);  // all windows have the new colours then
    }
}

}  // namespace designer
