// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/barcode.h"

#include <zint.h>

#include <algorithm>
#include <array>
#include <limits>

#include "rdl/definition/barcode.h"
#include "rdl/layout/drawing/canvas.h"
#include "rdl/values/ascii.h"
#include "rdl/values/utf8.h"

namespace rdl::layout {
namespace {

struct Encoder {
    Symbology symbology;
    int number;  // of the library
    bool isMatrix = false;
    int mode = UNICODE_MODE;
};

constexpr int Gs1Mode = GS1_MODE | GS1PARENS_MODE;

constexpr std::array Encoders = {
    Encoder{Symbology::Code128, BARCODE_CODE128},
    Encoder{Symbology::Gs1128, BARCODE_GS1_128, false, Gs1Mode},
    Encoder{Symbology::Code39, BARCODE_CODE39},
    Encoder{Symbology::Code39Extended, BARCODE_EXCODE39},
    Encoder{Symbology::Code93, BARCODE_CODE93},
    Encoder{Symbology::Code11, BARCODE_CODE11},
    Encoder{Symbology::Ean13, BARCODE_EANX},
    Encoder{Symbology::Ean8, BARCODE_EANX},
    Encoder{Symbology::UpcA, BARCODE_UPCA},
    Encoder{Symbology::UpcE, BARCODE_UPCE},
    Encoder{Symbology::Isbn, BARCODE_ISBNX},
    Encoder{Symbology::Interleaved2of5, BARCODE_C25INTER},
    Encoder{Symbology::Itf14, BARCODE_ITF14},
    Encoder{Symbology::Codabar, BARCODE_CODABAR},
    Encoder{Symbology::Msi, BARCODE_MSI_PLESSEY},
    Encoder{Symbology::Postnet, BARCODE_POSTNET},
    Encoder{Symbology::IntelligentMail, BARCODE_USPS_IMAIL},
    Encoder{Symbology::RoyalMail, BARCODE_RM4SCC},
    Encoder{Symbology::Gs1DataBar, BARCODE_DBAR_OMN},
    Encoder{Symbology::Pdf417, BARCODE_PDF417, true},
    Encoder{Symbology::MicroPdf417, BARCODE_MICROPDF417, true},
    Encoder{Symbology::QrCode, BARCODE_QRCODE, true},
    Encoder{Symbology::MicroQr, BARCODE_MICROQR, true},
    Encoder{Symbology::DataMatrix, BARCODE_DATAMATRIX, true},
    Encoder{Symbology::Gs1DataMatrix, BARCODE_DATAMATRIX, true, Gs1Mode},
    Encoder{Symbology::Aztec, BARCODE_AZTEC, true},
};
static_assert(std::all_of(std::begin(Symbologies), std::end(Symbologies), [](const SymbologyRow& row) {
    return std::count_if(Encoders.begin(), Encoders.end(),
                         [&row](const Encoder& encoder) { return encoder.symbology == row.symbology; }) == 1;
}));

constexpr std::size_t LongestValue = 8000;  // more than any symbol holds

using SymbolPtr = std::unique_ptr<zint_symbol, decltype(&ZBarcode_Delete)>;

// Returns 1 to 4, or 0 for the library's choice.
int CorrectionOf(std::string_view level) {
    constexpr std::string_view Levels = "LMQH";
    const std::size_t at =
        level.size() == 1 ? Levels.find(AsciiUpper(level.front())) : std::string_view::npos;
    return at == std::string_view::npos ? 0 : static_cast<int>(at) + 1;
}

// The library makes an EAN-8 of a short EAN-13, and fills shorter values with zeros: a scanner would read
// another number.
std::string WrongLength(Symbology symbology, std::string_view value) {
    const std::size_t digits = std::min(value.find('+'), value.size());  // an add-on follows
    const auto needs = [&](std::size_t least, std::string_view text) {
        return digits == least || digits == least + 1 ? std::string() : std::string(text);
    };
    switch (symbology) {
        case Symbology::Ean13:
            return needs(12, "needs 12 or 13 digits");
        case Symbology::Ean8:
            return needs(7, "needs 7 or 8 digits");
        case Symbology::UpcA:
            return needs(11, "needs 11 or 12 digits");
        case Symbology::Itf14:
            return needs(13, "needs 13 or 14 digits");
        default:
            return {};
    }
}

// "Error 312: Input too long" without its number.
std::string MessageOf(const zint_symbol& symbol) {
    const std::string_view text = symbol.errtxt;
    const std::size_t mark = text.find(": ");
    return std::string(mark == std::string_view::npos ? text : text.substr(mark + 2));
}

void AppendBar(const Rect& bar, std::vector<PathOp::Segment>& segments) {
    using Segment = PathOp::Segment;
    segments.push_back({Segment::Move, {bar.x}, {bar.y}});
    segments.push_back({Segment::LineTo, {bar.Right()}, {bar.y}});
    segments.push_back({Segment::LineTo, {bar.Right()}, {bar.Bottom()}});
    segments.push_back({Segment::LineTo, {bar.x}, {bar.Bottom()}});
    segments.push_back({Segment::Close, {}, {}});
}

// Draws all bars as one shape: between shapes that touch, a screen shows seams.
void DrawBars(const zint_symbol& symbol, bool isMatrix, Rect area, Color color, Canvas& canvas) {
    const zint_vector& vector = *symbol.vector;
    double across = area.width / static_cast<double>(vector.width);
    double down = area.height / static_cast<double>(vector.height);
    if (isMatrix) {
        across = down = std::min(across, down);
        area.x += (area.width - across * static_cast<double>(vector.width)) / 2;
        area.y += (area.height - down * static_cast<double>(vector.height)) / 2;
    }
    std::vector<PathOp::Segment> segments;
    for (const zint_vector_rect* bar = vector.rectangles; bar; bar = bar->next) {
        AppendBar({area.x + across * static_cast<double>(bar->x), area.y + down * static_cast<double>(bar->y),
                   across * static_cast<double>(bar->width), down * static_cast<double>(bar->height)},
                  segments);
    }
    canvas.Path(std::move(segments), color, {});
}

// Returns the reason why the value cannot be encoded; empty if it can.
std::string Encode(const SymbologyRow& row, const Encoder& encoder, const BarcodeData& data,
                   zint_symbol& symbol) {
    if (std::string wrong = WrongLength(row.symbology, data.value); !wrong.empty()) {
        return wrong;
    }
    if (data.value.size() > LongestValue) {
        return "Input too long";
    }
    symbol.symbology = encoder.number;
    symbol.input_mode = encoder.mode;
    symbol.output_options |= BARCODE_QUIET_ZONES;
    symbol.show_hrt = 0;
    if (row.symbology == Symbology::QrCode && CorrectionOf(data.errorCorrection) > 0) {
        symbol.option_1 = CorrectionOf(data.errorCorrection);
    }
    if (row.symbology == Symbology::DataMatrix || row.symbology == Symbology::Gs1DataMatrix) {
        symbol.option_3 = DM_SQUARE;
    }
    const auto* const bytes = reinterpret_cast<const unsigned char*>(data.value.data());
    const bool failed = ZBarcode_Encode(&symbol, bytes, static_cast<int>(data.value.size())) >= ZINT_ERROR ||
                        ZBarcode_Buffer_Vector(&symbol, 0) >= ZINT_ERROR || !symbol.vector;
    return failed ? MessageOf(symbol) : std::string();
}

}  // namespace

std::shared_ptr<DrawingInstance> DrawBarcode(const BarcodeData& data, double width, double height) {
    auto drawing = std::make_shared<DrawingInstance>();
    drawing->content.width = width;
    drawing->content.height = height;
    if ((data.value.empty() && !data.isError) || !(data.area.width > 0) || !(data.area.height > 0)) {
        return drawing;
    }
    Canvas canvas(drawing->content);
    const Spot middle{data.area.x + data.area.width / 2, data.area.y + data.area.height / 2};
    const auto say = [&](const std::string& message) {
        drawing->description = message;
        canvas.Text(Wrapped(message, data.textStyle, data.area.width), data.textStyle, middle, {});
        return drawing;
    };
    if (data.isError) {
        return say("#Error");
    }
    const SymbologyRow* const row = data.symbology.empty() ? &Symbologies[0] : FindSymbology(data.symbology);
    if (!row) {
        constexpr std::size_t Named = 60;  // bytes: the name may be any text of the data
        return say("\"" + std::string(WholeCharacters(data.symbology, Named)) + "\" is no bar code");
    }
    const Encoder& encoder = *std::find_if(Encoders.begin(), Encoders.end(), [row](const Encoder& one) {
        return one.symbology == row->symbology;
    });
    const SymbolPtr symbol(ZBarcode_Create(), &ZBarcode_Delete);
    if (!symbol) {
        throw std::bad_alloc();
    }
    if (const std::string why = Encode(*row, encoder, data, *symbol); !why.empty()) {
        return say(std::string(row->title) + ": " + why);
    }
    Rect area = data.area;
    const std::string text = reinterpret_cast<const char*>(symbol->text);
    const double line = Canvas::LineHeight(data.textStyle);
    if (data.showsText && !encoder.isMatrix && !text.empty() && area.height >= 2 * line) {
        area.height -= line;
        canvas.Text(text, data.textStyle, {middle.x, area.Bottom()}, {0.5, 0});
    }
    DrawBars(*symbol, encoder.isMatrix, area, data.textStyle.color, canvas);
    drawing->description = std::string(row->title) + ": " + (text.empty() ? data.value : text);
    return drawing;
}

}  // namespace rdl::layout
