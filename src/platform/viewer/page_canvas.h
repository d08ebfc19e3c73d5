// SPDX-License-Identifier: GPL-3.0-or-later
// Shows pages below each other, with scrolling, zoom, search and selection. Draws only the visible part.
#pragma once

#include <QAbstractScrollArea>
#include <QPointer>
#include <optional>

#include "platform/viewer/finder.h"
#include "platform/viewer/page_document.h"
#include "platform/viewer/page_layout.h"
#include "platform/viewer/tile_cache.h"

namespace viewer {

enum class ZoomMode { Percent, FitWidth, FitPage };

class PageCanvas : public QAbstractScrollArea {
    Q_OBJECT
 public:
    static constexpr double LeastZoom = 1, MostZoom = 400;

    explicit PageCanvas(QWidget* parent = nullptr);

    // Null shows no pages. The caller owns the document, which must outlive its use here.
    void SetDocument(PageDocument* document);

    // In percent of the size on paper, limited to LeastZoom and MostZoom. The middle of the view keeps its
    // place.
    void SetZoom(double percent);
    void SetZoomMode(ZoomMode mode);
    ZoomMode Mode() const { return m_mode; }
    double Zoom() const { return m_zoom; }
    void StepZoom(int steps);  // to the next of the usual zooms

    // Returns the page that covers most of the view, or 0 without pages.
    int CurrentPage() const;
    // Scrolls to a place: page from 1, `y` in points from its top. Stops at the last page.
    void GoTo(int page, double y = 0);
    // Scrolls to the last page, and follows while more pages are made, until the user scrolls.
    void GoToEnd();
    bool IsFollowingEnd() const { return m_followEnd; }
    // Scrolls no further than needed to show the range.
    void Reveal(int page, const CharacterRange& range);

    // Sets the words that are marked wherever they occur; empty: none. The current match stands out.
    void SetWords(const QString& words);
    void SetHit(int page, const CharacterRange& range);
    void ClearHit();
    // The place where a search starts: after or before the last match, else on the visible page.
    struct Place {
        int page = 0, character = 0;
    };
    Place SearchStart(Direction direction) const;

    // Returns the selected text; else the found text; else the text of the visible page.
    QString TextToCopy() const;
    void Copy() const;
    void SelectPage();

 signals:
    void PageChanged();
    void ZoomChanged();
    void LinkActivated(const report::Link& link);
    void DrawFailed(const QString& message);

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;

 private:
    struct Selection {  // from where the mouse button was pressed to where the pointer is
        Place anchor, end;
    };
    struct Hit {
        int page = 0;
        CharacterRange range;
    };

    struct Target {  // the page of the last GoTo, and the scroll position that it gave
        int page = 0, scrolled = 0;
    };

    void TakePages();
    void Redraw();
    void Arrange();  // sets the scroll bars, and the zoom if it depends on the window
    void SetScaleKeeping(double percent, QPointF viewPoint);
    double FittingZoom() const;
    QPointF Origin() const;  // of the view, in content coordinates
    void CheckPage();

    void PaintPage(QPainter& painter, int page, const QRectF& exposed);
    void PaintTiles(QPainter& painter, int page, QPointF corner, const QRectF& exposed);
    const QPixmap& Tile(const TileKey& key, QSize pagePixels);
    void PaintMarks(QPainter& painter, int page, QPointF corner);
    QPointF SnappedCorner(int page) const;

    std::optional<report::Link> LinkAt(QPointF viewPoint) const;
    Place PlaceAt(QPointF viewPoint) const;
    CharacterRange SelectedOn(int page) const;
    bool HasSelection() const;
    void ShowCursor(QPointF viewPoint);

    QPointer<PageDocument> m_document;
    PageLayout m_layout;
    TileCache m_tiles;
    ZoomMode m_mode = ZoomMode::Percent;
    double m_zoom = 81, m_tileRatio = 0;
    int m_shownPage = 0;
    Target m_target;
    bool m_followEnd = false, m_arranging = false;
    QString m_failure;  // the last error of a page that could not be drawn
    QString m_words;
    Hit m_hit;
    std::optional<Selection> m_selection;
    std::optional<report::Link> m_pressedLink;
    QPointF m_pressed;
    bool m_selecting = false;
};

}  // namespace viewer
