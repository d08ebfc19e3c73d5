// SPDX-License-Identifier: GPL-3.0-or-later
// Members of PageCanvas: keys, wheel and mouse.
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "platform/controls/kit/plain_tip.h"
#include "platform/viewer/page_canvas.h"

namespace viewer {

void PageCanvas::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    constexpr double Notch = 120, Factor = 1.1;
    m_mode = ZoomMode::Percent;
    SetScaleKeeping(m_zoom * std::pow(Factor, event->angleDelta().y() / Notch), event->position());
    emit ZoomChanged();
    event->accept();
}

void PageCanvas::keyPressEvent(QKeyEvent* event) {
    QScrollBar* bar = verticalScrollBar();
    const int page = viewport()->height() * 9 / 10;  // a tenth of the view stays visible
    const auto scroll = [&](int by) { bar->setValue(bar->value() + by); };
    if (event == QKeySequence::Copy) {
        Copy();
        return;
    }
    if (event == QKeySequence::SelectAll) {
        SelectPage();
        return;
    }
    switch (event->key()) {
        case Qt::Key_PageDown:
            scroll(page);
            break;
        case Qt::Key_PageUp:
            scroll(-page);
            break;
        case Qt::Key_Space:
            scroll(event->modifiers() & Qt::ShiftModifier ? -page : page);
            break;
        case Qt::Key_Home:
            GoTo(1);
            bar->setValue(0);
            break;
        case Qt::Key_End:
            GoToEnd();
            break;
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            StepZoom(1);
            break;
        case Qt::Key_Minus:
            StepZoom(-1);
            break;
        default:
            QAbstractScrollArea::keyPressEvent(event);
            return;
    }
    event->accept();
}

std::optional<report::Link> PageCanvas::LinkAt(QPointF viewPoint) const {
    const int page = m_layout.Nearest(Origin().y() + viewPoint.y());
    if (page == 0 || !m_document) {
        return std::nullopt;
    }
    const QPointF at = m_layout.ToPage(page, Origin() + viewPoint);
    const std::vector<report::Link> links = m_document->Links(page);
    // The link drawn last is on top.
    const auto found = std::find_if(links.rbegin(), links.rend(), [&](const report::Link& link) {
        return QRectF(link.area.x, link.area.y, link.area.width, link.area.height).contains(at);
    });
    return found == links.rend() ? std::nullopt : std::optional(*found);
}

PageCanvas::Place PageCanvas::PlaceAt(QPointF viewPoint) const {
    const int page = m_layout.Nearest(Origin().y() + viewPoint.y());
    if (page == 0 || !m_document) {
        return {};
    }
    return {page, m_document->Text(page)->PlaceAt(m_layout.ToPage(page, Origin() + viewPoint))};
}

void PageCanvas::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || m_layout.Count() == 0) {
        return;
    }
    m_pressed = event->position();
    m_pressedLink = LinkAt(m_pressed);
    const Place place = PlaceAt(m_pressed);
    if (event->modifiers() & Qt::ShiftModifier && m_selection) {
        m_selection->end = place;
    } else {
        m_selection = Selection{place, place};
    }
    m_selecting = true;
    viewport()->update();
}

void PageCanvas::mouseMoveEvent(QMouseEvent* event) {
    if (!m_selecting) {
        ShowCursor(event->position());
        return;
    }
    if ((event->position() - m_pressed).manhattanLength() < QApplication::startDragDistance() &&
        !HasSelection()) {
        return;
    }
    m_selection->end = PlaceAt(event->position());
    // Beyond the edge the pages scroll.
    const double above = event->position().y(), below = above - viewport()->height();
    if (above < 0 || below > 0) {
        verticalScrollBar()->setValue(verticalScrollBar()->value() +
                                      static_cast<int>(above < 0 ? above : below));
    }
    viewport()->update();
}

void PageCanvas::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !m_selecting) {
        return;
    }
    m_selecting = false;
    const bool clicked = !HasSelection();
    if (clicked) {
        m_selection.reset();
        viewport()->update();
    }
    const std::optional<report::Link> link = LinkAt(event->position());
    if (clicked && link && m_pressedLink && link->uri == m_pressedLink->uri &&
        link->page == m_pressedLink->page && link->y == m_pressedLink->y) {
        emit LinkActivated(*link);
    }
    m_pressedLink.reset();
}

void PageCanvas::mouseDoubleClickEvent(QMouseEvent* event) {
    const int page = m_layout.Nearest(Origin().y() + event->position().y());
    if (event->button() != Qt::LeftButton || page == 0 || !m_document) {
        return;
    }
    const std::shared_ptr<const PageText> text = m_document->Text(page);
    const QPointF at = m_layout.ToPage(page, Origin() + event->position());
    if (text->IsOnText(at)) {
        // A point on the right half of a character gives the place after it, but belongs to the character.
        const int place = text->PlaceAt(at);
        const bool before = place > 0 && text->Areas({place - 1, 1}).front().contains(at);
        const CharacterRange word = text->WordAt(before ? place - 1 : place);
        m_selection = Selection{{page, word.first}, {page, word.first + word.count}};
        viewport()->update();
    }
}

void PageCanvas::ShowCursor(QPointF viewPoint) {
    if (LinkAt(viewPoint)) {
        viewport()->setCursor(Qt::PointingHandCursor);
        return;
    }
    const int page = m_layout.Nearest(Origin().y() + viewPoint.y());
    const bool onText = page > 0 && m_document &&
                        m_document->Text(page)->IsOnText(m_layout.ToPage(page, Origin() + viewPoint));
    viewport()->setCursor(onText ? Qt::IBeamCursor : Qt::ArrowCursor);
}

bool PageCanvas::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QAbstractScrollArea::viewportEvent(event);
    }
    const auto* help = static_cast<QHelpEvent*>(event);
    if (const std::optional<report::Link> link = LinkAt(help->pos())) {
        QToolTip::showText(
            help->globalPos(),
            link->uri.empty() ? tr("Page %1").arg(link->page) : PlainTip(QString::fromStdString(link->uri)),
            viewport());
    } else {
        QToolTip::hideText();
    }
    return true;
}

bool PageCanvas::HasSelection() const {
    return m_selection && (m_selection->anchor.page != m_selection->end.page ||
                           m_selection->anchor.character != m_selection->end.character);
}

CharacterRange PageCanvas::SelectedOn(int page) const {
    if (!HasSelection() || !m_document) {
        return {};
    }
    Place from = m_selection->anchor, to = m_selection->end;
    if (to.page < from.page || (to.page == from.page && to.character < from.character)) {
        std::swap(from, to);
    }
    if (page < from.page || page > to.page) {
        return {};
    }
    const int first = page == from.page ? from.character : 0;
    const int end = page == to.page ? to.character : m_document->Text(page)->Count();
    return {first, end - first};
}

void PageCanvas::SelectPage() {
    if (const int page = CurrentPage(); page > 0 && m_document) {
        m_selection = Selection{{page, 0}, {page, m_document->Text(page)->Count()}};
        viewport()->update();
    }
}

QString PageCanvas::TextToCopy() const {
    if (!m_document || m_layout.Count() == 0) {
        return {};
    }
    if (HasSelection()) {
        const auto [first, last] = std::minmax(m_selection->anchor.page, m_selection->end.page);
        QStringList pages;
        for (int page = first; page <= last; ++page) {
            pages << m_document->Text(page)->Text(SelectedOn(page));
        }
        return pages.join('\n');
    }
    if (m_hit.page > 0) {
        return m_document->Text(m_hit.page)->Text(m_hit.range);
    }
    const std::shared_ptr<const PageText> text = m_document->Text(CurrentPage());
    return text->Text({0, text->Count()});
}

void PageCanvas::Copy() const {
    if (const QString text = TextToCopy(); !text.isEmpty()) {
        QApplication::clipboard()->setText(text);
    }
}

}  // namespace viewer
