// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/new_items.h"

#include <QByteArray>
#include <algorithm>
#include <optional>

#include "designer/document/editing.h"
#include "designer/document/item_size.h"
#include "designer/document/names.h"
#include "designer/document/properties/properties.h"
#include "designer/model/page_setup.h"
#include "designer/model/placing.h"
#include "designer/model/report_body.h"
#include "designer/tables/new_tables.h"

namespace designer {
namespace {

std::string ContentOf(NewItem kind, bool isOld) {
    const std::string padding =
        "<PaddingLeft>2pt</PaddingLeft><PaddingRight>2pt</PaddingRight>"
        "<PaddingTop>2pt</PaddingTop><PaddingBottom>2pt</PaddingBottom>";
    switch (kind) {
        case NewItem::TextBox:
            if (isOld) {
                return "<CanGrow>true</CanGrow><Style>" + padding + "</Style><Value></Value>";
            }
            return "<CanGrow>true</CanGrow><KeepTogether>true</KeepTogether><Paragraphs><Paragraph><TextRuns>"
                   "<TextRun><Value></Value><Style /></TextRun></TextRuns><Style /></Paragraph></Paragraphs>"
                   "<Style>" +
                   padding + "</Style>";
        case NewItem::Line:
            return isOld ? "<Style><BorderStyle><Default>Solid</Default></BorderStyle></Style>"
                         : "<Style><Border><Style>Solid</Style></Border></Style>";
        case NewItem::Rectangle:
            return isOld ? "<Style />" : "<KeepTogether>true</KeepTogether><Style />";
        case NewItem::Image:
            return "<Source>Embedded</Source><Value></Value><Sizing>FitProportional</Sizing><Style />";
        default:
            break;  // tables have a writer of their own
    }
    return {};
}

// A size as the report writes its own.
std::string Written(const Document& document, double points) {
    const ElementId body = BodyOf(document);
    const auto like = body == NoElement ? std::nullopt : document.TextAt(body, "Height");
    return SizeText(points, like.value_or("1cm"));
}

std::optional<NewGraphic> GraphicOf(NewItem kind) {
    switch (kind) {
        case NewItem::Chart:
            return NewGraphic::Chart;
        case NewItem::Gauge:
            return NewGraphic::Gauge;
        case NewItem::Indicator:
            return NewGraphic::Indicator;
        case NewItem::BarCode:
            return NewGraphic::BarCode;
        case NewItem::Subreport:
            return NewGraphic::Subreport;
        default:
            return std::nullopt;
    }
}

std::optional<NewTable> TableOf(NewItem kind) {
    switch (kind) {
        case NewItem::Table:
            return NewTable::Table;
        case NewItem::Matrix:
            return NewTable::Matrix;
        case NewItem::List:
            return NewTable::List;
        default:
            return std::nullopt;
    }
}

}  // namespace

std::string_view ElementOf(NewItem kind) {
    switch (kind) {
        case NewItem::TextBox:
            return "Textbox";
        case NewItem::Line:
            return "Line";
        case NewItem::Rectangle:
            return "Rectangle";
        case NewItem::Image:
            return "Image";
        case NewItem::Chart:
            return "Chart";
        case NewItem::Gauge:
        case NewItem::Indicator:
            return "GaugePanel";
        case NewItem::BarCode:
            return "CustomReportItem";
        case NewItem::Subreport:
            return "Subreport";
        default:
            return "Tablix";
    }
}

Rect UsualSize(NewItem kind) {
    switch (kind) {
        case NewItem::TextBox:
            return {0, 0, 108, 18};
        case NewItem::Line:
            return {0, 0, 144, 0};
        case NewItem::Table:
            return {0, 0, 270, 36};
        case NewItem::Matrix:
            return {0, 0, 180, 36};
        case NewItem::List:
        case NewItem::Subreport:
            return {0, 0, 270, 72};
        case NewItem::Chart:
            return {0, 0, 288, 198};
        case NewItem::Gauge:
            return {0, 0, 144, 144};
        case NewItem::Indicator:
            return {0, 0, 36, 36};
        default:
            return {0, 0, 108, 72};
    }
}

ElementId InsertItem(Document& document, const ReportBand& wished, NewItem kind, const Rect& place,
                     const GraphicChoice& choice) {
    const ReportBand band = CompleteBand(document, wished);
    if (const auto table = TableOf(kind)) {
        const ElementId id = InsertNewTable(document, band, place, *table, {}, {});
        KeepInBand(document, {id});
        return id;
    }
    if (const auto graphic = GraphicOf(kind)) {
        const ElementId id = InsertGraphic(document, band, place, *graphic, choice);
        KeepInBand(document, {id});
        return id;
    }
    const std::string element(ElementOf(kind));
    const std::string xml = "<" + element + " Name=\"" + UniqueName(document, element + "1") + "\">" +
                            ContentOf(kind, IsOlderSchema(document)) + "<Top>" +
                            Written(document, place.top) + "</Top><Left>" + Written(document, place.left) +
                            "</Left><Height>" + Written(document, place.height) + "</Height><Width>" +
                            Written(document, place.width) + "</Width></" + element + ">";
    const ElementId id = InsertXml(document, EnsureChild(document, band.element, "ReportItems"), xml);
    KeepInBand(document, {id});
    return id;
}

void EmbedPicture(Document& document, ElementId image, std::string_view type, std::string_view bytes,
                  const std::string& wish) {
    const std::string name = UniqueName(document, IsReportItem(wish) ? wish + "1" : wish);
    const QByteArray data = QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())).toBase64();
    const ElementId pictures = EnsureChild(document, document.Root(), "EmbeddedImages");
    InsertXml(document, pictures,
              "<EmbeddedImage Name=\"" + name + "\"><MIMEType>" + std::string(type) +
                  "</MIMEType><ImageData>" + data.toStdString() + "</ImageData></EmbeddedImage>");
    SetText(document, image, "Source", "Embedded");
    SetText(document, image, "Value", name);
}

namespace {

const char* NameOf(BandKind kind) {
    return kind == BandKind::PageHeader ? "PageHeader" : "PageFooter";
}

}  // namespace

// They are in the page since 2008, and in the report before.
ElementId PageBandOf(const Document& document, BandKind kind, std::size_t section) {
    const std::vector<ElementId> sections = SectionsOf(document);
    const std::string page = IsOlderSchema(document) ? "" : "Page/";
    return section < sections.size() ? document.Find(sections[section], page + NameOf(kind)) : NoElement;
}

ElementId InsertPageBand(Document& document, BandKind kind, std::size_t section) {
    const ElementId owner = CompleteSection(document, section);
    const ElementId page = IsOlderSchema(document) ? owner : EnsureChild(document, owner, "Page");
    const std::string name = NameOf(kind);
    return InsertXml(
        document, page,
        "<" + name + "><Height>" + Written(document, 1.5 * 72 / 2.54) +
            "</Height><PrintOnFirstPage>true</PrintOnFirstPage><PrintOnLastPage>true</PrintOnLastPage></" +
            name + ">");
}

std::string BlankReport() {
    return R"(<?xml version="1.0" encoding="utf-8"?>
<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition">
  <ReportSections>
    <ReportSection>
      <Body>
        <Height>8cm</Height>
      </Body>
      <Width>17cm</Width>
      <Page>
        <PageHeader>
          <Height>1.5cm</Height>
          <PrintOnFirstPage>true</PrintOnFirstPage>
          <PrintOnLastPage>true</PrintOnLastPage>
        </PageHeader>
        <PageFooter>
          <Height>1.5cm</Height>
          <PrintOnFirstPage>true</PrintOnFirstPage>
          <PrintOnLastPage>true</PrintOnLastPage>
        </PageFooter>
        <PageHeight>29.7cm</PageHeight>
        <PageWidth>21cm</PageWidth>
        <LeftMargin>2cm</LeftMargin>
        <RightMargin>2cm</RightMargin>
        <TopMargin>2cm</TopMargin>
        <BottomMargin>2cm</BottomMargin>
      </Page>
    </ReportSection>
  </ReportSections>
</Report>
)";
}

}  // namespace designer
