// SPDX-License-Identifier: GPL-3.0-or-later
// The surface on which a report is designed: its bands as the engine draws them, with rulers, and with
// selection, moving and resizing by mouse and keys. Every change is a step of the model's document. While the
// mouse moves items the picture stays as it is and outlines follow the pointer; the report is laid out when
// the button is released.
#pragma once

#include <QAbstractScrollArea>
#include <QElapsedTimer>
#include <QPixmap>
#include <QTimer>
#include <functional>
#include <optional>
#include <vector>

#include "designer/canvas/band_layout.h"
#include "designer/canvas/design_picture.h"
#include "designer/canvas/handles.h"
#include "designer/canvas/ruler.h"
#include "designer/canvas/snapping.h"
#include "designer/canvas/table_bars.h"
#include "designer/model/arranging.h"
#include "designer/model/design_model.h"
#include "designer/model/field_drag.h"
#include "designer/model/new_items.h"
#include "designer/model/rich_text.h"
#include "designer/model/text_parts.h"

namespace designer {

class TextEditor;

class DesignCanvas : public QAbstractScrollArea {
    Q_OBJECT
 public:
    static constexpr double LeastZoom = 25, MostZoom = 400;  // percent

    explicit DesignCanvas(DesignModel& model, QWidget* parent = nullptr);
    ~DesignCanvas() override;

    // In percent of the size on paper, limited to LeastZoom and MostZoom. The middle of the view keeps its
    // place.
    void SetZoom(double percent);
    double Zoom() const { return m_zoom; }
    void StepZoom(int steps);  // to the next of the usual zooms
    void FitWidth();

    void SetSnaps(bool snaps) { m_snaps = snaps; }

    // The next rectangle that the user draws becomes an item of the kind. Escape ends it.
    void SetTool(std::optional<NewItem> tool);
    // Called before an item is inserted, to ask for its settings. Returns false if the user cancels.
    using Asker = std::function<bool(NewItem kind, GraphicChoice& choice)>;
    void SetAsker(Asker asker) { m_asker = std::move(asker); }
    std::optional<NewItem> Tool() const { return m_tool; }
    // Inserts an item of the kind in the middle of what is visible, or below what is there, and selects it.
    void InsertAtMiddle(NewItem kind);

    // Returns the selected text box, or the one whose part is selected; else NoElement.
    ElementId TextBoxToType() const;
    // Opens it for typing, of several the leader alone; a part is marked in its text.
    void EditText();
    // Takes the text that is being typed, if any. Commands that need all changes call it first.
    void FinishEditing() { CloseEditor(TypedText::Keep); }

    // Takes the text that is being typed, as FinishEditing; what is marked in it becomes what is selected, as
    // runs of their own. ContinueText opens the text again as it was.
    void TakeTextPart();
    void ContinueText();
    // A click on this pane takes the part that is marked.
    void SetPartPane(QWidget* pane) { m_partPane = pane; }
    // Lets the user change the value of a text box or of a part of it; nothing: it stays.
    using ExpressionAsker =
        std::function<std::optional<std::string>(ElementId box, const std::string& value)>;
    void SetExpressionAsker(ExpressionAsker asker) { m_expressionAsker = std::move(asker); }

    // The widget that may have the focus while a text stays open: its fields are put into the text.
    void SetTextSource(QWidget* source);
    // Puts a placeholder into the text that is being typed. Returns false if there is none.
    bool InsertIntoText(const std::string& expression);
    bool InsertIntoText(const DraggedField& field);

    // Moves or resizes the selected items by steps to the right and down; `fine` steps are smaller than the
    // grid.
    void Nudge(int right, int down, bool fine, bool resizes);

    // Scrolls no further than needed to show the selected item.
    void RevealSelection();
    // The area of an item or band on the viewport, in pixels; of NoElement that of a body that is not there
    // yet. Empty if there is none.
    QRectF AreaOf(ElementId id) const;
    // The band that what is inserted or pasted goes to: that of the selection, else the body. Nothing without
    // bands.
    std::optional<std::size_t> CurrentBand() const;
    // Lays the report out and paints it now, if a change waits for it.
    void Refresh();
    // What the engine said of what it could not draw, one text for each item that is a box.
    const std::vector<std::string>& Failures() const { return m_picture.Failures(); }
    std::string Failure() const { return Failures().empty() ? std::string() : Failures().front(); }

 signals:
    void ZoomChanged();
    void ToolChanged();
    void ItemInserted(designer::ElementId id, designer::NewItem kind);
    void DesignRequested(designer::ElementId id);  // a double click on an item that is no text box
    void PointerMoved(const QString& place);       // empty: the pointer is on no band
    void LaidOut();                                // Failure may have changed
    void StatusTextChanged(const QString& text);   // for the status bar; empty: clears it

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

 private:
    enum class Action { None, Press, Move, Resize, RubberBand, Draw, BandHeight, BandWidth, Track };
    // What the mouse does while its button is down. Points are those of the canvas.
    struct Drag {
        Action action = Action::None;
        QPointF start, now;
        ElementId pressed = NoElement;
        bool adds = false;         // Ctrl was down
        bool wasSelected = false;  // the pressed item, before the press
        std::size_t band = 0;
        Handle handle = Handle::BottomRight;
        std::vector<Placement> before, after;  // from the corners of the items' bands
        std::vector<SnapLine> lines;
        double dx = 0, dy = 0;  // points
        double size = 0;        // of a band, column or row that is resized
        TrackHandle track;      // of the pressed region
    };
    // Where a field that is dragged here would be shown.
    struct Drop {
        using Kind = FieldTarget::Kind;
        Kind kind = Kind::None;
        ElementId region = NoElement, cell = NoElement;
        std::size_t column = 0, band = 0;
        QRectF area;                 // that is marked
        ElementId item = NoElement;  // that shows a value that is dragged here
    };

    void TakeChange();
    void Arrange();
    void ShowRulers();
    QPointF Origin() const;  // of the viewport, in canvas coordinates
    QPointF ToCanvas(QPointF viewPoint) const { return viewPoint + Origin(); }
    QRectF CanvasArea(const ReportItem& item) const;

    void PaintBands(QPainter& painter);
    enum class CaptionLook { Plain, Selected };
    void PaintCaption(QPainter& painter, std::size_t band, CaptionLook look);
    void PaintOutlines(QPainter& painter, std::size_t band);
    void PaintSelectedBand(QPainter& painter, ElementId id);
    void PaintSelection(QPainter& painter);
    void PaintDrag(QPainter& painter);
    const QPixmap& Backing();

    ElementId ItemAt(QPointF point) const;
    std::optional<Handle> HandleUnder(QPointF point, ElementId& item) const;
    Action EdgeUnder(QPointF point, std::size_t& band) const;
    void Press(QPointF point, Qt::KeyboardModifiers modifiers);
    void BeginMoveOrRubberBand();
    void FollowMove();
    void FollowResize();
    void FollowDraw();
    void FollowBandEdge();
    void Release();
    void FinishClick();
    void FinishMove();
    void FinishRubberBand();
    void FinishDraw();
    void CancelDrag();
    void ShowCursor(QPointF point);
    void ShowPlace(QPointF point);
    SnapRules Rules() const;
    std::vector<Rect> OthersIn(std::size_t band) const;
    std::vector<Placement> PlacesOf(const std::vector<ElementId>& ids) const;
    double GridStep() const;
    void Insert(NewItem kind, std::size_t band, const Rect& place);
    Rect FreePlace(std::size_t band, Rect place) const;
    void OpenEditor(const std::vector<ElementId>& boxes);  // shows the last one
    enum class TypedText { Keep, Discard };
    void CloseEditor(TypedText typed);
    bool LeavesByFocus(const QFocusEvent& event) const;
    bool EditorKey(const QKeyEvent& key);
    void EditExpressionInText();
    void PlaceEditor();
    void SelectNext(int step);

    // canvas_table.cpp
    std::optional<TableBars> BarsOf(ElementId region) const;
    std::optional<TableBars> Bars() const;  // of the table that is selected
    void PaintBars(QPainter& painter);
    void PaintTrackDrag(QPainter& painter);
    void PaintDrop(QPainter& painter);
    bool PressTable(QPointF point);
    void FollowTrack();
    void FinishTrack(const Drag& done);
    bool SelectCellsTo(ElementId item);
    bool StepInTable(int right, int down, bool withControl, bool withShift);
    bool StepToCell(int right, int down);
    bool StretchCells(int right, int down);
    void TypeInto(QKeyEvent* event);  // canvas_text.cpp
    Drop DropAt(QPointF point) const;
    Drop DropAt(QPointF point, const DraggedValue& value) const;
    Drop DropOf(const QMimeData& dragged, QPointF point) const;
    QPointF PlaceOf(const Drop& drop, QPointF point) const;  // on the band, in points

    void ClimbSelection();
    void DescribeSelection();

    DesignModel& m_model;
    DesignPicture m_picture;
    BandLayout m_layout;
    Ruler *m_across, *m_down;
    QTimer m_layoutTimer;
    int m_layoutTime = 0;                // milliseconds that the last layout took
    std::vector<ElementId> m_drawOrder;  // items that are drawn later come later
    QPixmap m_backing;
    bool m_backingIsOld = true;
    double m_zoom = 100;
    bool m_snaps = true;
    std::optional<NewItem> m_tool;
    Asker m_asker;
    Drag m_drag;
    bool m_isReleasing = false;  // the change is that of the drag itself
    Drop m_drop;
    TextEditor* m_editor = nullptr;  // of the viewport
    RichText m_opened;               // what it had when it was opened
    QWidget *m_textSource = nullptr, *m_partPane = nullptr;
    ExpressionAsker m_expressionAsker;
    bool m_asksExpression = false;
    ElementId m_continued = NoElement;        // the text box whose text ContinueText opens
    std::optional<TextPart> m_continuedPart;  // the selection in it
    ElementId m_edited = NoElement;
    std::vector<ElementId> m_typedInto;  // the edited one, and others that get the same text
    QElapsedTimer m_nudged;
    int m_nudges = 0;  // runs of nudges, each of which is one step
};

}  // namespace designer
