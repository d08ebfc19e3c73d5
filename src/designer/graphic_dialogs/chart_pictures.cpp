// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphic_dialogs/chart_pictures.h"

#include <QPainter>
#include <cmath>
#include <map>
#include <string>

#include "designer/canvas/design_picture.h"
#include "designer/document/editing.h"
#include "designer/graphics/chart_parts.h"
#include "designer/graphics/chart_types.h"
#include "designer/model/new_items.h"

namespace designer {
namespace {

constexpr int Columns = 6;
constexpr double Width = ChartPictureWidth, Height = ChartPictureHeight;  // points on the page

// Two values, by a category; the design of charts has rows of its own.
ChartDesign SampleOf(const ChartType& type) {
    ChartDesign design;
    design.type = type.type;
    design.subtype = type.subtype;
    design.categories.push_back({NoElement, "=Fields!c.Value"});
    const bool isOneRing = !type.hasAxes && type.subtype != "TreeMap" && type.subtype != "Sunburst";
    for (int value = 0; value < (isOneRing ? 1 : 2); ++value) {
        ChartValue& one = design.values.emplace_back();
        one.label = "Series";
        for (const std::string& name : ValueNamesOf(&type)) {
            one.values[name] = "=Sum(Fields!v.Value)";
        }
    }
    return design;
}

std::string Points(double size) {
    return std::to_string(std::lround(size)) + "pt";
}

// A report with all charts, one page of them.
Document SampleReport() {
    Document document(BlankReport());
    const ElementId items = EnsureChild(document, BodyOf(document), "ReportItems");
    std::string charts;
    int number = 0;
    for (const ChartType& type : ChartTypes()) {
        const int row = number / Columns, column = number % Columns;
        InsertXml(document, items,
                  "<Chart Name=\"Chart" + std::to_string(number) + "\">" +
                      NewChartContent(document, SampleOf(type)) + "<Top>" + Points(row * Height) +
                      "</Top><Left>" + Points(column * Width) + "</Left><Height>" + Points(Height) +
                      "</Height><Width>" + Points(Width) + "</Width><Style /></Chart>");
        ++number;
    }
    return document;
}

std::vector<QPixmap> Draw(double ratio) {
    const DesignModel model(SampleReport());
    DesignPicture picture;
    picture.Make(model);
    std::size_t body = 0;
    for (std::size_t band = 0; band < model.Items().bands.size(); ++band) {
        body = model.Items().bands[band].kind == BandKind::Body ? band : body;
    }
    std::vector<QPixmap> pictures;
    for (std::size_t number = 0; number < ChartTypes().size(); ++number) {
        QPixmap one(QSizeF(Width * ratio, Height * ratio).toSize());
        one.setDevicePixelRatio(ratio);
        one.fill(Qt::white);
        QPainter painter(&one);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        painter.setClipRect(QRectF(0, 0, Width, Height));
        const auto place = static_cast<int>(number);
        const int row = place / Columns, column = place % Columns;
        painter.translate(-column * Width, -row * Height);
        picture.PaintBand(body, painter);
        painter.end();
        pictures.push_back(one);
    }
    return pictures;
}

}  // namespace

const std::vector<QPixmap>& ChartPictures(double ratio) {
    static std::map<double, std::vector<QPixmap>> made;
    const auto [found, isNew] = made.try_emplace(ratio);
    if (isNew) {
        found->second = Draw(ratio);
    }
    return found->second;
}

}  // namespace designer
