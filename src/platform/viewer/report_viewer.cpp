// SPDX-License-Identifier: GPL-3.0-or-later
// Members of ReportViewer: its parts, navigation and search. The output is in report_viewer_output.cpp.
#include "platform/viewer/report_viewer.h"

#include <QAction>
#include <QDesktopServices>
#include <QKeyEvent>
#include <QShortcut>
#include <QSplitter>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/viewer/bar.h"
#include "platform/viewer/document_map.h"
#include "platform/viewer/find_bar.h"
#include "platform/viewer/message_bar.h"
#include "platform/viewer/outside_link.h"

using namespace viewer;

ReportViewer::ReportViewer(QWidget* parent) : QWidget(parent) {
    BuildParts();
    ConnectBar();
    ConnectFind();
    AddShortcuts();
    ShowNothing();
}

ReportViewer::~ReportViewer() {
    m_finder.SetDocument(nullptr);
    m_canvas->disconnect(this);
    m_canvas->SetDocument(nullptr);
}

void ReportViewer::BuildParts() {
    m_bar = new ViewerBar(this);
    m_message = new MessageBar(this);
    m_splitter = new QSplitter(this);
    m_splitter->setObjectName("splMap");
    m_splitter->setChildrenCollapsible(false);
    m_map = new DocumentMap(m_splitter);
    m_canvas = new PageCanvas(m_splitter);
    m_canvas->setObjectName("pages");
    m_splitter->setStretchFactor(1, 1);
    const int mapWidth = fontMetrics().averageCharWidth() * 30;
    m_splitter->setSizes({mapWidth, 4 * mapWidth});
    m_findBar = new FindBar(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_bar);
    layout->addWidget(m_message);
    layout->addWidget(m_splitter, 1);
    layout->addWidget(m_findBar);
    m_message->hide();
    m_map->hide();
    m_findBar->hide();
    setFocusProxy(m_canvas);
}

void ReportViewer::ConnectBar() {
    connect(m_bar, &ViewerBar::FirstPage, this, [this] { GoToPage(1); });
    connect(m_bar, &ViewerBar::PreviousPage, this, [this] { GoToPage(CurrentPage() - 1); });
    connect(m_bar, &ViewerBar::NextPage, this, [this] { GoToPage(CurrentPage() + 1); });
    connect(m_bar, &ViewerBar::LastPage, m_canvas, &PageCanvas::GoToEnd);
    connect(m_bar, &ViewerBar::PageEntered, this, &ReportViewer::GoToPage);
    connect(m_bar, &ViewerBar::ZoomStepped, m_canvas, &PageCanvas::StepZoom);
    connect(m_bar, &ViewerBar::ZoomEntered, m_canvas, &PageCanvas::SetZoom);
    connect(m_bar, &ViewerBar::ZoomModeChosen, m_canvas, &PageCanvas::SetZoomMode);
    connect(m_bar, &ViewerBar::FindRequested, this, &ReportViewer::OpenFind);
    connect(m_bar, &ViewerBar::PrintRequested, this, &ReportViewer::AskAndPrint);
    connect(m_bar, &ViewerBar::SaveRequested, this, &ReportViewer::AskAndSave);
    connect(m_bar, &ViewerBar::MapToggled, m_map, &QWidget::setVisible);
    connect(m_message, &MessageBar::CloseRequested, this, &ReportViewer::CloseMessage);
    connect(m_bar, &ViewerBar::Done, m_canvas, [this] { m_canvas->setFocus(); });
    connect(m_map, &DocumentMap::Chosen, this, [this](int page, double y) { m_canvas->GoTo(page, y); });
    connect(m_canvas, &PageCanvas::PageChanged, this, &ReportViewer::ShowState);
    connect(m_canvas, &PageCanvas::ZoomChanged, this,
            [this] { m_bar->ShowZoom(m_canvas->Zoom(), m_canvas->Mode()); });
    connect(m_canvas, &PageCanvas::LinkActivated, this, &ReportViewer::FollowLink);
    connect(m_canvas, &PageCanvas::DrawFailed, this, &ReportViewer::ShowMessage);
}

void ReportViewer::ConnectFind() {
    connect(m_findBar, &FindBar::WordsChanged, this, [this](const QString& words) {
        m_canvas->SetWords(words);
        Find(Direction::Forwards, SearchFrom::Here);
    });
    connect(m_findBar, &FindBar::NextRequested, this,
            [this] { Find(Direction::Forwards, SearchFrom::Beside); });
    connect(m_findBar, &FindBar::PreviousRequested, this,
            [this] { Find(Direction::Backwards, SearchFrom::Beside); });
    connect(m_findBar, &FindBar::Closed, this, &ReportViewer::CloseFind);
    connect(&m_finder, &Finder::Found, this, &ReportViewer::OnFound);
    connect(&m_finder, &Finder::NotFound, this, [this] {
        m_canvas->ClearHit();
        m_findBar->ShowMiss(tr("Not found"));
    });
}

void ReportViewer::AddShortcuts() {
    const auto on = [this](const QKeySequence& keys, auto work) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, work);
    };
    on(QKeySequence(Qt::CTRL | Qt::Key_F), [this] { OpenFind(); });
    on(QKeySequence(Qt::Key_F3), [this] { Find(Direction::Forwards, SearchFrom::Beside); });
    on(QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { Find(Direction::Backwards, SearchFrom::Beside); });
    on(QKeySequence(Qt::CTRL | Qt::Key_G), [this] {
        if (m_document) {
            m_bar->EditPage();
        }
    });
    on(QKeySequence(Qt::CTRL | Qt::Key_P), [this] { AskAndPrint(); });
    on(QKeySequence(Qt::CTRL | Qt::Key_S), [this] { AskAndSave(); });
    on(QKeySequence(Qt::CTRL | Qt::Key_Plus), [this] { m_canvas->StepZoom(1); });
    on(QKeySequence(Qt::CTRL | Qt::Key_Minus), [this] { m_canvas->StepZoom(-1); });
    on(QKeySequence(Qt::CTRL | Qt::Key_0), [this] { m_canvas->SetZoom(100); });
    const auto entry = [this](const QString& text, const QKeySequence& keys, auto work) {
        auto* action = new QAction(text, m_canvas);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, m_canvas, work);
        m_canvas->addAction(action);
    };
    m_canvas->setContextMenuPolicy(Qt::ActionsContextMenu);
    entry(tr("&Copy"), QKeySequence::Copy, &PageCanvas::Copy);
    entry(tr("&Select page"), QKeySequence::SelectAll, &PageCanvas::SelectPage);
}

void ReportViewer::ReportSource(std::shared_ptr<report::Report> report) {
    m_source = std::move(report);
}

void ReportViewer::ShowNothing() {
    m_finder.SetDocument(nullptr);
    m_canvas->SetDocument(nullptr);
    m_document.reset();
    m_report.reset();
    m_wantedPage = 0;
    m_map->Empty();
    m_map->hide();
    m_bar->SetHasMap(false);
    m_bar->ShowMapState(false);
    m_bar->SetHasPages(false);
    m_bar->ShowZoom(m_canvas->Zoom(), m_canvas->Mode());
    m_message->hide();
    CloseFind();
}

void ReportViewer::ViewReport() {
    ShowNothing();
    if (!m_source) {
        throw RuntimeError(err::ObjectNotSet);
    }
    std::unique_ptr<report::PageView> pages = m_source->OpenPages();
    pages->Reach(1);
    ShowPages(m_source, std::move(pages));
}

void ReportViewer::ShowPages(std::shared_ptr<report::Report> report,
                             std::unique_ptr<report::PageView> pages) {
    ShowNothing();
    m_report = std::move(report);
    m_document = std::make_unique<PageDocument>(std::move(pages));
    connect(m_document.get(), &PageDocument::Failed, this, &ReportViewer::ShowMessage);
    m_bar->SetHasPages(true);
    m_finder.SetDocument(m_document.get());
    m_canvas->SetDocument(m_document.get());
    // Connected after the canvas, which must handle new pages first.
    connect(m_document.get(), &PageDocument::Grown, this, &ReportViewer::ShowState);
    connect(m_document.get(), &PageDocument::Finished, this, &ReportViewer::ShowState);
    ShowState();
    m_document->StartMaking();
}

void ReportViewer::ShowState() {
    if (!m_document) {
        return;
    }
    if (m_wantedPage > 0 && (m_wantedPage <= m_document->Count() || m_document->IsComplete())) {
        m_canvas->GoTo(std::exchange(m_wantedPage, 0));
    }
    m_bar->ShowPage(CurrentPage(), m_document->Count(), m_document->IsComplete());
    ShowMap();
}

void ReportViewer::ShowMap() {
    const bool isFirst = m_map->IsEmpty();
    m_map->Show(m_document->DocumentMap());
    if (isFirst && !m_map->IsEmpty()) {
        m_bar->SetHasMap(true);
        m_bar->ShowMapState(m_showMap);
    }
}

void ReportViewer::ShowMessage(const QString& text) {
    m_message->ShowText(text);
}

void ReportViewer::CloseMessage() {
    const bool hadKeyboard = m_message->isAncestorOf(focusWidget());
    m_message->hide();
    if (hadKeyboard) {
        m_canvas->setFocus();
    }
}

void ReportViewer::GoToPage(int page) {
    if (!m_document) {
        return;
    }
    m_message->hide();
    const bool isMade = page <= m_document->Count() || m_document->IsComplete();
    m_wantedPage = isMade ? 0 : page;
    if (isMade) {
        m_canvas->GoTo(page);
    }
}

void ReportViewer::OpenFind() {
    if (m_document) {
        m_findBar->Open();
        m_canvas->SetWords(m_findBar->Words());
    }
}

void ReportViewer::CloseFind() {
    m_finder.Stop();
    const bool hadKeyboard = m_findBar->isAncestorOf(focusWidget());
    m_findBar->hide();
    m_findBar->ShowState({});
    m_canvas->SetWords({});
    m_canvas->ClearHit();
    if (hadKeyboard) {
        m_canvas->setFocus();
    }
}

// While the user types words, the search starts at the same place, so that the view does not move away.
void ReportViewer::Find(Direction direction, SearchFrom from) {
    if (!m_document) {
        return;
    }
    m_message->hide();
    const QString words = m_findBar->Words();
    if (words.isEmpty()) {
        m_finder.Stop();
        m_canvas->ClearHit();
        m_findBar->ShowState({});
        if (from == SearchFrom::Beside) {
            OpenFind();
        }
        return;
    }
    if (!m_findBar->isVisible()) {
        m_findBar->show();
        m_canvas->SetWords(words);
    }
    PageCanvas::Place start = m_canvas->SearchStart(direction);
    if (from == SearchFrom::Here && start.character > 0) {
        --start.character;
    }
    m_findBar->ShowState(tr("Searching"));
    m_finder.Start(words, direction, start.page, start.character);
}

void ReportViewer::OnFound(int page, const CharacterRange& range, bool wrapped) {
    m_canvas->SetHit(page, range);
    m_findBar->ShowState(wrapped ? tr("Page %1, gone round").arg(page) : tr("Page %1").arg(page));
}

void ReportViewer::FollowLink(const report::Link& link) {
    m_message->hide();
    if (link.uri.empty()) {
        m_canvas->GoTo(link.page, link.y);
        return;
    }
    const QString text = QString::fromStdString(link.uri);
    const QUrl url = OutsideLink(text);
    if (url.isEmpty()) {
        ShowMessage(tr("The link %1 is not opened: it does not lead to the web or to mail").arg(text));
    } else if (!QDesktopServices::openUrl(url)) {
        ShowMessage(tr("The link %1 cannot be opened").arg(text));
    }
}

// The focused control did not handle the key.
void ReportViewer::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && m_message->isVisible()) {
        CloseMessage();
        return;
    }
    QWidget::keyPressEvent(event);
}

// In a narrow window the pages keep their space: the map shrinks first.
void ReportViewer::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_map->setMaximumWidth(std::max(width() / 2, m_map->minimumSizeHint().width()));
}
