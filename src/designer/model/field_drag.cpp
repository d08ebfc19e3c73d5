// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/field_drag.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/placeholder_text.h"
#include "designer/model/new_items.h"
#include "designer/model/page_setup.h"
#include "designer/model/placing.h"
#include "designer/model/report_body.h"
#include "designer/model/table_selection.h"
#include "designer/model/table_width.h"
#include "designer/tables/cell_text.h"
#include "designer/tables/cells.h"
#include "designer/tables/fields.h"
#include "designer/tables/new_tables.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

constexpr double Gap = 9;  // points below what is there

void CheckDataSet(const Document& document, ElementId region, const DraggedField& field) {
    const std::string own = DataSetOfRegion(document, region);
    if (!own.empty() && !SameAscii(own, field.dataSet)) {
        throw EditError("The table shows the data set " + own + ", the field is one of " + field.dataSet);
    }
}

ElementId PlaceInTable(Document& document, const DraggedField& field, const FieldTarget& target) {
    CheckDataSet(document, target.region, field);
    if (target.kind == FieldTarget::Kind::Cell) {
        PutField(document, target.region, target.cell, field.field);
        return ItemInCell(document, target.cell);
    }
    if (target.kind == FieldTarget::Kind::Column) {
        const std::size_t column = AddFieldColumn(document, target.region, target.column, field.field);
        for (const GridCell& cell : GridOf(document, target.region).cells) {
            const bool isThere = cell.part == GridCell::Part::Body && cell.column == column;
            if (isThere && TextOfBox(document, cell.item).starts_with('=')) {
                return cell.item;
            }
        }
        return target.region;
    }
    const std::vector<RegionGroup> groups = GroupsOf(document, target.region, Axis::Rows);
    if (groups.empty()) {
        throw EditError("The table has no group of rows that another one could be around");
    }
    const bool hasHeaders = GridOf(document, target.region).headerWidth > 0;
    return AddGroup(document, target.region, Axis::Rows, groups.front().member, GroupPlace::Parent,
                    {FieldValue(field.field), !hasHeaders, false});
}

bool IsNumber(const Document& document, const DraggedField& field) {
    for (const ReportSet& set : SetsOf(document)) {
        for (const ReportField& one : set.fields) {
            if (SameAscii(set.name, field.dataSet) && SameAscii(one.name, field.field)) {
                return one.IsNumeric();
            }
        }
    }
    return false;
}

// Returns the value over all rows of the data set.
std::string WholeValue(const Document& document, const DraggedField& field) {
    return (IsNumber(document, field) ? "=Sum(Fields!" : "=First(Fields!") + field.field + ".Value, \"" +
           field.dataSet + "\")";
}

// Page header and footer have no rows.
ElementId PlaceOnPage(Document& document, const ReportBand& wished, const DraggedField& field,
                      QPointF place) {
    const ReportBand band = CompleteBand(document, wished);
    if (band.kind == BandKind::Body) {
        const ElementId table = InsertNewTable(document, band, {place.x(), place.y(), 0, 0}, NewTable::Table,
                                               field.dataSet, {field.field});
        KeepInBand(document, {table});
        return table;
    }
    Rect area = UsualSize(NewItem::TextBox);
    area.left = place.x();
    area.top = place.y();
    const ElementId box = InsertItem(document, band, NewItem::TextBox, area);
    SetTextOfBox(document, box, WholeValue(document, field));
    return box;
}

}  // namespace

QMimeData* MimeDataOf(const DraggedField& field) {
    auto* data = new QMimeData;
    data->setData(FieldMimeType, QByteArray::fromStdString(field.dataSet + "\n" + field.field));
    data->setText(QString::fromStdString(FieldValue(field.field)));
    return data;
}

std::optional<DraggedField> FieldIn(const QMimeData& data) {
    const std::string text = data.data(FieldMimeType).toStdString();
    const std::size_t line = text.find('\n');
    if (!data.hasFormat(FieldMimeType) || line == std::string::npos) {
        return std::nullopt;
    }
    return DraggedField{text.substr(0, line), text.substr(line + 1)};
}

QMimeData* MimeDataOfValue(const DraggedValue& value) {
    auto* data = new QMimeData;
    data->setData(ValueMimeType, QByteArray::fromStdString(value.expression + "\n" + value.picture));
    data->setText(QString::fromStdString(value.expression + value.picture));
    return data;
}

std::optional<DraggedValue> ValueIn(const QMimeData& data) {
    const std::string text = data.data(ValueMimeType).toStdString();
    const std::size_t line = text.find('\n');
    if (!data.hasFormat(ValueMimeType) || line == std::string::npos) {
        return std::nullopt;
    }
    return DraggedValue{text.substr(0, line), text.substr(line + 1)};
}

std::string ExpressionIn(const DesignModel& model, ElementId box, const DraggedField& field) {
    for (const ReportItem* item = model.Item(box); item; item = model.Item(item->container)) {
        const bool isRegion = HasGrid(item->kind) || item->kind == "List";
        if (isRegion && SameAscii(DataSetOfRegion(model.Source(), item->id), field.dataSet)) {
            return FieldValue(field.field);
        }
    }
    return WholeValue(model.Source(), field);
}

bool IsFreeBox(const DesignModel& model, ElementId id) {
    const ReportItem* item = model.Item(id);
    return item && item->kind == "Textbox" && item->cell == NoElement;
}

FieldTarget TargetOfSelection(const DesignModel& model) {
    FieldTarget target;
    if (IsFreeBox(model, model.Leader())) {
        target.kind = FieldTarget::Kind::Box;
        target.region = model.Leader();
        return target;
    }
    if (const auto table = SelectedTable(model)) {
        target.region = table->region;
        target.cell = table->cell;
        target.column = GridOf(model.Source(), table->region).columns.size();
        target.kind = table->cell != NoElement ? FieldTarget::Kind::Cell : FieldTarget::Kind::Column;
        return target;
    }
    const auto& bands = model.Items().bands;
    const std::size_t section = SectionOfSelection(model);
    for (std::size_t band = 0; band < bands.size(); ++band) {
        const bool isBody = bands[band].kind == BandKind::Body && bands[band].section == section;
        if (isBody && target.kind == FieldTarget::Kind::None) {
            target.kind = FieldTarget::Kind::Page;
            target.band = band;
        }
    }
    double bottom = 0;
    for (const ReportItem& item : model.Items().items) {
        bottom = item.band == target.band ? std::max(bottom, item.place.Bottom() + Gap) : bottom;
    }
    target.place = {0, bottom};
    return target;
}

bool PlaceField(DesignModel& model, const DraggedField& field, const FieldTarget& target) {
    if (target.kind == FieldTarget::Kind::None) {
        return false;
    }
    const QString step = QObject::tr("Show %1").arg(QString::fromStdString(field.field));
    if (target.kind == FieldTarget::Kind::Box) {
        const std::string value = ExpressionIn(model, target.region, field);
        const bool isShown =
            model.Edit(step, [&](Document& document) { SetTextOfBox(document, target.region, value); });
        model.Select({target.region});
        return isShown;
    }
    ElementId shown = NoElement;
    const ReportItems items = model.Items();
    const bool isDone = model.Edit(step, [&](Document& document) {
        shown = target.kind == FieldTarget::Kind::Page
                    ? PlaceOnPage(document, items.bands.at(target.band), field, target.place)
                    : PlaceInTable(document, field, target);
        FitTable(document, items, target.region);
    });
    if (isDone && shown != NoElement) {
        model.Select({shown});
    }
    return isDone;
}

bool TakesValue(const DesignModel& model, ElementId item, const DraggedValue& value) {
    const ReportItem* found = model.Item(item);
    return found && found->kind == (value.picture.empty() ? "Textbox" : "Image");
}

namespace {

void ShowValue(Document& document, ElementId item, const DraggedValue& value) {
    if (value.picture.empty()) {
        SetTextOfBox(document, item, value.expression);
    } else {
        SetText(document, item, "Source", "Embedded");
        SetText(document, item, "Value", value.picture);
    }
}

QString StepOf(const DraggedValue& value) {
    return QObject::tr("Show %1").arg(
        QString::fromStdString(value.picture.empty() ? PlaceholderOf(value.expression) : value.picture));
}

}  // namespace

bool PlaceValue(DesignModel& model, const DraggedValue& value, ElementId item) {
    const bool isDone =
        model.Edit(StepOf(value), [&](Document& document) { ShowValue(document, item, value); });
    if (isDone) {
        model.Select({item});
    }
    return isDone;
}

bool PlaceValue(DesignModel& model, const DraggedValue& value, std::size_t band, QPointF place) {
    const ReportBand target = model.Items().bands.at(band);
    const NewItem kind = value.picture.empty() ? NewItem::TextBox : NewItem::Image;
    Rect area = UsualSize(kind);
    area.left = place.x();
    area.top = place.y();
    ElementId shown = NoElement;
    const bool isDone = model.Edit(StepOf(value), [&](Document& document) {
        shown = InsertItem(document, target, kind, area);
        ShowValue(document, shown, value);
    });
    if (isDone) {
        model.Select({shown});
    }
    return isDone;
}

}  // namespace designer
