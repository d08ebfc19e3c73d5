// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignCanvas: its parts, zoom, layout and what is selected. Painting is in canvas_paint.cpp, the
// mouse in canvas_mouse.cpp and canvas_drag.cpp, the keys in canvas_keys.cpp.
#include "designer/canvas/design_canvas.h"

#include <QEvent>
#include <QScrollBar>
#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace designer {
namespace {

// Milliseconds. A report that takes longer is laid out when no change has come for as long as that takes.
constexpr int QuickLayout = 60, LongestPause = 700;

constexpr std::array<double, 11> UsualZooms{25, 33, 50, 67, 75, 100, 125, 150, 200, 300, 400};

// Items that are drawn later come later: children after what they are in, siblings by ZIndex, then as in the
// file.
void AddInDrawOrder(const std::map<ElementId, std::vector<const ReportItem*>>& children, ElementId container,
                    std::vector<ElementId>& order) {
    const auto found = children.find(container);
    if (found == children.end()) {
        return;
    }
    for (const ReportItem* item : found->second) {
        order.push_back(item->id);
        AddInDrawOrder(children, item->id, order);
    }
}

std::vector<ElementId> DrawOrder(const ReportItems& items) {
    std::map<ElementId, std::vector<const ReportItem*>> children;
    for (const ReportItem& item : items.items) {
        children[item.container].push_back(&item);
    }
    for (auto& [container, inner] : children) {
        std::stable_sort(inner.begin(), inner.end(),
                         [](const ReportItem* a, const ReportItem* b) { return a->zIndex < b->zIndex; });
    }
    std::vector<ElementId> order;
    for (const ReportBand& band : items.bands) {
        AddInDrawOrder(children, band.element, order);
    }
    return order;
}

}  // namespace

DesignCanvas::DesignCanvas(DesignModel& model, QWidget* parent)
    : QAbstractScrollArea(parent),
      m_model(model),
      m_across(new Ruler(Qt::Horizontal, this)),
      m_down(new Ruler(Qt::Vertical, this)) {
    setObjectName("canvas");
    setAccessibleName(tr("Report design"));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    viewport()->setAcceptDrops(true);
    setAcceptDrops(true);
    const int thick = Ruler::Thickness(*this);
    setViewportMargins(thick, thick, 0, 0);
    m_layoutTimer.setSingleShot(true);
    connect(&m_layoutTimer, &QTimer::timeout, this, &DesignCanvas::Refresh);
    connect(&m_model, &DesignModel::Changed, this, &DesignCanvas::TakeChange);
    connect(&m_model, &DesignModel::FileChanged, this, &DesignCanvas::TakeChange);
    connect(&m_model, &DesignModel::SelectionChanged, this, [this] {
        DescribeSelection();
        viewport()->update();
    });
    TakeChange();
}

DesignCanvas::~DesignCanvas() = default;

void DesignCanvas::TakeChange() {
    if (m_editor && !m_model.Source().Has(m_edited)) {
        CloseEditor(TypedText::Discard);
    }
    // A drag is of items as they were.
    if (m_drag.action != Action::None && !m_isReleasing) {
        CancelDrag();
    }
    m_drawOrder = DrawOrder(m_model.Items());
    m_backingIsOld = true;
    Arrange();
    m_layoutTimer.start(m_layoutTime > QuickLayout ? std::min(m_layoutTime, LongestPause) : 0);
}

void DesignCanvas::Refresh() {
    m_layoutTimer.stop();
    QElapsedTimer time;
    time.start();
    m_picture.Make(m_model);
    m_layoutTime = static_cast<int>(time.elapsed());
    m_backingIsOld = true;
    viewport()->update();
    emit LaidOut();
}

void DesignCanvas::Arrange() {
    const double scale = m_zoom / 100 * logicalDpiX() / 72;
    m_layout.Set(m_model.Items().bands, scale, fontMetrics().height() + 6);
    const QSizeF total = m_layout.Total();
    const QSize view = viewport()->size();
    horizontalScrollBar()->setRange(0,
                                    std::max(0, static_cast<int>(std::ceil(total.width())) - view.width()));
    verticalScrollBar()->setRange(0,
                                  std::max(0, static_cast<int>(std::ceil(total.height())) - view.height()));
    horizontalScrollBar()->setPageStep(view.width());
    verticalScrollBar()->setPageStep(view.height());
    horizontalScrollBar()->setSingleStep(20);
    verticalScrollBar()->setSingleStep(20);
    ShowRulers();
    PlaceEditor();
    viewport()->update();
}

void DesignCanvas::ShowRulers() {
    const int thick = Ruler::Thickness(*this);
    const QRect view = viewport()->geometry();
    m_across->setGeometry(view.left(), view.top() - thick, view.width(), thick);
    m_down->setGeometry(view.left() - thick, view.top(), thick, view.height());
    const auto& bands = m_model.Items().bands;
    const ElementId body = BodyOf(m_model.Source());
    const RulerUnit unit =
        UnitOf(body == NoElement ? "" : m_model.Source().TextAt(body, "Height").value_or(""));
    std::vector<Ruler::Stretch> down;
    Ruler::Stretch across;
    for (std::size_t band = 0; band < bands.size(); ++band) {
        const QRectF place = m_layout.Band(band).translated(-Origin());
        down.push_back({place.top(), place.height()});
        across = {place.left(), std::max(across.length, place.width())};
    }
    m_across->Show(bands.empty() ? std::vector<Ruler::Stretch>{} : std::vector{across}, m_layout.Scale(),
                   unit);
    m_down->Show(std::move(down), m_layout.Scale(), unit);
}

QPointF DesignCanvas::Origin() const {
    return {static_cast<double>(horizontalScrollBar()->value()),
            static_cast<double>(verticalScrollBar()->value())};
}

void DesignCanvas::SetZoom(double percent) {
    const double zoom = std::clamp(percent, LeastZoom, MostZoom);
    if (zoom == m_zoom) {
        return;
    }
    const QPointF half(viewport()->width() / 2.0, viewport()->height() / 2.0);
    const QPointF middle = (Origin() + half) * (zoom / m_zoom);
    m_zoom = zoom;
    m_backingIsOld = true;
    Arrange();
    horizontalScrollBar()->setValue(static_cast<int>(std::lround(middle.x() - half.x())));
    verticalScrollBar()->setValue(static_cast<int>(std::lround(middle.y() - half.y())));
    emit ZoomChanged();
}

void DesignCanvas::StepZoom(int steps) {
    double zoom = m_zoom;
    for (; steps > 0; --steps) {
        const auto next = std::upper_bound(UsualZooms.begin(), UsualZooms.end(), zoom);
        zoom = next == UsualZooms.end() ? MostZoom : *next;
    }
    for (; steps < 0; ++steps) {
        const auto next = std::lower_bound(UsualZooms.begin(), UsualZooms.end(), zoom);
        zoom = next == UsualZooms.begin() ? LeastZoom : *std::prev(next);
    }
    SetZoom(zoom);
}

void DesignCanvas::FitWidth() {
    double widest = 1;
    for (const ReportBand& band : m_model.Items().bands) {
        widest = std::max(widest, band.width);
    }
    SetZoom(std::floor((viewport()->width() - 30.0) / widest * 72 / logicalDpiX() * 100));
    horizontalScrollBar()->setValue(0);
}

void DesignCanvas::SetTool(std::optional<NewItem> tool) {
    if (tool != m_tool) {
        m_tool = tool;
        viewport()->setCursor(tool ? Qt::CrossCursor : Qt::ArrowCursor);
        emit ToolChanged();
    }
}

std::optional<std::size_t> DesignCanvas::CurrentBand() const {
    const auto& bands = m_model.Items().bands;
    if (const ReportItem* item = m_model.Item(m_model.Leader())) {
        return item->band;
    }
    std::optional<std::size_t> body;
    for (std::size_t band = 0; band < bands.size(); ++band) {
        if (bands[band].element == m_model.Leader()) {
            return band;
        }
        if (!body && bands[band].kind == BandKind::Body) {
            body = band;
        }
    }
    return body || bands.empty() ? body : std::optional<std::size_t>(0);
}

void DesignCanvas::InsertAtMiddle(NewItem kind) {
    const auto band = CurrentBand();
    if (!band) {
        return;
    }
    Rect place = UsualSize(kind);
    const QRectF visible = m_layout.Band(*band) & QRectF(Origin(), QSizeF(viewport()->size()));
    const QPointF middle =
        m_layout.ToBand(*band, visible.isEmpty() ? m_layout.Band(*band).center() : visible.center());
    const double grid = GridStep();
    place.left = std::max(0.0, std::round((middle.x() - place.width / 2) / grid) * grid);
    place.top = std::max(0.0, std::round((middle.y() - place.height / 2) / grid) * grid);
    Insert(kind, *band, FreePlace(*band, place));
    RevealSelection();
}

// Returns the place, or the next one below it where it covers nothing. A rectangle around it is a ground.
// Page header and footer have no room below.
Rect DesignCanvas::FreePlace(std::size_t band, Rect place) const {
    const ReportItems& items = m_model.Items();
    const Rect wished = place;
    const double grid = GridStep();
    for (std::size_t round = 0; round <= items.items.size(); ++round) {
        const auto covered =
            std::find_if(items.items.begin(), items.items.end(), [&](const ReportItem& item) {
                const QRectF other =
                    QRectF(item.place.left, item.place.top, item.place.width, item.place.height).normalized();
                const QRectF own(place.left, place.top, place.width, place.height);
                return item.band == band && item.cell == NoElement && other.intersects(own) &&
                       !(item.kind == "Rectangle" && other.contains(own));
            });
        if (covered == items.items.end()) {
            break;
        }
        const double below = std::max(covered->place.top, covered->place.Bottom());
        place.top = std::max(place.top + grid, std::ceil(below / grid) * grid);
    }
    const ReportBand& around = items.bands[band];
    return around.kind != BandKind::Body && place.Bottom() > around.height ? wished : place;
}

void DesignCanvas::Insert(NewItem kind, std::size_t index, const Rect& place) {
    const ReportBand band = m_model.Items().bands.at(index);
    ElementId id = NoElement;
    const QString name = QString::fromUtf8(ElementOf(kind).data());
    GraphicChoice choice;
    if (m_asker && !m_asker(kind, choice)) {
        return;
    }
    if (m_model.Edit(tr("Insert %1").arg(name),
                     [&](Document& document) { id = InsertItem(document, band, kind, place, choice); })) {
        m_model.Select({id});
        emit ItemInserted(id, kind);
    }
}

QRectF DesignCanvas::CanvasArea(const ReportItem& item) const {
    return item.band < m_layout.Count() ? m_layout.FromBand(item.band, item.place) : QRectF();
}

QRectF DesignCanvas::AreaOf(ElementId id) const {
    if (const ReportItem* item = m_model.Item(id)) {
        return CanvasArea(*item).normalized().translated(-Origin());
    }
    const auto& bands = m_model.Items().bands;
    for (std::size_t band = 0; band < bands.size() && band < m_layout.Count(); ++band) {
        if (bands[band].element == id) {
            return m_layout.Band(band).translated(-Origin());
        }
    }
    return {};
}

void DesignCanvas::RevealSelection() {
    const QRectF area = AreaOf(m_model.Leader());
    if (m_model.Leader() == NoElement || area.isNull()) {
        return;
    }
    // An area that is larger than the view is shown from its begin on.
    const auto reveal = [](QScrollBar* bar, double begin, double end, int view) {
        constexpr int Around = 12;
        if (end + Around > view) {
            bar->setValue(bar->value() +
                          static_cast<int>(std::ceil(std::min(end + Around - view, begin - Around))));
        } else if (begin - Around < 0) {
            bar->setValue(bar->value() + static_cast<int>(std::floor(begin - Around)));
        }
    };
    reveal(horizontalScrollBar(), area.left(), area.right(), viewport()->width());
    reveal(verticalScrollBar(), area.top(), area.bottom(), viewport()->height());
}

// What a screen reader says of the canvas.
void DesignCanvas::DescribeSelection() {
    const auto& selection = m_model.Selection();
    QString text = tr("Nothing is selected");
    if (const ReportItem* item = m_model.Item(m_model.Leader()); item && selection.size() == 1) {
        text = tr("%1 %2 is selected")
                   .arg(QString::fromStdString(item->kind), QString::fromStdString(item->name));
    } else if (selection.size() > 1) {
        text = tr("%1 items are selected").arg(selection.size());
    } else if (!selection.empty()) {
        text = tr("%1 is selected").arg(QString::fromStdString(m_model.Source().Name(selection.front())));
    }
    setAccessibleDescription(text);
}

void DesignCanvas::resizeEvent(QResizeEvent*) {
    m_backingIsOld = true;
    Arrange();
}

void DesignCanvas::scrollContentsBy(int, int) {
    m_backingIsOld = true;
    ShowRulers();
    PlaceEditor();
    viewport()->update();
}

void DesignCanvas::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) {
        m_backingIsOld = true;
        Arrange();
    }
}

}  // namespace designer
