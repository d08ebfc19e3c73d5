// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/design_copy.h"

#include <algorithm>
#include <functional>
#include <map>
#include <system_error>
#include <utility>

#include "designer/document/design_charts.h"
#include "designer/document/design_writer.h"
#include "designer/document/item_size.h"
#include "designer/document/names.h"
#include "designer/document/placeholder_text.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

constexpr double Slack = 1;             // points: rounding must not make a page too small
constexpr double LargestPage = 32'000;  // points: 455 inches is the largest size of a report
constexpr double LeastPage = 10;

std::string Points(double size) {
    return SizeText(size, "1pt");
}

class CopyMaker {
 public:
    CopyMaker(const Document& document, const DesignOptions& options)
        : m_options(options), m_document(document), m_tree(document.Tree()), m_writer(document) {}

    DesignCopy Make() {
        m_items = ReadReportItems(m_document);
        PlaceBands();
        for (const ReportItem& item : m_items.items) {
            m_places[m_document.IndexOf(item.id)] = item.place;
        }
        for (const std::string& picture : m_options.pictures) {
            m_writer.LeaveImageOut(picture);
        }
        m_writer.Around(0, [this] { Report(); });
        m_copy.text = m_writer.Written();
        return std::move(m_copy);
    }

 private:
    struct Sheet {
        double width = LeastPage, height = 0;
    };

    // --- Pages ---

    // A band is as large as its items need.
    void PlaceBands() {
        std::vector<Rect> extents;
        for (const ReportBand& band : m_items.bands) {
            extents.push_back({0, 0, band.width, std::max(0.0, band.height)});
        }
        for (const ReportItem& item : m_items.items) {
            Rect& extent = extents[item.band];
            extent.width = std::clamp(item.place.Right(), extent.width, std::max(extent.width, LargestPage));
            extent.height =
                std::clamp(item.place.Bottom(), extent.height, std::max(extent.height, LargestPage));
        }
        for (std::size_t i = 0; i < extents.size(); ++i) {
            const std::size_t section = m_items.bands[i].section;
            m_sheets.resize(std::max(m_sheets.size(), section + 1));
            Sheet& sheet = m_sheets[section];
            sheet.width = std::min(LargestPage, std::max(sheet.width, extents[i].width + Slack));
            const bool isFooter = m_items.bands[i].kind == BandKind::PageFooter;
            // The footer is at the end of the page.
            extents[i].top = sheet.height + (isFooter ? Slack : 0);
            sheet.height = extents[i].Bottom() + (isFooter || HasFooter(section) ? 0 : Slack);
            m_copy.bands.push_back({static_cast<int>(section) + 1, extents[i]});
        }
        for (std::size_t i = 0; i < extents.size(); ++i) {
            m_copy.bands[i].place.width = m_sheets[m_items.bands[i].section].width;
        }
    }

    bool HasFooter(std::size_t section) const {
        return std::any_of(m_items.bands.begin(), m_items.bands.end(), [section](const ReportBand& band) {
            return band.section == section && band.kind == BandKind::PageFooter;
        });
    }

    void Report() {
        if (m_tree.Child(0, "ReportSections") == NoIndex) {
            Section(0, 0);
        }
        for (const int child : m_tree.Children(0)) {
            const std::string_view name = m_tree.LocalName(child);
            if (name == "ReportSections" && m_tree.IsOfReport(child)) {
                m_writer.Around(child, [&] {
                    std::size_t number = 0;
                    for (const int section : m_tree.Children(child)) {
                        if (m_tree.IsOfReport(section)) {
                            m_writer.Around(section, [&] { Section(section, number); });
                            ++number;
                        }
                    }
                });
            } else if (name == "EmbeddedImages") {
                Pictures(child);
            } else if (name == "DefaultFontFamily" || name == "Language") {
                m_writer.Copy(child);
            }
        }
        m_writer.Open("DataSets");
        m_writer.OpenNamed("DataSet", DesignRowSet);
        m_writer.Open("Fields");
        m_writer.OpenNamed("Field", "one");
        m_writer.Leaf("DataField", "one");
        m_writer.Close("Field");
        m_writer.Close("Fields");
        m_writer.Open("Rows");
        m_writer.Open("Row");
        m_writer.Leaf("one", "1");
        m_writer.Close("Row");
        m_writer.Close("Rows");
        m_writer.Close("DataSet");
        WriteChartRows(m_writer);
        m_writer.Close("DataSets");
    }

    void Pictures(int element) {
        m_writer.Around(element, [&] {
            for (const int picture : m_tree.Children(element)) {
                if (m_writer.HasImage(m_tree.AttributeOf(picture, "Name").value_or(""))) {
                    m_writer.Copy(picture);
                }
            }
        });
    }

    void Section(int section, std::size_t number) {
        const int page = m_tree.Child(section, "Page");
        const int body = m_tree.Child(section, "Body");
        const Sheet sheet = number < m_sheets.size() ? m_sheets[number] : Sheet();
        const auto settings = [&](int owner) {
            m_writer.Leaf("PageWidth", Points(sheet.width));
            m_writer.Leaf("PageHeight", Points(std::clamp(sheet.height, LeastPage, LargestPage)));
            for (const std::string_view name : {"PageHeader", "PageFooter"}) {
                Band(m_tree.Child(owner, name));
            }
        };
        m_writer.Leaf("Width", Points(sheet.width));
        if (page == NoIndex) {
            settings(section);
        } else {
            m_writer.Around(page, [&] {
                settings(page);
                m_writer.CopyChildren(page, {"Style"});
            });
        }
        Band(body);
    }

    void Band(int element) {
        if (element == NoIndex) {
            return;
        }
        m_writer.Around(element, [&] {
            for (std::size_t i = 0; i < m_items.bands.size(); ++i) {
                if (m_items.bands[i].element == m_document.IdAt(element)) {
                    m_writer.Leaf("Height", Points(m_copy.bands[i].place.height));
                    if (m_items.bands[i].kind != BandKind::Body) {
                        m_writer.Leaf("PrintOnFirstPage", "true");
                        m_writer.Leaf("PrintOnLastPage", "true");
                    }
                }
            }
            Items(element);
            m_writer.CopyChildren(element, {"Style"});
        });
    }

    // --- Items ---

    void Items(int owner) {
        const int items = m_tree.Child(owner, "ReportItems");
        if (items != NoIndex) {
            m_writer.Around(items, [&] {
                for (const int child : m_tree.Children(items)) {
                    if (m_tree.IsOfReport(child)) {
                        Item(child);
                    }
                }
            });
        }
    }

    void Item(int element) {
        const std::string_view kind = m_tree.LocalName(element);
        using Writer = void (CopyMaker::*)(int);
        static const std::map<std::string_view, Writer> Writers = {
            {"Textbox", &CopyMaker::TextboxParts}, {"Line", &CopyMaker::NoParts},
            {"Rectangle", &CopyMaker::Items},      {"Image", &CopyMaker::ImageParts},
            {"List", &CopyMaker::ListParts},       {"Tablix", &CopyMaker::TablixParts},
            {"Table", &CopyMaker::TableParts},     {"Matrix", &CopyMaker::TableParts},
            {"Chart", &CopyMaker::ChartParts},     {"GaugePanel", &CopyMaker::GaugeParts},
        };
        const auto writer = Writers.find(kind);
        const bool isBox = m_options.boxes.contains(m_document.IdAt(element));
        if (!isBox && IsBarcode(m_writer, element) && (kind == "CustomReportItem" || kind == "BarCode")) {
            Framed(element, [&] { WriteBarcode(m_writer, element); });
        } else if (isBox || writer == Writers.end() || (kind == "Image" && !IsShown(element))) {
            Box(element);
        } else {
            Framed(element, [&] { (this->*writer->second)(element); });
        }
    }

    // An item with its place and look.
    void Framed(int element, const std::function<void()>& parts) {
        m_writer.Around(element, [&] {
            m_writer.CopyChildren(element, {"Left", "Top", "ZIndex"});
            Size(element);
            parts();
            m_writer.CopyChildren(element, {"Style"});
        });
    }

    // A table is as large as its parts whatever is written, so that it pushes nothing away.
    void Size(int element) {
        const auto place = m_places.find(element);
        if (place != m_places.end() && HasGrid(m_tree.LocalName(element))) {
            m_writer.Leaf("Width", Points(place->second.width));
            m_writer.Leaf("Height", Points(place->second.height));
        } else {
            m_writer.CopyChildren(element, {"Width", "Height"});
        }
    }

    // A place that the engine refuses becomes the nearest one that it takes.
    void BoxPlace(int element) {
        const bool hasGrid = HasGrid(m_tree.LocalName(element));
        m_writer.CopyChildren(element, {"ZIndex"});
        for (const std::string_view name : {"Left", "Top", "Width", "Height"}) {
            const bool isOfGrid = hasGrid && (name == "Width" || name == "Height");
            const std::string text = isOfGrid ? std::string() : m_writer.ChildText(element, name);
            if (const auto points = PointsOf(text)) {
                m_writer.Leaf(name,
                              IsReportSize(text) ? text : Points(std::clamp(*points, 0.0, LargestPage)));
            }
        }
        if (hasGrid) {
            Size(element);
        }
    }

    // Stands for an item that cannot be drawn, or not without data: a text box with the kind and the name.
    void Box(int element) {
        m_writer.OpenNamed("Textbox", m_tree.AttributeOf(element, "Name").value_or(""));
        BoxPlace(element);
        const std::string kind(m_tree.LocalName(element));
        std::string what = m_tree.AttributeOf(element, "Name").value_or("");
        if (kind == "Subreport") {
            what = m_writer.ChildText(element, "ReportName");
        } else if (kind == "Image") {
            what = PlaceholderOf(m_writer.ChildText(element, "Value"));
        }
        m_writer.Leaf("Value", what.empty() ? kind : kind + ": " + what);
        m_writer.Open("Style");
        m_writer.Open("Border");
        m_writer.Leaf("Color", "Gray");
        m_writer.Leaf("Style", "Dashed");
        m_writer.Close("Border");
        m_writer.Leaf("BackgroundColor", "WhiteSmoke");
        m_writer.Leaf("Color", "DimGray");
        m_writer.Leaf("FontSize", "8pt");
        m_writer.Leaf("TextAlign", "Center");
        m_writer.Leaf("VerticalAlign", "Middle");
        m_writer.Close("Style");
        m_writer.Close("Textbox");
    }

    void NoParts(int) {}
    void ChartParts(int element) { WriteChart(m_writer, element); }
    void GaugeParts(int element) { WriteGaugePanel(m_writer, element); }

    void Value(int owner) {
        const int value = m_tree.Child(owner, "Value");
        if (value != NoIndex) {
            m_writer.Leaf("Value", PlaceholderOf(m_tree.TextOf(value)));
        }
    }

    void TextboxParts(int element) {
        Value(element);
        const int paragraphs = m_tree.Child(element, "Paragraphs");
        if (paragraphs == NoIndex) {
            return;
        }
        m_writer.Around(paragraphs, [&] {
            for (const int paragraph : m_tree.Children(paragraphs)) {
                m_writer.Around(paragraph, [&] {
                    if (const int runs = m_tree.Child(paragraph, "TextRuns"); runs != NoIndex) {
                        m_writer.Around(runs, [&] { Runs(runs); });
                    }
                    m_writer.CopyChildren(paragraph, {"Style", "LeftIndent", "RightIndent", "HangingIndent",
                                                      "ListStyle", "ListLevel", "SpaceBefore", "SpaceAfter"});
                });
            }
        });
    }

    void Runs(int runs) {
        for (const int run : m_tree.Children(runs)) {
            m_writer.Around(run, [&] {
                Value(run);
                m_writer.CopyChildren(run, {"MarkupType", "Style"});
            });
        }
    }

    // Whether there is a picture to show: one of the report, or a file that exists.
    bool IsShown(int image) const { return m_writer.IsEmbedded(image) || !FileOf(image).empty(); }

    std::string FileOf(int image) const {
        const std::string name = m_writer.ChildText(image, "Value");
        const std::string source = m_writer.ChildText(image, "Source");
        if (m_options.folder.empty() || name.empty() || IsExpression(name) ||
            name.find("://") != std::string::npos || !(source.empty() || SameAscii(source, "External"))) {
            return {};
        }
        std::error_code failure;
        const std::filesystem::path file = m_options.folder / name;
        return std::filesystem::is_regular_file(file, failure)
                   ? std::filesystem::absolute(file, failure).string()
                   : std::string();
    }

    // A picture that sets the item's size would move what is around it.
    void ImageParts(int image) {
        const std::string file = FileOf(image);
        m_writer.CopyChildren(image, {"Source", "MIMEType"});
        m_writer.Leaf("Value", file.empty() ? m_writer.ChildText(image, "Value") : file);
        const std::string sizing = m_writer.ChildText(image, "Sizing");
        m_writer.Leaf("Sizing", sizing.empty() || SameAscii(sizing, "AutoSize") ? "Clip" : sizing);
    }

    // --- Regions ---

    void ListParts(int element) {
        m_writer.Leaf("DataSetName", DesignRowSet);
        Items(element);
    }

    void TablixParts(int element) {
        m_writer.Leaf("DataSetName", DesignRowSet);
        m_writer.CopyChildren(element, {"LayoutDirection", "GroupsBeforeRowHeaders"});
        for (const std::string_view part :
             {"TablixCorner", "TablixBody", "TablixColumnHierarchy", "TablixRowHierarchy"}) {
            if (const int child = m_tree.Child(element, part); child != NoIndex) {
                RegionPart(child);
            }
        }
    }

    void TableParts(int element) {
        m_writer.Leaf("DataSetName", DesignRowSet);
        m_writer.CopyChildren(element, {"LayoutDirection", "GroupsBeforeRowHeaders"});
        for (const std::string_view part :
             {"TableColumns", "Header", "TableGroups", "Details", "Footer", "Corner", "ColumnGroupings",
              "RowGroupings", "MatrixRows", "MatrixColumns"}) {
            if (const int child = m_tree.Child(element, part); child != NoIndex) {
                RegionPart(child);
            }
        }
    }

    // Everything that shapes the region and nothing that depends on rows. Groups keep their names and have
    // one instance; those of details have none of their own.
    void RegionPart(int element) {
        const std::string_view name = m_tree.LocalName(element);
        constexpr std::string_view Dropped[] = {
            "Visibility",      "SortExpressions", "Sorting",           "KeepWithGroup",    "RepeatOnNewPage",
            "FixedData",       "FixedHeader",     "HideIfNoRows",      "KeepTogether",     "CustomProperties",
            "DataElementName", "PageBreak",       "DataElementOutput", "PageBreakAtStart", "PageBreakAtEnd"};
        if (!m_tree.IsOfReport(element) ||
            std::find(std::begin(Dropped), std::end(Dropped), name) != std::end(Dropped)) {
            return;
        }
        if (IsReportItem(name)) {
            Item(element);
        } else if (name == "Group" || name == "Grouping") {
            Group(element);
        } else if (m_tree[element].firstChild == NoIndex || name == "Style") {
            m_writer.Copy(element);
        } else {
            m_writer.Around(element, [&] {
                for (const int child : m_tree.Children(element)) {
                    RegionPart(child);
                }
            });
        }
    }

    void Group(int element) {
        const int expressions = m_tree.Child(element, "GroupExpressions");
        const bool isDetails = expressions == NoIndex || m_tree[expressions].firstChild == NoIndex;
        m_writer.Around(element, [&] {
            if (!isDetails) {
                m_writer.Open("GroupExpressions");
                m_writer.Leaf("GroupExpression", "=1");
                m_writer.Close("GroupExpressions");
            }
        });
    }

    const DesignOptions& m_options;
    const Document& m_document;
    const SourceTree& m_tree;
    DesignWriter m_writer;
    ReportItems m_items;
    std::vector<Sheet> m_sheets;   // by section
    std::map<int, Rect> m_places;  // of items, by their index
    DesignCopy m_copy;
};

// Returns whether the message names the place. A longer name that begins with it is another place.
bool Names(const std::string& message, const std::string& place) {
    const std::size_t at = message.find(place);
    const char next =
        at == std::string::npos || at + place.size() == message.size() ? ' ' : message[at + place.size()];
    const bool ends = !IsAsciiLetterOrDigit(next) && next != '_' && static_cast<unsigned char>(next) < 0x80;
    return at != std::string::npos && ends;
}

}  // namespace

DesignCopy MakeDesignCopy(const Document& document, const DesignOptions& options) {
    return CopyMaker(document, options).Make();
}

ElementId ItemNamedIn(const Document& document, const std::string& message) {
    ElementId found = NoElement;
    std::size_t longest = 0;
    for (const ReportItem& item : ReadReportItems(document).items) {
        // What is wrong with a picture is said of the item that shows it, also of one as a background.
        const std::string quoted = "Image \"" + item.name + "\"", place = item.kind + " " + item.name;
        const bool isNamed =
            !item.name.empty() && (Names(message, place) || message.find(quoted) != std::string::npos);
        if (isNamed && place.size() > longest) {
            found = item.id;
            longest = place.size();
        }
    }
    return found;
}

std::string PictureNamedIn(const Document& document, const std::string& message) {
    const SourceTree& tree = document.Tree();
    const int pictures = tree.Child(0, "EmbeddedImages");
    for (const int picture : pictures == NoIndex ? std::vector<int>() : tree.Children(pictures)) {
        std::string name = tree.AttributeOf(picture, "Name").value_or("");
        if (!name.empty() && Names(message, "EmbeddedImage " + name)) {
            return name;
        }
    }
    return {};
}

}  // namespace designer
