// SPDX-License-Identifier: GPL-3.0-or-later
// Of styles. In the schemas from 2008 on a text box has the style of its texts in each run and paragraph.
#include "designer/document/properties/property_table.h"

namespace designer {
namespace {

using enum PropertyKind;
constexpr auto Allowed = Expressions::Allowed;

constexpr std::string_view LineStyles =
    "None Dotted Dashed Solid Double DashDot DashDotDot Groove Ridge Inset WindowInset Outset";
constexpr std::string_view Gradients =
    "None LeftRight TopBottom Center DiagonalLeft DiagonalRight HorizontalCenter VerticalCenter";
constexpr std::string_view Repeats = "Default Repeat NoRepeat RepeatX RepeatY Clip Fit";
constexpr std::string_view Corners =
    "Default Top TopLeft TopRight Left Center Right BottomRight Bottom BottomLeft";
constexpr std::string_view Weights =
    "Default Normal Thin ExtraLight Light Medium SemiBold Bold ExtraBold Heavy Lighter Bolder";
constexpr std::string_view Slants = "Default Normal Italic";
constexpr std::string_view Decorations = "Default None Underline Overline LineThrough";
constexpr std::string_view Alignments = "Default General Left Center Right Justify";
constexpr std::string_view Directions = "Default LTR RTL";
constexpr std::string_view Calendars =
    "Default Gregorian GregorianArabic GregorianMiddleEastFrench GregorianTransliteratedEnglish "
    "GregorianTransliteratedFrench GregorianUSEnglish Hebrew Hijri Japanese Julian Korean Taiwan "
    "ThaiBuddhist";
constexpr std::string_view BiDis = "Normal Embed BiDi-Override";

constexpr Property Fill[] = {
    {"Background colour", "Fill", "Style/BackgroundColor", Color, Allowed, "Transparent"},
    {"Gradient", "Fill", "Style/BackgroundGradientType", Words, Allowed, "None", Gradients},
    {"Gradient end colour", "Fill", "Style/BackgroundGradientEndColor", Color, Allowed, "Transparent"},
    {"Background picture source", "Fill", "Style/BackgroundImage/Source", Words, Expressions::No, "",
     "External Embedded Database"},
    {"Background picture", "Fill", "Style/BackgroundImage/Value", Image, Allowed},
    {"Background picture type", "Fill", "Style/BackgroundImage/MIMEType", Text, Allowed},
    {"Background repeat", "Fill", "Style/BackgroundImage/BackgroundRepeat", Words, Allowed, "Repeat",
     Repeats},
    {"Background position", "Fill", "Style/BackgroundImage/Position", Words, Allowed, "Default", Corners,
     "-"},
};

constexpr Property Borders[] = {
    {"Border colour", "Border", "Style/Border/Color", Color, Allowed, "Black", "",
     "Style/BorderColor/Default"},
    {"Border style", "Border", "Style/Border/Style", Words, Allowed, "None", LineStyles,
     "Style/BorderStyle/Default"},
    {"Border width", "Border", "Style/Border/Width", Size, Allowed, "1pt", "", "Style/BorderWidth/Default"},
    {"Left border colour", "Border", "Style/LeftBorder/Color", Color, Allowed, "", "",
     "Style/BorderColor/Left"},
    {"Left border style", "Border", "Style/LeftBorder/Style", Words, Allowed, "", LineStyles,
     "Style/BorderStyle/Left"},
    {"Left border width", "Border", "Style/LeftBorder/Width", Size, Allowed, "", "",
     "Style/BorderWidth/Left"},
    {"Right border colour", "Border", "Style/RightBorder/Color", Color, Allowed, "", "",
     "Style/BorderColor/Right"},
    {"Right border style", "Border", "Style/RightBorder/Style", Words, Allowed, "", LineStyles,
     "Style/BorderStyle/Right"},
    {"Right border width", "Border", "Style/RightBorder/Width", Size, Allowed, "", "",
     "Style/BorderWidth/Right"},
    {"Top border colour", "Border", "Style/TopBorder/Color", Color, Allowed, "", "", "Style/BorderColor/Top"},
    {"Top border style", "Border", "Style/TopBorder/Style", Words, Allowed, "", LineStyles,
     "Style/BorderStyle/Top"},
    {"Top border width", "Border", "Style/TopBorder/Width", Size, Allowed, "", "", "Style/BorderWidth/Top"},
    {"Bottom border colour", "Border", "Style/BottomBorder/Color", Color, Allowed, "", "",
     "Style/BorderColor/Bottom"},
    {"Bottom border style", "Border", "Style/BottomBorder/Style", Words, Allowed, "", LineStyles,
     "Style/BorderStyle/Bottom"},
    {"Bottom border width", "Border", "Style/BottomBorder/Width", Size, Allowed, "", "",
     "Style/BorderWidth/Bottom"},
};

constexpr Property LineLook[] = {
    {"Line colour", "Line", "Style/Border/Color", Color, Allowed, "Black", "", "Style/BorderColor/Default"},
    {"Line style", "Line", "Style/Border/Style", Words, Allowed, "None", LineStyles,
     "Style/BorderStyle/Default"},
    {"Line width", "Line", "Style/Border/Width", Size, Allowed, "1pt", "", "Style/BorderWidth/Default"},
};

constexpr Property Paddings[] = {
    {"Left padding", "Layout", "Style/PaddingLeft", Size, Allowed, "0pt"},
    {"Right padding", "Layout", "Style/PaddingRight", Size, Allowed, "0pt"},
    {"Top padding", "Layout", "Style/PaddingTop", Size, Allowed, "0pt"},
    {"Bottom padding", "Layout", "Style/PaddingBottom", Size, Allowed, "0pt"},
};

// The texts of a text box: its runs, in older files the box itself.
#define OXC_OF_PARAGRAPHS "Paragraphs/Paragraph/"
#define OXC_OF_RUNS "Paragraphs/Paragraph/TextRuns/TextRun/Style/"
constexpr Property TextOfBoxes[] = {
    {"Font", "Font", OXC_OF_RUNS "FontFamily", Font, Allowed, "Arial", "", "Style/FontFamily", true},
    {"Font size", "Font", OXC_OF_RUNS "FontSize", Size, Allowed, "10pt", "", "Style/FontSize", true},
    {"Font style", "Font", OXC_OF_RUNS "FontStyle", Words, Allowed, "Normal", Slants, "Style/FontStyle",
     true},
    {"Font weight", "Font", OXC_OF_RUNS "FontWeight", Words, Allowed, "Normal", Weights, "Style/FontWeight",
     true},
    {"Text decoration", "Font", OXC_OF_RUNS "TextDecoration", Words, Allowed, "None", Decorations,
     "Style/TextDecoration", true},
    {"Text colour", "Font", OXC_OF_RUNS "Color", Color, Allowed, "Black", "", "Style/Color", true},
    {"Format", "Value", OXC_OF_RUNS "Format", Format, Allowed, "", "", "Style/Format", true},
    {"Language", "Value", OXC_OF_RUNS "Language", Text, Allowed, "", "", "Style/Language", true},
    {"Calendar", "Value", OXC_OF_RUNS "Calendar", Words, Allowed, "Default", Calendars, "Style/Calendar",
     true},
    {"Numeral language", "Value", OXC_OF_RUNS "NumeralLanguage", Text, Allowed, "", "",
     "Style/NumeralLanguage", true},
    {"Numeral variant", "Value", OXC_OF_RUNS "NumeralVariant", Integer, Allowed, "1", "",
     "Style/NumeralVariant", true},
    {"Bidirectional text", "Value", OXC_OF_RUNS "UnicodeBiDi", Words, Allowed, "Normal", BiDis,
     "Style/UnicodeBiDi", true},
    {"Text alignment", "Paragraph", "Paragraphs/Paragraph/Style/TextAlign", Words, Allowed, "General",
     Alignments, "Style/TextAlign", true},
    {"Line height", "Paragraph", "Paragraphs/Paragraph/Style/LineHeight", Size, Allowed, "", "",
     "Style/LineHeight", true},
    {"List", "Paragraph", OXC_OF_PARAGRAPHS "ListStyle", Words, Expressions::No, "None",
     "None Numbered Bulleted", "-", true},
    {"List level", "Paragraph", OXC_OF_PARAGRAPHS "ListLevel", Integer, Expressions::No, "0", "", "-", true},
    {"Left indent", "Paragraph", OXC_OF_PARAGRAPHS "LeftIndent", Size, Allowed, "0pt", "", "-", true},
    {"Right indent", "Paragraph", OXC_OF_PARAGRAPHS "RightIndent", Size, Allowed, "0pt", "", "-", true},
    {"Hanging indent", "Paragraph", OXC_OF_PARAGRAPHS "HangingIndent", Size, Allowed, "0pt", "", "-", true},
    {"Space before", "Paragraph", OXC_OF_PARAGRAPHS "SpaceBefore", Size, Allowed, "0pt", "", "-", true},
    {"Space after", "Paragraph", OXC_OF_PARAGRAPHS "SpaceAfter", Size, Allowed, "0pt", "", "-", true},
};
#undef OXC_OF_PARAGRAPHS
#undef OXC_OF_RUNS

constexpr Property BoxText[] = {
    {"Vertical alignment", "Layout", "Style/VerticalAlign", Words, Allowed, "Top",
     "Default Top Middle Bottom"},
    {"Writing mode", "Layout", "Style/WritingMode", Words, Allowed, "Horizontal",
     "Default Horizontal Vertical Rotate270 lr-tb tb-rl"},
    {"Direction", "Layout", "Style/Direction", Words, Allowed, "LTR", Directions},
};

constexpr Property TextOfParts[] = {
    {"Font", "Font", "Style/FontFamily", Font, Allowed, "Arial"},
    {"Font size", "Font", "Style/FontSize", Size, Allowed, "10pt"},
    {"Font style", "Font", "Style/FontStyle", Words, Allowed, "Normal", Slants},
    {"Font weight", "Font", "Style/FontWeight", Words, Allowed, "Normal", Weights},
    {"Text decoration", "Font", "Style/TextDecoration", Words, Allowed, "None", Decorations},
    {"Text colour", "Font", "Style/Color", Color, Allowed, "Black"},
    {"Format", "Value", "Style/Format", Format, Allowed},
};
constexpr Property TextOfRuns[] = {
    {"Language", "Value", "Style/Language", Text, Allowed},
    {"Calendar", "Value", "Style/Calendar", Words, Allowed, "Default", Calendars},
    {"Numeral language", "Value", "Style/NumeralLanguage", Text, Allowed},
    {"Numeral variant", "Value", "Style/NumeralVariant", Integer, Allowed, "1"},
    {"Bidirectional text", "Value", "Style/UnicodeBiDi", Words, Allowed, "Normal", BiDis},
};
constexpr Property OfParagraphs[] = {
    {"Text alignment", "Paragraph", "Style/TextAlign", Words, Allowed, "General", Alignments},
    {"Line height", "Paragraph", "Style/LineHeight", Size, Allowed},
};
constexpr Property Colors[] = {{"Colour", "Fill", "Style/Color", Color, Allowed, "Black"}};

constexpr std::string_view Boxes =
    "Body Page PageHeader PageFooter Textbox Rectangle Image Subreport Tablix Table Matrix List Chart "
    "GaugePanel Map "
    "CustomReportItem BarCode";
constexpr std::string_view Parts =
    "ChartSeries ChartDataPoint ChartDataLabel ChartMarker ChartTitle ChartAxisTitle ChartLegend "
    "ChartLegendTitle "
    "ChartArea ChartAxis ChartNoDataMessage DataPoint DataLabel Marker Title Legend PlotArea Axis BackFrame "
    "FrameBackground RadialScale LinearScale ScaleRange ScaleLabels RadialPointer LinearPointer GaugeLabel "
    "StateIndicator NumericIndicator Subtotal";

constexpr PropertyGroup Groups[] = {
    {"Line", LineLook},
    {"Textbox", TextOfBoxes},
    {"Textbox", BoxText},
    {"Textbox Image", Paddings},
    {"TextRun", TextOfParts},
    {"TextRun", TextOfRuns},
    {"Paragraph", OfParagraphs},
    {"CustomReportItem BarCode", Colors},
    {Parts, TextOfParts},
    {Boxes, Fill},
    {Boxes, Borders},
    {Parts, Fill},
    {Parts, Borders},
    {"CustomLabel", TextOfParts},
    {"PointerCap Thermometer GaugeMajorTickMarks GaugeMinorTickMarks", Fill},
    {"PointerCap GaugeMajorTickMarks GaugeMinorTickMarks", Borders},
    {"ChartMajorGridLines ChartMinorGridLines ChartMajorTickMarks ChartMinorTickMarks MajorGridLines "
     "MinorGridLines",
     LineLook},
};

}  // namespace

std::span<const PropertyGroup> StyleProperties() {
    return Groups;
}

}  // namespace designer
