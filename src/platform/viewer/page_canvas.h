// Pages under each other, scrolled, zoomed, searched and marked. Only what is seen is drawn.
#pragma once

#include <QAbstractScrollArea>
#include <QPointer>
#include <optional>

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

    // Null: nothing to show. The document outlives its use here.
    void SetDocument(PageDocument* document);

    // 100: as large as on paper. Out of bounds is brought within; the middle of the view stays where it is.
    void SetZoom(double percent);
    void SetZoomMode(ZoomMode mode);
    ZoomMode Mode() const { return m_mode; }
    double Zoom() const { return m_zoom; }
    void StepZoom(int steps);  // to the next of the usual ones

    // The page that takes most of the view; 0 when there is none.
    int CurrentPage() const;
    // To a place on a page, points from its top; as far as there are pages.
    void GoTo(int page, double y = 0);
    // To the last page, and on while more are made, until the reader scrolls.
    void GoToEnd();
    bool IsFollowingEnd() const { return m_followEnd; }
    // Scrolls as little as shows the letters.
    void Reveal(int page, const LetterRange& range);

    // Words that are marked wherever they stand; empty: none. The current one stands out.
    void SetWords(const QString& words);
    void SetHit(int page, const LetterRange& range);
    void ClearHit();
    // Where a search goes on: behind or before what was found last, else at the page that is seen.
    struct Place {
        int page = 0, letter = 0;
    };
    Place SearchStart(bool forwards) const;

    // What is marked; else what was found; else the text of the page that is seen.
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
    struct Selection {  // from where the mouse went down to where it is
        Place anchor, end;
    };
    struct Hit {
        int page = 0;
        LetterRange range;
    };

    struct Target {  // the page that was gone to, and where that was
        int page = 0, scrolled = 0;
    };

    void TakePages();
    void Redraw();
    void Arrange();  // scroll bars, and zoom where it depends on the window
    void SetScaleKeeping(double percent, QPointF viewPoint);
    double FittingZoom() const;
    QPointF Origin() const;  // of the view within the content
    void CheckPage();

    void PaintPage(QPainter& painter, int page, const QRectF& exposed);
    void PaintTiles(QPainter& painter, int page, QPointF corner, const QRectF& exposed);
    const QPixmap& Tile(const TileKey& key, QSize pagePixels);
    void PaintMarks(QPainter& painter, int page, QPointF corner);
    QPointF SnappedCorner(int page) const;

    std::optional<report::Link> LinkAt(QPointF viewPoint) const;
    Place PlaceAt(QPointF viewPoint) const;
    LetterRange SelectedOn(int page) const;
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
    QString m_failure;  // of the last page that could not be drawn
    QString m_words;
    Hit m_hit;
    std::optional<Selection> m_selection;
    std::optional<report::Link> m_pressedLink;
    QPointF m_pressed;
    bool m_selecting = false;
};

}  // namespace viewer
