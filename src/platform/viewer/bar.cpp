// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/bar.h"

#include <QAction>
#include <QComboBox>
#include <QEvent>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <cmath>

namespace viewer {

ViewerBar::ViewerBar(QWidget* parent) : QToolBar(parent) {
    setObjectName("viewerBar");
    const int side = fontMetrics().height() + 4;
    setIconSize({side, side});
    m_first = Add("cmdFirst", Symbol::First, tr("First page (Home)"), &ViewerBar::FirstPage);
    m_previous = Add("cmdPrevious", Symbol::Previous, tr("Previous page"), &ViewerBar::PreviousPage);
    AddPageBox();
    m_next = Add("cmdNext", Symbol::Next, tr("Next page"), &ViewerBar::NextPage);
    m_last = Add("cmdLast", Symbol::Last, tr("Last page (End)"), &ViewerBar::LastPage);
    addSeparator();
    connect(AddButton("cmdZoomOut", Symbol::ZoomOut, tr("Smaller (-)")), &QAction::triggered, this,
            [this] { emit ZoomStepped(-1); });
    AddZoomBox();
    connect(AddButton("cmdZoomIn", Symbol::ZoomIn, tr("Larger (+)")), &QAction::triggered, this,
            [this] { emit ZoomStepped(1); });
    m_width = AddButton("cmdFitWidth", Symbol::FitWidth, tr("As wide as the window"));
    m_whole = AddButton("cmdFitPage", Symbol::FitPage, tr("Whole page"));
    for (QAction* fit : {m_width, m_whole}) {
        fit->setCheckable(true);
        const ZoomMode mode = fit == m_width ? ZoomMode::FitWidth : ZoomMode::FitPage;
        connect(fit, &QAction::triggered, this, [this, mode] { emit ZoomModeChosen(mode); });
    }
    addSeparator();
    Add("cmdFind", Symbol::Find, tr("Find (Ctrl+F)"), &ViewerBar::FindRequested);
    m_map = AddButton("cmdMap", Symbol::Map, tr("Document map"));
    m_map->setCheckable(true);
    connect(m_map, &QAction::toggled, this, &ViewerBar::MapToggled);
    addSeparator();
    Add("cmdPrint", Symbol::Print, tr("Print (Ctrl+P)"), &ViewerBar::PrintRequested);
    Add("cmdSave", Symbol::Save, tr("Save as (Ctrl+S)"), &ViewerBar::SaveRequested);
    SetHasPages(false);
}

QAction* ViewerBar::AddButton(const char* name, Symbol symbol, const QString& tip) {
    QAction* action = addAction(IconOf(symbol, palette()), tip);
    action->setObjectName(name);
    action->setToolTip(tip);
    // The button has the name as well: users and tests click it.
    widgetForAction(action)->setObjectName(name);
    widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    m_buttons.append({action, symbol});
    return action;
}

template <typename Signal>
QAction* ViewerBar::Add(const char* name, Symbol symbol, const QString& tip, Signal signal) {
    QAction* action = AddButton(name, symbol, tip);
    connect(action, &QAction::triggered, this, signal);
    return action;
}

void ViewerBar::AddPageBox() {
    m_page = new QLineEdit(this);
    m_page->setObjectName("txtPage");
    m_page->setAlignment(Qt::AlignRight);
    m_page->setMaxLength(6);
    m_page->setFixedWidth(fontMetrics().horizontalAdvance("000000") + 12);
    m_page->setToolTip(tr("Page to go to (Ctrl+G)"));
    m_page->setAccessibleName(tr("Page"));
    m_page->setValidator(new QIntValidator(0, 999999, m_page));
    m_page->installEventFilter(this);
    connect(m_page, &QLineEdit::returnPressed, this, &ViewerBar::ReadPage);
    addWidget(m_page);
    m_count = new QLabel(this);
    m_count->setObjectName("lblPages");
    m_count->setMinimumWidth(fontMetrics().horizontalAdvance(" of 0000+ "));
    addWidget(m_count);
}

void ViewerBar::AddZoomBox() {
    m_zoom = new QComboBox(this);
    m_zoom->setObjectName("cmbZoom");
    m_zoom->setEditable(true);
    m_zoom->setInsertPolicy(QComboBox::NoInsert);
    m_zoom->setCompleter(nullptr);
    m_zoom->setToolTip(tr("Size of the pages"));
    m_zoom->setAccessibleName(tr("Size of the pages"));
    for (const int percent : {25, 50, 75, 81, 100, 125, 150, 200, 300, 400}) {
        m_zoom->addItem(QString::number(percent) + "%");
    }
    m_zoom->addItem(tr("Fit width"));
    m_zoom->addItem(tr("Fit page"));
    m_zoom->lineEdit()->installEventFilter(this);
    connect(m_zoom, &QComboBox::activated, this, [this] { ReadZoom(); });
    connect(m_zoom->lineEdit(), &QLineEdit::returnPressed, this, &ViewerBar::ReadZoom);
    addWidget(m_zoom);
}

void ViewerBar::ReadPage() {
    bool isNumber = false;
    const int page = m_page->text().toInt(&isNumber);
    m_page->setText(QString::number(m_shownPage));
    if (isNumber) {
        emit PageEntered(page);
    }
    emit Done();
}

void ViewerBar::ReadZoom() {
    QString text = m_zoom->currentText().trimmed();
    m_zoom->setEditText(m_shownZoom);
    if (text == tr("Fit width") || text == tr("Fit page")) {
        emit ZoomModeChosen(text == tr("Fit page") ? ZoomMode::FitPage : ZoomMode::FitWidth);
    } else {
        bool isNumber = false;
        const double percent = locale().toDouble(text.remove('%').trimmed(), &isNumber);
        if (isNumber && std::isfinite(percent)) {  // "nan" is read as a number
            emit ZoomEntered(percent);
        }
    }
    emit Done();
}

void ViewerBar::SetHasPages(bool has) {
    for (const Button& button : m_buttons) {
        button.action->setEnabled(has && button.action != m_map);
    }
    m_page->setEnabled(has);
    m_zoom->setEnabled(has);
    if (!has) {
        m_page->clear();
        m_count->clear();
    }
}

void ViewerBar::ShowPage(int page, int count, bool complete) {
    m_shownPage = page;
    if (!m_page->hasFocus()) {
        m_page->setText(QString::number(page));
    }
    m_count->setText(tr(" of %1").arg(count) + (complete ? "" : "+"));
    for (QAction* back : {m_first, m_previous}) {
        back->setEnabled(page > 1);
    }
    for (QAction* on : {m_next, m_last}) {
        on->setEnabled(page < count || !complete);
    }
}

void ViewerBar::ShowZoom(double percent, ZoomMode mode) {
    m_shownZoom = QString::number(std::lround(percent)) + "%";
    m_zoom->setEditText(m_shownZoom);
    m_width->setChecked(mode == ZoomMode::FitWidth);
    m_whole->setChecked(mode == ZoomMode::FitPage);
}

void ViewerBar::SetHasMap(bool has) {
    m_map->setEnabled(has);
}

void ViewerBar::ShowMapState(bool shown) {
    m_map->setChecked(shown);
}

void ViewerBar::EditPage() {
    m_page->setFocus(Qt::ShortcutFocusReason);
    m_page->selectAll();
}

void ViewerBar::changeEvent(QEvent* event) {
    QToolBar::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        for (const Button& button : m_buttons) {
            button.action->setIcon(IconOf(button.symbol, palette()));
        }
    }
}

// Esc cancels an entry, and so does a lost focus.
bool ViewerBar::eventFilter(QObject* watched, QEvent* event) {
    const bool escaped =
        event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    if (escaped || event->type() == QEvent::FocusOut) {
        m_page->setText(m_shownPage > 0 ? QString::number(m_shownPage) : QString());
        m_zoom->setEditText(m_shownZoom);
    }
    if (escaped) {
        emit Done();
        return true;
    }
    return QToolBar::eventFilter(watched, event);
}

}  // namespace viewer
