// SPDX-License-Identifier: GPL-3.0-or-later
// The buttons above the pages. Page numbers count from 1; a zoom is in percent, 100 for the size on paper.
#pragma once

#include <QToolBar>

#include "platform/viewer/icons.h"
#include "platform/viewer/page_canvas.h"

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;

namespace viewer {

class ViewerBar : public QToolBar {
    Q_OBJECT
 public:
    explicit ViewerBar(QWidget* parent = nullptr);

    // Enables the buttons while there are pages.
    void SetHasPages(bool has);
    // Shows "n of N", or "n of N+" while more pages are made.
    void ShowPage(int page, int count, bool complete);
    // `mode` presses the button that fits the page or its width.
    void ShowZoom(double percent, ZoomMode mode);
    void SetHasMap(bool has);
    void ShowMapState(bool shown);
    void EditPage();  // gives the page number the keyboard focus

 signals:
    void FirstPage();
    void PreviousPage();
    void NextPage();
    void LastPage();
    void PageEntered(int page);
    void ZoomStepped(int steps);
    void ZoomEntered(double percent);
    void ZoomModeChosen(viewer::ZoomMode mode);
    void FindRequested();
    void PrintRequested();
    void SaveRequested();
    void MapToggled(bool shown);
    void Done();  // an entry was confirmed or cancelled: the pages get the keyboard focus

 protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    struct Button {
        QAction* action;
        Symbol symbol;
    };
    template <typename Signal>
    QAction* Add(const char* name, Symbol symbol, const QString& tip, Signal signal);
    QAction* AddButton(const char* name, Symbol symbol, const QString& tip);
    void AddPageBox();
    void AddZoomBox();
    void ReadPage();
    void ReadZoom();

    QList<Button> m_buttons;
    QAction *m_first = nullptr, *m_previous = nullptr, *m_next = nullptr, *m_last = nullptr;
    QAction *m_width = nullptr, *m_whole = nullptr, *m_map = nullptr;
    QLineEdit* m_page = nullptr;
    QLabel* m_count = nullptr;
    QComboBox* m_zoom = nullptr;
    int m_shownPage = 0;
    QString m_shownZoom;
};

}  // namespace viewer
