// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignWindow: what the commands of its menus do with the selection.
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QMimeData>
#include <QStatusBar>
#include <algorithm>
#include <map>

#include "designer/document/editing.h"
#include "designer/expressions/expression_dialog.h"
#include "designer/model/embedded_pictures.h"
#include "designer/model/item_clipboard.h"
#include "designer/model/page_setup.h"
#include "designer/model/placing.h"
#include "designer/model/report_body.h"
#include "designer/panes/property_pane.h"
#include "designer/tables/cell_text.h"
#include "designer/window/design_window.h"

namespace designer {
namespace {

constexpr double PasteShift = 10;  // points

// Items that are in no other one of them: those leave and are copied with what they are in.
std::vector<ElementId> Outermost(const DesignModel& model, const std::vector<ElementId>& ids) {
    std::vector<ElementId> result;
    for (const ElementId id : ids) {
        bool isOutermost = true;
        for (const ReportItem* item = model.Item(id); item; item = model.Item(item->container)) {
            isOutermost = isOutermost && std::find(ids.begin(), ids.end(), item->container) == ids.end();
        }
        if (isOutermost) {
            result.push_back(id);
        }
    }
    return result;
}

}  // namespace

// The item in a cell stays, as a cell without one has no room for text: its text goes.
void DesignWindow::DeleteSelection() {
    const std::vector<ElementId> ids = Outermost(*m_model, m_model->SelectedItems());
    if (ids.empty()) {
        return;
    }
    std::vector<ElementId> inCells, others;
    for (const ElementId id : ids) {
        const bool isText = m_model->Item(id)->kind == "Textbox";
        (m_model->Item(id)->cell != NoElement && isText ? inCells : others).push_back(id);
    }
    const QString verb = others.empty() ? tr("Clear") : tr("Delete");
    m_model->Edit(StepName(*m_model, verb, ids), [&](Document& document) {
        RemoveAll(document, others, {});
        for (const ElementId id : inCells) {
            SetTextOfBox(document, id, "");
        }
    });
}

void DesignWindow::CopySelection() {
    const std::vector<ElementId> ids = Outermost(*m_model, m_model->SelectedItems());
    if (ids.empty()) {
        return;
    }
    const QByteArray text = QByteArray::fromStdString(ItemsText(m_model->Source(), ids));
    auto* clip = new QMimeData;
    clip->setData(ItemsMimeType, text);
    clip->setText(QString::fromUtf8(text));
    QApplication::clipboard()->setMimeData(clip);
}

void DesignWindow::CutSelection() {
    CopySelection();
    const std::vector<ElementId> ids = Outermost(*m_model, m_model->SelectedItems());
    m_model->Edit(StepName(*m_model, tr("Cut"), ids),
                  [&](Document& document) { RemoveAll(document, ids, {}); });
}

void DesignWindow::Paste() {
    const QMimeData* clip = QApplication::clipboard()->mimeData();
    const std::string text =
        clip->hasFormat(ItemsMimeType) ? clip->data(ItemsMimeType).toStdString() : clip->text().toStdString();
    const auto items = ItemsIn(text);
    const auto band = m_canvas->CurrentBand();
    if (!items || items->empty() || !band) {
        statusBar()->showMessage(tr("The clipboard holds no report items"), 5000);
        return;
    }
    // Into a rectangle that is selected, else into the band.
    const ReportItem* leader = m_model->Item(m_model->Leader());
    const ElementId rectangle = leader && leader->kind == "Rectangle" ? leader->id : NoElement;
    const ReportBand target = m_model->Items().bands[*band];
    std::vector<ElementId> pasted;
    const QString step = items->size() == 1 ? tr("Paste") : tr("Paste %1 items").arg(items->size());
    if (m_model->Edit(step, [&](Document& document) {
            const ElementId container =
                rectangle != NoElement ? rectangle : CompleteBand(document, target).element;
            pasted = PasteItems(document, container, *items, PasteShift);
            KeepInBand(document, pasted);
        })) {
        m_model->Select(pasted);
        m_canvas->RevealSelection();
    }
}

void DesignWindow::DuplicateSelection() {
    const ReportItems items = m_model->Items();
    const std::vector<ElementId> ids = Movable(items, m_model->SelectedItems());
    if (ids.empty()) {
        m_model->Refuse(ReasonOfCells());
        return;
    }
    std::vector<ElementId> copies;
    if (m_model->Edit(StepName(*m_model, tr("Duplicate"), ids), [&](Document& document) {
            std::map<ElementId, std::vector<std::string>> texts;  // by containers
            for (const ElementId id : ids) {
                texts[m_model->Item(id)->container].push_back(XmlOf(document, id));
            }
            for (const auto& [container, own] : texts) {
                const auto made = PasteItems(document, container, own, PasteShift);
                copies.insert(copies.end(), made.begin(), made.end());
            }
            KeepInBand(document, copies);
        })) {
        m_model->Select(copies);
        m_canvas->RevealSelection();
    }
}

void DesignWindow::SelectAll() {
    std::vector<ElementId> ids;
    for (const ReportItem& item : m_model->Items().items) {
        if (item.container == m_model->Items().bands[item.band].element) {
            ids.push_back(item.id);
        }
    }
    m_model->Select(std::move(ids));
}

// Only items of the leader's band are arranged: the places of others do not compare with its own.
void DesignWindow::ArrangeSelection(Arrangement arrangement, const QString& verb) {
    const ReportItems items = m_model->Items();
    const ReportItem* leader = m_model->Item(m_model->Leader());
    if (!leader) {
        return;
    }
    std::vector<Placement> places;
    std::vector<ElementId> ids;
    for (const ElementId id : Movable(items, m_model->Selection())) {
        const ReportItem* item = m_model->Item(id);
        if (item->band == leader->band) {
            places.push_back({id, item->place});
            ids.push_back(id);
        }
    }
    if (places.size() < LeastItems(arrangement)) {
        const bool areInCells = Movable(items, m_model->Selection()).size() < LeastItems(arrangement);
        m_model->Refuse(areInCells ? ReasonOfCells() : tr("Select items of one band"));
        return;
    }
    m_model->Edit(StepName(*m_model, verb, ids),
                  [&](Document& document) { Place(document, items, Arranged(places, arrangement)); });
}

void DesignWindow::SelectionToFront() {
    const ReportItems items = m_model->Items();
    const std::vector<ElementId> ids = m_model->SelectedItems();
    m_model->Edit(StepName(*m_model, tr("Bring to front"), ids),
                  [&](Document& document) { BringToFront(document, items, ids); });
}

void DesignWindow::SelectionToBack() {
    const ReportItems items = m_model->Items();
    const std::vector<ElementId> ids = m_model->SelectedItems();
    m_model->Edit(StepName(*m_model, tr("Send to back"), ids),
                  [&](Document& document) { SendToBack(document, items, ids); });
}

void DesignWindow::TogglePageBand(BandKind kind) {
    const std::size_t section = SectionOfSelection(*m_model);
    const ElementId there = PageBandOf(m_model->Source(), kind, section);
    const QString name = kind == BandKind::PageHeader ? tr("Page Header") : tr("Page Footer");
    if (there != NoElement) {
        m_model->Edit(tr("Remove %1").arg(name), [&](Document& document) { Remove(document, there); });
        return;
    }
    ElementId made = NoElement;
    if (m_model->Edit(tr("Insert %1").arg(name),
                      [&](Document& document) { made = InsertPageBand(document, kind, section); })) {
        m_model->Select({made});
    }
}

// Without a picture the image goes again.
void DesignWindow::AskForPicture(ElementId image) {
    const QString folder = QString::fromStdString(m_model->File().parent_path().string());
    const QString file = QFileDialog::getOpenFileName(this, tr("Picture"), folder,
                                                      tr("Pictures (*.png *.jpg *.jpeg *.gif *.bmp)"));
    if (file.isEmpty()) {
        m_model->Undo();
        return;
    }
    EmbeddedPicture picture;
    if (const QString fault = ReadPictureFile(file, picture); !fault.isEmpty()) {
        m_model->Undo();
        Complain(fault);
        return;
    }
    m_model->Edit(tr("Insert Picture"), [&](Document& document) {
        EmbedPicture(document, image, picture.type, picture.bytes, NameOfPictureFile(file));
    });
}

namespace {

bool TakesExpressions(const PropertyRow& row) {
    return row.property->expressions != Expressions::No;
}

}  // namespace

std::optional<PropertyRow> DesignWindow::ValueRowOf(ElementId box) const {
    const std::vector<PropertyRow> rows = PropertyRowsOf(*m_model, box);
    const auto value = std::find_if(rows.begin(), rows.end(), [](const PropertyRow& row) {
        return row.property->name == "Value" && TakesExpressions(row);
    });
    return value == rows.end() ? std::nullopt : std::optional(*value);
}

std::optional<PropertyRow> DesignWindow::ExpressionRow() const {
    const PropertyRow* current = m_properties->CurrentRow();
    if (current && TakesExpressions(*current)) {
        return *current;
    }
    const ElementId leader = m_model->Leader();
    const ReportItem* item = m_model->Item(leader);
    const bool isRun = !item && m_model->Source().Has(leader) && m_model->Source().Name(leader) == "TextRun";
    return isRun || (item && item->kind == "Textbox") ? ValueRowOf(leader) : std::nullopt;
}

// It is checked as the first value of the text box.
std::optional<std::string> DesignWindow::AskForValueOf(ElementId box, const std::string& value) {
    const std::optional<PropertyRow> row = ValueRowOf(box);
    if (!row) {
        return std::nullopt;
    }
    const int index = m_model->Source().IndexOf(box);
    const auto write = [&row, index](Document& copy, const std::string& text) {
        SetRow(copy, {copy.IdAt(index)}, *row, text);
    };
    return AskForExpression(*m_model, {tr("Value"), write}, value, this);
}

void DesignWindow::EditExpression() {
    FinishTyping();
    const std::optional<PropertyRow> row = ExpressionRow();
    if (!row) {
        return;
    }
    const PropertyRow* const current = m_properties->CurrentRow();
    std::vector<ElementId> ids =
        current && *current == *row ? m_properties->OwnersOf(*row) : m_model->Selection();
    if (ids.empty()) {
        return;
    }
    std::rotate(ids.begin(), ids.end() - 1, ids.end());  // the leader is shown
    ExpressionDialog(*m_model, ids, *row, this).exec();
}

}  // namespace designer
